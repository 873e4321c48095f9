// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QByteArray>

#include <zlib.h>

/// Unpacks a gzip body as it arrives, a piece at a time: a few packed bytes may hold any number of others. Qt's own
/// unpacking takes a body that is cut short for a whole one.
class GzipDecoder
{
public:
    enum class Result { ok, broken };

    /// The most that unpack() gives at once, in bytes.
    static constexpr qsizetype pieceBytes = 64 * qsizetype{1024};

    GzipDecoder();
    ~GzipDecoder();
    Q_DISABLE_COPY_MOVE(GzipDecoder)

    /// Takes the next packed bytes, once it has no more of the last ones.
    void feed(const QByteArray &packed);
    /// Whether it has packed bytes that unpack() has not come to.
    bool hasMore() const { return m_stream.avail_in > 0; }
    /// Appends to `body` the next piece of what the packed bytes hold. After `broken` there is nothing more to be had.
    Result unpack(QByteArray &body);

    /// Whether the packed bytes so far end where a packed text ends. No bytes at all are an empty text.
    bool isComplete() const { return m_isAtEnd; }

private:
    z_stream m_stream{};
    QByteArray m_packed;
    bool m_isAtEnd = true;
};
