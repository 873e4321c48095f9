// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Persistence/ModelContext.h"
#include "Support/ShownWindow.h"
#include "Support/Table.h"

#include <QAccessible>
#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>

using namespace std::chrono_literals;

namespace {
/// Whether `text` could break a line, hide something or turn the reading direction about.
bool isTame(const QString &text)
{
    return std::ranges::none_of(text, [](QChar c) {
        return c.category() == QChar::Other_Control || (c >= QChar(0x202A) && c <= QChar(0x202E))
            || (c >= QChar(0x2066) && c <= QChar(0x2069)) || c == QChar(0x200F) || c == QChar(0x2028);
    });
}

/// What is wrong with what an item shows and tells; empty when nothing is.
void collectWild(QQuickItem *item, const QQuickWindow &window, QStringList &wild)
{
    if (!item->isVisible())
        return;
    const QString what = QString::fromLatin1(item->metaObject()->className()) + QStringLiteral(": ");
    QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(item);
    if (accessible)
        for (const QAccessible::Text kind : {QAccessible::Name, QAccessible::Description, QAccessible::Value})
            if (!isTame(accessible->text(kind)))
                wild.append(what + QStringLiteral("tells ") + accessible->text(kind).left(100));
    if (item->inherits("QQuickText") || item->inherits("QQuickTextEdit")) {
        if (!isTame(item->property("text").toString()))
            wild.append(what + QStringLiteral("shows ") + item->property("text").toString().left(100));
        if (item->mapToScene(QPointF(item->width(), 0)).x() > window.width())
            wild.append(what + QStringLiteral("leaves the window with ") + item->property("text").toString().left(100));
    }
    for (QQuickItem *child : item->childItems())
        collectWild(child, window, wild);
}
}

/// Texts of the page that want to be more than text, in every screen.
class HostileTextTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(m_listener.listen(QHostAddress::LocalHost));
        connect(&m_listener, &QTcpServer::newConnection, this, [this] { ++m_heard; });
    }

    void outsideTextsStayText_data()
    {
        Table<QString, QString> row;
        const QString image = QStringLiteral("<img src=\"http://127.0.0.1:%1/x.png\">").arg(m_listener.serverPort());
        const QString markup = QStringLiteral("<b>W</b> <a href=\"file:///etc/passwd\">x</a> &amp; %1 ") + image;
        row("markup", markup + image, markup + image);
        row("markdown", QStringLiteral("# ![x](http://127.0.0.1:%1/) **W**").arg(m_listener.serverPort()),
            QStringLiteral("# ![x](http://127.0.0.1:%1/) **W**").arg(m_listener.serverPort()));
        row("control characters", QStringLiteral("W\u0000\u0007\u001B[31m\r\n\tE\u0085S\u2028T\u2029"),
            QStringLiteral("W [31m E S T"));
        row("reading direction", QStringLiteral("\u202EW\u2066 ADEJE\u200F\u061C \u202D\u2067IHI"),
            QStringLiteral("W ADEJE IHI"));
        row("4 kB", QString(4096, u'Ñ'), QString(4096, u'Ñ'));
        row("4 kB of words", QStringLiteral("\u05D0\u0301 ").repeated(1365), {});
    }

    void outsideTextsStayText()
    {
        const auto [text, shown] = Table<QString, QString>::current();
        ShownWindow window;
        ModelContext &context = window.container.mainContext();
        for (int number = 0; number < 3; ++number)
            context.insert({QString::number(number) + text, window.world.clock.now() - 1h * (number + 1), 28.1, -16.5,
                            12, 3.1, text, text, text});
        context.save();
        m_heard = 0;
        QVERIFY(window.show({480, 720}));
        QTRY_COMPARE(faults(window), QString());

        window.press(Qt::Key_2, Qt::ControlModifier);
        QTRY_VERIFY(window.item("history"));
        QTRY_COMPARE(faults(window), QString());

        window.press(Qt::Key_4, Qt::ControlModifier);
        window.settle();
        QTRY_COMPARE(faults(window), QString());

        window.press(Qt::Key_3, Qt::ControlModifier);
        QTRY_VERIFY(window.item("map"));
        window.item("map")->forceActiveFocus(Qt::TabFocusReason);
        window.press(Qt::Key_Left, Qt::AltModifier);
        window.press(Qt::Key_Return);
        QTRY_VERIFY(window.named("Ver detalle"));
        QQuickItem *detail = window.named("Ver detalle");
        // It slides in from below.
        QTRY_VERIFY(detail->mapToScene(QPointF(0, detail->height())).y() < window.window().height());
        QTRY_COMPARE(faults(window), QString());

        window.click(detail);
        QTRY_VERIFY(window.item("detailMap"));
        QTRY_COMPARE(faults(window), QString());
        if (!shown.isEmpty())
            QVERIFY(window.named(QStringLiteral("M 3.1 — ") + shown));
        for (QQuickItem *value : window.items("value")) {
            QMetaObject::invokeMethod(value, "selectAll");
            QMetaObject::invokeMethod(value, "copy");
            const QMimeData *copied = QGuiApplication::clipboard()->mimeData();
            QVERIFY2(isTame(copied->text()), qPrintable(copied->text()));
            QVERIFY2(!copied->html().contains(QStringLiteral("<img")), qPrintable(copied->html()));
        }

        // Whatever was asked of the listener before is heard before this.
        QTcpSocket last;
        last.connectToHost(QHostAddress::LocalHost, m_listener.serverPort());
        QTRY_VERIFY(m_heard > 0);
        QCOMPARE(m_heard, 1);
    }

private:
    /// A line for each.
    static QString faults(const ShownWindow &shown)
    {
        QStringList found = faultsOfItems(shown.window());
        collectWild(shown.window().contentItem(), shown.window(), found);
        if (!isTame(shown.window().title()))
            found.append(QStringLiteral("the title: ") + shown.window().title());
        return found.join(u'\n');
    }

    QTcpServer m_listener;
    int m_heard = 0;
};

QTEST_MAIN(HostileTextTest)
#include "HostileTextTest.moc"
