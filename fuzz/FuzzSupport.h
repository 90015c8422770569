// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QTemporaryDir>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace paukfix {

// What the fuzzers share.

inline QByteArray BytesOf(const std::uint8_t *data, std::size_t size)
{
    return {reinterpret_cast<const char *>(data), static_cast<qsizetype>(size)};
}

// What must hold, in every build.
inline void Require(bool holds)
{
    if (!holds)
        std::abort();
}

// A directory that lives as long as the fuzzer.
inline const QTemporaryDir &Directory()
{
    static const QTemporaryDir directory;
    return directory;
}

inline QString PutFile(const QString &name, const QByteArray &content)
{
    const QString path = Directory().filePath(name);
    QFile file(path);
    Require(file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(content) == content.size());
    return path;
}

} // namespace paukfix
