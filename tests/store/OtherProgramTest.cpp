// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "AnderesProgramm.h"
#include "CardTransaction.h"
#include "DamageLab.h"
#include "JetSource.h"
#include "JournalFile.h"
#include "KarteiOeffner.h"
#include "Repair.h"
#include "SafeFile.h"
#include "StoreError.h"
#include "StoreTestSupport.h"
#include "TestPlaces.h"
#include "TestProgram.h"

#include <QProcess>
#include <QTest>

#include <fcntl.h>
#include <optional>
#include <unistd.h>

using namespace paukfix;
using namespace Qt::StringLiterals;

namespace {

// Asks card 1 for a new place, as an answer does.
void Answer(CardRecordset &cards)
{
    cards.SetIndex(u"FrageNr");
    cards.Seek(CardRecordset::Comparison::Equal, 1);
    const Field place = cards[u"FachLfdNr"];
    const double next = place.Number() + 1;
    cards.Edit();
    Field(place).Set(next);
    cards.Update();
}

} // namespace

// Another program's doings with the card file, or with what takes its place, while it is open here.
class OtherProgramTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> directory_;

    QString Path(const QString &name = u"a.pzb"_s) const { return directory_->filePath(name); }

    // The error of one more answer, the path replaced by DATEI.
    std::optional<StoreError> Error(CardRecordset &cards) const
    {
        try {
            Answer(cards);
        } catch (const StoreError &error) {
            return StoreError(error.Number(), error.Text().replace(Path(), u"DATEI"_s));
        }
        return std::nullopt;
    }

