// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Core/Models/ParsedEarthquake.h"
#include "Core/Networking/HTMLParserError.h"
#include "Platform/URLSession/URLSession.h"

#include <QByteArray>
#include <QFuture>
#include <QList>
#include <QUrl>

/// Reads the institute's page of the last ten days: fetches it and turns its table into records. It looks for rows and
/// cells by their tags alone and builds no tree, so that its time and memory grow with the length of the page whatever
/// the page holds.
class HTMLParser
{
public:
    /// Fetches by `session`, which must outlive the parser and every fetch under way.
    explicit HTMLParser(URLSession &session = URLSession::shared())
        : m_session(session)
    {
    }

    /// The events of the page at `url`, in page order. Fails with HTMLParserError, or with the session's own error
    /// when the transfer did not run to its end.
    QFuture<QList<ParsedEarthquake>> fetchAndParse(const QUrl &url) const;

    /// The events in the text of a page, given as UTF-8, in page order; never empty. The same event number may come
    /// twice. A row without a usable event number, date, position, depth or magnitude is left out in silence. Throws
    /// HTMLParserError when no row is left.
    static QList<ParsedEarthquake> parseTable(QByteArrayView html);

    /// The text of a body as UTF-8: the body itself where it is valid UTF-8, otherwise read as ISO Latin-1, in which
    /// every byte is a character. What the page says of its own character set is not looked at.
    static QByteArray decoded(const QByteArray &body);

private:
    QFuture<QByteArray> fetchHTML(const QUrl &url) const;

    URLSession &m_session;
};
