// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QDateTime>
#include <QString>

namespace paukfix {

// When something was, as one says it on the day `heute`: "heute 18:02", "gestern 18:02", "20.11.2026 18:02".
inline QString ZeitText(const QDateTime &zeit, const QDate &heute)
{
    using namespace Qt::StringLiterals;
    const qint64 tage = zeit.date().daysTo(heute);
    const QString tag = tage == 0   ? u"heute"_s
                        : tage == 1 ? u"gestern"_s
                                    : zeit.date().toString(u"dd.MM.yyyy"_s);
    return tag + zeit.time().toString(u" HH:mm"_s);
}

// A backup of that moment, as one speaks of it: "Sicherung von gestern 18:02", "Sicherung vom 20.11.2026
// 18:02".
inline QString SicherungVon(const QDateTime &zeit, const QDate &heute)
{
    using namespace Qt::StringLiterals;
    const qint64 tage = zeit.date().daysTo(heute);
    return (tage == 0 || tage == 1 ? u"Sicherung von "_s : u"Sicherung vom "_s) + ZeitText(zeit, heute);
}

} // namespace paukfix
