// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "DamageLab.h"
#include "Repair.h"
#include "StoreError.h"
#include "TestProgram.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <memory>

using namespace paukfix;
using namespace Qt::StringLiterals;

namespace {

bool ShortRun()
{
    return qEnvironmentVariableIntValue("PAUKFIX_SHORT_TESTS") != 0;
}

// A box on several evenings; the last one is what the file should hold.
struct Past
{
    QList<Box> evenings;
    bool wiped = true;

    const Box &Now() const { return evenings.last(); }
};

class Patient
{
public:
    Patient(const Past &past, Random &random)
        : bytes(past.Now().bytes), past_(past), random_(random), old_(AnyEvening())
    {
    }

    QByteArray bytes;

    void Put(int page, const QByteArray &content)
    {
        const int size = past_.Now().pageSize;
        if (content.size() == size && qint64(page) * size <= bytes.size())
            bytes.replace(qint64(page - 1) * size, size, content);
    }

    // The page as it was on an evening before; one that there was not yet stays.
    void PutOld(int page) { Put(page, PageOf(old_.bytes, page)); }

    // Another page's old content, on a page that no tree needs where there is one.
    void PutOldAstray(int page)
    {
        Put(OneOf(Now().freePages.isEmpty() ? Now().tableLeaves : Now().freePages), PageOf(old_.bytes, page));
    }

    QByteArray PageNow(int page) const { return PageOf(past_.Now().bytes, page); }

    const Box &Now() const { return past_.Now(); }

    const Box &Old() const { return old_; }

    int Root() const { return Now().tableInteriors.isEmpty() ? 2 : Now().tableInteriors.first(); }

    int OneOf(const QList<int> &pages) { return pages[Pick(random_, pages.size())]; }

    Random &Chance() { return random_; }

    bool IsWiped() const { return past_.wiped; }

private:
    const Box &AnyEvening() { return past_.evenings[Pick(random_, past_.evenings.size() - 1)]; }

    QByteArray PageOf(const QByteArray &file, int page) const
    {
        return file.mid(qint64(page - 1) * past_.Now().pageSize, past_.Now().pageSize);
    }

    const Past &past_;
    Random &random_;
    const Box &old_;
};

struct Harm
{
    const char *name;
    std::function<void(Patient &patient)> strike;
};

const QList<Harm> &Harms()
{
    static const QList<Harm> harms{
        {"root overwritten by a leaf",
         [](Patient &p) { p.Put(p.Root(), p.PageNow(p.OneOf(p.Now().tableLeaves))); }},
        {"index roots overwritten by their leaves",
         [](Patient &p) {
             p.Put(3, p.PageNow(p.OneOf(p.Now().numberLeaves.keys())));
             p.Put(4, p.PageNow(p.OneOf(p.Now().indexPages)));
         }},
        {"root old", [](Patient &p) { p.PutOld(p.Root()); }},
        {"interior pages old",
         [](Patient &p) {
             for (const int page : p.Now().tableInteriors)
                 p.PutOld(page);
         }},
        {"leaves old",
         [](Patient &p) {
             for (int i = 1 + Pick(p.Chance(), 10); i > 0; --i)
                 p.PutOld(p.OneOf(i % 2 == 0 ? p.Now().tableLeaves : p.Old().tableLeaves));
         }},
        {"beginning old",
         [](Patient &p) {
             const qint64 size = 1024 * (1 + Pick(p.Chance(), p.Now().bytes.size() / 1024));
             const qint64 part = std::min<qint64>(size, p.Old().bytes.size());
             p.bytes.replace(0, part, p.Old().bytes.left(part));
         }},
        {"index pages old",
         [](Patient &p) {
             const bool all = Pick(p.Chance(), 2) == 0;
             for (const int page : p.Now().indexPages)
                 if (all || Pick(p.Chance(), 3) == 0)
                     p.PutOld(page);
         }},
        {"old index leaf astray",
         [](Patient &p) {
             const auto &leaves = p.Old().numberLeaves;
             p.PutOldAstray(std::max_element(leaves.keyValueBegin(), leaves.keyValueEnd(),
                                             [](const auto &one, const auto &other) {
                                                 return one.second.last() < other.second.last();
                                             })
                                ->first);
         }},
        {"index pages destroyed",
         [](Patient &p) {
             const bool all = Pick(p.Chance(), 3) == 0;
             for (const int page : p.Now().indexPages)
                 if (all || Pick(p.Chance(), 3) == 0)
                     p.Put(page, QByteArray(p.Now().pageSize, '\x33'));
         }},
        {"free list off",
         [](Patient &p) {
             const int kind = Pick(p.Chance(), 3);
             const QByteArray page = QByteArray::fromHex(
                 QByteArray::number(p.OneOf(p.Now().tableLeaves), 16).rightJustified(8, '0'));
             p.bytes.replace(32, 8, kind == 0 ? QByteArray(8, '\0') : page + page);
             if (kind == 2)
                 p.bytes.replace(36, 4, QByteArray::fromHex("00000001"));
         }},
        {"header gone", [](Patient &p) { p.bytes.replace(0, 100, QByteArray(100, '\x11')); }},
        {"pages zeroed",
         [](Patient &p) {
             const qint64 pages = p.bytes.size() / p.Now().pageSize;
             for (qint64 i = 0; i < 1 + pages / 50; ++i)
                 p.Put(1 + Pick(p.Chance(), pages), QByteArray(p.Now().pageSize, '\0'));
         }},
        {"bytes changed",
         [](Patient &p) {
             for (int i = 1 + Pick(p.Chance(), 300); i > 0; --i) {
                 const int at = Pick(p.Chance(), p.bytes.size());
                 p.bytes[at] = static_cast<char>(p.bytes[at] ^ (1 + Pick(p.Chance(), 255)));
             }
         }},
        {"end missing",
         [](Patient &p) { p.bytes.truncate(p.bytes.size() * (50 + Pick(p.Chance(), 50)) / 100); }},
    };
    return harms;
}

int NumberOf(const QByteArray &marker)
{
    return marker.mid(1, marker.indexOf('-') - 1).toInt();
}

// Deleted cards that an index page which is whole proves to be deleted: the card's number lies between two
// neighbours on it, with another entry on either side.
QSet<QByteArray> ProvablyDeleted(const Box &box, const QByteArray &damaged)
{
    QSet<QByteArray> proved;
    QList<QList<int>> pages;
    for (auto page = box.numberLeaves.begin(); page != box.numberLeaves.end(); ++page) {
        const qint64 from = qint64(page.key() - 1) * box.pageSize;
        if (box.bytes.mid(from, box.pageSize) == damaged.mid(from, box.pageSize))
            pages << page.value();
    }
    for (const QByteArray &marker : box.deletedMarkers) {
        const int number = NumberOf(marker);
        for (const QList<int> &numbers : pages) {
            const auto next = std::lower_bound(numbers.begin(), numbers.end(), number);
            if (next - numbers.begin() >= 2 && numbers.end() - next >= 2 && *next != number)
                proved << marker;
        }
    }
    return proved;
}

struct Tally
{
    qint64 files = 0, cards = 0, untouched = 0, saved = 0, deleted = 0, returned = 0, uncertain = 0,
           disputed = 0, lost = 0, older = 0;

