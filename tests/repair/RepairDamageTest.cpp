// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "DamageLab.h"
#include "Repair.h"
#include "StoreError.h"
#include "TestProgram.h"

#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTest>
#include <SQLiteCpp/SQLiteCpp.h>

#include <cstdio>
#include <functional>
#include <memory>

using namespace paukfix;
using namespace Qt::StringLiterals;

namespace {

using Damage = std::function<void(QByteArray &bytes, const Box &box, Random &random)>;

char RandomByte(Random &random)
{
    return static_cast<char>(random() & 0xFFU);
}

void Overwrite(QByteArray &bytes, qint64 from, qint64 count, Random &random)
{
    for (qint64 i = from; i < std::min<qint64>(from + count, bytes.size()); ++i)
        bytes[i] = RandomByte(random);
}

void Wipe(QByteArray &bytes, qint64 from, qint64 count)
{
    count = std::min<qint64>(count, bytes.size() - from);
    bytes.replace(from, count, QByteArray(count, '\0'));
}

void ChangeBytes(QByteArray &bytes, int count, Random &random)
{
    for (int i = 0; i < count; ++i) {
        const int at = Pick(random, bytes.size());
        bytes[at] = static_cast<char>(bytes[at] ^ (1 + Pick(random, 255)));
    }
}

void Keep(QByteArray &bytes, int percent)
{
    bytes.truncate(bytes.size() * percent / 100);
}

void OverwritePages(QByteArray &bytes, const QList<int> &pages, const Box &box, Random &random)
{
    for (const int page : pages)
        Overwrite(bytes, qint64(page - 1) * box.pageSize, box.pageSize, random);
}

// Random pages, or live ones, are said to be free.
void MangleFreeList(QByteArray &bytes, const Box &box, Random &random)
{
    const auto put = [&](qint64 at, int page) {
        for (int i = 0; i < 4; ++i)
            bytes[at + i] = static_cast<char>(page >> (24 - 8 * i));
    };
    const int trunk = box.freePages.isEmpty() ? 0 : box.freePages[Pick(random, box.freePages.size())];
    if (trunk == 0) {
        put(32, box.tableLeaves[Pick(random, box.tableLeaves.size())]);
        put(36, 1);
        return;
    }
    const qint64 at = qint64(trunk - 1) * box.pageSize;
    put(32, trunk);
    put(at, trunk);
    put(at + 4, box.pageSize / 4 - 2);
    for (int i = 0; i < box.pageSize / 4 - 2; ++i)
        put(at + 8 + qint64(4) * i,
            i % 3 == 0 ? static_cast<int>(random()) : box.tableLeaves[Pick(random, box.tableLeaves.size())]);
}

struct Kind
{
    const char *name;
    Damage damage;
    bool changesCards = false; // else it only takes parts of cards away
};

const QList<Kind> &Kinds()
{
    static const QList<Kind> kinds{
        {"header overwritten", [](auto &bytes, auto &, auto &random) { Overwrite(bytes, 0, 100, random); }},
        {"first page zeroed", [](auto &bytes, auto &box, auto &) { Wipe(bytes, 0, box.pageSize); }},
        {"5 % of the pages zeroed",
         [](auto &bytes, auto &box, auto &random) {
             const qint64 pages = bytes.size() / box.pageSize;
             for (qint64 i = 0; i < pages / 20 + 1; ++i)
                 Wipe(bytes, Pick(random, pages) * qint64(box.pageSize), box.pageSize);
         }},
        {"5 % of the sectors zeroed",
         [](auto &bytes, auto &, auto &random) {
             for (qint64 i = 0; i < bytes.size() / 512 / 20; ++i)
                 Wipe(bytes, Pick(random, bytes.size() / 512) * qint64(512), 512);
         }},
        {"1 byte changed", [](auto &bytes, auto &, auto &random) { ChangeBytes(bytes, 1, random); }, true},
        {"10 bytes changed", [](auto &bytes, auto &, auto &random) { ChangeBytes(bytes, 10, random); }, true},
        {"1,000 bytes changed", [](auto &bytes, auto &, auto &random) { ChangeBytes(bytes, 1000, random); },
         true},
        {"cut to 10 %", [](auto &bytes, auto &, auto &) { Keep(bytes, 10); }},
        {"cut to 50 %", [](auto &bytes, auto &, auto &) { Keep(bytes, 50); }},
        {"cut to 90 %", [](auto &bytes, auto &, auto &) { Keep(bytes, 90); }},
        {"free list mangled", MangleFreeList},
        {"index pages destroyed",
         [](auto &bytes, auto &box, auto &random) { OverwritePages(bytes, box.indexPages, box, random); }},
        {"interior pages destroyed",
         [](auto &bytes, auto &box, auto &random) {
             OverwritePages(bytes, box.tableInteriors, box, random);
         }},
        {"schema row damaged",
         [](auto &bytes, auto &, auto &random) {
             const qint64 at = bytes.indexOf("Lernkarten", 100);
             Overwrite(bytes, at - 20 + Pick(random, 25), 8, random);
         }},
        {"leaf page headers overwritten",
         [](auto &bytes, auto &box, auto &random) {
             for (qsizetype i = 0; i < box.tableLeaves.size() / 10 + 1; ++i)
                 Overwrite(bytes,
                           qint64(box.tableLeaves[Pick(random, box.tableLeaves.size())] - 1) * box.pageSize,
                           8, random);
         }},
        {"header, indexes and interior pages destroyed",
         [](auto &bytes, auto &box, auto &random) {
             Overwrite(bytes, 0, box.pageSize, random);
             OverwritePages(bytes, box.indexPages + box.tableInteriors, box, random);
         }},
    };
    return kinds;
}

bool ShortRun()
{
    return qEnvironmentVariableIntValue("PAUKFIX_SHORT_TESTS") != 0;
}

struct Size
{
    int cards;
    int seeds; // how often each damage is done, each time elsewhere
};

QList<Size> Sizes()
{
    return ShortRun() ? QList<Size>{{10, 3}, {1000, 1}} : QList<Size>{{10, 5}, {1000, 3}, {20000, 1}};
}

struct Tally
{
    qint64 cards = 0, untouched = 0, saved = 0, savedOfAll = 0, plain = 0;
};

} // namespace

