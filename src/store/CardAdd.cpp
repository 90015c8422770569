// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardAdd.h"

#include "CardBulk.h"
#include "CardFile.h"
#include "CardSource.h"
#include "CardValue.h"

#include <SQLiteCpp/Statement.h>
#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <string>

namespace paukfix {

namespace {

// One INSERT that is run for every card. Values are bound before Add() and must last until then.
class Adder
{
public:
    // Value i of a card goes into `columns[i]`.
    Adder(CardStore &store, SQLite::Database &database, AddedCards &added, const std::vector<int> &columns)
        : store_(store), database_(database), added_(added), insert_(database, Sql(store, columns))
    {
    }

    SQLite::Statement &Values() { return insert_; }

    static int Parameter(std::size_t value) { return static_cast<int>(value) + FirstValue; }

    // False when no further card can be added.
    bool Add()
    {
        if (store_.FachInfo.Verbraucht(FachNeu))
            store_.FachInfo.Aufgerueckt(FachNeu, CloseUpCompartment(database_, FachNeu));
        try {
            Faecher then = store_.FachInfo;
            const qint16 number = Plus16(store_.HighestCardNumber, 1);
            insert_.bind(1, number);
            insert_.bind(2, then.Anhaengen(FachNeu));
            insert_.exec();
            insert_.reset();
            store_.HighestCardNumber = number;
            store_.FachInfo = then;
            ++added_.count;
            return true;
        } catch (const SQLite::Exception &error) {
            insert_.tryReset();
            return TakeNote(error);
        } catch (const StoreError &error) {
            Note(error);
            return false;
        }
    }

    void Note(const StoreError &error)
    {
        const auto same = [&](const StoreError &known) { return known.Text() == error.Text(); };
        if (std::none_of(added_.errors.begin(), added_.errors.end(), same))
            added_.errors.push_back(error);
    }

    void NoteEngine(const SQLite::Exception &error, const QString &path)
    {
        try {
            ThrowStoreError(error, path);
        } catch (const StoreError &known) {
            Note(known);
        }
    }

    // An engine error while a card was bound or stored: true where the next card can still be tried.
    bool TakeNote(const SQLite::Exception &error)
    {
        if (sqlite3_get_autocommit(database_.getHandle()) != 0)
            throw error;
        NoteEngine(error, store_.CardPath(store_.CurrentFileName));
        const int code = error.getErrorCode() & 0xff;
        return code == SQLITE_TOOBIG || code == SQLITE_CONSTRAINT;
    }

private:
    static constexpr int FirstValue = 3; // behind card number and running number

    static std::string Sql(CardStore &store, const std::vector<int> &columns)
    {
        std::string names =
            QuotedColumn(ColFrageNr) + ',' + QuotedColumn(ColFachLfdNr) + ',' + QuotedColumn(ColFachNr);
        std::string values = "?1,?2,0";
        for (std::size_t i = 0; i < columns.size(); ++i) {
            names += ',' + QuotedColumn(columns[i]);
            values += ",?" + std::to_string(Parameter(i));
        }
        // A tick that nobody sets is false, everything else null.
        for (int column = 0; column < CardColumnCount; ++column) {
            const bool given = std::find(columns.begin(), columns.end(), column) != columns.end();
            const auto name = QString::fromLatin1(CardColumns()[static_cast<std::size_t>(column)].name);
            if (given || KindOf(column) != CardKind::Flag || !store.Karten().HasField(name))
                continue;
            names += ',' + QuotedColumn(column);
            values += ",0";
        }
        return R"(INSERT INTO "Lernkarten"()" + names + ") VALUES(" + values + ")";
    }

