// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardCursor.h"

#include "CardValue.h"

#include <utility>

namespace paukfix {

using namespace Qt::StringLiterals;

void ThrowNoCurrent()
{
    throw StoreError(Fehler::KeinDatensatz, u"Kein aktueller Datensatz."_s);
}

CardCursor::CardCursor(CardFile &cardFile) : file(cardFile), database(cardFile.Database()), scan(database)
{
    // A column that the table computes is none of a card's.
    SQLite::Statement columns(database, "SELECT name FROM pragma_table_xinfo('Lernkarten') WHERE hidden = 0");
    while (columns.executeStep()) {
        const int column = CardColumnIndex(QString::fromUtf8(columns.getColumn(0).getText()));
        if (column >= 0)
            available.set(Bit(column));
    }
}

void CardCursor::Arrive()
{
    try {
        CardKeys arrived = keys;
        scan.ReadKeys(arrived);
        keys = arrived;
    } catch (const StoreError &) { // a key that is none: the cursor stays
        scan.Stop();
        throw;
    }
    rowId = scan.RowId();
    allKeys = false;
    place = Place::OnCard;
    beforeFirstCardAdded = false;
}

bool CardCursor::HasCards()
{
    return database.execAndGet("SELECT EXISTS(SELECT 1 FROM \"Lernkarten\")").getInt() != 0;
}

ColumnSet CardCursor::BeginMove()
{
    buffer.reset();
    if (readHere.any())
        readBefore = readHere;
    return std::exchange(readHere, {});
}

void CardCursor::MoveToEnd(CardScan::Direction from)
{
    BeginMove();
    if (scan.Begin(index, from, CardScan::Start::End, {}, 2, {}))
        Arrive();
    else
        place = Place::Empty;
}

void CardCursor::Move(CardScan::Direction direction)
{
    const bool forward = direction == CardScan::Direction::Forward;
    const Place endAhead = forward ? Place::AfterLast : Place::BeforeFirst;
    const Place endBehind = forward ? Place::BeforeFirst : Place::AfterLast;
    const ColumnSet wanted = BeginMove();
    // In a file that is empty, or was until its first card came, a move back stays before the first card.
    if (!forward && (place == Place::Empty || beforeFirstCardAdded))
        return;
    if (place == Place::Empty || place == endAhead)
        ThrowNoCurrent();

    bool found = false;
    if (place == Place::OnCard && scan.CanGoOn(direction, wanted))
        found = scan.Next();
    else if (place == endBehind)
        found = scan.Begin(index, direction, CardScan::Start::End, {}, 2, wanted);
    else
        found = scan.Begin(index, direction, CardScan::Start::Behind, keys, 2, wanted);
    if (found)
        Arrive();
    else
        place = place == Place::OnDeleted && !HasCards() ? Place::Empty : endAhead;
}

void CardCursor::LoadAllKeys()
{
    if (!allKeys && place == Place::OnCard && scan.FetchKeys(rowId, keys))
        allKeys = true;
}

ColumnSet CardCursor::Reading(int column)
{
    if (place != Place::OnCard)
        ThrowNoCurrent();
    // The first miss fetches what the last card was asked for, the second everything.
    const bool missed = !scan.Delivers(column) && (readHere & ~readBefore).any();
    readHere.set(Bit(column));
    return missed ? available : readHere | readBefore;
}

QVariant CardCursor::Stored(int column)
{
    const bool isKey = column == ColFrageNr ? index == CardIndex::FrageNr
                                            : column <= ColFachLfdNr && index == CardIndex::BoxKey;
    if (place == Place::OnCard && (isKey || (allKeys && column <= ColFachLfdNr)))
        return column == ColFrageNr ? keys.frageNr : column == ColFachNr ? keys.fachNr : keys.fachLfdNr;
    return scan.Value(column, rowId, Reading(column));
}

void CardCursor::FindCardAgain()
{
    if (place == Place::OnCard || place == Place::OnDeleted) {
        const bool found = scan.FetchKeys(rowId, keys);
        allKeys = allKeys || found;
        place = found ? Place::OnCard : Place::OnDeleted;
    } else if (!HasCards()) {
        place = Place::Empty;
    } else if (place == Place::Empty) {
        place = Place::BeforeFirst;
    }
}

void CardCursor::FollowCard() noexcept
{
    try {
        FindCardAgain();
    } catch (const std::exception &) {
        place = Place::OnDeleted;
    }
}

void CardCursor::Write(const std::string &sql, const std::vector<QVariant> &parameters)
{
    scan.Stop();
    if (!inTransaction)
        file.CheckUnchanged();
    auto found = writes.find(sql);
    if (found == writes.end()) {
        if (writes.size() >= 16)
            writes.clear();
        found = writes.emplace(sql, SQLite::Statement(database, sql)).first;
    }
    SQLite::Statement &statement = found->second;
    statement.tryReset();
    for (std::size_t i = 0; i < parameters.size(); ++i)
        Bind(statement, static_cast<int>(i) + 1, parameters[i]);
    try {
        statement.exec();
    } catch (const SQLite::Exception &error) {
        // The disk may have failed when all was written: what is stored then decides where the card is.
        statement.tryReset();
        if (!inTransaction && error.getErrorCode() != SQLITE_CONSTRAINT && place != Place::OnDeleted)
            FollowCard();
        throw;
    }
    statement.tryReset();
    if (!inTransaction)
        file.NoteState();
}

void CardCursor::InsertBuffer()
{
    std::string names;
    std::string marks;
    std::vector<QVariant> values;
    for (int i = 0; i < CardColumnCount; ++i) {
        if (!available[Bit(i)])
            continue;
        CheckWritable(buffer->values[Bit(i)], i);
        if (!buffer->values[Bit(i)].isValid())
            continue;
        names += (names.empty() ? "" : ",") + QuotedColumn(i);
        marks += marks.empty() ? "?" : ",?";
        values.push_back(buffer->values[Bit(i)]);
    }
    // A table of somebody else may say that a new card replaces another one.
    Write("INSERT OR ABORT INTO \"Lernkarten\"(" + names + ") VALUES(" + marks + ")", values);
    if (place == Place::Empty) {
        place = Place::BeforeFirst;
        beforeFirstCardAdded = true;
    }
}

void CardCursor::UpdateFromBuffer()
{
    std::string assignments;
    std::vector<QVariant> values;
    for (int i = 0; i < CardColumnCount; ++i) {
        if (!buffer->written[Bit(i)])
            continue;
        CheckWritable(buffer->values[Bit(i)], i);
        assignments += (assignments.empty() ? "" : ",") + QuotedColumn(i) + "=?";
        values.push_back(buffer->values[Bit(i)]);
    }
    if (values.empty())
        return;
    values.emplace_back(static_cast<qlonglong>(rowId));
    Write("UPDATE OR ABORT \"Lernkarten\" SET " + assignments + " WHERE _rowid_=?", values);
    for (const auto &[column, key] : {std::pair{ColFrageNr, &CardKeys::frageNr},
                                      {ColFachNr, &CardKeys::fachNr},
                                      {ColFachLfdNr, &CardKeys::fachLfdNr}})
        if (buffer->written[Bit(column)])
            keys.*key = buffer->values[Bit(column)].toDouble();
}

} // namespace paukfix
