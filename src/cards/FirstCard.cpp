// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "FirstCard.h"

#include "CardRecordset.h"
#include "TextHelpers.h"

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>

#include <variant>

namespace paukfix {

std::optional<CardRecord> FirstCard(CardRecordset &cards, int fach)
{
    std::optional<CardRecord> first;
    cards.Beside([&](SQLite::Database &database) {
        SQLite::Statement read(
            database, R"(SELECT * FROM "Lernkarten" WHERE "FachNr"=?1 ORDER BY "FachLfdNr" LIMIT 1)");
        read.bind(1, fach);
        if (!read.executeStep())
            return;
        first.emplace();
        for (int i = 0; i < read.getColumnCount(); ++i) {
            const int column = CardColumnIndex(QString::fromUtf8(read.getColumnName(i)));
            const SQLite::Column value = read.getColumn(i);
            if (column < 0 || value.isNull())
                continue;
            const auto &member = CardColumns()[static_cast<std::size_t>(column)].member;
            if (const auto *number = std::get_if<double CardRecord::*>(&member)) {
                (*first).*(*number) = value.getDouble();
            } else if (const auto *text = std::get_if<QString CardRecord::*>(&member)) {
                const char *bytes = value.getText(); // before getBytes(): it converts numbers
                (*first).*(*text) = TextFromUtf8({bytes, value.getBytes()});
            } else {
                (*first).*std::get<bool CardRecord::*>(member) = value.getInt() != 0;
            }
        }
    });
    return first;
}

} // namespace paukfix
