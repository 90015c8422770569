// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardAdd.h"

#include "CardBulk.h"
#include "CardFile.h"
#include "CardValue.h"
#include "DamagedCards.h"
#include "JetCards.h"
#include "RepairReport.h"

#include <SQLiteCpp/Statement.h>
#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <tuple>

namespace {

// What a card is copied with, beside its keys.
constexpr std::array copiedColumns{
    "Antworttyp",         "Picture_1_Name",     "Picture_2_Name",
    "Picture_3_Name",     "Picture_4_Name",     "Picture_5_Name",
    "Picture_6_Name",     "Picture_7_Name",     "Picture_8_Name",
    "Picture_9_Name",     "PictureTop",         "Pictureleft",
    "Pictureheight",      "Picturewidth",       "Frage",
    "Frage_Klartext",     "Antwort_1",          "Antwort_2",
    "Antwort_3",          "Antwort_4",          "Antwort_5",
    "Antwort_ch_1",       "Antwort_ch_2",       "Antwort_ch_3",
    "Antwort_ch_4",       "Antwort_ch_5",       "Antwort_1_Klartext",
    "Antwort_2_Klartext", "Antwort_3_Klartext", "Antwort_4_Klartext",
    "Antwort_5_Klartext",
};

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

    static int Parameter(std::size_t value) { return static_cast<int>(value) + firstValue; }

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
    static constexpr int firstValue = 3; // behind card number and running number

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

bool IsShortText(int column)
{
    return QLatin1String(CardColumns()[static_cast<std::size_t>(column)].declaredType) ==
           QLatin1String("TEXT(250)");
}

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

// Binds one value of a copied card. `text` holds what must last until the card is added.
void CopyValue(Adder &adder, std::size_t value, int column, const SQLite::Column &from, std::string &text)
{
    try {
        if (KindOf(column) == CardKind::Text && !from.isNull()) {
            const char *bytes = from.getText(); // before getBytes(): it converts numbers
            text.assign(bytes, static_cast<std::size_t>(from.getBytes()));
            BindText(adder, value, column, text);
            return;
        }
        BindKnown(adder, value, column, FromEngine(from, column));
    } catch (const StoreError &error) {
        adder.Note(error);
        adder.Values().bind(Adder::Parameter(value));
    }
}

void CopyValue(Adder &adder, std::size_t value, int column, const SalvagedCard::Value &from,
               std::string &text)
{
    if (const auto *bytes = std::get_if<QByteArray>(&from)) {
        text = bytes->toStdString();
        BindText(adder, value, column, text);
    } else {
        const auto *number = std::get_if<double>(&from);
        BindKnown(adder, value, column, number == nullptr ? QVariant() : QVariant(*number));
    }
}

// Gives the next card the fields of a copied one. `valueOf` tells the value of a column by its place in
// `columns`.
template <typename ValueOf>
void CopyCardFields(Adder &adder, const std::vector<int> &columns,
                    std::array<std::string, copiedColumns.size()> &texts, const ValueOf &valueOf)
{
    for (std::size_t i = 0; i < columns.size(); ++i)
        CopyValue(adder, i, columns[i], valueOf(i), texts[i]);
}

// Adds a card with a typed answer. False when no further card can be added.
bool AddImportedCard(Adder &adder, const std::vector<int> &columns, const SimpleCard &card)
{
    const std::array texts{card.question.toStdString(), card.answer.toStdString(), card.topic.toStdString()};
    constexpr std::array<std::size_t, 5> textOf{0, 0, 1, 1, 2}; // of the columns behind the first one
    try {
        adder.Values().bind(Adder::Parameter(0), 1);
        for (std::size_t i = 0; i < textOf.size(); ++i) {
            const std::string &text = texts[textOf[i]];
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

std::vector<int> CopiedColumns()
{
    std::vector<int> columns;
    columns.reserve(copiedColumns.size());
    for (const char *name : copiedColumns)
        columns.push_back(CardColumnIndex(QString::fromLatin1(name)));
    return columns;
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

void CheckCopyable(CardFile &source)
{
    CardRecordset cards(source);
    for (const char *name : copiedColumns)
        static_cast<void>(cards[QString::fromLatin1(name)]);
}

AddedCards CopyAllCards(CardStore &store, CardFile &source, const Fortschritt &fortschritt)
{
    const std::vector<int> columns = CopiedColumns();
    std::string names;
    for (const int column : columns)
        names += (names.empty() ? "" : ",") + QuotedColumn(column);
    const int total = CardRecordset(source).RecordCount();

    AddedCards added;
    store.Karten().Past([&](SQLite::Database &database) {
        Adder adder(store, database, added, columns);
        std::optional<SQLite::Statement> read;
        const auto readNext = [&] {
            try {
                if (!read)
                    read.emplace(source.Database(), "SELECT " + names +
                                                        R"( FROM "Lernkarten" INDEXED BY "BoxKey" )"
                                                        R"(ORDER BY "FachNr","FachLfdNr")");
                return read->executeStep();
            } catch (const SQLite::Exception &error) {
                adder.NoteEngine(error, source.Path());
                return false;
            }
        };
        std::array<std::string, copiedColumns.size()> texts;
        int done = 0;
        bool more = true;
        while (more && readNext()) {
            CopyCardFields(adder, columns, texts,
                           [&](std::size_t i) { return read->getColumn(static_cast<int>(i)); });
            more = adder.Add();
            Melden(fortschritt, ++done, total);
        }
    });
    return added;
}

namespace {

// Adds the cards of a source that is read without the engine. `read` gives a card's values, or nothing where
// none are left; `lost` cards were not even found.
AddedCards AddSalvaged(CardStore &store, const QString &path, const std::vector<CardPlan> &cards,
                       const std::function<std::optional<SalvagedCard>(const CardPlan &plan)> &read,
                       qint64 lost, bool damaged, const Fortschritt &fortschritt)
{
    const std::vector<int> columns = CopiedColumns();
    std::vector<const CardPlan *> plans; // in box order
    plans.reserve(cards.size());
    for (const CardPlan &plan : cards)
        plans.push_back(&plan);
    std::sort(plans.begin(), plans.end(), [](const CardPlan *one, const CardPlan *other) {
        return std::tie(one->compartment, one->place) < std::tie(other->compartment, other->place);
    });

    AddedCards added;
    store.Karten().Past([&](SQLite::Database &database) {
        Adder adder(store, database, added, columns);
        std::array<std::string, copiedColumns.size()> texts;
        int done = 0;
        Losses losses{.lost = lost};
        for (const CardPlan *plan : plans) {
            const std::optional<SalvagedCard> card = read(*plan);
            if (!card) {
                ++losses.lost;
                continue;
            }
            try {
                CopyCardFields(adder, columns, texts, [&](std::size_t i) -> const SalvagedCard::Value & {
                    return card->values[static_cast<std::size_t>(columns[i])];
                });
            } catch (const SQLite::Exception &error) {
                if (!adder.TakeNote(error))
                    break;
                continue;
            }
            const int before = added.count;
            const bool more = adder.Add();
            if (added.count > before)
                losses.Add(*card);
            if (!more)
                break;
            Melden(fortschritt, ++done, static_cast<int>(plans.size()));
        }
        const QString found = LossText(added.count, QStringLiteral("übernommen"), losses);
        const QString beginning = QStringLiteral("Die Datei „%1“ ist beschädigt. ").arg(path);
        if (!found.isEmpty())
            adder.Note(StoreError(Fehler::Beschaedigt, beginning + found));
        else if (damaged && added.errors.empty())
            added.remark = beginning + QStringLiteral("Alle Karten ließen sich lesen.");
    });
    return added;
}

} // namespace

AddedCards CopyAllCards(CardStore &store, JetCards &source, const Fortschritt &fortschritt)
{
    return AddSalvaged(
        store, source.File().Path(), source.Cards(), [&](const CardPlan &plan) { return source.Read(plan); },
        source.Lost(), false, fortschritt);
}

AddedCards CopyAllCards(CardStore &store, const DamagedCards &source, const Fortschritt &fortschritt)
{
    return AddSalvaged(
        store, source.Path(), source.Cards(), [&](const CardPlan &plan) { return source.Read(plan); },
        static_cast<qint64>(source.Lost()), true, fortschritt);
}
