// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QByteArray>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cstdint>
#include <cstdlib>

/// Ends the process, which is how a fuzz target tells a finding.
inline void require(bool holds)
{
    if (!holds)
        std::abort();
}

inline QByteArray bytesOf(const uint8_t *data, size_t size)
{
    return {reinterpret_cast<const char *>(data), qsizetype(size)};
}

/// A path that was never used before, in a folder of this process; in memory where the machine has such a place.
inline QString freshPath()
{
    static const QString memory = QStringLiteral("/dev/shm");
    static const QTemporaryDir folder(QFileInfo(memory).isWritable() ? memory + QStringLiteral("/fuzz-XXXXXX")
                                                                     : QStringLiteral("/tmp/fuzz-XXXXXX"));
    static int number = 0;
    return folder.filePath(QString::number(++number));
}

inline void writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    require(file.open(QFile::WriteOnly) && file.write(bytes) == bytes.size());
}

inline QByteArray readFile(const QString &path)
{
    QFile file(path);
    require(file.open(QFile::ReadOnly));
    return file.readAll();
}
