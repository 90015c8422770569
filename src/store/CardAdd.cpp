// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardAdd.h"

#include "CardAdder.h"
#include "CardRecord.h"
#include "CardSource.h"
#include "CardValue.h"
#include "ContentPlaces.h"

#include <SQLiteCpp/Statement.h>

#include <algorithm>
#include <array>
#include <string>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

// Binds `text`, which must last until the card is stored, or nothing where a card cannot hold it.
void BindText(CardAdder &adder, SQLite::Statement &statement, int parameter, int column,
              const std::string &text)
{
    // No UTF-8 text has more characters than bytes.
    if (text.size() > MaxTextLength && IsShortText(column)) {
        try {
            CheckWritable(QString::fromStdString(text), column);
        } catch (const StoreError &error) {
            adder.Note(error);
            statement.bind(parameter);
            return;
        }
    }
    statement.bindNoCopy(parameter, text);
}

// Binds a number or a tick, or nothing where a card cannot hold it.
void BindKnown(CardAdder &adder, SQLite::Statement &statement, int parameter, int column,
               const QVariant &from)
{
    try {
        const QVariant known = ForBuffer(from, column);
        CheckWritable(known, column);
        Bind(statement, parameter, known);
    } catch (const StoreError &error) {
        adder.Note(error);
        statement.bind(parameter);
    }
}

// Gives a statement the values of a copied card; they must last until that is stored.
void BindCopied(CardAdder &adder, SQLite::Statement &statement, const std::vector<int> &columns,
                const std::vector<CopiedValue> &values)
{
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const int parameter = CardAdder::FirstValue + static_cast<int>(i);
        const CopiedValue &from = values[i];
        if (from.kind == CopiedValue::Kind::Text)
            BindText(adder, statement, parameter, columns[i], from.text);
        else if (from.kind == CopiedValue::Kind::Null && KindOf(columns[i]) == CardKind::Text)
            statement.bind(parameter); // most texts of most cards
        else if (from.kind == CopiedValue::Kind::Number && KindOf(columns[i]) == CardKind::Flag)
            BindFlag(statement, parameter, from.number != 0);
        else
            BindKnown(adder, statement, parameter, columns[i],
                      from.kind == CopiedValue::Kind::Number ? QVariant(from.number) : QVariant());
    }
}

// Reads the card on which the source stands. A value that the source has in another type than a card can is
// left out.
void ReadCard(CardAdder &adder, CardSource &source, std::vector<CopiedValue> &values)
{
    const std::vector<int> &columns = source.Columns();
    for (std::size_t i = 0; i < columns.size(); ++i) {
        try {
            source.Read(columns[i], values[i]);
        } catch (const StoreError &error) {
            values[i].kind = CopiedValue::Kind::Null;
            adder.Note(error);
        }
    }
}

// False where the source has no further card, or cannot be read on.
bool StepOn(CardAdder &adder, CardSource &source)
{
    try {
        return source.Next();
    } catch (const StoreError &error) {
        if (error.Number() == Fehler::Abgebrochen)
            throw;
        adder.Note(error);
        return false;
    }
}

// Copies the card on which the source stands. False when no further card can be added.
bool CopyCard(CardAdder &adder, CardSource &source, std::vector<CopiedValue> &values,
              const ContentPlaces &places)
{
    adder.Begin();
    ReadCard(adder, source, values);
    return adder.Store(
        [&] { return places.Of(values); }, source.Place(),
        [&](SQLite::Statement &statement) { BindCopied(adder, statement, source.Columns(), values); });
}

// Adds a card with a typed answer. False when no further card can be added.
bool AddImportedCard(CardAdder &adder, const std::vector<int> &columns, const SimpleCard &card)
{
    const std::array texts{card.question.toStdString(), card.answer.toStdString(), card.topic.toStdString()};
    constexpr std::array<std::size_t, 5> TextOf{0, 0, 1, 1, 2}; // of the columns behind the first one
    adder.Begin();
    const auto content = [&] {
        Karteninhalt parts;
        parts.frage = texts[0];
        parts.antworten[0] = texts[1];
        return parts;
    };
    return adder.Store(content, {}, [&](SQLite::Statement &statement) {
        statement.bind(CardAdder::FirstValue, 1);
        for (std::size_t i = 0; i < TextOf.size(); ++i) {
            const std::string &text = texts[TextOf[i]];
            const int parameter = CardAdder::FirstValue + static_cast<int>(i) + 1;
            if (text.empty())
                statement.bind(parameter);
            else
                BindText(adder, statement, parameter, columns[i + 1], text);
        }
    });
}

} // namespace

AddedCards AddSimpleCards(CardStore &store, const std::function<bool(SimpleCard &card)> &next,
                          Vorhandene vorhandene)
{
    const std::vector<int> columns{
        CardColumnIndex(u"Antworttyp"),         CardColumnIndex(u"Frage"),
        CardColumnIndex(u"Frage_Klartext"),     CardColumnIndex(u"Antwort_1"),
        CardColumnIndex(u"Antwort_1_Klartext"), CardColumnIndex(u"Picture_9_Name")};
    AddedCards added;
    CardRecordset &cards = store.Karten();
    const bool wasEmpty = store.HighestCardNumber == 0 && cards.AtBOF() && cards.AtEOF();
    cards.Past([&](SQLite::Database &database) {
        CardAdder adder(store, database, added, columns, vorhandene);
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

AddedCards CopyAllCards(CardStore &store, CardSource &source, const Progress &progress, Vorhandene vorhandene)
{
    AddedCards added;
    store.Karten().Past([&](SQLite::Database &database) {
        CardAdder adder(store, database, added, source.Columns(), vorhandene);
        std::vector<CopiedValue> values(source.Columns().size());
        const ContentPlaces places(source.Columns());
        int done = 0;
        bool more = true;
        while (more && StepOn(adder, source)) {
            const int before = added.count + added.leftOut + added.renewed;
            more = CopyCard(adder, source, values, places);
            if (added.count + added.leftOut + added.renewed > before)
                source.Taken();
            Melden(progress, ++done, source.Count());
        }
        adder.AllStored();
        if (const auto damage = source.DamageFound(added.count + added.leftOut + added.renewed))
            adder.Note(*damage);
        else if (added.errors.empty())
            added.remark = source.Remark();
    });
    return added;
}

} // namespace paukfix