    void Add(const Tally &other)
    {
        files += other.files;
        cards += other.cards;
        untouched += other.untouched;
        saved += other.saved;
        deleted += other.deleted;
        returned += other.returned;
        uncertain += other.uncertain;
        disputed += other.disputed;
        lost += other.lost;
        older += other.older;
    }
};

} // namespace

// Any mix of the damages that leave whole pages of other times and places behind. Every card of which no byte
// was hit comes back as it was, and none that is provably deleted. Where the file holds a card in two states
// and nothing tells which is the newer one, the card is named as uncertain, and so is a deleted one that
// other pages of an older state speak for, and what comes back beside its own card: a state of it whose
// number was hit.
class RepairMixTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> directory_;
    QList<Past> pasts_;
    QMap<QByteArray, Tally> tallies_;

    QString Path() const { return directory_->filePath(u"Kasten.pzb"_s); }

    Past MakePast(int cards, bool wiped, quint32 seed, bool sums)
    {
        Past past;
        past.wiped = wiped;
        past.evenings << MakeBox(directory_->path(),
                                 {.cards = cards, .secureDelete = wiped, .sums = sums, .seed = seed});
        for (quint32 evening = 1; evening <= 6; ++evening)
            past.evenings << AfterTransaction(directory_->path(), past.Now(), seed * 100 + evening, wiped);
        return past;
    }

    Tally Repaired(const Past &past, const QByteArray &bytes, QByteArray &faults)
    {
        const Box &box = past.Now();
        const QList<const CardTruth *> untouched = box.Untouched(bytes);
        const QSet<QByteArray> deleted = ProvablyDeleted(box, bytes);
        Tally tally{
            .files = 1, .cards = box.cards.size(), .untouched = untouched.size(), .deleted = deleted.size()};
        WriteFile(Path(), bytes);
        QMultiHash<QByteArray, QByteArray> found;
        QByteArray report;
        try {
            const RepairResult result = RepairDatabase(Path());
            found = ReadDigests(Path());
            report = ReadFile(result.report);
            report = report.mid(std::max<qsizetype>(0, report.indexOf("\nUngewisse Karten")));
            report = report.startsWith("\nUngewisse") ? report : QByteArray();
            if (report.isEmpty() != !result.summary.contains(u"ungewiss"_s))
                faults += "summary: " + result.summary.toUtf8();
            tally.uncertain = report.count("\nKarte ");
            QFile::remove(result.damagedFile);
            QFile::remove(result.report);
        } catch (const StoreError &error) {
            faults += error.Text().toUtf8() + ' ';
        }
        for (const CardTruth *card : untouched)
            if (found.contains(card->marker, card->digest))
                ++tally.saved;
            else if (report.contains("\nKarte " + QByteArray::number(card->number) + ' '))
                ++tally.disputed;
            else if (!found.contains(card->marker))
                ++tally.lost;
            else
                ++tally.older;
        for (const CardTruth &card : box.cards)
            if (found.count(card.marker) > 1 && !report.contains(card.marker))
                faults += card.marker + "(twice) ";
        for (const QByteArray &marker : deleted)
            if (found.contains(marker)) {
                ++tally.returned;
                if (!report.contains("\nKarte " + QByteArray::number(NumberOf(marker)) + ' '))
                    faults += marker + "(deleted) ";
            }
        return tally;
    }

