// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardRecord.h"
#include "StoreError.h"

#include <QByteArrayView>
#include <QVariant>

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

namespace SQLite {
class Database;
}

namespace paukfix {

class CardFile;
class CardRecordset;
struct CardCursor;

// A handle bound to one column: reads and writes the recordset's current card, or its edit buffer while an
// Edit or AddNew is under way. Throws StoreError 3021 where there is no current card, 3020 for a write
// outside Edit and AddNew, 13 where the value is of another type.
class Field
{
public:
    Field() = default;

    bool IsNull() const;
    double Number() const;           // 94 for null
    qint16 Integer() const;          // rounded half to even; 94 for null, 6 outside 16 bits
    QString Text() const;            // "" for null; a number in decimal
    QByteArrayView Utf8() const;     // the stored text without a copy, until the recordset is used again
    bool Flag() const;               // false for null
    QVariant Value() const;          // invalid for null
    void Set(const QVariant &value); // double, int, QString, QByteArray (UTF-8), bool; invalid for null

private:
    friend class CardRecordset;

    Field(CardRecordset *recordset, int column) : recordset_(recordset), column_(column) {}

    CardRecordset *recordset_ = nullptr;
    int column_ = 0;
};

// The program's one current-record cursor over the cards of an open card file, in the order of its current
// index.
//
// The cursor stands on a card, on the place of a deleted card, before the first or behind the last one. It
// learns which fields a walk reads and has the engine deliver just those, so that a walk costs little more
// than the engine's own scan. All methods throw StoreError.
class CardRecordset
{
public:
    enum class Comparison
    {
        Equal,
        AtLeast,
        AtMost
    }; // "=", ">=", "<="

    // Stands on the first card of "FrageNr" order. `file` must outlive the recordset.
    explicit CardRecordset(CardFile &file);
    ~CardRecordset();

    // "BoxKey" or "FrageNr", named without regard to case; the current card stays. 3015 for any other name.
    void SetIndex(QStringView name);
    QString Index() const;

    // The first and the last card; on an empty file both ends hold at once and nothing is thrown.
    void MoveFirst();
    void MoveLast();
    // One card on or back; past the last or first card stands the end. 3021 when already there.
    void MoveNext();
    void MovePrevious();
    bool AtBOF() const;
    bool AtEOF() const;

    // Looks for the first (Equal, AtLeast) or last (AtMost) card whose key compares so with the given one.
    // Under "BoxKey" the second part may be left out. Nothing found: NoMatch() is true and the cursor stays.
    void Seek(Comparison comparison, double key, std::optional<double> second = std::nullopt);
    bool NoMatch() const;

    // Edit copies the current card into the edit buffer, AddNew starts an empty one (ticks false, the rest
    // null). Update writes the buffer durably and keeps it when it throws; a move, a seek or Delete drops it.
    // Update: 3022 key taken, 94 null in a key, 6 a number outside 16 bits, 3163 text over 250 characters.
    void Edit();
    void AddNew();
    void Update();
    void CancelUpdate();
    // The cursor stays on the deleted card's place: no current card until the next move.
    void Delete();

    // A bound handle; names without regard to case. 3265 when the table lacks the field.
    Field operator[](QStringView name);
    bool HasField(QStringView name) const;

    int RecordCount();
    // Whole cards at once; columns that the file lacks keep their defaults, or are not written.
    CardRecord Read();
    void Write(const CardRecord &card); // into the edit buffer

    // Work on many cards at once, past the cursor: reading ends before it, engine errors become StoreErrors,
    // and afterwards the cursor finds its card again where it now stands. In a file that was empty it then
    // stands before the first card, as after that card's Update.
    void Past(const std::function<void(SQLite::Database &)> &work);
    // Reading beside the cursor, which does not notice, nor does its edit buffer.
    void Beside(const std::function<void(SQLite::Database &)> &read);

private:
    friend class CardTransaction;
    friend class Field;

    std::unique_ptr<CardCursor> cursor_;
};

} // namespace paukfix
