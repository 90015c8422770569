// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardAdder.h"

#include "CardBulk.h"
#include "CardFile.h"
#include "CardRecord.h"
#include "CardValue.h"

#include <QByteArrayView>
#include <sqlite3.h>

#include <algorithm>

namespace paukfix {

namespace {

QByteArrayView NameOf(int column)
{
    return CardColumns()[static_cast<std::size_t>(column)].name;
}

// Texts and ticks.
bool IsAnswer(int column)
{
    return NameOf(column).startsWith("Antwort_");
}

// Pictures and sounds of the right and of the wrong answer.
bool IsAnswerMedia(int column)
{
    constexpr QByteArrayView Before("Picture_");
    const QByteArrayView name = NameOf(column);
    return name.startsWith(Before) && name.endsWith("_Name") &&
           QByteArrayView("2378").contains(name[Before.size()]);
}

std::string Value(std::size_t i)
{
    return '?' + std::to_string(CardAdder::FirstValue + static_cast<int>(i));
}

std::string InsertSql(CardStore &store, const std::vector<int> &columns)
{
    std::string names =
        QuotedColumn(ColFrageNr) + ',' + QuotedColumn(ColFachLfdNr) + ',' + QuotedColumn(ColFachNr);
    std::string values = "?1,?2,?3";
    for (std::size_t i = 0; i < columns.size(); ++i) {
        names += ',' + QuotedColumn(columns[i]);
        values += ',' + Value(i);
    }
    // A tick that nobody sets is false, everything else null.
    for (int column = 0; column < CardColumnCount; ++column) {
        const bool given = std::find(columns.begin(), columns.end(), column) != columns.end();
        const auto name = QString::fromLatin1(NameOf(column));
        if (given || KindOf(column) != CardKind::Flag || !store.Karten().HasField(name))
            continue;
        names += ',' + QuotedColumn(column);
        values += ",0";
    }
    return R"(INSERT INTO "Lernkarten"()" + names + ") VALUES(" + values + ")";
}

std::string RenewSql(const std::vector<int> &columns)
{
    std::string sql;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const bool isAnswer = IsAnswer(columns[i]);
        if (!isAnswer && !IsAnswerMedia(columns[i]))
            continue;
        const std::string name = QuotedColumn(columns[i]);
        sql.append(sql.empty() ? "" : ",").append(name).append("=");
        if (isAnswer)
            sql.append(Value(i));
        else
            sql.append("coalesce(nullif(").append(Value(i)).append(",''),").append(name).append(")");
    }
    // All values are bound, whether used or not: the last one is named, so that there are as many.
    const std::string last = Value(columns.size() - 1);
    return R"(UPDATE "Lernkarten" SET )" + sql + " WHERE _rowid_=?1 AND " + last + " IS " + last;
}

bool IsEmpty(const Faecher &faecher)
{
    return std::all_of(faecher.begin(), faecher.end(), [](const Fach &fach) { return fach.Anzahl == 0; });
}

} // namespace

CardAdder::CardAdder(CardStore &store, SQLite::Database &database, AddedCards &added,
                     const std::vector<int> &columns, Vorhandene vorhandene)
    : store_(store),
      database_(database),
      added_(added),
      insert_(database, InsertSql(store, columns)),
      wasEmpty_(IsEmpty(store.FachInfo))
{
    if (vorhandene != Vorhandene::Uebernehmen)
        known_.emplace(database);
    if (vorhandene == Vorhandene::Erneuern)
        renew_.emplace(database, RenewSql(columns));
}

bool CardAdder::Store(const std::function<Karteninhalt()> &content, const CardPlace &place,
                      const std::function<void(SQLite::Statement &)> &bind)
{
    if (!known_)
        return Bound(insert_, bind, [&] { Add(place); });
    const Kartenkennung mark(content());
    const Kartenabgleich::Fund found = known_->Suchen(mark);
    if (found.befund == Kartenabgleich::Befund::Bekannt) {
        ++added_.leftOut;
        return true;
    }
    if (renew_ && found.befund == Kartenabgleich::Befund::AndereAntwort)
        return Bound(*renew_, bind, [&] {
            renew_->bind(1, found.zeile);
            renew_->exec();
            renew_->reset();
            known_->Aufnehmen(mark, found.zeile);
            ++added_.renewed;
        });
    return Bound(insert_, bind, [&] {
        Add(place);
        known_->Aufnehmen(mark, database_.getLastInsertRowid());
    });
}

void CardAdder::Note(const StoreError &error)
{
    if (number_ >= 0 && (added_.faulty.empty() || added_.faulty.back() != number_))
        added_.faulty.push_back(number_);
    const auto same = [&](const StoreError &known) { return known.Text() == error.Text(); };
    if (std::none_of(added_.errors.begin(), added_.errors.end(), same))
        added_.errors.push_back(error);
}

bool CardAdder::Bound(SQLite::Statement &statement, const std::function<void(SQLite::Statement &)> &bind,
                      const std::function<void()> &work)
{
    try {
        bind(statement);
        work();
        return true;
    } catch (const SQLite::Exception &error) {
        statement.tryReset();
        return TakeNote(error);
    } catch (const StoreError &error) {
        Note(error);
        return false;
    }
}

void CardAdder::Add(const CardPlace &place)
{
    if (wasEmpty_ && place.frageNr && place.lfdNr && AddAsItWas(place))
        return;
    const int fach = place.fach;
    if (store_.FachInfo.Verbraucht(fach))
        store_.FachInfo.Aufgerueckt(fach, CloseUpCompartment(database_, fach));
    Faecher then = store_.FachInfo;
    const qint16 number = Plus16(store_.HighestCardNumber, 1);
    Insert(number, then.Anhaengen(fach), fach);
    store_.FachInfo = then;
}

// False where another card has the card's number or its place.
bool CardAdder::AddAsItWas(const CardPlace &place)
{
    const qint16 number = Plus16(0, *place.frageNr);
    const qint16 lfdNr = Plus16(0, *place.lfdNr);
    Faecher then = store_.FachInfo;
    then.Einreihen(place.fach, lfdNr);
    try {
        Insert(number, lfdNr, place.fach);
    } catch (const SQLite::Exception &error) {
        insert_.tryReset();
        if ((error.getErrorCode() & 0xff) == SQLITE_CONSTRAINT)
            return false;
        throw;
    }
    store_.FachInfo = then;
    return true;
}

void CardAdder::Insert(qint16 number, qint16 lfdNr, int fach)
{
    insert_.bind(1, number);
    insert_.bind(2, lfdNr);
    insert_.bind(3, fach);
    insert_.exec();
    insert_.reset();
    store_.HighestCardNumber = std::max(store_.HighestCardNumber, number);
    ++added_.count;
}

// An engine error while a card was bound or stored: true where the next card can still be tried.
bool CardAdder::TakeNote(const SQLite::Exception &error)
{
    if (sqlite3_get_autocommit(database_.getHandle()) != 0)
        throw error;
    try {
        ThrowStoreError(error, store_.CardPath(store_.CurrentFileName));
    } catch (const StoreError &known) {
        Note(known);
    }
    const int code = error.getErrorCode() & 0xff;
    return code == SQLITE_TOOBIG || code == SQLITE_CONSTRAINT;
}

} // namespace paukfix
