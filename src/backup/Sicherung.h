// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QDateTime>
#include <QList>
#include <QString>

namespace paukfix {

// A checked copy of a card file.
struct Sicherung
{
    QString datei;      // its path
    QDateTime zeit;     // when it was made, local time
    qint64 groesse = 0; // bytes
};

// The newest first.
using Sicherungsliste = QList<Sicherung>;

} // namespace paukfix
