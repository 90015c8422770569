// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "PageSums.h"

#include "CardFileCheck.h"
#include "DamageLab.h"
#include "GivePageSums.h"
#include "StoreError.h"
#include "StoreTestSupport.h"
#include "TestProgram.h"
#include "VollePlatte.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <ctime>
#include <optional>
#include <sys/wait.h>
#include <unistd.h>

using namespace paukfix;
using namespace Qt::StringLiterals;

namespace {

bool ShortRun()
{
    return qEnvironmentVariableIsSet("PAUKFIX_SHORT_TESTS");
}

// The published sum, computed byte by byte and number by number, in 64 bits.
QByteArray SumOf(const QByteArray &page)
{
    quint64 one = 0, other = 0;
    const auto number = [&](qsizetype at) {
        quint64 value = 0;
        for (qsizetype i = 3; i >= 0; --i)
            value = value * 256 + static_cast<quint8>(page[at + i]);
        return value;
    };
    for (qsizetype at = 0; at + 8 < page.size(); at += 8) {
        one = (one + number(at) + other) % 0x100000000;
        other = (other + number(at + 4) + one) % 0x100000000;
    }
    QByteArray sum;
    for (const quint64 part : {one, other})
        for (int shift = 0; shift < 32; shift += 8)
            sum += static_cast<char>(part >> shift & 0xff);
    return sum;
}

// The numbers of the pages that do not fit their sums.
QList<int> WrongPages(const QByteArray &bytes, int pageSize = 4096)
{
    QList<int> wrong;
    for (qsizetype at = 0; at < bytes.size(); at += pageSize)
        if (bytes.mid(at + pageSize - 8, 8) != SumOf(bytes.mid(at, pageSize)))
            wrong << static_cast<int>(at / pageSize) + 1;
    return wrong;
}

// The number of the error that opening and checking the file gives; 0 for none.
int Opened(const QString &path)
{
    try {
        CardFile file(path);
        CheckCardFile(file.Database());
        return 0;
    } catch (const StoreError &error) {
        return error.Number();
    }
}

} // namespace

// The checksums of a card file's pages: the published format, what notices what, and how older files get
// them.
class PageSumsTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> directory_;

    QString Path(const QString &name = u"a.pzb"_s) const { return directory_->filePath(name); }

    QStringList Names() const
    {
        return QDir(directory_->path()).entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name);
    }

