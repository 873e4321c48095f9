// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/URLSession/GzipDecoder.h"

#include <array>
#include <new>

namespace {
/// The largest window, and 16 for gzip's header instead of zlib's.
constexpr int windowBits = 15 + 16;
}

GzipDecoder::GzipDecoder()
{
    if (inflateInit2(&m_stream, windowBits) != Z_OK)
        throw std::bad_alloc();
}

GzipDecoder::~GzipDecoder()
{
    inflateEnd(&m_stream);
}

void GzipDecoder::feed(const QByteArray &packed)
{
    m_packed = packed;
    // zlib does not write to its input.
    m_stream.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(m_packed.constData()));
    m_stream.avail_in = uInt(m_packed.size());
}

GzipDecoder::Result GzipDecoder::unpack(QByteArray &body)
{
    // A body may be several packed texts, one behind the other.
    if (m_isAtEnd)
        inflateReset(&m_stream);
    std::array<char, pieceBytes> piece;
    m_stream.next_out = reinterpret_cast<Bytef *>(piece.data());
    m_stream.avail_out = uInt(piece.size());
    const int result = inflate(&m_stream, Z_NO_FLUSH);
    if (result != Z_OK && result != Z_STREAM_END)
        return Result::broken;
    m_isAtEnd = result == Z_STREAM_END;
    body.append(piece.data(), qsizetype(piece.size() - m_stream.avail_out));
    return Result::ok;
}
