// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardRecordset.h"

#include "CardFile.h"
#include "CardScan.h"
#include "CardValue.h"
#include "FachInfo.h"

#include <sqlite3.h>

#include <utility>
#include <vector>

namespace {

[[noreturn]] void ThrowNoCurrent()
{
    throw StoreError(Fehler::KeinDatensatz, QStringLiteral("Kein aktueller Datensatz."));
}

[[noreturn]] void ThrowNotEditing()
{
    throw StoreError(Fehler::KeinEdit, QStringLiteral("Die Karte wird gerade nicht geändert."));
}

std::size_t Bit(int column)
{
    return static_cast<std::size_t>(column);
}

// The edit buffer, while an Edit or AddNew is under way.
struct Buffer
{
    bool adding = false;
    std::array<QVariant, CardColumnCount> values;
    ColumnSet written;
};

} // namespace

struct CardRecordset::Impl
{
    enum class Place
    {
        Empty,       // no cards: both ends at once
        BeforeFirst, //
        OnCard,
        OnDeleted, // on the place of a deleted card
        AfterLast,
    };

    explicit Impl(CardFile &cardFile) : file(cardFile), database(cardFile.Database()), scan(database)
    {
        // A column that the table computes is none of a card's.
        SQLite::Statement columns(database,
                                  "SELECT name FROM pragma_table_xinfo('Lernkarten') WHERE hidden = 0");
        while (columns.executeStep()) {
            const int column = CardColumnIndex(QString::fromUtf8(columns.getColumn(0).getText()));
            if (column >= 0)
                available.set(Bit(column));
        }
    }

    CardFile &file;
    SQLite::Database &database;
    CardScan scan;
    ColumnSet available;
    CardIndex index = CardIndex::FrageNr;
    Place place = Place::Empty;
    bool beforeFirstCardAdded = false; // in a file that was empty, until the next move
    std::int64_t rowId = 0;
    CardKeys keys;        // of the current or deleted card; only those of `index` count...
    bool allKeys = false; // ...unless this is set
    bool noMatch = false;
    bool inTransaction = false;
    std::optional<Buffer> buffer;
    // What is read on this card, and was on the last card on which anything was read: the next scan and the
    // next fetch deliver just that.
    ColumnSet readHere;
    ColumnSet readBefore;

    // Runs a step; an engine error ends all reading and becomes a StoreError. The engine may have given up a
    // whole transaction: then the cursor finds its card again as it is stored.
    template <class Step>
    auto Guarded(Step step)
    {
        try {
            return step();
        } catch (const SQLite::Exception &error) {
            scan.Stop();
            if (inTransaction && sqlite3_get_autocommit(database.getHandle()) != 0) {
                inTransaction = false;
                buffer.reset();
                FollowCard();
            }
            file.ForgetState();
            ThrowStoreError(error, file.Path());
        }
    }

    void Arrive()
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

    bool HasCards()
    {
        return database.execAndGet("SELECT EXISTS(SELECT 1 FROM \"Lernkarten\")").getInt() != 0;
    }

    // Every move drops the edit buffer and says which columns the next card should bring.
    ColumnSet BeginMove()
    {
        buffer.reset();
        if (readHere.any())
            readBefore = readHere;
        return std::exchange(readHere, {});
    }

    void MoveToEnd(CardScan::Direction from)
    {
        BeginMove();
        if (scan.Begin(index, from, CardScan::Start::End, {}, 2, {}))
            Arrive();
        else
            place = Place::Empty;
    }

    void Move(CardScan::Direction direction)
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

    // Needed before the index changes and before the card goes.
    void LoadAllKeys()
    {
        if (!allKeys && place == Place::OnCard && scan.FetchKeys(rowId, keys))
            allKeys = true;
    }

    // Notes that the column is read; returns what a fetch of the card should bring.
    ColumnSet Reading(int column)
    {
        if (place != Place::OnCard)
            ThrowNoCurrent();
        // The first miss fetches what the last card was asked for, the second everything.
        const bool missed = !scan.Delivers(column) && (readHere & ~readBefore).any();
        readHere.set(Bit(column));
        return missed ? available : readHere | readBefore;
    }

    QVariant Stored(int column)
    {
        const bool isKey = column == ColFrageNr ? index == CardIndex::FrageNr
                                                : column <= ColFachLfdNr && index == CardIndex::BoxKey;
        if (place == Place::OnCard && (isKey || (allKeys && column <= ColFachLfdNr)))
            return column == ColFrageNr ? keys.frageNr : column == ColFachNr ? keys.fachNr : keys.fachLfdNr;
        return scan.Value(column, rowId, Reading(column));
    }

