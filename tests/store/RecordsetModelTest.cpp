// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "StoreTestSupport.h"

#include <QRandomGenerator>
#include <QTest>

#include <algorithm>
#include <functional>

// The recordset against a plain model: random operations on both, compared after each one.
namespace {

struct ModelCard
{
    int frage, fach, lfd;
    QString text;
    bool operator==(const ModelCard &) const = default;
};

// A sorted list in memory with the manners that are asked of the recordset, written as naively as can be.
class Model
{
public:
    enum class Place
    {
        Empty,
        Before,
        Card,
        Deleted,
        After
    };

    bool byBox = false;
    std::vector<ModelCard> cards;
    Place place = Place::Empty;
    ModelCard here{}; // the current or deleted card
    bool firstAdded = false;
    bool noMatch = false;
    std::optional<ModelCard> buffer;
    bool adding = false;

    std::pair<int, int> Key(const ModelCard &card) const
    {
        return byBox ? std::pair{card.fach, card.lfd} : std::pair{card.frage, 0};
    }

    void Sort()
    {
        std::ranges::sort(cards, {}, [&](const ModelCard &card) { return Key(card); });
    }

    void SetIndex(bool box)
    {
        byBox = box;
        Sort();
    }

    void First()
    {
        buffer.reset();
        cards.empty() ? void(place = Place::Empty) : Stand(cards.front());
    }

    void Last()
    {
        buffer.reset();
        cards.empty() ? void(place = Place::Empty) : Stand(cards.back());
    }

    // The error number, 0 for none.
    int Next()
    {
        buffer.reset();
        if (place == Place::Empty || place == Place::After)
            return 3021;
        for (const ModelCard &card : cards)
            if (place == Place::Before || Key(card) > Key(here)) {
                Stand(card);
                return 0;
            }
        place = cards.empty() ? Place::Empty : Place::After;
        return 0;
    }

    int Previous()
    {
        buffer.reset();
        if (place == Place::Empty || firstAdded)
            return 0;
        if (place == Place::Before)
            return 3021;
        for (auto card = cards.rbegin(); card != cards.rend(); ++card)
            if (place == Place::After || Key(*card) < Key(here)) {
                Stand(*card);
                return 0;
            }
        place = cards.empty() ? Place::Empty : Place::Before;
        return 0;
    }

    void Seek(CardRecordset::Comparison comparison, int first, std::optional<int> second)
    {
        using enum CardRecordset::Comparison;
        buffer.reset();
        const auto compared = [&](const ModelCard &card) {
            const auto [a, b] = Key(card);
            if (!byBox || !second)
                return a <=> first;
            return std::pair{a, b} <=> std::pair{first, *second};
        };
        noMatch = false;
        if (comparison == AtMost) {
            for (auto card = cards.rbegin(); card != cards.rend(); ++card)
                if (compared(*card) <= 0)
                    return Stand(*card);
        } else {
            for (const ModelCard &card : cards)
                if (comparison == Equal ? compared(card) == 0 : compared(card) >= 0)
                    return Stand(card);
        }
        noMatch = true;
    }

    int Edit()
    {
        if (place != Place::Card)
            return 3021;
        buffer = here;
        adding = false;
        return 0;
    }

    void AddNew(const ModelCard &card)
    {
        buffer = card;
        adding = true;
    }

    int Update()
    {
        if (!buffer)
            return 3020;
        for (const ModelCard &card : cards) {
            if (!adding && card == here)
                continue;
            if (card.frage == buffer->frage || (card.fach == buffer->fach && card.lfd == buffer->lfd))
                return 3022;
        }
        if (adding) {
            cards.push_back(*buffer);
            if (place == Place::Empty) {
                place = Place::Before;
                firstAdded = true;
            }
        } else {
            *std::ranges::find(cards, here) = *buffer;
            here = *buffer;
        }
        Sort();
        buffer.reset();
        return 0;
    }

    int Delete()
    {
        if (place != Place::Card)
            return 3021;
        buffer.reset();
        std::erase(cards, here);
        place = Place::Deleted;
        return 0;
    }

private:
    void Stand(const ModelCard &card)
    {
        here = card;
        place = Place::Card;
        firstAdded = false;
    }
};

int NumberOf(const std::function<void()> &step)
{
    try {
        step();
    } catch (const StoreError &error) {
        return error.Number();
    }
    return 0;
}

} // namespace

class RecordsetModelTest : public QObject
{
    Q_OBJECT

private slots:
    void RandomOperationsGiveTheSameAsAPlainSortedList();
};

