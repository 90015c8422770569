// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardRecordset.h"

#include "CardCursor.h"
#include "CardValue.h"
#include "Zahl16.h"

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

[[noreturn]] void ThrowNotEditing()
{
    throw StoreError(Fehler::KeinEdit, u"Die Karte wird gerade nicht geändert."_s);
}

} // namespace

// --- Field

bool Field::IsNull() const
{
    return !Value().isValid();
}

double Field::Number() const
{
    const QVariant value = Value();
    if (!value.isValid())
        ThrowNullValue(column_);
    if (KindOf(column_) != CardKind::Number)
        ThrowTypeMismatch(column_);
    return value.toDouble();
}

qint16 Field::Integer() const
{
    const double number = Number();
    CheckWritable(number, column_); // its message names the field
    return Runden16(number);
}

QString Field::Text() const
{
    if (KindOf(column_) == CardKind::Flag)
        ThrowTypeMismatch(column_);
    return Value().toString();
}

QByteArrayView Field::Utf8() const
{
    if (KindOf(column_) != CardKind::Text)
        ThrowTypeMismatch(column_);
    CardCursor &cursor = *recordset_->cursor_;
    return cursor.Guarded([&] { return cursor.scan.Utf8(column_, cursor.rowId, cursor.Reading(column_)); });
}

bool Field::Flag() const
{
    if (KindOf(column_) != CardKind::Flag)
        ThrowTypeMismatch(column_);
    return Value().toBool();
}

QVariant Field::Value() const
{
    CardCursor &cursor = *recordset_->cursor_;
    if (cursor.buffer && (cursor.buffer->adding || cursor.buffer->written[Bit(column_)]))
        return cursor.buffer->values[Bit(column_)];
    return cursor.Guarded([&] { return cursor.Stored(column_); });
}

void Field::Set(const QVariant &value)
{
    CardCursor &cursor = *recordset_->cursor_;
    if (!cursor.buffer)
        ThrowNotEditing();
    cursor.buffer->values[Bit(column_)] = ForBuffer(value, column_);
    cursor.buffer->written.set(Bit(column_));
}

// --- CardRecordset

CardRecordset::CardRecordset(CardFile &file)
{
    try {
        cursor_ = std::make_unique<CardCursor>(file);
    } catch (const SQLite::Exception &error) {
        ThrowStoreError(error, file.Path());
    }
    MoveFirst();
}

CardRecordset::~CardRecordset() = default;

void CardRecordset::SetIndex(QStringView name)
{
    CardIndex index = CardIndex::FrageNr;
    if (name.compare("BoxKey"_L1, Qt::CaseInsensitive) == 0)
        index = CardIndex::BoxKey;
    else if (name.compare("FrageNr"_L1, Qt::CaseInsensitive) != 0)
        throw StoreError(Fehler::IndexFehlt, u"Einen Index „%1“ gibt es nicht."_s.arg(name));
    if (index == cursor_->index)
        return;
    cursor_->Guarded([&] {
        cursor_->LoadAllKeys();
        cursor_->scan.Stop();
        cursor_->index = index;
    });
}

QString CardRecordset::Index() const
{
    return cursor_->index == CardIndex::BoxKey ? u"BoxKey"_s : u"FrageNr"_s;
}

void CardRecordset::MoveFirst()
{
    cursor_->Guarded([&] { cursor_->MoveToEnd(CardScan::Direction::Forward); });
}

void CardRecordset::MoveLast()
{
    cursor_->Guarded([&] { cursor_->MoveToEnd(CardScan::Direction::Backward); });
}

void CardRecordset::MoveNext()
{
    cursor_->Guarded([&] { cursor_->Move(CardScan::Direction::Forward); });
}

void CardRecordset::MovePrevious()
{
    cursor_->Guarded([&] { cursor_->Move(CardScan::Direction::Backward); });
}

bool CardRecordset::AtBOF() const
{
    return cursor_->place == CardCursor::Place::Empty || cursor_->place == CardCursor::Place::BeforeFirst;
}

bool CardRecordset::AtEOF() const
{
    return cursor_->place == CardCursor::Place::Empty || cursor_->place == CardCursor::Place::AfterLast;
}

