// SPDX-License-Identifier: GPL-3.0-or-later
#include "Budgets.h"

#include "Core/Networking/HTMLParser.h"
#include "PageGenerator.h"

#include <gumbo.h>

#include <algorithm>
#include <cstdlib>

namespace {
QByteArray generatedPage(int rows)
{
    constexpr Instant now{std::chrono::sys_days{std::chrono::year{2025} / 3 / 1}};
    return PageGenerator(1).page(PageGenerator(1).swarm(rows, now, std::chrono::days(10)));
}

/// How many table cells hang below `node`: the least that a program with a tree has to do to read a table.
int countCells(const GumboNode *node)
{
    if (node->type != GUMBO_NODE_ELEMENT && node->type != GUMBO_NODE_DOCUMENT)
        return 0;
    const bool isElement = node->type == GUMBO_NODE_ELEMENT;
    const GumboVector &children = isElement ? node->v.element.children : node->v.document.children;
    int cells = isElement && node->v.element.tag == GUMBO_TAG_TD ? 1 : 0;
    for (unsigned child = 0; child < children.length; ++child)
        cells += countCells(static_cast<const GumboNode *>(children.data[child]));
    return cells;
}

/// Stops the run when a piece of work did not do what its time is taken for.
void require(bool holds)
{
    if (!holds)
        std::abort();
}

void parseAll(const QByteArray &body, qsizetype rows)
{
    require(HTMLParser::parseTable(HTMLParser::decoded(body)).size() == rows);
}

void buildAndWalkTree(const QByteArray &body)
{
    GumboOutput *output = gumbo_parse_with_options(&kGumboDefaultOptions, body.constData(), size_t(body.size()));
    require(countCells(output->document) > 0);
    gumbo_destroy_output(&kGumboDefaultOptions, output);
}

/// A page of one good row whose place name is `length` bytes of entities.
QByteArray pageOfEntities(qsizetype length)
{
    QByteArray html = generatedPage(1);
    const QByteArray entity("&amp;");
    return html.replace("FUENCALIENTE", entity.repeated(length / entity.size()));
}
}

void parserBudgets(Budgets &budgets)
{
    const QByteArray swarm = generatedPage(1700);
    const QByteArray manySwarms = generatedPage(20000);
    budgets.timesFaster(
        25, "parser: page of 1,700 rows : tree built and walked by libgumbo", [&] { parseAll(swarm, 1700); },
        [&] { buildAndWalkTree(swarm); });
    budgets.atMost(
        15, "parser: page of 20,000 rows : page of 1,700", [&] { parseAll(manySwarms, 20000); },
        [&] { parseAll(swarm, 1700); });

    const QByteArray short1MB = pageOfEntities(1 << 20);
    const QByteArray long4MB = pageOfEntities(4 << 20);
    budgets.atMost(
        6, "parser: one cell of 4 MB of entities : one of 1 MB", [&] { parseAll(long4MB, 1); },
        [&] { parseAll(short1MB, 1); });

    // Each looks for an end that never comes: of a row, of a cell's opening tag, of the tag after a lone bracket.
    for (const QByteArray endless : {"<tr><td>", "<td", "<"}) {
        const QByteArray name = "parser: page with 4 MB of \"" + endless + "\" : with 1 MB";
        const QByteArray shortPage =
            swarm + "<tr>" + endless.repeated((1 << 20) / std::max<qsizetype>(1, endless.size()));
        const QByteArray longPage =
            swarm + "<tr>" + endless.repeated((4 << 20) / std::max<qsizetype>(1, endless.size()));
        budgets.atMost(
            6, name, [&] { parseAll(longPage, 1700); }, [&] { parseAll(shortPage, 1700); });
    }
}