    CardStore &store_;
    SQLite::Database &database_;
    AddedCards &added_;
    SQLite::Statement insert_;
};

// Binds `text`, which must last until the card is added, or nothing where a card cannot hold it.
void BindText(Adder &adder, std::size_t value, int column, const std::string &text)
{
    // No UTF-8 text has more characters than bytes.
    if (IsShortText(column) && text.size() > MaxTextLength) {
        try {
            CheckWritable(QString::fromStdString(text), column);
        } catch (const StoreError &error) {
            adder.Note(error);
            adder.Values().bind(Adder::Parameter(value));
            return;
        }
    }
    adder.Values().bindNoCopy(Adder::Parameter(value), text);
}

// Binds a number or a tick, or nothing where a card cannot hold it.
void BindKnown(Adder &adder, std::size_t value, int column, const QVariant &from)
{
    try {
        const QVariant known = ForBuffer(from, column);
        CheckWritable(known, column);
        Bind(adder.Values(), Adder::Parameter(value), known);
    } catch (const StoreError &error) {
        adder.Note(error);
        adder.Values().bind(Adder::Parameter(value));
    }
}

// Binds one value of a copied card; it must last until that is added.
void BindCopied(Adder &adder, std::size_t value, int column, const CopiedValue &from)
{
    if (from.kind == CopiedValue::Kind::Text)
        BindText(adder, value, column, from.text);
    else
        BindKnown(adder, value, column,
                  from.kind == CopiedValue::Kind::Number ? QVariant(from.number) : QVariant());
}

// Gives the next card the fields of the one on which the source stands. A value that the source has in
// another type than a card can is left out.
void BindCard(Adder &adder, CardSource &source, std::vector<CopiedValue> &values)
{
    const std::vector<int> &columns = CopiedColumns();
    for (std::size_t i = 0; i < columns.size(); ++i) {
        try {
            source.Read(columns[i], values[i]);
            BindCopied(adder, i, columns[i], values[i]);
        } catch (const StoreError &error) {
            adder.Note(error);
            adder.Values().bind(Adder::Parameter(i));
        }
    }
}

// False where the source has no further card, or cannot be read on.
bool StepOn(Adder &adder, CardSource &source)
{
    try {
        return source.Next();
    } catch (const StoreError &error) {
        adder.Note(error);
        return false;
    }
}

// Copies the card on which the source stands. False when no further card can be added.
bool CopyCard(Adder &adder, CardSource &source, std::vector<CopiedValue> &values)
{
    try {
        BindCard(adder, source, values);
    } catch (const SQLite::Exception &error) {
        return adder.TakeNote(error);
    }
    return adder.Add();
}

// Adds a card with a typed answer. False when no further card can be added.
bool AddImportedCard(Adder &adder, const std::vector<int> &columns, const SimpleCard &card)
{
    const std::array texts{card.question.toStdString(), card.answer.toStdString(), card.topic.toStdString()};
    constexpr std::array<std::size_t, 5> TextOf{0, 0, 1, 1, 2}; // of the columns behind the first one
    try {
        adder.Values().bind(Adder::Parameter(0), 1);
        for (std::size_t i = 0; i < TextOf.size(); ++i) {
            const std::string &text = texts[TextOf[i]];
            if (text.empty())
                adder.Values().bind(Adder::Parameter(i + 1));
            else
                BindText(adder, i + 1, columns[i + 1], text);
        }
    } catch (const SQLite::Exception &error) {
        return adder.TakeNote(error);
    }
    return adder.Add();
}

} // namespace

AddedCards AddSimpleCards(CardStore &store, const std::function<bool(SimpleCard &card)> &next)
{
    const std::vector<int> columns{
        CardColumnIndex(u"Antworttyp"),         CardColumnIndex(u"Frage"),
        CardColumnIndex(u"Frage_Klartext"),     CardColumnIndex(u"Antwort_1"),
        CardColumnIndex(u"Antwort_1_Klartext"), CardColumnIndex(u"Picture_9_Name")};
    AddedCards added;
    CardRecordset &cards = store.Karten();
    const bool wasEmpty = store.HighestCardNumber == 0 && cards.AtBOF() && cards.AtEOF();
    cards.Past([&](SQLite::Database &database) {
        Adder adder(store, database, added, columns);
        SimpleCard card;
        while (next(card) && AddImportedCard(adder, columns, card)) {
        }
    });
    if (wasEmpty && added.count > 0) {
        cards.MovePrevious();
        cards.MoveNext();
    }
    return added;
}

AddedCards CopyAllCards(CardStore &store, CardSource &source, const Progress &progress)
{
    AddedCards added;
    store.Karten().Past([&](SQLite::Database &database) {
        Adder adder(store, database, added, CopiedColumns());
        std::vector<CopiedValue> values(CopiedColumns().size());
        int done = 0;
        bool more = true;
        while (more && StepOn(adder, source)) {
            const int before = added.count;
            more = CopyCard(adder, source, values);
            if (added.count > before)
                source.Taken();
            Melden(progress, ++done, source.Count());
        }
        if (const auto damage = source.DamageFound(added.count))
            adder.Note(*damage);
        else if (added.errors.empty())
            added.remark = source.Remark();
    });
    return added;
}

} // namespace paukfix