private slots:

    void initTestCase() { VollePlatte::Einbauen(); }

    void init() { directory_ = std::make_unique<QTemporaryDir>(); }

    void cleanup()
    {
        VollePlatte::Setzen(VollePlatte::Zustand::Gesund);
        VollePlatte::Scheitern(0);
    }

    void EachPageOfANewFileEndsInThePublishedSum()
    {
        const Box box = MakeBox(directory_->path(), {.cards = 300});
        QVERIFY(!box.freePages.isEmpty());
        QCOMPARE(static_cast<int>(box.bytes[20]), 8);
        QCOMPARE(WrongPages(box.bytes), QList<int>());
        const Box after = AfterTransaction(directory_->path(), box);
        QCOMPARE(WrongPages(after.bytes), QList<int>());
    }

    void EveryPageSizeHasItsSums()
    {
        for (int pageSize = 512; pageSize <= 65536; pageSize *= 2) {
            const Box box = MakeBox(directory_->path(), {.cards = 60, .pageSize = pageSize});
            QCOMPARE(WrongPages(box.bytes, pageSize), QList<int>());
            WriteFile(Path(), box.bytes);
            QCOMPARE(Opened(Path()), 0);
        }
    }

    void OfManyChangedBitsNoneGoesUnnoticed()
    {
        const Box box = MakeBox(directory_->path(), {.cards = 60});
        Random random(11);
        const int bits = ShortRun() ? 500 : 10'000;
        for (int i = 0; i < bits; ++i) {
            const qsizetype at = Pick(random, box.bytes.size());
            const int bit = Pick(random, 8);
            QByteArray bytes = box.bytes;
            bytes[at] = static_cast<char>(bytes[at] ^ 1 << bit);
            WriteFile(Path(), bytes);
            const int number = Opened(Path());
            QVERIFY2(number == Fehler::Beschaedigt,
                     qPrintable(u"byte %1, bit %2: %3"_s.arg(at).arg(bit).arg(number)));
        }
    }

    // The engine's check does not read the pages that nothing leads to.
    void AChangedBitOnAFreePageIsDamage()
    {
        const Box sound = MakeBox(directory_->path(), {.cards = 1000});
        const Box box = AfterTransaction(directory_->path(), sound);
        QVERIFY(box.freePages.size() > 1);
        for (const int page : box.freePages) {
            QByteArray bytes = box.bytes;
            const qsizetype at = qsizetype(page) * box.pageSize - 2000;
            bytes[at] = static_cast<char>(bytes[at] ^ 1);
            WriteFile(Path(), bytes);
            QCOMPARE(Opened(Path()), static_cast<int>(Fehler::Beschaedigt));
        }
    }

    void NoBitOfTheHeaderTurnsTheSumsOff()
    {
        MakeCardFile(Path(), SomeCards(5));
        const QByteArray sound = ReadFile(Path());
        for (qsizetype at = 0; at < 100; ++at)
            for (int bit = 0; bit < 8; ++bit) {
                QByteArray bytes = sound;
                bytes[at] = static_cast<char>(bytes[at] ^ 1 << bit);
                WriteFile(Path(), bytes);
                const int number = Opened(Path());
                QVERIFY2(number == Fehler::Beschaedigt,
                         qPrintable(u"byte %1, bit %2: %3"_s.arg(at).arg(bit).arg(number)));
            }
    }

    void WhatAProgramWithoutSumsHasWrittenIsDamage_data()
    {
        QTest::addColumn<QString>("sql");
        QTest::newRow("a card") << u"UPDATE Lernkarten SET Frage='anders' WHERE FrageNr=2"_s;
        QTest::newRow("the whole file") << u"VACUUM"_s;
    }

    void WhatAProgramWithoutSumsHasWrittenIsDamage()
    {
        QFETCH(QString, sql);
        MakeCardFile(Path(), SomeCards(30));
        QProcess other;
        other.start("sqlite3", {Path(), sql});
        QVERIFY(other.waitForFinished());
        QCOMPARE(other.exitCode(), 0);
        QVERIFY(WrongPages(ReadFile(Path())).contains(1));
        QCOMPARE(Opened(Path()), static_cast<int>(Fehler::Beschaedigt));
    }

    // The journal's own check looks at every 200th byte only.
    void AChangedBitInAJournalIsNotRolledBackIntoTheFile()
    {
        const Box amid = AmidTransaction(directory_->path(), MakeBox(directory_->path(), {.cards = 300}));
        const auto open = [&](const QByteArray &journal) {
            WriteFile(Path(), amid.bytes);
            WriteFile(Path(u"a.pzb-journal"_s), journal);
            return Opened(Path());
        };
        QCOMPARE(open(amid.journal), 0);
        QCOMPARE(WrongPages(ReadFile(Path())), QList<int>());
        // The first page that it keeps stands behind the journal's own first sector and the page's number.
        QByteArray journal = amid.journal;
        const qsizetype at = 512 + 4 + 1001;
        journal[at] = static_cast<char>(journal[at] ^ 1);
        QCOMPARE(open(journal), static_cast<int>(Fehler::Beschaedigt));
    }

    void AFileWithoutOurMarkIsReadAndWrittenAsItIs()
    {
        MakeFormerCardFile(Path(), SomeCards(5));
        QByteArray bytes = ReadFile(Path());
        bytes.replace(68, 4, QByteArray(4, '\0'));
        WriteFile(Path(), bytes);
        QCOMPARE(Opened(Path()), 0);
        {
            CardFile file(Path());
            QVERIFY(!file.LacksPageSums());
            CardRecordset cards(file);
            cards.MoveFirst();
            cards.Edit();
            cards[u"Frage"].Set(u"neu"_s);
            cards.Update();
        }
        QCOMPARE(static_cast<int>(ReadFile(Path())[20]), 0);
        QCOMPARE(Opened(Path()), 0);
    }

    void AnOlderFileWorksAsItIsAndGetsItsSums()
    {
        MakeFormerCardFile(Path(), SomeCards(200));
        QVERIFY(!WrongPages(ReadFile(Path())).isEmpty());
        {
            CardFile file(Path());
            QVERIFY(file.LacksPageSums());
            file.Database().exec(
                "UPDATE Lernkarten SET Frage=x'00ff', Picture_1_Name=NULL, PictureTop=1.5 WHERE FrageNr=3");
        }
        const QList<CardRecord> cards = ReadCards(Path());
        QVERIFY(QFile::setPermissions(Path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup));
        const auto permissions = QFile::permissions(Path());
        GivePageSums(Path());
        QCOMPARE(Names(), QStringList{u"a.pzb"_s});
        QCOMPARE(QFile::permissions(Path()), permissions);
        QCOMPARE(WrongPages(ReadFile(Path())), QList<int>());
        QCOMPARE(ReadCards(Path()), cards);
        QCOMPARE(FaultIn(Path()), QString());
        CardFile file(Path());
        QVERIFY(!file.LacksPageSums());
        QCOMPARE(file.Database()
                     .execAndGet("SELECT hex(Frage)||typeof(Frage) FROM Lernkarten WHERE FrageNr=3")
                     .getString(),
                 std::string("00FFblob"));
    }

    void AFileThatHoldsMoreThanCardsKeepsIt()
    {
        MakeFormerCardFile(Path(), SomeCards(5));
        CardFile file(Path());
        file.Database().exec("CREATE TABLE Notizen(text)");
        QVERIFY(!file.LacksPageSums());
    }

    void AnOlderFileThatAnotherProgramHasStaysAsItIs()
    {
        MakeFormerCardFile(Path(), SomeCards(5));
        const QByteArray before = ReadFile(Path());
        QProcess other;
        other.start("sqlite3", {Path()});
        other.write("BEGIN EXCLUSIVE; SELECT 'da';\n");
        QVERIFY(other.waitForReadyRead());
        QVERIFY_EXCEPTION_THROWN(GivePageSums(Path()), StoreError);
        other.closeWriteChannel();
        QVERIFY(other.waitForFinished());
        QCOMPARE(ReadFile(Path()), before);
        QCOMPARE(Names(), QStringList{u"a.pzb"_s});
    }

    void AnyCallToTheDiskMayFailWhileAnOlderFileGetsItsSums()
    {
        MakeFormerCardFile(Path(), SomeCards(40));
        const QByteArray before = ReadFile(Path());
        const QList<CardRecord> cards = ReadCards(Path());
        int failures = 0;
        for (int call = 1;; ++call) {
            for (const auto how :
                 {VollePlatte::Art::Fehler, VollePlatte::Art::Halb, VollePlatte::Art::Voll}) {
                VollePlatte::Scheitern(call, how);
                std::optional<StoreError> error;
                try {
                    GivePageSums(Path());
                } catch (const StoreError &thrown) {
                    error = thrown;
                }
                const bool reached = VollePlatte::Gescheitert().has_value();
                VollePlatte::Scheitern(0);
                QCOMPARE(Names(), QStringList{u"a.pzb"_s});
                if (error) {
                    ++failures;
                    QVERIFY2(IsGermanMessage(error->Text()), qPrintable(error->Text()));
                    QVERIFY2(error->Text().contains(Path()), qPrintable(error->Text()));
                    QCOMPARE(ReadFile(Path()), before);
                    continue;
                }
                QCOMPARE(Opened(Path()), 0);
                QCOMPARE(ReadCards(Path()), cards);
                if (!reached) {
                    QVERIFY(failures > 20);
                    return;
                }
                WriteFile(Path(), before);
            }
        }
    }

    void AKillAtAnyMomentLeavesTheOlderFileOrTheNewOne()
    {
        const int kills = ShortRun() ? 20 : 120;
        MakeFormerCardFile(Path(), SomeCards(400));
        const QByteArray old = ReadFile(Path());
        const QList<CardRecord> cards = ReadCards(Path());
        Random random(815);
        qint64 whole = 20'000'000; // nanoseconds that it takes
        int before = 0, after = 0;
        for (int kill = 0; kill < kills; ++kill) {
            WriteFile(Path(), old);
            const pid_t child = fork();
            if (child == 0) {
                try {
                    GivePageSums(Path());
                } catch (...) {
                    _exit(1);
                }
                _exit(0);
            }
            const timespec moment{0, static_cast<long>(Pick(random, whole))};
            nanosleep(&moment, nullptr);
            ::kill(child, SIGKILL);
            int status = 0;
            QCOMPARE(waitpid(child, &status, 0), child);
            if (WIFEXITED(status)) {
                QCOMPARE(WEXITSTATUS(status), 0);
                whole = std::max<qint64>(whole * 9 / 10, 100'000);
            } else {
                whole = std::min<qint64>(whole * 12 / 10, 900'000'000);
            }
            ++(ReadFile(Path()) == old ? before : after);
            QCOMPARE(Opened(Path()), 0);
            QCOMPARE(ReadCards(Path()), cards);
            // Kills do not pile up what they leave.
            QVERIFY2(Names().size() <= 3, qPrintable(Names().join(u' ')));
        }
        QVERIFY2(before > kills / 10 && after > kills / 10,
                 qPrintable(u"%1 before, %2 after"_s.arg(before).arg(after)));
    }
};

PAUKFIX_CORE_TEST(PageSumsTest)
#include "PageSumsTest.moc"
