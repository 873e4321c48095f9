// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QByteArray>

#include <zlib.h>

/// Unpacks a gzip body as it arrives, never further than its limit. Qt's own unpacking takes a body that is cut short
/// for a whole one.
class GzipDecoder
{
public:
    enum class Result { ok, broken };

    /// For a body of about `limit` unpacked bytes: feed() stops with the first piece beyond it.
    explicit GzipDecoder(qsizetype limit);
    ~GzipDecoder();
    Q_DISABLE_COPY_MOVE(GzipDecoder)

    /// Appends to `body` what `packed` holds. After `broken` there is nothing more to be had.
    Result feed(const QByteArray &packed, QByteArray &body);

    /// Whether the packed bytes so far end where a packed text ends. No bytes at all are an empty text.
    bool isComplete() const { return m_isAtEnd; }

private:
    z_stream m_stream{};
    qsizetype m_limit;
    bool m_isAtEnd = true;
};