// Damages card files in many ways and requires every card back of which no byte was hit.
class RepairDamageTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> directory_;
    QMap<int, std::array<Box, 2>> boxes_; // without and with sums of their pages
    QList<QByteArray> order_;
    QMap<QByteArray, QMap<int, Tally>> tallies_;
    Tally all_;

    QString Path() const { return directory_->filePath(u"Kasten.pzb"_s); }

    void Clear()
    {
        const QDir directory(directory_->path());
        for (const QString &name : directory.entryList(QDir::Files))
            QFile::remove(directory.filePath(name));
    }

    // Repairs what lies at Path() and requires `expected` back, all but `mayMiss` of them, and none of the
    // deleted cards. Where the damage only took bytes away, what is not named in the report must be as it
    // was.
    void Require(const char *kind, const Box &box, const QList<const CardTruth *> &expected,
                 bool changesCards, qint64 mayMiss = 0)
    {
        const auto plain = ReadDigests(Path());
        const QByteArray before = ReadFile(Path());
        RepairResult result;
        try {
            result = RepairDatabase(Path());
        } catch (const StoreError &error) {
            QVERIFY2(expected.isEmpty(), qPrintable(error.Text()));
            QCOMPARE(error.Number(), Fehler::Beschaedigt);
            QCOMPARE(ReadFile(Path()), before);
        }
        const auto found = ReadDigests(Path());
        Tally tally{box.cards.size(), expected.size(), 0, 0, 0};
        QByteArray missing;
        for (const CardTruth &card : box.cards) {
            tally.plain += plain.value(card.marker) == card.digest ? 1 : 0;
            tally.savedOfAll += result.cards > 0 && found.value(card.marker) == card.digest ? 1 : 0;
        }
        if (result.cards > 0) {
            for (const CardTruth *card : expected)
                if (found.value(card->marker) == card->digest)
                    ++tally.saved;
                else
                    missing += card->marker + (found.contains(card->marker) ? "(changed) " : " ");
            QCOMPARE(ReadFile(result.damagedFile), before);
            QVERIFY(QFileInfo(result.report).size() > 0);
            SQLite::Database database(Path().toStdString(), SQLite::OPEN_READONLY);
            QCOMPARE(database.execAndGet("PRAGMA integrity_check").getString(), std::string("ok"));
            QCOMPARE(database.execAndGet("SELECT count(*) FROM Lernkarten").getInt(), result.cards);
        }
        for (auto card = found.begin(); card != found.end() && result.cards > 0; ++card)
            QVERIFY2(!box.deletedMarkers.contains(card.key()), card.key() + " came back");
        if (!order_.contains(kind))
            order_ << kind;
        for (Tally *sum : {&tallies_[kind][static_cast<int>(box.cards.size())], &all_}) {
            sum->cards += tally.cards;
            sum->untouched += tally.untouched;
            sum->saved += tally.saved;
            sum->savedOfAll += tally.savedOfAll;
            sum->plain += tally.plain;
        }
        QVERIFY2(tally.untouched - tally.saved <= mayMiss, missing.left(2000));
        const QByteArray report = result.cards > 0 ? ReadFile(result.report) : QByteArray();
        for (const CardTruth &card : box.cards)
            if (!changesCards && found.contains(card.marker) && found.value(card.marker) != card.digest)
                QVERIFY2(report.contains("Karte " + QByteArray::number(card.number) + ' '), card.marker);
    }

    void AddRows()
    {
        QTest::addColumn<int>("cards");
        QTest::addColumn<int>("seed");
        for (const Size &size : Sizes())
            for (int seed = 0; seed < size.seeds; ++seed)
                QTest::addRow("%d cards, seed %d", size.cards, seed) << size.cards << seed;
    }