void CardRecordset::Seek(Comparison comparison, double key, std::optional<double> second)
{
    cursor_->Guarded([&] {
        // A failed seek leaves the cursor where it was, and with it what was read there.
        cursor_->buffer.reset();
        const ColumnSet wanted = cursor_->readHere.any() ? cursor_->readHere : cursor_->readBefore;
        const bool box = cursor_->index == CardIndex::BoxKey;
        CardKeys sought;
        (box ? sought.fachNr : sought.frageNr) = key;
        sought.fachLfdNr = second.value_or(0);
        const auto direction =
            comparison == Comparison::AtMost ? CardScan::Direction::Backward : CardScan::Direction::Forward;
        const auto start = comparison == Comparison::Equal ? CardScan::Start::Exactly : CardScan::Start::At;
        cursor_->noMatch = true;
        if (!cursor_->scan.Begin(cursor_->index, direction, start, sought, box && second ? 2 : 1, wanted))
            return;
        cursor_->BeginMove();
        cursor_->Arrive();
        cursor_->noMatch = false;
    });
}

bool CardRecordset::NoMatch() const
{
    return cursor_->noMatch;
}

void CardRecordset::Edit()
{
    if (cursor_->place != CardCursor::Place::OnCard)
        ThrowNoCurrent();
    cursor_->buffer.emplace();
}

void CardRecordset::AddNew()
{
    EditBuffer &buffer = cursor_->buffer.emplace();
    buffer.adding = true;
    for (int i = 0; i < CardColumnCount; ++i)
        buffer.values[Bit(i)] = ForBuffer({}, i);
}

void CardRecordset::Update()
{
    if (!cursor_->buffer)
        ThrowNotEditing();
    cursor_->Guarded([&] {
        if (cursor_->buffer->adding)
            cursor_->InsertBuffer();
        else
            cursor_->UpdateFromBuffer();
    });
    cursor_->buffer.reset();
}

void CardRecordset::CancelUpdate()
{
    cursor_->buffer.reset();
}

void CardRecordset::Delete()
{
    if (cursor_->place != CardCursor::Place::OnCard)
        ThrowNoCurrent();
    cursor_->Guarded([&] {
        cursor_->buffer.reset();
        cursor_->LoadAllKeys();
        cursor_->Write("DELETE FROM \"Lernkarten\" WHERE _rowid_=?",
                       {static_cast<qlonglong>(cursor_->rowId)});
        cursor_->place = CardCursor::Place::OnDeleted;
    });
}

Field CardRecordset::operator[](QStringView name)
{
    if (!HasField(name))
        throw StoreError(Fehler::FeldFehlt, u"Das Feld „%1“ fehlt in dieser Kartei."_s.arg(name));
    return {this, CardColumnIndex(name)};
}

bool CardRecordset::HasField(QStringView name) const
{
    const int column = CardColumnIndex(name);
    return column >= 0 && cursor_->available[Bit(column)];
}

int CardRecordset::RecordCount()
{
    return cursor_->Guarded(
        [&] { return cursor_->database.execAndGet("SELECT count(*) FROM \"Lernkarten\"").getInt(); });
}

CardRecord CardRecordset::Read()
{
    CardRecord card;
    for (int i = 0; i < CardColumnCount; ++i) {
        if (!cursor_->available[Bit(i)])
            continue;
        const QVariant value = Field(this, i).Value();
        if (!value.isValid())
            continue;
        const auto &member = CardColumns()[Bit(i)].member;
        if (const auto *number = std::get_if<double CardRecord::*>(&member))
            card.*(*number) = value.toDouble();
        else if (const auto *text = std::get_if<QString CardRecord::*>(&member))
            card.*(*text) = value.toString();
        else
            card.*std::get<bool CardRecord::*>(member) = value.toBool();
    }
    return card;
}

void CardRecordset::Write(const CardRecord &card)
{
    for (int i = 0; i < CardColumnCount; ++i)
        if (cursor_->available[Bit(i)])
            std::visit([&](auto member) { Field(this, i).Set(card.*member); }, CardColumns()[Bit(i)].member);
}

void CardRecordset::Past(const std::function<void(SQLite::Database &)> &work)
{
    cursor_->Guarded([&] {
        cursor_->scan.Stop();
        const bool wasEmpty = cursor_->place == CardCursor::Place::Empty;
        work(cursor_->database);
        if (!cursor_->inTransaction)
            cursor_->file.NoteState();
        cursor_->FindCardAgain();
        cursor_->beforeFirstCardAdded = wasEmpty && cursor_->place == CardCursor::Place::BeforeFirst;
    });
}

void CardRecordset::Beside(const std::function<void(SQLite::Database &)> &read)
{
    cursor_->Guarded([&] { read(cursor_->database); });
}

} // namespace paukfix