private slots:

    void init()
    {
        directory_ = std::make_unique<QTemporaryDir>();
        MakeCardFile(Path(), {MakeCard(1, 0, 1), MakeCard(2, 1, 1)});
    }

    void AJournalOfTheFileThatTookThePlaceIsLeftAlone_data()
    {
        QTest::addColumn<int>("answers");
        QTest::addColumn<bool>("transaction");
        QTest::newRow("before the first answer") << 0 << false;
        QTest::newRow("after an answer") << 1 << false;
        QTest::newRow("in a transaction") << 0 << true;
        QTest::newRow("in a transaction after an answer") << 1 << true;
    }

    void AJournalOfTheFileThatTookThePlaceIsLeftAlone()
    {
        QFETCH(int, answers);
        QFETCH(bool, transaction);
        QTemporaryDir elsewhere;
        const Box box = MakeBox(elsewhere.path(), {.cards = 300});
        const Box amid = AmidTransaction(elsewhere.path(), box);
        {
            CardFile file(Path());
            CardRecordset cards(file);
            for (int i = 0; i < answers; ++i)
                Answer(cards);
            std::optional<CardTransaction> zug;
            if (transaction) {
                zug.emplace(cards);
                Answer(cards);
            }
            QVERIFY(QFile::rename(Path(), Path("weg.pzb")));
            // Its journal first, as another program would do.
            WriteFile(Path("neu-journal"), amid.journal);
            WriteFile(Path("neu"), amid.bytes);
            for (const char *suffix : {"-journal", ""})
                QCOMPARE(::rename(QFile::encodeName(Path("neu") + suffix).constData(),
                                  QFile::encodeName(Path() + suffix).constData()),
                         0);
            if (transaction) {
                QVERIFY_EXCEPTION_THROWN(zug->Commit(), StoreError);
                zug->Rollback();
            }
            QCOMPARE(Error(cards)->Number(), Fehler::KarteiNichtGefunden);
        }
        QCOMPARE(ReadFile(Path()), amid.bytes);
        QCOMPARE(ReadFile(Path() + "-journal"), amid.journal);
        QCOMPARE(FaultIn(Path("weg.pzb")), QString());
        QCOMPARE(ReadCards(Path("weg.pzb")).front().FachLfdNr, 1.0 + answers);
        // The other file is rolled back to what it was.
        QCOMPARE(FaultIn(Path()), QString());
        const auto found = ReadDigests(Path());
        QCOMPARE(found.size(), box.cards.size());
        for (const CardTruth &card : box.cards)
            QCOMPARE(found.value(card.marker), card.digest);
    }

    void NoJournalStaysBesideAFileThatStayed()
    {
        {
            CardFile file(Path());
            CardRecordset cards(file);
            Answer(cards);
        }
        QCOMPARE(QDir(directory_->path()).entryList(QDir::Files), QStringList("a.pzb"));
    }

    // Reading a directory, looking for a file's type, copying: what opens and closes the card file.
    void NoDescriptorOfOursLetsGoOfTheLock()
    {
        CardFile file(Path());
        CardRecordset cards(file);
        QCOMPARE(GapInLock(Path()), QString());
        QVERIFY(QFile::link(Path(), Path("link.pzb")));
        QCOMPARE(
            ::link(QFile::encodeName(Path()).constData(), QFile::encodeName(Path("zwei.pzb")).constData()),
            0);
        for (const QString &name : {Path(), Path("link.pzb"), Path("zwei.pzb")}) {
            for (const int mode : {O_RDONLY, O_WRONLY, O_RDWR, O_PATH})
                ::close(::open(QFile::encodeName(name).constData(), mode));
            const int twice = ::open(QFile::encodeName(name).constData(), O_RDWR);
            ::close(::dup(twice));
            ::close(twice);
            QFile(name).open(QIODevice::ReadOnly);
            ::ReadFile(name, 1 << 20);
            SyncFile(name);
            QVERIFY(!IsJetFile(name));
            QVERIFY(!NamesOtherFiles(name));
            QVERIFY_EXCEPTION_THROWN(CheckReplaceable(name), StoreError);
            CopyFile(name, Path("kopie"));
            QFile::remove(Path("kopie"));
            QCOMPARE(GapInLock(Path()), QString());
        }
        QVERIFY(!Error(cards));
        QCOMPARE(GapInLock(Path()), QString());
    }

    void ASecondRunOfTheProgramIsToldThatTheFileIsOpen()
    {
        QProcess first;
        first.start(WorkerPath("lock_worker"), {Path()});
        QVERIFY(first.waitForReadyRead());
        QCOMPARE(first.readAll(), QByteArray("0\n"));
        QCOMPARE(GapInLock(Path()), QString());
        for (const auto access : {CardFile::Access::Exclusive, CardFile::Access::ReadOnly}) {
            try {
                const CardFile second(Path(), access);
                QFAIL("opened twice");
            } catch (const StoreError &error) {
                QCOMPARE(error.Number(), Fehler::Gesperrt);
            }
        }
        QVERIFY_EXCEPTION_THROWN(CheckReplaceable(Path()), StoreError);
        first.closeWriteChannel();
        QVERIFY(first.waitForFinished());
        const CardFile mine(Path());
        QProcess again;
        again.start(WorkerPath("lock_worker"), {Path()});
        QVERIFY(again.waitForFinished());
        QCOMPARE(again.readAll(), "3045\n");
    }

    void AFileThatAnotherProgramReadsOrWritesIsRefused_data()
    {
        QTest::addColumn<QByteArray>("sql");
        QTest::addColumn<bool>("readable");
        QTest::newRow("reading") << QByteArray("BEGIN; SELECT 'da', count(*) FROM Lernkarten;\n") << true;
        QTest::newRow("writing") << QByteArray("BEGIN IMMEDIATE; SELECT 'da';\n") << true;
        QTest::newRow("alone") << QByteArray("BEGIN EXCLUSIVE; SELECT 'da';\n") << false;
    }

    void AFileThatAnotherProgramReadsOrWritesIsRefused()
    {
        QFETCH(QByteArray, sql);
        QFETCH(bool, readable);
        QProcess other;
        other.start("sqlite3", {Path()});
        other.write(sql);
        QVERIFY(other.waitForReadyRead());
        const auto number = [this](CardFile::Access access) {
            try {
                const CardFile file(Path(), access);
                return 0;
            } catch (const StoreError &error) {
                return error.Number();
            }
        };
        QCOMPARE(number(CardFile::Access::Exclusive), Fehler::Gesperrt);
        QCOMPARE(number(CardFile::Access::ReadOnly), readable ? 0 : Fehler::Gesperrt);
        QVERIFY_EXCEPTION_THROWN(CheckReplaceable(Path()), StoreError);
        other.closeWriteChannel();
        QVERIFY(other.waitForFinished());
        QCOMPARE(number(CardFile::Access::Exclusive), 0);
    }

    void LostLocksAreTakenAnew()
    {
        CardFile file(Path());
        CardRecordset cards(file);
        const QString change("UPDATE Lernkarten SET FachNr=3 WHERE FrageNr=2");
        QVERIFY(OtherProgram(Path(), change).contains("locked"));
        LoseLocks(Path());
        QVERIFY(!Error(cards));
        QVERIFY(OtherProgram(Path(), change).contains("locked"));
    }

    void AfterLostLocksAnotherProgramsFileIsNotWritten()
    {
        const QByteArray before = ReadFile(Path());
        {
            CardFile file(Path());
            CardRecordset cards(file);
            LoseLocks(Path());
            QProcess other;
            other.start("sqlite3", {Path()});
            other.write("BEGIN EXCLUSIVE; SELECT 'da';\n");
            QVERIFY(other.waitForReadyRead());
            const auto error = Error(cards);
            QVERIFY(error);
            QCOMPARE(error->Number(), Fehler::Gesperrt);
            QCOMPARE(error->Text(),
                     QString("Die Datei „DATEI“ ist gesperrt: ein anderes Programm hat sie geöffnet."));
            other.closeWriteChannel();
            QVERIFY(other.waitForFinished());
        }
        QCOMPARE(ReadFile(Path()), before);
    }

    void AfterLostLocksAnotherProgramsChangeIsSeen()
    {
        {
            CardFile file(Path());
            CardRecordset cards(file);
            Answer(cards);
            LoseLocks(Path());
            QCOMPARE(OtherProgram(Path(), "UPDATE Lernkarten SET FachNr=3 WHERE FrageNr=2"), QString());
            for (int attempt = 0; attempt < 2; ++attempt) {
                const auto error = Error(cards);
                QVERIFY(error);
                QCOMPARE(error->Number(), Fehler::Gesperrt);
                QCOMPARE(error->Text(),
                         QString("Die Datei „DATEI“ wurde von einem anderen Programm geändert, "
                                 "während sie offen war."));
            }
            QVERIFY_EXCEPTION_THROWN(CardTransaction zug(cards), StoreError);
        }
        // The other program knows nothing of the sums of pages; the repair gives both changes.
        try {
            const CardFile file(Path());
            QFAIL("not noticed");
        } catch (const StoreError &error) {
            QCOMPARE(error.Number(), Fehler::Beschaedigt);
        }
        RepairDatabase(Path());
        QCOMPARE(FaultIn(Path()), QString());
        const QList<CardRecord> cards = ReadCards(Path());
        QCOMPARE(cards[0].FachLfdNr, 2.0);
        QCOMPARE(cards[1].FachNr, 3.0);
    }

    void AFileThatWasCutIsNotWrittenAnyMore()
    {
        const qint64 half = QFileInfo(Path()).size() / 2;
        {
            CardFile file(Path());
            CardRecordset cards(file);
            QVERIFY(QFile::resize(Path(), half));
            const auto error = Error(cards);
            QVERIFY(error);
            QCOMPARE(error->Number(), Fehler::Gesperrt);
        }
        QCOMPARE(QFileInfo(Path()).size(), half);
        // The next opening offers the repair.
        TestMeldungen messages;
        const TestClock clock;
        CardStore store;
        KarteiOeffner oeffner(store, messages, clock);
        store.KarteiPfad = directory_->path();
        QString name = u"a.pzb"_s;
        oeffner.OpenCardFile(name);
        QCOMPARE(messages.Texte().constFirst(), QString("Diese Datei ist beschädigt Reparaturversuch ?"));
    }
};

PAUKFIX_CORE_TEST(OtherProgramTest)
#include "OtherProgramTest.moc"