private slots:

    void initTestCase()
    {
        directory_ = std::make_unique<QTemporaryDir>();
        for (const int cards : ShortRun() ? QList<int>{600} : QList<int>{40, 600, 2000})
            for (const bool wiped : {true, false})
                for (quint32 seed = 1; seed <= (ShortRun() || cards > 1000 ? 1 : 3); ++seed)
                    for (const bool sums : {true, false})
                        pasts_ << MakePast(cards, wiped, seed, sums);
    }

    void NothingIsLostAndNothingComesBack_data()
    {
        QTest::addColumn<QList<int>>("harms");
        QTest::addColumn<int>("files");
        for (int i = 0; i < Harms().size(); ++i)
            QTest::addRow("%s", Harms()[i].name) << QList<int>{i} << (ShortRun() ? 4 : 30);
        QTest::addRow("a mix of them") << QList<int>{} << (ShortRun() ? 30 : 400);
    }

    void NothingIsLostAndNothingComesBack()
    {
        QFETCH(QList<int>, harms);
        QFETCH(int, files);
        QByteArray faults;
        Tally sum;
        for (int file = 0; file < files; ++file) {
            const Past &past = pasts_[file % pasts_.size()];
            Random random(static_cast<quint32>(file * 37 + (harms.isEmpty() ? 1000 : harms.first())));
            Patient patient(past, random);
            QList<int> chosen = harms;
            for (int i = 2 + Pick(random, 3); harms.isEmpty() && i > 0; --i)
                chosen << Pick(random, Harms().size());
            QByteArray names;
            for (const int harm : chosen) {
                Harms()[harm].strike(patient);
                names += QByteArray(names.isEmpty() ? "" : ", ") + Harms()[harm].name;
            }
            QByteArray wrong;
            const Tally tally = Repaired(past, patient.bytes, wrong);
            sum.Add(tally);
            tallies_[(past.wiped ? "wiped: " : "not wiped: ") + QByteArray(QTest::currentDataTag())].Add(
                tally);
            if (!wrong.isEmpty())
                faults += "\nfile " + QByteArray::number(file) + (past.wiped ? " (" : " (not wiped, ") +
                          QByteArray::number(past.Now().cards.size()) + " cards: " + names +
                          "): " + QByteArray::number(tally.untouched - tally.saved - tally.disputed) +
                          " lost, " + QByteArray::number(tally.returned) + " returned: " + wrong.left(150);
        }
        QVERIFY2(faults.isEmpty(), faults.left(4000));
        QVERIFY2(sum.returned * 5 <= sum.deleted, QByteArray::number(sum.returned));
        // Where an old page denies a number that was given again, and nothing else is left to speak for it.
        QVERIFY2(sum.lost * 10'000 <= sum.untouched + 10'000, QByteArray::number(sum.lost));
        QVERIFY2(sum.older == 0, QByteArray::number(sum.older));
        QVERIFY2(sum.disputed * 200 <= sum.untouched, QByteArray::number(sum.disputed));
    }

    void cleanupTestCase()
    {
        std::printf("\n| damage | files | cards | untouched | lost of these | in another state | named as "
                    "uncertain | provably deleted | returned (named) |\n"
                    "|---|---|---|---|---|---|---|---|---|\n");
        Tally sum;
        for (auto tally = tallies_.begin(); tally != tallies_.end(); ++tally)
            sum.Add(*tally);
        tallies_["~ all"] = sum;
        for (auto tally = tallies_.begin(); tally != tallies_.end(); ++tally)
            std::printf("| %s | %lld | %lld | %lld | %lld | %lld | %lld | %lld | %lld |\n",
                        tally.key().constData(), tally->files, tally->cards, tally->untouched,
                        tally->untouched - tally->saved - tally->disputed, tally->disputed, tally->uncertain,
                        tally->deleted, tally->returned);
        std::fflush(stdout);
    }
};

PAUKFIX_CORE_TEST(RepairMixTest)
#include "RepairMixTest.moc"
