// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Windows1252.h"

#include <QStringConverter>

namespace paukfix {

QString FromWindows1252(QByteArrayView bytes)
{
    QStringDecoder decoder("windows-1252");
    return decoder.decode(bytes);
}

std::optional<QByteArray> ToWindows1252(const QString &text)
{
    QStringEncoder encoder("windows-1252");
    QByteArray bytes = encoder.encode(text);
    // The encoder puts a stand-in, or a letter that looks alike, where the code page has no such character.
    if (FromWindows1252(bytes) != text)
        return std::nullopt;
    return bytes;
}

} // namespace paukfix