    // After a rollback: the card may be another's, at another place, or gone.
    void FindCardAgain()
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

    // The same after a failure of the disk, which may be broken altogether. Keeps the edit buffer.
    void FollowCard() noexcept
    {
        try {
            FindCardAgain();
        } catch (const std::exception &) {
            place = Place::OnDeleted;
        }
    }

    // Runs one writing statement; outside a transaction it is durable when this returns.
    void Write(const std::string &sql, const std::vector<QVariant> &parameters)
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

    std::unordered_map<std::string, SQLite::Statement> writes;

    void InsertBuffer()
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

    void UpdateFromBuffer()
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
};

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
    CardRecordset::Impl &impl = *recordset_->impl_;
    return impl.Guarded([&] { return impl.scan.Utf8(column_, impl.rowId, impl.Reading(column_)); });
}

bool Field::Flag() const
{
    if (KindOf(column_) != CardKind::Flag)
        ThrowTypeMismatch(column_);
    return Value().toBool();
}

QVariant Field::Value() const
{
    CardRecordset::Impl &impl = *recordset_->impl_;
    if (impl.buffer && (impl.buffer->adding || impl.buffer->written[Bit(column_)]))
        return impl.buffer->values[Bit(column_)];
    return impl.Guarded([&] { return impl.Stored(column_); });
}

void Field::Set(const QVariant &value)
{
    CardRecordset::Impl &impl = *recordset_->impl_;
    if (!impl.buffer)
        ThrowNotEditing();
    impl.buffer->values[Bit(column_)] = ForBuffer(value, column_);
    impl.buffer->written.set(Bit(column_));
}

// --- CardRecordset

CardRecordset::CardRecordset(CardFile &file)
{
    try {
        impl_ = std::make_unique<Impl>(file);
    } catch (const SQLite::Exception &error) {
        ThrowStoreError(error, file.Path());
    }
    MoveFirst();
}

CardRecordset::~CardRecordset() = default;

void CardRecordset::SetIndex(QStringView name)
{
    CardIndex index = CardIndex::FrageNr;
    if (name.compare(QLatin1String("BoxKey"), Qt::CaseInsensitive) == 0)
        index = CardIndex::BoxKey;
    else if (name.compare(QLatin1String("FrageNr"), Qt::CaseInsensitive) != 0)
        throw StoreError(Fehler::IndexFehlt, QStringLiteral("Einen Index „%1“ gibt es nicht.").arg(name));
    if (index == impl_->index)
        return;
    impl_->Guarded([&] {
        impl_->LoadAllKeys();
        impl_->scan.Stop();
        impl_->index = index;
    });
}

QString CardRecordset::Index() const
{
    return impl_->index == CardIndex::BoxKey ? QStringLiteral("BoxKey") : QStringLiteral("FrageNr");
}

void CardRecordset::MoveFirst()
{
    impl_->Guarded([&] { impl_->MoveToEnd(CardScan::Direction::Forward); });
}

void CardRecordset::MoveLast()
{
    impl_->Guarded([&] { impl_->MoveToEnd(CardScan::Direction::Backward); });
}

void CardRecordset::MoveNext()
{
    impl_->Guarded([&] { impl_->Move(CardScan::Direction::Forward); });
}

void CardRecordset::MovePrevious()
{
    impl_->Guarded([&] { impl_->Move(CardScan::Direction::Backward); });
}

bool CardRecordset::AtBOF() const
{
    return impl_->place == Impl::Place::Empty || impl_->place == Impl::Place::BeforeFirst;
}

bool CardRecordset::AtEOF() const
{
    return impl_->place == Impl::Place::Empty || impl_->place == Impl::Place::AfterLast;
}

void CardRecordset::Seek(Comparison comparison, double key, std::optional<double> second)
{
    impl_->Guarded([&] {
        // A failed seek leaves the cursor where it was, and with it what was read there.
        impl_->buffer.reset();
        const ColumnSet wanted = impl_->readHere.any() ? impl_->readHere : impl_->readBefore;
        const bool box = impl_->index == CardIndex::BoxKey;
        CardKeys sought;
        (box ? sought.fachNr : sought.frageNr) = key;
        sought.fachLfdNr = second.value_or(0);
        const auto direction =
            comparison == Comparison::AtMost ? CardScan::Direction::Backward : CardScan::Direction::Forward;
        const auto start = comparison == Comparison::Equal ? CardScan::Start::Exactly : CardScan::Start::At;
        impl_->noMatch = true;
        if (!impl_->scan.Begin(impl_->index, direction, start, sought, box && second ? 2 : 1, wanted))
            return;
        impl_->BeginMove();
        impl_->Arrive();
        impl_->noMatch = false;
    });
}

