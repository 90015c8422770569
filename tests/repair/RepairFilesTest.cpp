// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardFile.h"
#include "DamageLab.h"
#include "KarteiOeffner.h"
#include "Repair.h"
#include "ResourceLimit.h"
#include "StoreError.h"
#include "StoreTestSupport.h"
#include "TestProgram.h"
#include "VollePlatte.h"

#include <QDir>
#include <QElapsedTimer>
#include <QLocale>
#include <QTest>
#include <SQLiteCpp/SQLiteCpp.h>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

using namespace paukfix;
using namespace Qt::StringLiterals;

namespace {

// Does not take the child's end away from who waits for it.
bool HasEnded(pid_t child)
{
    siginfo_t info = {};
    return waitid(P_PID, static_cast<id_t>(child), &info, WEXITED | WNOHANG | WNOWAIT) != 0 ||
           info.si_pid == child;
}

const auto takenBack = u"\nEin Schreibvorgang war nicht zu Ende gekommen; er wurde zurückgenommen.\n"_s;

} // namespace

// What a repair does with the files: names, locks, journals, failures and kills.
class RepairFilesTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> directory_;

    QString Path(const QString &name = u"Kasten.pzb"_s) const { return directory_->filePath(name); }

    QStringList Names() const
    {
        return QDir(directory_->path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    }

    // Makes the file unusable without touching a card.
    void DestroyFirstPage()
    {
        QByteArray bytes = ReadFile(Path());
        bytes.replace(0, 4096, QByteArray(4096, '\x55'));
        WriteFile(Path(), bytes);
    }

private slots:

    void init() { directory_ = std::make_unique<QTemporaryDir>(); }

    void SecondRepairTakesNewNames()
    {
        MakeCardFile(Path(), SomeCards(5));
        const RepairResult first = RepairDatabase(Path()), second = RepairDatabase(Path());
        QCOMPARE(QFileInfo(first.damagedFile).fileName(), u"Kasten.pzb.beschädigt"_s);
        QCOMPARE(QFileInfo(second.damagedFile).fileName(), u"Kasten.pzb.beschädigt-2"_s);
        QCOMPARE(QFileInfo(second.report).fileName(), u"Kasten.pzb.Reparatur-2.txt"_s);
        QCOMPARE(Names().size(), 5);
    }

    void LongNameAndSymbolicLinkAreFollowed()
    {
        const QString real = Path(u"ü"_s.repeated(117) + u".pzb"_s);
        MakeCardFile(real, SomeCards(5));
        QVERIFY(QFile::link(real, Path()));
        const RepairResult result = RepairDatabase(Path());
        QVERIFY(QFileInfo(Path()).isSymLink());
        QVERIFY(!QFileInfo(real).isSymLink());
        QVERIFY(QFile::exists(result.damagedFile));
        QVERIFY(result.damagedFile.endsWith(u".beschädigt"_s));
        QCOMPARE(ReadCards(Path()).size(), 5);
    }

    // Such a link would lead to the repaired file afterwards, and the damaged one would be gone.
    void ALinkUnderTheOldNameIsNotTakenForTheOldFile()
    {
        MakeCardFile(Path(), SomeCards(5));
        DestroyFirstPage();
        const QByteArray damaged = ReadFile(Path());
        QVERIFY(QFile::link(Path(), Path(u"Kasten.pzb.beschädigt"_s)));
        const RepairResult result = RepairDatabase(Path());
        QCOMPARE(QFileInfo(result.damagedFile).fileName(), u"Kasten.pzb.beschädigt-2"_s);
        QCOMPARE(ReadFile(result.damagedFile), damaged);
        QCOMPARE(ReadCards(Path()).size(), 5);
    }

    void FileInUseIsRefused()
    {
        MakeCardFile(Path(), SomeCards(5));
        const CardFile open(Path());
        try {
            RepairDatabase(Path());
            QFAIL("repaired a file in use");
        } catch (const StoreError &error) {
            QCOMPARE(error.Number(), Fehler::Gesperrt);
        }
        QCOMPARE(Names().size(), 1);
    }

    void MissingFileIsNamed()
    {
        try {
            RepairDatabase(Path());
            QFAIL("repaired nothing");
        } catch (const StoreError &error) {
            QCOMPARE(error.Number(), Fehler::KarteiNichtGefunden);
            QVERIFY(error.Text().contains(Path()));
        }
    }

    void PermissionsAreKept()
    {
        MakeCardFile(Path(), SomeCards(5));
        const auto mode = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::WriteGroup;
        QVERIFY(QFile::setPermissions(Path(), mode));
        RepairDatabase(Path());
        QCOMPARE(QFile::permissions(Path()) & ~(QFile::ReadUser | QFile::WriteUser), mode);
    }

    // A forged journal that takes everything away must not win over the cards that are there.
    void JournalThatTakesEverythingAwayIsNotBelieved()
    {
        const Box box = MakeBox(directory_->path(), {.cards = 300});
        const Box amid = AmidTransaction(directory_->path(), box);
        QByteArray journal = amid.journal;
        journal.replace(16, 4, QByteArray::fromHex("00000002")); // pages that the file had before
        WriteFile(Path(), box.bytes);
        WriteFile(Path() + u"-journal"_s, journal);
        const RepairResult result = RepairDatabase(Path());
        QCOMPARE(result.cards, box.cards.size());
        QVERIFY(!QFile::exists(Path() + u"-journal"_s));
        QVERIFY(!QString::fromUtf8(ReadFile(result.report)).contains(takenBack));
    }

    void UnfinishedTransactionIsNamedInTheReport()
    {
        const Box box = MakeBox(directory_->path(), {.cards = 300});
        const Box amid = AmidTransaction(directory_->path(), box);
        WriteFile(Path(), amid.bytes);
        WriteFile(Path() + u"-journal"_s, amid.journal);
        QVERIFY(QString::fromUtf8(ReadFile(RepairDatabase(Path()).report)).contains(takenBack));
    }

    // A disk that says that it has written and has not.
    void NewFileThatDoesNotReadBackIsNotTaken()
    {
        MakeCardFile(Path(), SomeCards(1000));
        DestroyFirstPage();
        const QByteArray before = ReadFile(Path());

        struct Verderber final : VollePlatte::Zeuge
        {
            // When it is opened to be read back.
            void Geoeffnet(const QString &pfad, bool, const QByteArray &inhalt) override
            {
                QFile datei(pfad);
                if (pfad.endsWith("neu.pzb") && inhalt.size() > 20 * 4096 &&
                    datei.open(QIODevice::ReadWrite) && datei.seek(10 * 4096))
                    verdorben += datei.write(QByteArray(4096, '\x5a')) > 0 ? 1 : 0;
            }

            void Geschrieben(const QString &, qint64, const QByteArray &) override {}

            void Gekuerzt(const QString &, qint64) override {}

            void Gesichert(const QString &) override {}

            void Geloescht(const QString &, bool) override {}

            int verdorben = 0;
        } verderber;

        VollePlatte::Einbauen();
        VollePlatte::SetZeuge(&verderber);
        QString text;
        try {
            RepairDatabase(Path());
        } catch (const StoreError &error) {
            text = error.Text();
        }
        VollePlatte::SetZeuge(nullptr);
        QVERIFY(verderber.verdorben > 0);
        QCOMPARE(text, QString("Die neue Kartei ließ sich nicht fehlerfrei schreiben."));
        QCOMPARE(Names(), QStringList("Kasten.pzb"));
        QCOMPARE(ReadFile(Path()), before);
    }

    void FullDiskLeavesEverythingAsItWas()
    {
        const Box box = MakeBox(directory_->path(), {.cards = 300});
        QFile::remove(Path(u"werkstatt.pzb"_s));
        WriteFile(Path(), box.bytes);
        DestroyFirstPage();
        const QByteArray before = ReadFile(Path());
        // No file may grow beyond the limit: the copy fails, or the new file, or nothing.
        int failed = 0;
        QStringList texts;
        for (const qint64 limit : {qint64(0), qint64(5000), box.bytes.size() / 2, box.bytes.size() - 1}) {
            try {
                const FullDisk full(static_cast<rlim_t>(limit));
                RepairDatabase(Path());
            } catch (const StoreError &error) {
                failed += error.Number() == Fehler::DatentraegerVoll ? 1 : 0;
                texts << error.Text();
            }
            QCOMPARE(Names(), QStringList{u"Kasten.pzb"_s});
            QCOMPARE(ReadFile(Path()), before);
        }
        QCOMPARE(failed, 4);
        texts.removeDuplicates();
        QCOMPARE(
            texts,
            QStringList(
                QString("Der Datenträger ist voll; an der Datei „%1“ wurde nichts geändert.").arg(Path())));
    }

    void KillLeavesTheDamagedOrTheRepairedFile()
    {
        const bool isShort = qEnvironmentVariableIntValue("PAUKFIX_SHORT_TESTS") != 0;
        const Box box = MakeBox(directory_->path(), {.cards = 300});
        const Box amid = AmidTransaction(directory_->path(), box);
        QElapsedTimer timer;
        timer.start();
        const auto lay = [&] {
            const QDir directory(directory_->path());
            for (const QString &name : directory.entryList(QDir::Files))
                QFile::remove(directory.filePath(name));
            WriteFile(Path(), amid.bytes);
            WriteFile(Path() + u"-journal"_s, amid.journal);
        };
        lay();
        RepairDatabase(Path());
        const qint64 whole = timer.nsecsElapsed() / 1000;
        Random random(5);
        int killed = 0;
        for (int run = 0; run < (isShort ? 12 : 60); ++run) {
            lay();
            const qint64 moment = Pick(random, whole);
            const pid_t child = fork();
            if (child == 0) {
                RepairDatabase(Path());
                _exit(0);
            }
            // At any time, or in the short moments in which the names change.
            QElapsedTimer waiting;
            waiting.start();
            const auto reached = [&] {
                if (run % 3 == 0)
                    return waiting.nsecsElapsed() / 1000 > moment;
                return run % 3 == 1 ? QFile::exists(Path() + u".beschädigt"_s)
                                    : !QFile::exists(Path() + u"-journal"_s);
            };
            while (!reached() && !HasEnded(child) && waiting.elapsed() < 60'000) {
            }
            kill(child, SIGKILL);
            int status = 0;
            waitpid(child, &status, 0);
            killed += WIFSIGNALED(status) ? 1 : 0;
            RemoveRepairLeftovers(Path());
            QVERIFY(QFile::exists(Path()));
            QVERIFY(!QFile::exists(Path() + u".reparatur"_s));
            // Whichever file lies there, the engine reads every card out of it.
            {
                SQLite::Database database(Path().toStdString(), SQLite::OPEN_READWRITE);
                QCOMPARE(database.execAndGet("PRAGMA integrity_check").getString(), std::string("ok"));
            }
            const auto found = ReadDigests(Path());
            QCOMPARE(found.size(), box.cards.size());
            for (const CardTruth &card : box.cards)
                QCOMPARE(found.value(card.marker), card.digest);
        }
        QVERIFY(killed > 0);
    }

    // Again and again in one directory, and the last repair comes to its end.
    void KillsDoNotPileUpFiles()
    {
        const int runs = qEnvironmentVariableIntValue("PAUKFIX_SHORT_TESTS") != 0 ? 15 : 80;
        MakeCardFile(Path(), SomeCards(300));
        DestroyFirstPage();
        const QByteArray damaged = ReadFile(Path());
        const QStringList all{"Kasten.pzb", "Kasten.pzb.beschädigt", "Kasten.pzb.Reparatur.txt"};
        const auto lay = [&] {
            for (const QString &name : Names())
                QVERIFY(QFile::remove(Path(name)));
            WriteFile(Path(), damaged);
        };
        lay();
        QElapsedTimer timer;
        timer.start();
        RepairDatabase(Path());
        const qint64 whole = timer.nsecsElapsed() / 1000;
        QCOMPARE(Names(), all);
        lay();
        Random random(11);
        int killed = 0, finished = 0;
        for (int run = 0; run < runs; ++run) {
            const qint64 moment = Pick(random, whole);
            const pid_t child = fork();
            if (child == 0) {
                RepairDatabase(Path());
                _exit(0);
            }
            QElapsedTimer waiting;
            waiting.start();
            const auto reached = [&] {
                return run % 2 == 0 ? waiting.nsecsElapsed() / 1000 > moment : QFile::exists(Path(all[1]));
            };
            while (!reached() && !HasEnded(child) && waiting.elapsed() < 60'000) {
            }
            kill(child, SIGKILL);
            int status = 0;
            waitpid(child, &status, 0);
            killed += WIFSIGNALED(status) ? 1 : 0;
            const bool repaired = ReadFile(Path()) != damaged;
            if (repaired)
                RemoveRepairLeftovers(Path()); // as the next opening does
            for (const QString &name : Names())
                QVERIFY2(all.contains(name) || (!repaired && name == "Kasten.pzb.reparatur"),
                         qPrintable(Names().join(u' ')));
            if (!repaired)
                continue;
            ++finished;
            QCOMPARE(Names(), all);
            QCOMPARE(ReadCards(Path()).size(), 300);
            QCOMPARE(ReadFile(Path(all[1])), damaged);
            lay();
        }
        QVERIFY(killed > 0);
        RepairDatabase(Path());
        QCOMPARE(Names(), all);
        qInfo("%d killed, %d of them at the end", killed, finished);
    }

    void TheStoreRepairsAndOpens()
    {
        MakeCardFile(Path(), SomeCards(20));
        DestroyFirstPage();
        TestMeldungen meldungen;
        meldungen.antworten = {Meldungen::Antwort::Ja};
        const TestClock clock;
        CardStore store;
        KarteiOeffner oeffner(store, meldungen, clock);
        store.KarteiPfad = directory_->path();
        QString name = u"Kasten.pzb"_s;
        oeffner.OpenCardFile(name);
        QCOMPARE(meldungen.Texte(), (QStringList{u"Diese Datei ist beschädigt Reparaturversuch ?"_s,
                                                 u"Datei wurde repariert"_s}));
        QVERIFY(store.IsOpen());
        QCOMPARE(store.HighestCardNumber, qint16(20));
    }

    // The learner's wish is an exception out of what shows the progress.
    void CancelledCheckLeavesNoFileOpen()
    {
        MakeCardFile(Path(), SomeCards(2000));
        TestMeldungen meldungen;
        const TestClock clock;
        CardStore store;
        KarteiOeffner oeffner(store, meldungen, clock);
        store.KarteiPfad = directory_->path();
        int told = 0;
        // Before the engine begins, and while it compares the table with its indexes.
        for (const int last : {1, 10}) {
            told = 0;
            meldungen.gezeigt.clear();
            oeffner.WartenZeigen = [&](const QString &, const QString &abgebrochen) -> Progress {
                return [&told, last, abgebrochen](int, int) {
                    if (++told == last)
                        throw StoreError(Fehler::Abgebrochen, abgebrochen);
                };
            };
            QString name = u"Kasten.pzb"_s;
            oeffner.OpenCardFile(name);
            QCOMPARE(told, last);
            QVERIFY(name.isEmpty() && !store.IsOpen());
            QCOMPARE(meldungen.Texte(), QStringList(u"Die Prüfung wurde abgebrochen; die Kartei ist "
                                                    u"nicht geöffnet. Fcode: 3059"_s));
        }
        oeffner.WartenZeigen = [](const QString &, const QString &) { return Progress(); };
        QString name = u"Kasten.pzb"_s;
        oeffner.OpenCardFile(name);
        QVERIFY(store.IsOpen());
    }

    void CancelledRepairLeavesTheFileAsItWas()
    {
        MakeCardFile(Path(), SomeCards(2000));
        DestroyFirstPage();
        const QByteArray before = ReadFile(Path());
        TestMeldungen meldungen;
        const TestClock clock;
        CardStore store;
        KarteiOeffner oeffner(store, meldungen, clock);
        store.KarteiPfad = directory_->path();
        int steps = 0;
        RepairDatabase(Path(), [&](int, int) { ++steps; });
        for (const QString &name : Names())
            QVERIFY(QFile::remove(Path(name)));
        QVERIFY(steps > 10);
        for (int last = 1; last <= steps; last += 3) {
            WriteFile(Path(), before);
            meldungen.gezeigt.clear();
            meldungen.antworten = {Meldungen::Antwort::Ja};
            int told = 0;
            oeffner.WartenZeigen = [&](const QString &was, const QString &abgebrochen) -> Progress {
                if (was != u"Die Kartei wird repariert."_s)
                    return {};
                return [&told, last, abgebrochen](int, int) {
                    if (++told == last)
                        throw StoreError(Fehler::Abgebrochen, abgebrochen);
                };
            };
            QString name = u"Kasten.pzb"_s;
            oeffner.OpenCardFile(name);
            QVERIFY(name.isEmpty() && !store.IsOpen());
            QCOMPARE(meldungen.Texte(),
                     (QStringList{u"Diese Datei ist beschädigt Reparaturversuch ?"_s,
                                  u"Die Reparatur wurde abgebrochen; an der Datei wurde nichts "
                                  u"geändert. Fcode: 3059"_s}));
            QCOMPARE(Names(), QStringList("Kasten.pzb"));
            QCOMPARE(ReadFile(Path()), before);
        }
    }

    // Twenty gigabytes of which a few pages are there.
    void HolesAreNeitherReadNorCopied()
    {
        MakeCardFile(Path(), SomeCards(200));
        QFile file(Path());
        QVERIFY(file.open(QIODevice::ReadWrite));
        constexpr qint64 Size = qint64(20) << 30;
        QVERIFY(file.resize(Size));
        QVERIFY(file.seek(Size - 4096) && file.write(QByteArray(4096, 'x')) == 4096);
        file.close();
        int told = 0;
        const RepairResult result = RepairDatabase(Path(), [&](int, int) { ++told; });
        QCOMPARE(result.cards, 200);
        QVERIFY2(told < 100, qPrintable(QString::number(told)));
        QVERIFY(QFileInfo(Path()).size() < 1'000'000);
        QCOMPARE(QFileInfo(result.damagedFile).size(), Size);
    }

    void FailingDiskHasItsNumber()
    {
        MakeCardFile(Path(), SomeCards(200));
        DestroyFirstPage();
        const QByteArray before = ReadFile(Path());
        VollePlatte::Einbauen();
        int failed = 0;
        for (int call = 1; call <= 40; ++call) {
            VollePlatte::Scheitern(call);
            try {
                const RepairResult result = RepairDatabase(Path());
                QFile::remove(result.damagedFile);
                QFile::remove(result.report);
                WriteFile(Path(), before);
            } catch (const StoreError &error) {
                if (error.Number() == Fehler::GeraeteFehler) {
                    ++failed;
                    QCOMPARE(error.Text(), QString("Ein-/Ausgabefehler bei der Datei „%1“.").arg(Path()));
                } else { // the new file could not be read back, or the device refused it
                    QVERIFY2(error.Number() > 3000, qPrintable(error.Text()));
                }
                QCOMPARE(Names(), QStringList("Kasten.pzb"));
                QCOMPARE(ReadFile(Path()), before);
            }
            VollePlatte::Scheitern(0);
        }
        QVERIFY(failed > 3);
    }

    // Damage in a page that opening does not read is found all the same.
    void TheStoreFindsDamageBehindTheFirstPages()
    {
        MakeCardFile(Path(), SomeCards(2000));
        QFile file(Path());
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.size() > 20 * 4096);
        QVERIFY(file.seek(file.size() / 2 / 4096 * 4096));
        file.write(QByteArray(4096, '\xff'));
        file.close();
        TestMeldungen meldungen;
        meldungen.antworten = {Meldungen::Antwort::Ja};
        const TestClock clock;
        CardStore store;
        KarteiOeffner oeffner(store, meldungen, clock);
        store.KarteiPfad = directory_->path();
        QString name = u"Kasten.pzb"_s;
        oeffner.OpenCardFile(name);
        QCOMPARE(meldungen.Texte(),
                 (QStringList{u"Diese Datei ist beschädigt Reparaturversuch ?"_s,
                              u"%1 Karten wurden gerettet; Spuren von %2 weiteren ließen sich nicht "
                              u"mehr lesen. Einzelheiten stehen in „Kasten.pzb.Reparatur.txt“."_s
                                  .arg(QLocale(QLocale::German).toString(store.Karten().RecordCount()))
                                  .arg(2000 - store.Karten().RecordCount()),
                              u"Datei wurde repariert"_s}));
        QVERIFY(store.IsOpen());
        QVERIFY(store.Karten().RecordCount() > 1500);
    }
};

PAUKFIX_CORE_TEST(RepairFilesTest)
#include "RepairFilesTest.moc"
