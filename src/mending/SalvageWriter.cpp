// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "SalvageWriter.h"

#include "CardFile.h"
#include "CardFileCheck.h"
#include "StoreError.h"

#include <SQLiteCpp/Statement.h>
#include <SQLiteCpp/Transaction.h>

#include <string>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

void BindCard(SQLite::Statement &insert, const SalvagedCard &card)
{
    for (int column = 0; column < CardColumnCount; ++column) {
        const SalvagedCard::Value &value = card.values[static_cast<std::size_t>(column)];
        if (const auto *number = std::get_if<double>(&value))
            insert.bind(column + 1, *number);
        else if (const auto *text = std::get_if<QByteArray>(&value))
            insert.bind(column + 1, std::string(text->constData(), static_cast<std::size_t>(text->size())));
        else
            insert.bind(column + 1);
    }
}

int WriteAll(const QString &path, const std::function<std::optional<SalvagedCard>()> &next)
{
    CardFile file(path);
    SQLite::Database &database = file.Database();
    CardFile::WriteUnsynced(database);
    SQLite::Transaction transaction(database);
    std::string sql = "INSERT INTO Lernkarten VALUES(?";
    for (int column = 1; column < CardColumnCount; ++column)
        sql += ",?";
    SQLite::Statement insert(database, sql + ")");
    int cards = 0;
    for (auto card = next(); card; card = next()) {
        BindCard(insert, *card);
        insert.exec();
        insert.reset();
        ++cards;
    }
    transaction.commit();
    return cards;
}

// Opened anew, as what the engine has just written it still knows by heart.
bool IsSound(const QString &path, int cards, const Progress &progress)
{
    try {
        CardFile file(path);
        CheckCardFile(file.Database(), progress);
        return file.Database().execAndGet("SELECT count(*) FROM Lernkarten").getInt() == cards;
    } catch (const StoreError &error) {
        if (error.Number() != Fehler::Beschaedigt)
            throw;
        return false;
    }
}

} // namespace

int WriteSalvagedCards(const QString &path, const std::function<std::optional<SalvagedCard>()> &next,
                       const Progress &progress)
{
    CardFile::Create(path);
    try {
        const int cards = WriteAll(path, next);
        if (!IsSound(path, cards, progress))
            throw StoreError(Fehler::Beschaedigt, u"Die neue Kartei ließ sich nicht fehlerfrei schreiben."_s);
        return cards;
    } catch (const SQLite::Exception &error) {
        ThrowStoreError(error, path);
    }
}

} // namespace paukfix