bool CardRecordset::NoMatch() const
{
    return impl_->noMatch;
}

void CardRecordset::Edit()
{
    if (impl_->place != Impl::Place::OnCard)
        ThrowNoCurrent();
    impl_->buffer.emplace();
}

void CardRecordset::AddNew()
{
    Buffer &buffer = impl_->buffer.emplace();
    buffer.adding = true;
    for (int i = 0; i < CardColumnCount; ++i)
        buffer.values[Bit(i)] = ForBuffer({}, i);
}

void CardRecordset::Update()
{
    if (!impl_->buffer)
        ThrowNotEditing();
    impl_->Guarded([&] {
        if (impl_->buffer->adding)
            impl_->InsertBuffer();
        else
            impl_->UpdateFromBuffer();
    });
    impl_->buffer.reset();
}

void CardRecordset::CancelUpdate()
{
    impl_->buffer.reset();
}

void CardRecordset::Delete()
{
    if (impl_->place != Impl::Place::OnCard)
        ThrowNoCurrent();
    impl_->Guarded([&] {
        impl_->buffer.reset();
        impl_->LoadAllKeys();
        impl_->Write("DELETE FROM \"Lernkarten\" WHERE _rowid_=?", {static_cast<qlonglong>(impl_->rowId)});
        impl_->place = Impl::Place::OnDeleted;
    });
}

Field CardRecordset::operator[](QStringView name)
{
    if (!HasField(name))
        throw StoreError(Fehler::FeldFehlt,
                         QStringLiteral("Das Feld „%1“ fehlt in dieser Kartei.").arg(name));
    return {this, CardColumnIndex(name)};
}

bool CardRecordset::HasField(QStringView name) const
{
    const int column = CardColumnIndex(name);
    return column >= 0 && impl_->available[Bit(column)];
}

int CardRecordset::RecordCount()
{
    return impl_->Guarded(
        [&] { return impl_->database.execAndGet("SELECT count(*) FROM \"Lernkarten\"").getInt(); });
}

CardRecord CardRecordset::Read()
{
    CardRecord card;
    for (int i = 0; i < CardColumnCount; ++i) {
        if (!impl_->available[Bit(i)])
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
        if (impl_->available[Bit(i)])
            std::visit([&](auto member) { Field(this, i).Set(card.*member); }, CardColumns()[Bit(i)].member);
}

void CardRecordset::BeginTrans()
{
    impl_->Guarded([&] {
        impl_->scan.Stop();
        // A journal must not come to lie beside another file that stands in this one's place by now.
        impl_->file.CheckUnchanged();
        impl_->database.exec("BEGIN IMMEDIATE");
        impl_->inTransaction = true;
    });
}

void CardRecordset::CommitTrans()
{
    impl_->Guarded([&] {
        impl_->scan.Stop();
        impl_->file.CheckStillInPlace();
        impl_->database.exec("COMMIT");
        impl_->inTransaction = false;
        impl_->file.NoteState();
    });
}

void CardRecordset::Rollback()
{
    impl_->Guarded([&] {
        impl_->scan.Stop();
        impl_->file.ForgetState();
        if (impl_->inTransaction && sqlite3_get_autocommit(impl_->database.getHandle()) == 0)
            impl_->database.exec("ROLLBACK");
        impl_->inTransaction = false;
        impl_->buffer.reset();
        impl_->FindCardAgain();
    });
}

bool CardRecordset::InTransaction() const
{
    return impl_->inTransaction && sqlite3_get_autocommit(impl_->database.getHandle()) == 0;
}

void CardRecordset::Past(const std::function<void(SQLite::Database &)> &work)
{
    impl_->Guarded([&] {
        impl_->scan.Stop();
        const bool wasEmpty = impl_->place == Impl::Place::Empty;
        work(impl_->database);
        if (!impl_->inTransaction)
            impl_->file.NoteState();
        impl_->FindCardAgain();
        impl_->beforeFirstCardAdded = wasEmpty && impl_->place == Impl::Place::BeforeFirst;
    });
}

void CardRecordset::Beside(const std::function<void(SQLite::Database &)> &read)
{
    impl_->Guarded([&] { read(impl_->database); });
}
