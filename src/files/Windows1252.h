// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace paukfix {

// The code page of the program's text files.

QString FromWindows1252(QByteArrayView bytes);

// Nothing where `text` holds a character that the code page lacks: none is ever replaced by another one.
std::optional<QByteArray> ToWindows1252(const QString &text);

} // namespace paukfix
