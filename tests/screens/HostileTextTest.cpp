// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Persistence/ModelContext.h"
#include "Support/ShownItems.h"
#include "Support/ShownWindow.h"
#include "Support/Table.h"

#include <QAccessible>
#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>

using namespace Qt::StringLiterals;
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
        const QString address = u"http://127.0.0.1:%1/x.png"_s.arg(m_listener.serverPort());
        const QString markup =
            u"<b>W</b> <a href=\"file:///etc/passwd\">x</a> &amp; %1 <img src=\""_s + address + u"\">"_s;
        const QString markdown = u"# ![x](%1) **W**"_s.arg(address);
        row("markup", markup, markup);
        row("markdown", markdown, markdown);
        row("control characters", u"W\u0000\u0007\u001B[31m\r\n\tE\u0085S\u2028T\u2029"_s, u"W [31m E S T"_s);
        row("reading direction", u"\u202EW\u2066 ADEJE\u200F\u061C \u202D\u2067IHI"_s, u"W ADEJE IHI"_s);
        row("4 kB", QString(4096, u'Ñ'), QString(4096, u'Ñ'));
        row("4 kB of words", u"\u05D0\u0301 "_s.repeated(1365), {});
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
        for (const auto &[section, item] :
             {std::pair(Qt::Key_1, "earthquakeList"), {Qt::Key_2, "history"}, {Qt::Key_4, "bar"}, {Qt::Key_3, "map"}}) {
            window.press(section, Qt::ControlModifier);
            QTRY_VERIFY(window.item(item));
            QTRY_COMPARE(faults(window), QString());
        }
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
            QVERIFY(window.named(u"M 3.1 — "_s + shown));
        for (QQuickItem *value : window.items("value")) {
            QMetaObject::invokeMethod(value, "selectAll");
            QMetaObject::invokeMethod(value, "copy");
            const QMimeData *copied = QGuiApplication::clipboard()->mimeData();
            QVERIFY2(isTame(copied->text()), qPrintable(copied->text()));
            QVERIFY2(!copied->html().contains(u"<img"_s), qPrintable(copied->html()));
        }

        // Whatever was asked of the listener before is heard before this.
        QTcpSocket last;
        last.connectToHost(QHostAddress::LocalHost, m_listener.serverPort());
        QTRY_VERIFY(m_heard > 0);
        QCOMPARE(m_heard, 1);
    }

private:
    /// What is wrong with what the window shows and tells, a line for each.
    static QString faults(const ShownWindow &shown)
    {
        QStringList found = faultsOfItems(shown.window());
        const auto look = [&found](const QString &where, const QString &text) {
            if (!isTame(text))
                found.append(where + u" has "_s + text.left(100));
        };
        look(u"the title"_s, shown.window().title());
        for (QQuickItem *item : ShownItems::all(shown.window(), [](QQuickItem *) { return true; })) {
            const QString what = QString::fromLatin1(item->metaObject()->className());
            if (QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(item))
                for (const QAccessible::Text kind : {QAccessible::Name, QAccessible::Description, QAccessible::Value})
                    look(u"a reader's "_s + what, accessible->text(kind));
            if (!item->inherits("QQuickText") && !item->inherits("QQuickTextEdit"))
                continue;
            look(what, item->property("text").toString());
            const bool isOnLines = item->inherits("QQuickText") && item->property("content").isValid();
            if (isOnLines && item->property("lineCount").toInt() > 2)
                found.append(what + u" goes on below with "_s + item->property("text").toString().left(100));
            if (item->mapToScene(QPointF(item->width(), 0)).x() > shown.window().width())
                found.append(what + u" leaves the window with "_s + item->property("text").toString().left(100));
        }
        return found.join(u'\n');
    }

    QTcpServer m_listener;
    int m_heard = 0;
};

QTEST_MAIN(HostileTextTest)
#include "HostileTextTest.moc"
