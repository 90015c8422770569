// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "DamageLab.h"
#include "DiskCalls.h"
#include "JournalFile.h"
#include "KarteiOeffner.h"
#include "StoreError.h"
#include "StoreTestSupport.h"
#include "TestProgram.h"

#include <QDir>
#include <QTest>

#include <sys/stat.h>

using namespace paukfix;
using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype PageSize = 4096;

QByteArray Big32(quint32 value)
{
    QByteArray bytes;
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes += static_cast<char>(value >> shift & 0xff);
    return bytes;
}

const QString directory = u"directory"_s;

} // namespace

// The first page tells what all others mean: header and schema. A card file of ours whose first page, or
// size, is not what it was either opens with all that it holds or asks, and the repair gives it all.
class FirstPageTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> directory_;
    QList<CardRecord> cards_;
    QByteArray sound_;

    QString Path(const QString &suffix = {}) const { return directory_->filePath("a.pzb") + suffix; }

    struct Opening
    {
        bool asked = false;
        bool open = false;
        QStringList messages;
    };

    Opening Open(Meldungen::Antwort answer) const
    {
        TestMeldungen messages;
        messages.antworten = {answer};
        const TestClock clock;
        CardStore store;
        KarteiOeffner oeffner(store, messages, clock);
        store.KarteiPfad = directory_->path();
        QString name = u"a.pzb"_s;
        oeffner.OpenCardFile(name);
        return {messages.Texte().value(0) == "Diese Datei ist beschädigt Reparaturversuch ?", store.IsOpen(),
                messages.Texte()};
    }

    // What is wrong with the opening of these bytes. Empty where nothing is.
    QString FaultOf(const QByteArray &bytes) const
    {
        for (const QString &left : QDir(directory_->path()).entryList(QDir::Files))
            QFile::remove(directory_->filePath(left));
        WriteFile(Path(), bytes);
        const Opening opening = Open(Meldungen::Antwort::Ja);
        if (!opening.open)
            return "refused: " + opening.messages.join(" | ");
        if (!opening.asked && !opening.messages.isEmpty())
            return "told: " + opening.messages.join(" | ");
        if (ReadCards(Path()) != cards_)
            return opening.asked ? u"the repair gave other cards"_s : u"opened with other cards"_s;
        return {};
    }

    DiskCalls disk_;

