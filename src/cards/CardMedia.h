// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardRecordset.h"

#include <QHash>
#include <QList>
#include <QSet>
#include <QString>

namespace paukfix {

// The pictures and sounds that cards name. All throw StoreError.

// A name as it is stored, with its directory part where it has one.
struct MediaName
{
    QString name;
    int cards = 0; // that name it
};

// The columns that hold the names of pictures and sounds, and no topic.
const QList<int> &MediaColumns();

// Each name once, in the order of the card numbers. Of a name that no card of this program can have only the
// beginning, which is longer than any that one can.
QList<MediaName> MediaNames(SQLite::Database &database);
QList<MediaName> MediaNames(CardRecordset &cards);

// Gives the cards that bear the name of a key of `names` its value. Wants an open transaction.
void RenameMedia(CardRecordset &cards, const QHash<QString, QString> &names);

} // namespace paukfix
