// SPDX-License-Identifier: GPL-3.0-or-later
#include "Support/ShownWindow.h"

#include "PageGenerator.h"
#include "Support/ShownItems.h"

#include <QAccessible>
#include <QGuiApplication>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>

namespace {
const QString modulesFolder = QStringLiteral("qrc:/qt/qml/");
}

ShownWindow::ShownWindow()
{
    // Names are told to nobody, and some are not even reckoned, until something asks for them.
    QAccessible::setActive(true);
    world.clock.setNow(Instant(std::chrono::sys_days{std::chrono::year{2026} / 11 / 22}) + std::chrono::hours(20));
    m_engine.addImportPath(modulesFolder);
    QObject::connect(&m_engine, &QQmlEngine::warnings, &m_engine, [this](const QList<QQmlError> &warnings) {
        for (const QQmlError &warning : warnings)
            m_warnings.append(warning.toString());
    });
}

ShownWindow::~ShownWindow()
{
    if (!m_warnings.isEmpty())
        QTest::qFail(qPrintable(m_warnings.join(u'\n')), __FILE__, __LINE__);
}

void ShownWindow::enqueuePage(const QList<ParsedEarthquake> &rows)
{
    world.urlSession.enqueue(PageGenerator::page(rows));
}

bool ShownWindow::show(QSize size)
{
    setSize(size);
    return showAnother();
}

bool ShownWindow::showTabs(QSize size)
{
    setSize(size);
    return showRoot("orvalia/Tabs/MainTabView.qml");
}

bool ShownWindow::showAnother()
{
    return showRoot("orvalia/Shell/MacMainView.qml");
}

void ShownWindow::setSize(QSize size)
{
    m_engine.setInitialProperties({{QStringLiteral("container"), QVariant::fromValue(&container)},
                                   {QStringLiteral("width"), size.width()},
                                   {QStringLiteral("height"), size.height()}});
}

bool ShownWindow::showRoot(const char *file)
{
    const qsizetype before = m_engine.rootObjects().size();
    m_engine.load(QUrl(modulesFolder + QLatin1String(file)));
    m_window = qobject_cast<QQuickWindow *>(m_engine.rootObjects().value(before));
    return m_window && QTest::qWaitForWindowExposed(m_window) && activate();
}

bool ShownWindow::activate()
{
    m_window->requestActivate();
    if (!QTest::qWaitForWindowActive(m_window))
        return false;
    settle();
    return m_warnings.isEmpty();
}

bool ShownWindow::enter(QAnyStringView title)
{
    QQuickWindow *entered = nullptr;
    const auto isShown = [&] {
        for (QWindow *window : QGuiApplication::topLevelWindows())
            if (window->isVisible() && window->title() == title)
                entered = qobject_cast<QQuickWindow *>(window);
        return entered && entered->isExposed();
    };
    if (!QTest::qWaitFor(isShown))
        return false;
    m_window = entered;
    return activate();
}

bool ShownWindow::open(const char *file, QAnyStringView title)
{
    m_engine.setInitialProperties({{QStringLiteral("visible"), true}});
    m_engine.load(QUrl(modulesFolder + QLatin1String(file)));
    return enter(title);
}

void ShownWindow::pass(std::chrono::milliseconds time)
{
    world.clock.advance(time);
    settle();
}

void ShownWindow::settle()
{
    world.settle();
    // Views take in what their models told when a frame is made. A closed window makes none.
    for (int frame = 0; frame < 2 && m_window->isExposed(); ++frame) {
        QSignalSpy swapped(m_window, &QQuickWindow::frameSwapped);
        m_window->update();
        swapped.wait();
    }
    world.settle();
}

QQuickItem *ShownWindow::item(QAnyStringView objectName) const
{
    return items(objectName).value(0);
}

QList<QQuickItem *> ShownWindow::items(QAnyStringView objectName) const
{
    return ShownItems::all(*m_window, [&](QQuickItem *item) { return item->objectName() == objectName; });
}

QList<QQuickItem *> ShownWindow::itemsOf(const char *className) const
{
    return ShownItems::all(*m_window, [&](QQuickItem *item) { return item->inherits(className); });
}

QString ShownWindow::textOf(QAnyStringView objectName) const
{
    const QQuickItem *found = item(objectName);
    return found ? found->property("text").toString() : QString();
}

bool ShownWindow::shows(QAnyStringView text) const
{
    const QList<QQuickItem *> texts = itemsOf("QQuickText");
    return std::ranges::any_of(texts, [&](QQuickItem *item) { return item->property("text").toString() == text; });
}

QQuickItem *ShownWindow::named(QAnyStringView name) const
{
    return ShownItems::all(*m_window, [&](QQuickItem *item) { return ShownItems::spokenName(item) == name; }).value(0);
}

void ShownWindow::click(QQuickItem *item, Qt::KeyboardModifiers modifiers)
{
    QTest::mouseClick(m_window, Qt::LeftButton, modifiers, ShownItems::middle(item));
    settle();
}

void ShownWindow::pressByReader(QQuickItem *item)
{
    QAccessible::queryAccessibleInterface(item)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    settle();
}

void ShownWindow::drag(const QPoint &from, const QPoint &by)
{
    QTest::mousePress(m_window, Qt::LeftButton, Qt::NoModifier, from);
    for (int step = 1; step <= 10; ++step)
        QTest::mouseMove(m_window, from + by * step / 10);
    QTest::mouseRelease(m_window, Qt::LeftButton, Qt::NoModifier, from + by);
    settle();
}

void ShownWindow::turnWheel(QQuickItem *item, int angle)
{
    ShownItems::turnWheel(item, angle);
}

void ShownWindow::press(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(m_window, key, modifiers);
    settle();
}

void ShownWindow::type(QAnyStringView text)
{
    ShownItems::type(*m_window, text.toString());
    settle();
}

QStringList faultsOfItems(const QQuickWindow &window)
{
    QStringList faults;
    for (QQuickItem *item : ShownItems::all(window, [](QQuickItem *) { return true; })) {
        const QString what = QString::fromLatin1(item->metaObject()->className()) + u' ' + item->objectName();
        const bool isText = item->inherits("QQuickText") || item->inherits("QQuickTextEdit");
        if (isText && item->property("textFormat").toInt() != Qt::PlainText)
            faults.append(what + QStringLiteral(": text is not plain: ") + item->property("text").toString());
        const bool isReached =
            item->activeFocusOnTab() || item->inherits("PressableItem") || item->inherits("QQuickAbstractButton");
        if (isReached && ShownItems::spokenName(item).isEmpty())
            faults.append(what + QStringLiteral(": has no accessible name"));
    }
    return faults;
}