private slots:

    void initTestCase()
    {
        directory_ = std::make_unique<QTemporaryDir>();
        for (const Size &size : Sizes())
            for (const bool sums : {false, true})
                boxes_[size.cards].at(sums ? 1 : 0) =
                    MakeBox(directory_->path(), {.cards = size.cards, .sums = sums});
        for (const Box &box : boxes_[1000]) {
            QVERIFY(!box.freePages.isEmpty());
            QVERIFY(!box.deletedMarkers.isEmpty());
        }
    }

    void cleanup() { Clear(); }

    void EveryUntouchedCardIsSaved_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<int>("cards");
        QTest::addColumn<int>("seed");
        for (int kind = 0; kind < Kinds().size(); ++kind)
            for (const Size &size : Sizes())
                for (int seed = 0; seed < size.seeds; ++seed)
                    QTest::addRow("%s, %d cards, seed %d", Kinds()[kind].name, size.cards, seed)
                        << kind << size.cards << seed;
    }

    void EveryUntouchedCardIsSaved()
    {
        QFETCH(int, kind);
        QFETCH(int, cards);
        QFETCH(int, seed);
        const Box &box = boxes_[cards].at(seed % 2);
        Random random(static_cast<quint32>(seed) * 1000 + static_cast<quint32>(kind));
        QByteArray bytes = box.bytes;
        Kinds()[kind].damage(bytes, box, random);
        WriteFile(Path(), bytes);
        Require(Kinds()[kind].name, box, box.Untouched(bytes), Kinds()[kind].changesCards);
    }

    void TornWriteKeepsWhatBothStatesHold_data() { AddRows(); }

    void TornWriteKeepsWhatBothStatesHold()
    {
        QFETCH(int, cards);
        QFETCH(int, seed);
        const Box &before = boxes_[cards].at(seed % 2);
        const Box after = AfterTransaction(directory_->path(), before);
        QHash<QByteArray, QByteArray> digestsBefore, digestsAfter;
        for (const CardTruth &card : before.cards)
            digestsBefore[card.marker] = card.digest;
        for (const CardTruth &card : after.cards)
            digestsAfter[card.marker] = card.digest;
        for (const int unit : {before.pageSize, 512}) {
            // Some writes reached the disk, some did not.
            Random random(static_cast<quint32>(seed));
            QByteArray bytes =
                before.bytes.leftJustified(std::max(before.bytes.size(), after.bytes.size()), '\0');
            for (qint64 at = 0; at < after.bytes.size(); at += unit)
                if (random() % 2 == 0)
                    bytes.replace(at, unit, after.bytes.mid(at, unit));
            QSet<QByteArray> seen;
            QList<const CardTruth *> expected;
            for (const auto &untouched : {before.Untouched(bytes), after.Untouched(bytes)})
                for (const CardTruth *card : untouched)
                    if (digestsBefore.value(card->marker) == digestsAfter.value(card->marker) &&
                        !seen.contains(card->marker)) {
                        seen << card->marker;
                        expected << card;
                    }
            WriteFile(Path(), bytes);
            // Inside torn pages two halves of different states can look like one card.
            if (unit == 512)
                Require("torn write, by sectors", before, expected, true, 1 + expected.size() / 1000);
            else
                Require("torn write, by pages", before, expected, true);
            Clear();
        }
    }

    void HotJournalIsRolledBack_data() { AddRows(); }

    void HotJournalIsRolledBack()
    {
        QFETCH(int, cards);
        QFETCH(int, seed);
        const Box &box = boxes_[cards].at(seed % 2);
        const Box amid = AmidTransaction(directory_->path(), box);
        QVERIFY(amid.journal.size() > box.pageSize);
        QVERIFY(cards < 1000 || amid.bytes != box.bytes);
        QList<const CardTruth *> everyCard;
        for (const CardTruth &card : box.cards)
            everyCard << &card;
        QByteArray bytes = amid.bytes;
        // The first page stands in the journal, so that damage to it is healed as well.
        Random random(static_cast<quint32>(seed));
        Overwrite(bytes, 0, seed % 2 == 0 ? 0 : 100, random);
        WriteFile(Path(), bytes);
        WriteFile(Path() + u"-journal"_s, amid.journal);
        Require("hot journal left over", box, everyCard, false);
        QVERIFY(!QFile::exists(Path() + u"-journal"_s));
        QCOMPARE(ReadFile(Path() + u".beschädigt-journal"_s), amid.journal);
    }

    void NothingToSaveLeavesEverythingAsItWas_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        Random random(3);
        QByteArray noise(300'000, '\0');
        Overwrite(noise, 0, noise.size(), random);
        QTest::newRow("no bytes") << QByteArray();
        QTest::newRow("random bytes") << noise;
        QTest::newRow("zeros") << QByteArray(100'000, '\0');
        QTest::newRow("a text") << QByteArray("Frage;Antwort\r\n").repeated(1000);
        QTest::newRow("half a header") << boxes_[10][1].bytes.left(50);
    }

    void NothingToSaveLeavesEverythingAsItWas()
    {
        QFETCH(QByteArray, bytes);
        WriteFile(Path(), bytes);
        try {
            RepairDatabase(Path());
            QFAIL("saved something");
        } catch (const StoreError &error) {
            QCOMPARE(error.Number(), Fehler::Beschaedigt);
            QCOMPARE(error.Text(), QString("In der Datei „%1“ ist nichts zu retten.").arg(Path()));
        }
        QCOMPARE(ReadFile(Path()), bytes);
        QCOMPARE(QDir(directory_->path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                 QStringList{u"Kasten.pzb"_s});
    }

    void cleanupTestCase()
    {
        std::printf(
            "\n| damage | cards | untouched | saved of the untouched | saved of all | plain reading |\n");
        std::printf("|---|---|---|---|---|---|\n");
        const auto print = [](const char *name, const Tally &tally) {
            const auto percent = [](qint64 part, qint64 whole) {
                return whole == 0 ? 100.0 : 100.0 * static_cast<double>(part) / static_cast<double>(whole);
            };
            std::printf("| %s | %lld | %lld | %.2f %% | %.1f %% | %.1f %% |\n", name, tally.cards,
                        tally.untouched, percent(tally.saved, tally.untouched),
                        percent(tally.savedOfAll, tally.cards), percent(tally.plain, tally.cards));
        };
        for (const QByteArray &kind : order_) {
            Tally sum;
            for (const Tally &tally : tallies_[kind]) {
                sum.cards += tally.cards;
                sum.untouched += tally.untouched;
                sum.saved += tally.saved;
                sum.savedOfAll += tally.savedOfAll;
                sum.plain += tally.plain;
            }
            print(kind.constData(), sum);
        }
        print("all", all_);
        std::fflush(stdout);
    }
};

PAUKFIX_CORE_TEST(RepairDamageTest)
#include "RepairDamageTest.moc"
