// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Text/OneLine.h"

#include <QTest>

class OneLineTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void textsFromOutsideFitOneLine_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("line");
        const auto row = [](const char *name, const char16_t *text, const char16_t *line) {
            QTest::newRow(name) << QString::fromUtf16(text) << QString::fromUtf16(line);
        };
        row("ordinary", u"SW VILLA DE MAZO.ILP", u"SW VILLA DE MAZO.ILP");
        row("line end", u"W FRONTERA\r\nIHI", u"W FRONTERA IHI");
        row("tab and bell", u"a\tb\ac", u"a b c");
        row("blanks at the ends", u"\n a \u0085", u"a");
        row("escape sequence", u"\u001B[31mred", u"[31mred");
        row("line separator", u"a\u2028b\u2029c", u"a b c");
        row("override", u"a\u202Egnp.exe\u202C b", u"agnp.exe b");
        row("isolate", u"\u2067a\u2069", u"a");
        row("direction mark between letters", u"a\u200Fb", u"ab");
        row("Arabic stays", u"\u0627\u0644", u"\u0627\u0644");
        row("joiners stay", u"\u0646\u200C\u0647", u"\u0646\u200C\u0647");
        row("markup stays as text", u"<b>a</b> &amp;", u"<b>a</b> &amp;");
        row("nothing but marks", u"\u202E\n\u200F", u"");
    }

    void textsFromOutsideFitOneLine()
    {
        QFETCH(QString, text);
        QTEST(oneLine(text), "line");
    }
};

QTEST_GUILESS_MAIN(OneLineTest)
#include "OneLineTest.moc"
