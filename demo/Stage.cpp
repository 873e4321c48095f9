// SPDX-License-Identifier: GPL-3.0-or-later
#include "Stage.h"

#include "Support/ShownItems.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickItem>
#include <QSGRendererInterface>
#include <QTest>

#include <algorithm>

namespace {
constexpr int longestWaitMs = 10000;
constexpr int longestMotionMs = 2000;
constexpr int restMs = 50;

/// A name with a star behind it stands for all that begin alike.
bool matches(const QString &text, const QString &name)
{
    return name.endsWith(u'*') ? text.startsWith(QStringView(name).chopped(1)) : text == name;
}

bool hasName(QQuickItem *item, const QString &name)
{
    return item->objectName() == name || matches(ShownItems::spokenName(item), name)
        || matches(item->property("text").toString(), name);
}

/// It has a size, and neither it nor what it lies in is wholly transparent.
bool canBeSeen(const QQuickItem *item)
{
    for (const QQuickItem *each = item; each; each = each->parentItem())
        if (qFuzzyIsNull(each->opacity()))
            return false;
    return item->width() > 0 && item->height() > 0;
}

/// No map at or below `item` is still being painted for what it should show.
bool isSharp(QQuickItem *item)
{
    if (!item->isVisible())
        return true;
    const QVariant own = item->property("isSharp");
    const QList<QQuickItem *> children = item->childItems();
    return (!own.isValid() || own.toBool()) && std::all_of(children.begin(), children.end(), isSharp);
}
}

Stage::Stage(QSize size)
    : m_size(size)
{
}

Stage::~Stage()
{
    close();
}

void Stage::open(orvaliaApp::Root root)
{
    m_app = std::make_unique<orvaliaApp>(root);
    world.workspace.opens = [this](const QUrl &url) {
        if (url == Workspace::permissionsUrl())
            m_app->showPermissions();
        return url == Workspace::permissionsUrl();
    };
    waitForWindow();
}

void Stage::openPage(const QUrl &file)
{
    m_page = std::make_unique<QQuickView>();
    m_page->engine()->addImportPath(QStringLiteral("qrc:/qt/qml"));
    m_page->setResizeMode(QQuickView::SizeRootObjectToView);
    m_page->setSource(file);
    m_page->show();
    waitForWindow();
}

void Stage::waitForWindow()
{
    window().resize(m_size);
    waitUntil([this] { return window().isExposed() && window().size() == m_size; }, QStringLiteral("the window"));
    waitForFrame();
    if (window().rendererInterface()->graphicsApi() == QSGRendererInterface::Software)
        throw StageError(QStringLiteral("the software renderer leaves out the map's markers: a display is needed"));
    // Shortcuts work in the active window alone.
    window().requestActivate();
    waitUntil([this] { return window().isActive(); }, QStringLiteral("the focus"));
}

void Stage::close()
{
    m_app.reset();
    m_page.reset();
    m_title.clear();
    world.settle();
}

void Stage::useWindow(const QString &title)
{
    m_title = title;
    waitUntil([this] { return window().isExposed(); }, title);
}

bool Stage::shows(const QString &name) const
{
    return find(name);
}

void Stage::waitFor(const QString &name)
{
    waitUntil([this, name] { return shows(name); }, name);
}

void Stage::press(const QString &name, Qt::KeyboardModifiers modifiers)
{
    waitFor(name);
    waitForFrame();
    QTest::mouseClick(&window(), Qt::LeftButton, modifiers, ShownItems::middle(&require(name)));
    world.settle();
}

void Stage::hover(const QString &name)
{
    waitFor(name);
    waitForFrame();
    QTest::mouseMove(&window(), ShownItems::middle(&require(name)));
    world.settle();
}

void Stage::scroll(const QString &name, int steps)
{
    waitFor(name);
    waitForFrame();
    constexpr int oneStep = 120;
    ShownItems::turnWheel(&require(name), -steps * oneStep);
    world.settle();
}

void Stage::key(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(&window(), key, modifiers);
    world.settle();
}

void Stage::type(const QString &text)
{
    ShownItems::type(window(), text);
    world.settle();
}

void Stage::pass(std::chrono::milliseconds length)
{
    world.clock.advance(length);
    world.settle();
}

void Stage::keepPicture()
{
    m_kept = picture();
}

QImage Stage::picture()
{
    if (!m_kept.isNull())
        return m_kept;
    const auto becomesSharp = [this] {
        // It is painted once camera and markers have rested for a while on the program's clock.
        world.clock.advance(std::chrono::milliseconds(restMs));
        return isSharp(window().contentItem());
    };
    waitUntil(becomesSharp, QStringLiteral("a sharp map"));
    QElapsedTimer motion;
    motion.start();
    QImage last;
    QImage now = window().grabWindow();
    do {
        last = now;
        QTest::qWait(restMs);
        world.settle();
        now = window().grabWindow();
    } while (now != last && motion.elapsed() < longestMotionMs);
    return now;
}

QQuickWindow &Stage::window() const
{
    const QWindowList windows = QGuiApplication::topLevelWindows();
    for (QWindow *const candidate : windows) {
        auto *const found = qobject_cast<QQuickWindow *>(candidate);
        if (found && found->isVisible() && (m_title.isEmpty() || found->title() == m_title))
            return *found;
    }
    throw StageError(QStringLiteral("no window \"%1\"").arg(m_title));
}

QQuickItem *Stage::find(const QString &name) const
{
    const auto isIt = [&](QQuickItem *item) { return canBeSeen(item) && hasName(item, name); };
    const QList<QQuickItem *> found = ShownItems::all(window(), isIt);
    return found.isEmpty() ? nullptr : found.constLast(); // the topmost
}

QQuickItem &Stage::require(const QString &name) const
{
    QQuickItem *const item = find(name);
    if (!item)
        throw StageError(QStringLiteral("\"%1\" does not show").arg(name));
    return *item;
}

void Stage::waitForFrame()
{
    bool isDrawn = false;
    // Frames are drawn on a thread of their own.
    QObject receiver;
    QObject::connect(&window(), &QQuickWindow::afterRendering, &receiver, [&isDrawn] { isDrawn = true; });
    window().update();
    waitUntil([&isDrawn] { return isDrawn; }, QStringLiteral("a frame"));
}

void Stage::waitUntil(const std::function<bool()> &holds, const QString &what)
{
    const auto settledAndHolds = [this, &holds] {
        world.settle();
        return holds();
    };
    if (!QTest::qWaitFor(settledAndHolds, longestWaitMs))
        throw StageError(QStringLiteral("\"%1\" never came").arg(what));
}