void RecordsetModelTest::RandomOperationsGiveTheSameAsAPlainSortedList()
{
    const bool brief = qEnvironmentVariableIsSet("PAUKFIX_SHORT_TESTS");
    const int runs = brief ? 60 : 400;
    const int steps = 150;
    for (int run = 0; run < runs; ++run) {
        QTemporaryDir directory;
        const QString path = directory.filePath(QStringLiteral("modell.pzb"));
        CardFile::Create(path);
        CardFile file(path);
        file.Database().exec("PRAGMA synchronous=OFF"); // thousands of commits: this is not about durability
        CardRecordset recordset(file);
        Model model;
        QRandomGenerator random(static_cast<quint32>(run + 1));
        const auto draw = [&](int limit) { return static_cast<int>(random.bounded(limit)); };
        const int span = 3 + draw(30); // small spans collide, large ones leave gaps
        std::optional<Model> beforeTransaction;

        for (int step = 0; step < steps; ++step) {
            const int operation = draw(20);
            const auto what = [&] {
                return QStringLiteral("run %1 step %2 operation %3").arg(run).arg(step).arg(operation);
            };
            int expected = 0;
            int actual = 0;
            switch (operation) {
            case 0:
                model.First();
                recordset.MoveFirst();
                break;
            case 1:
                model.Last();
                recordset.MoveLast();
                break;
            case 2:
            case 3:
            case 4:
            case 5:
                expected = model.Next();
                actual = NumberOf([&] { recordset.MoveNext(); });
                break;
            case 6:
            case 7:
            case 8:
                expected = model.Previous();
                actual = NumberOf([&] { recordset.MovePrevious(); });
                break;
            case 9:
            case 10: {
                const auto comparison = static_cast<CardRecordset::Comparison>(draw(3));
                const int first = model.byBox ? draw(7) : draw(span);
                std::optional<int> second;
                if (model.byBox && draw(2) == 0)
                    second = draw(span);
                model.Seek(comparison, first, second);
                recordset.Seek(comparison, first, second);
                QVERIFY2(recordset.NoMatch() == model.noMatch, qPrintable(what()));
                break;
            }
            case 11: {
                const bool box = draw(2) == 0;
                model.SetIndex(box);
                recordset.SetIndex(box ? QStringLiteral("bOXkEY") : QStringLiteral("FRAGENR"));
                break;
            }
            case 12:
            case 13:
            case 14: { // add
                const ModelCard card{draw(span), draw(7), draw(span), QString::number(step)};
                model.AddNew(card);
                recordset.AddNew();
                recordset[u"fragenr"].Set(card.frage);
                recordset[u"FACHNR"].Set(card.fach);
                recordset[u"FachLfdNr"].Set(card.lfd);
                recordset[u"Frage_Klartext"].Set(card.text);
                if (draw(6) == 0)
                    break; // left without Update: the next move drops it
                expected = model.Update();
                actual = NumberOf([&] { recordset.Update(); });
                break;
            }
            case 15:
            case 16:
            case 17: { // edit, often moving the card
                expected = model.Edit();
                actual = NumberOf([&] { recordset.Edit(); });
                if (expected != 0)
                    break;
                if (draw(3) != 0) {
                    model.buffer->fach = draw(7);
                    recordset[u"FachNr"].Set(model.buffer->fach);
                    model.buffer->lfd = draw(span);
                    recordset[u"FachLfdNr"].Set(model.buffer->lfd);
                }
                if (draw(4) == 0) {
                    model.buffer->frage = draw(span);
                    recordset[u"FrageNr"].Set(model.buffer->frage);
                }
                if (draw(2) == 0) {
                    model.buffer->text = QStringLiteral("geändert %1").arg(step);
                    recordset[u"Frage_Klartext"].Set(model.buffer->text);
                }
                if (draw(6) == 0)
                    break;
                expected = model.Update();
                actual = NumberOf([&] { recordset.Update(); });
                break;
            }
            case 18:
                expected = model.Delete();
                actual = NumberOf([&] { recordset.Delete(); });
                break;
            case 19: // transactions that end either way; the model goes back with them
                if (!beforeTransaction) {
                    model.buffer.reset();
                    recordset.CancelUpdate();
                    beforeTransaction = model;
                    recordset.BeginTrans();
                } else if (draw(2) == 0) {
                    recordset.CommitTrans();
                    beforeTransaction.reset();
                } else {
                    recordset.Rollback();
                    const bool box = model.byBox;
                    model = *beforeTransaction;
                    model.SetIndex(box);
                    beforeTransaction.reset();
                    // Where a rollback leaves the cursor is told by other tests; here both start again.
                    model.First();
                    recordset.MoveFirst();
                }
                break;
            default:
                Q_UNREACHABLE();
            }
            QVERIFY2(actual == expected,
                     qPrintable(what() + QStringLiteral(": error %1, not %2").arg(actual).arg(expected)));
            using enum Model::Place;
            QVERIFY2(recordset.AtBOF() == (model.place == Before || model.place == Empty),
                     qPrintable(what()));
            QVERIFY2(recordset.AtEOF() == (model.place == After || model.place == Empty), qPrintable(what()));
            // Reading is left out now and then: what a walk has learned must not change what it finds.
            if (draw(4) == 0)
                continue;
            QString text;
            int frage = 0;
            const int readError = NumberOf([&] {
                text = recordset[u"Frage_Klartext"].Text();
                frage = recordset[u"FrageNr"].Integer();
            });
            if (model.buffer) {
                QCOMPARE(readError, 0);
                QCOMPARE(text, model.buffer->text);
                QCOMPARE(frage, model.buffer->frage);
            } else if (model.place == Card) {
                QVERIFY2(
                    readError == 0 && text == model.here.text && frage == model.here.frage,
                    qPrintable(what() +
                               QStringLiteral(": stands on %1, not %2").arg(frage).arg(model.here.frage)));
                if (draw(2) == 0)
                    QCOMPARE(static_cast<int>(recordset[u"FachLfdNr"].Integer()), model.here.lfd);
            } else {
                QVERIFY2(readError == 3021, qPrintable(what()));
            }
        }
        QCOMPARE(recordset.RecordCount(), static_cast<int>(model.cards.size()));
        QCOMPARE(QString::fromUtf8(file.Database().execAndGet("PRAGMA integrity_check").getText()),
                 QStringLiteral("ok"));
    }
}

QTEST_GUILESS_MAIN(RecordsetModelTest)
#include "RecordsetModelTest.moc"
