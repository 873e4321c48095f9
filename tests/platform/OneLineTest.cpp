// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Text/OneLine.h"
#include "Support/Table.h"

#include <QTest>

class OneLineTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void textsFromOutsideFitOneLine_data()
    {
        const Table<QString, QString> row;
        row("ordinary", "SW VILLA DE MAZO.ILP", "SW VILLA DE MAZO.ILP");
        row("line end", "W FRONTERA\r\nIHI", "W FRONTERA IHI");
        row("tab and bell", "a\tb\ac", "a b c");
        row("blanks at the ends", "\n a \u0085", "a");
        row("escape sequence", "\u001B[31mred", "[31mred");
        row("override", "a\u202Egnp.exe\u202C b", "agnp.exe b");
        row("direction mark between letters", "a\u200Fb", "ab");
        row("Arabic stays", "\u0627\u0644", "\u0627\u0644");
        row("markup stays as text", "<b>a</b> &amp;", "<b>a</b> &amp;");
    }

    void textsFromOutsideFitOneLine()
    {
        const auto [text, expected] = Table<QString, QString>::current();
        QCOMPARE(oneLine(text), expected);
    }
};

QTEST_GUILESS_MAIN(OneLineTest)
#include "OneLineTest.moc"