private slots:

    // Thousands of files are made, opened and mended here, and no power fails: nothing waits for the disk.
    void initTestCase() { disk_.waits = false; }

    void init()
    {
        directory_ = std::make_unique<QTemporaryDir>();
        cards_ = SomeCards(12);
        for (CardRecord &card : cards_) {
            card.Antwort_1_Klartext = u"007"_s;
            card.Picture_9_Name = u"1e3"_s;
        }
        MakeCardFile(Path(), cards_);
        cards_ = ReadCards(Path());
        sound_ = ReadFile(Path());
        QCOMPARE(FaultOf(sound_), QString());
    }

    void NoChangedByteOfTheFirstPageCostsACard_data()
    {
        QTest::addColumn<int>("change"); // 256: set to 0
        QTest::addColumn<int>("first");
        QTest::addColumn<int>("step");
        const int longer = qEnvironmentVariableIsSet("PAUKFIX_SHORT_TESTS") ? 7 : 1;
        QTest::newRow("lowest bit") << 0x01 << 0 << longer;
        QTest::newRow("other case") << 0x20 << 0 << 3 * longer;
        QTest::newRow("highest bit") << 0x80 << 1 << 3 * longer;
        QTest::newRow("nothing") << 256 << 2 << 3 * longer;
    }

    void NoChangedByteOfTheFirstPageCostsACard()
    {
        QFETCH(int, change);
        QFETCH(int, first);
        QFETCH(int, step);
        QStringList faults;
        for (qsizetype place = first; place < PageSize; place += step) {
            QByteArray bytes = sound_;
            bytes[place] = static_cast<char>(change == 256 ? 0 : bytes[place] ^ change);
            if (bytes == sound_)
                continue;
            if (const QString fault = FaultOf(bytes); !fault.isEmpty())
                faults << u"byte %1: %2"_s.arg(place).arg(fault);
        }
        QVERIFY2(faults.isEmpty(),
                 qPrintable(u"%1 bytes:\n"_s.arg(faults.size()) + faults.mid(0, 40).join(u'\n')));
    }

    void EveryValueOfTheHeadersVersionsIsHarmless()
    {
        QStringList faults;
        for (const int place : {18, 19, 47, 59, 63})
            for (int value = 0; value < 256; ++value) {
                QByteArray bytes = sound_;
                bytes[place] = static_cast<char>(value);
                if (const QString fault = FaultOf(bytes); !fault.isEmpty())
                    faults << u"byte %1 = %2: %3"_s.arg(place).arg(value).arg(fault);
            }
        QCOMPARE(faults, QStringList());
    }

    void AColumnOfAnotherAffinityIsDamage()
    {
        QByteArray bytes = sound_;
        const qsizetype column = bytes.indexOf("\"Antwort_2_Klartext\" LONGTEXT");
        QVERIFY(column > 0);
        bytes[bytes.indexOf("LONGTEXT", column) + 6] = 'Y';
        WriteFile(Path(), bytes);
        const Opening opening = Open(Meldungen::Antwort::Nein);
        QVERIFY(opening.asked);
        QVERIFY(!opening.open);
        QCOMPARE(ReadFile(Path()), bytes);
        QCOMPARE(FaultOf(bytes), QString());
    }

    void AHeaderThatCountsOtherPagesIsDamage_data()
    {
        QTest::addColumn<int>("pages"); // more or fewer than there are
        QTest::addColumn<bool>("ours");
        for (const bool ours : {true, false})
            for (const int pages : {-2, -1, 1})
                QTest::addRow("%s %+d", ours ? "ours" : "foreign", pages) << pages << ours;
    }

    void AHeaderThatCountsOtherPagesIsDamage()
    {
        QFETCH(int, pages);
        QFETCH(bool, ours);
        const auto count = static_cast<int>(sound_.size() / PageSize);
        QByteArray bytes = sound_;
        bytes.replace(28, 4, Big32(static_cast<quint32>(count + pages)));
        if (!ours)
            bytes.replace(68, 4, Big32(0));
        WriteFile(Path(), bytes);
        const Opening opening = Open(Meldungen::Antwort::Nein);
        QVERIFY(opening.asked);
        QVERIFY2(opening.messages.last().endsWith("Fcode: 3049"), qPrintable(opening.messages.last()));
    }

    void WhatStandsBehindTheLastPageIsDamage()
    {
        for (const qsizetype more : {qsizetype{1}, PageSize, 3 * PageSize}) {
            const QByteArray bytes = sound_ + QByteArray(more, '\0');
            WriteFile(Path(), bytes);
            QVERIFY(Open(Meldungen::Antwort::Nein).asked);
            QCOMPARE(FaultOf(bytes), QString());
        }
    }

    // The engine, which trusts the older header, would show a box of the old cards alone.
    void AnOldStateAtTheBeginningIsDamage()
    {
        const QList<CardRecord> all = SomeCards(800);
        QFile::remove(Path());
        MakeCardFile(Path(), all.mid(0, 40));
        const QByteArray old = ReadFile(Path());
        {
            CardFile file(Path());
            CardRecordset cards(file);
            for (const CardRecord &card : all.mid(40)) {
                cards.AddNew();
                cards.Write(card);
                cards.Update();
            }
        }
        QByteArray bytes = ReadFile(Path());
        QVERIFY(bytes.size() > 2 * old.size());
        bytes.replace(0, old.size(), old);
        WriteFile(Path(), bytes);
        const Opening opening = Open(Meldungen::Antwort::Nein);
        QVERIFY(opening.asked);
        QCOMPARE(ReadFile(Path()), bytes);
    }

    // A program that does not keep the header's count says so by another count of changes.
    void AForeignFileWithoutAPageCountOpens()
    {
        QFile::remove(Path());
        MakeFormerCardFile(Path(), cards_);
        QByteArray bytes = ReadFile(Path());
        bytes.replace(28, 4, Big32(1));
        bytes.replace(68, 4, Big32(0));
        bytes.replace(92, 4, Big32(0));
        WriteFile(Path(), bytes);
        QVERIFY(Open(Meldungen::Antwort::Nein).open);
        QCOMPARE(ReadCards(Path()), cards_);
    }

    void AnInterruptedTransactionIsRolledBackBeforeThePagesAreCounted()
    {
        QTemporaryDir elsewhere;
        const Box box = MakeBox(elsewhere.path(), {.cards = 300});
        const Box amid = AmidTransaction(elsewhere.path(), box);
        WriteFile(Path(), amid.bytes);
        WriteFile(Path("-journal"), amid.journal);
        const Opening opening = Open(Meldungen::Antwort::Nein);
        QCOMPARE(opening.messages, QStringList());
        QCOMPARE(ReadDigests(Path()).size(), box.cards.size());
    }

    void APipeOrADeviceUnderTheNameOfAJournalIsRefused_data()
    {
        QTest::addColumn<QString>("suffix");
        QTest::addColumn<QString>("device"); // empty: a pipe
        for (const char *suffix : {"", "-journal", "-wal", "-shm"}) {
            QTest::addRow("pipe %s", suffix) << QString(suffix) << QString();
            QTest::addRow("device %s", suffix) << QString(suffix) << QString("/dev/zero");
            QTest::addRow("directory %s", suffix) << QString(suffix) << directory;
        }
    }

    // Opened as they are, they would keep the program waiting for ever.
    void APipeOrADeviceUnderTheNameOfAJournalIsRefused()
    {
        QFETCH(QString, suffix);
        QFETCH(QString, device);
        const QString place = Path(suffix);
        const QByteArray name = QFile::encodeName(place);
        if (suffix.isEmpty())
            QFile::remove(place);
        if (device == directory)
            QVERIFY(QDir().mkdir(place));
        else if (device.isEmpty())
            QCOMPARE(::mkfifo(name.constData(), 0600), 0);
        else
            QVERIFY(QFile::link(device, place));
        const Opening opening = Open(Meldungen::Antwort::Ja);
        const QString reason = device == directory && suffix.isEmpty() ? " ist ein Ordner und keine Kartei."
                                                                       : " ist keine gewöhnliche Datei.";
        QCOMPARE(opening.messages, QStringList("„" + place + "“" + reason + " Fcode: 3051"));
        for (const auto access : {CardFile::Access::Exclusive, CardFile::Access::ReadOnly})
            QVERIFY_EXCEPTION_THROWN(CardFile(Path(), access), StoreError);
        if (!suffix.isEmpty())
            QCOMPARE(ReadFile(Path()), sound_);
    }

    // The engine puts its files beside the file that a link leads to, and looks for them there.
    void WhatStandsBesideTheFileBehindALinkCounts()
    {
        const auto refuses = [this](int number) {
            for (const auto access : {CardFile::Access::Exclusive, CardFile::Access::ReadOnly}) {
                try {
                    CardFile file(Path(), access);
                    return false;
                } catch (const StoreError &error) {
                    if (error.Number() != number)
                        return false;
                }
            }
            return true;
        };
        QVERIFY(QDir(directory_->path()).mkdir("dort"));
        const QString real = directory_->filePath("dort/wirklich.pzb");
        QVERIFY(QFile::rename(Path(), real));
        QVERIFY(QFile::link(real, Path()));
        for (const char *suffix : {"-journal", "-wal", "-shm"}) {
            QCOMPARE(::mkfifo((QFile::encodeName(real) + suffix).constData(), 0600), 0);
            QCOMPARE(Open(Meldungen::Antwort::Ja).messages,
                     QStringList("„" + real + suffix + "“ ist keine gewöhnliche Datei. Fcode: 3051"));
            QVERIFY(refuses(Fehler::NichtErlaubt));
            QVERIFY(QFile::remove(real + suffix));
        }
        QVERIFY(!HasUnfinishedChange(Path()));
        for (const char *suffix : {"-journal", "-wal"}) {
            WriteFile(real + suffix, "x");
            QVERIFY(HasUnfinishedChange(Path()));
            QVERIFY(QFile::remove(real + suffix));
        }
        // It would lead the engine to another file.
        WriteFile(real + "-journal", "anderswo" + QByteArray::fromHex("d9d505f920a163d7"));
        QVERIFY(refuses(Fehler::Beschaedigt));
        QVERIFY(QFile::remove(real + "-journal"));
        // What a killed program left of a fresh file.
        const QString left = directory_->filePath("dort/.paukfix-0.neu");
        WriteFile(left, "halb");
        QCOMPARE(Open(Meldungen::Antwort::Nein).messages, QStringList());
        QVERIFY(!QFile::exists(left));
        QCOMPARE(ReadCards(Path()), cards_);
    }

    void ALinkLeadsToANameTooLongForAJournal()
    {
        const QString real = directory_->filePath(QString(250, u'n'));
        QVERIFY(QFile::rename(Path(), real));
        QVERIFY(QFile::link(real, Path()));
        QCOMPARE(Open(Meldungen::Antwort::Nein).messages,
                 QStringList("Der Dateiname „" + Path() + "“ ist zu lang. Fcode: 76"));
    }
};

PAUKFIX_CORE_TEST(FirstPageTest)
#include "FirstPageTest.moc"
