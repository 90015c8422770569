// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "KarteiOeffner.h"
#include "SafeFile.h"
#include "StoreTestSupport.h"
#include "TestProgram.h"
#include "TextHelpers.h"

#include <QTest>

#include <numeric>
#include <sys/stat.h>
#include <unistd.h>

using namespace paukfix;
using namespace Qt::StringLiterals;

class CardStoreTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> directory_;
    std::unique_ptr<TestMeldungen> meldungen_;
    std::unique_ptr<TestClock> clock_;
    std::unique_ptr<CardStore> store_;
    std::unique_ptr<KarteiOeffner> oeffner_;

    QString Path(const QString &name) const { return directory_->filePath(name); }

    void Make(const QString &name, const QList<CardRecord> &cards) { MakeCardFile(Path(name), cards); }

    // The name as the store left it.
    QString Open(QString name)
    {
        oeffner_->OpenCardFile(name);
        return name;
    }

    // Changes a card file behind the program's back.
    void Sql(const QString &name, const char *sql)
    {
        SQLite::Database database(Path(name).toStdString(), SQLite::OPEN_READWRITE);
        database.exec(sql);
    }

    void VerifyRefused(const QString &name, int number)
    {
        const QString before = store_->CurrentFileName;
        QCOMPARE(Open(name), QString());
        QVERIFY(!meldungen_->gezeigt.isEmpty());
        if (meldungen_->gezeigt.last().frage) // whether to look at it, to which the answer is no
            meldungen_->gezeigt.removeLast();
        const auto &last = meldungen_->gezeigt.last();
        QVERIFY2(last.text.endsWith(u" Fcode: %1"_s.arg(number)), qPrintable(last.text));
        QVERIFY2(last.text.size() > 20, qPrintable(last.text));
        QCOMPARE(last.titel, u"Merkkasten"_s);
        QVERIFY(!meldungen_->sanduhr);
        QVERIFY(!store_->IsOpen());
        QVERIFY(store_->FehlerStatus > 0);
        QCOMPARE(store_->CurrentFileName, before);
        for (const Fach &fach : store_->FachInfo)
            QCOMPARE(fach.Anzahl, qint16(0));
    }

private slots:

    void init()
    {
        directory_ = std::make_unique<QTemporaryDir>();
        meldungen_ = std::make_unique<TestMeldungen>();
        clock_ = std::make_unique<TestClock>();
        store_ = std::make_unique<CardStore>();
        oeffner_ = std::make_unique<KarteiOeffner>(*store_, *meldungen_, *clock_);
        store_->KarteiPfad = directory_->path();
    }

    void cleanup()
    {
        oeffner_.reset();
        store_.reset();
        directory_.reset();
    }

    void CreatedFileHoldsTheTableItsColumnsInOrderAndTwoIndexes()
    {
        QString name = u"neu.pzb"_s;
        oeffner_->CreateCardFile(name);
        QCOMPARE(name, u"neu.pzb"_s);
        store_->CloseCardFile();
        SQLite::Database database(Path(name).toStdString());
        SQLite::Statement tables(database, "SELECT group_concat(type || ' ' || name, ',') FROM "
                                           "(SELECT * FROM sqlite_schema ORDER BY rowid)");
        QVERIFY(tables.executeStep());
        QCOMPARE(tables.getColumn(0).getString(), std::string("table Lernkarten,index FrageNr,index BoxKey"));
        SQLite::Statement columns(database, "SELECT name, type, \"notnull\", dflt_value FROM "
                                            "pragma_table_info('Lernkarten') ORDER BY cid");
        int count = 0;
        for (const CardColumn &column : CardColumns()) {
            QVERIFY(columns.executeStep());
            QCOMPARE(columns.getColumn(0).getString(), std::string(column.name));
            QCOMPARE(columns.getColumn(1).getString(), std::string(column.declaredType));
            QCOMPARE(columns.getColumn(2).getInt(), 0);
            QVERIFY(columns.getColumn(3).isNull());
            if (++count == 22)
                QCOMPARE(columns.getColumn(0).getString(), std::string("Picture_9_Name"));
        }
        QVERIFY(!columns.executeStep());
        QCOMPARE(count, 52);
        QCOMPARE(database.execAndGet("SELECT count(*) FROM Lernkarten").getInt(), 0);
        QCOMPARE(database.execAndGet("SELECT count(*) FROM pragma_index_list('Lernkarten') WHERE \"unique\"")
                     .getInt(),
                 2);
    }

    void CreatedFileFindsFieldsWithoutRegardToCase()
    {
        QString name = u"neu.pzb"_s;
        oeffner_->CreateCardFile(name);
        QVERIFY(store_->Karten().HasField(u"PictureLeft"));
        QVERIFY(store_->Karten().HasField(u"Picture_3_name"));
    }

    void EmptyNewFileHasAllCountsZero()
    {
        QString name = u"neu.pzb"_s;
        oeffner_->CreateCardFile(name);
        for (const Fach &fach : store_->FachInfo) {
            QCOMPARE(fach.Anzahl, qint16(0));
            QCOMPARE(fach.LfdMax, qint16(0));
        }
        QCOMPARE(store_->HighestCardNumber, qint16(0));
        QVERIFY(meldungen_->gezeigt.isEmpty());
    }

    void CreatingWithAnEmptyNameDoesNothing()
    {
        QString name;
        oeffner_->CreateCardFile(name);
        QVERIFY(!store_->IsOpen());
        QCOMPARE(QDir(directory_->path()).entryList(QDir::Files | QDir::Hidden).size(), 0);
    }

    void CreatingReplacesAnExistingFileWithoutAQuestion()
    {
        Make(u"alt.pzb"_s, {MakeCard(1, 0, 1)});
        QString name = u"alt.pzb"_s;
        oeffner_->CreateCardFile(name);
        QVERIFY(meldungen_->gezeigt.isEmpty());
        QCOMPARE(store_->FachInfo[0].Anzahl, qint16(0));
        QCOMPARE(QDir(directory_->path()).entryList(QDir::Files | QDir::Hidden), QStringList{u"alt.pzb"_s});
    }

    void CreatingOverTheOpenFileClosesItFirst()
    {
        Make(u"alt.pzb"_s, {MakeCard(1, 0, 1)});
        QCOMPARE(Open(u"alt.pzb"_s), u"alt.pzb"_s);
        QString name = u"alt.pzb"_s;
        oeffner_->CreateCardFile(name);
        QVERIFY(store_->IsOpen());
        QCOMPARE(store_->Karten().RecordCount(), 0);
    }

    void CreatingWhereNothingMayBeWrittenThrowsAndKeepsTheOpenFile()
    {
        Make(u"offen.pzb"_s, {MakeCard(1, 0, 1)});
        Open(u"offen.pzb"_s);
        QString name = u"gibtsnicht/neu.pzb"_s;
        QVERIFY_EXCEPTION_THROWN(oeffner_->CreateCardFile(name), StoreError);
        QVERIFY(store_->IsOpen());
        QVERIFY(!meldungen_->sanduhr);
    }

    void OpeningCountsTheCardsAndTakesTheLastRunningNumber()
    {
        Make(u"zwei.pzb"_s, {MakeCard(7, 0, 1), MakeCard(2, 3, 1), MakeCard(9, 3, 2), MakeCard(4, 3, 5)});
        QCOMPARE(Open(u"zwei.pzb"_s), u"zwei.pzb"_s);
        QCOMPARE(store_->FachInfo[0].Anzahl, qint16(1));
        QCOMPARE(store_->FachInfo[3].Anzahl, qint16(3));
        QCOMPARE(store_->FachInfo[3].LfdMax, qint16(5));
        for (const std::size_t leer : {1U, 2U, 4U, 5U, 6U})
            QCOMPARE(store_->FachInfo[leer].Anzahl, qint16(0));
        QCOMPARE(store_->HighestCardNumber, qint16(9));
        QCOMPARE(store_->CurrentFileName, u"zwei.pzb"_s);
        QCOMPARE(meldungen_->Titel(), u"Merkkasten (zwei.pzb)"_s);
        QCOMPARE(store_->FehlerStatus, qint16(0));
        QVERIFY(store_->Karten().AtEOF());
        QCOMPARE(store_->Karten().Index(), u"BoxKey"_s);
    }

    void OpeningClearsWhatAKillLeft()
    {
        Make(u"a.pzb"_s, {MakeCard(1, 0, 1)});
        QVERIFY(QDir(directory_->path()).mkdir("a.pzb.reparatur"));
        WriteFileSynced(Path("a.pzb.reparatur/kopie"), "halb");
        WriteFileSynced(Path(".paukfix-0123.neu"), "halb");
        Open(u"a.pzb"_s);
        QCOMPARE(store_->FachInfo[0].Anzahl, qint16(1));
        QCOMPARE(QDir(directory_->path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                 QStringList("a.pzb"));
    }

    void OpeningResetsTheBoxTableToItsStartValues()
    {
        Make(u"a.pzb"_s, {});
        Open(u"a.pzb"_s);
        const std::array<qint16, 6> links{390, 3390, 3630, 3990, 4710, 5790};
        const std::array<qint16, 6> breiteMax{1750, 200, 310, 680, 1030, 1750};
        const std::array<qint16, 6> kapazitaet{700, 50, 100, 250, 400, 700};
        for (std::size_t i = 0; i < 6; ++i) {
            QCOMPARE(store_->FachInfo[i].Links, links[i]);
            QCOMPARE(store_->FachInfo[i].BreiteMax, breiteMax[i]);
            QCOMPARE(store_->FachInfo[i].Kapazitaet, kapazitaet[i]);
        }
        const Fach &done = store_->FachInfo[6];
        QVERIFY(done.Links == 0 && done.BreiteMax == 0 && done.Kapazitaet == 0);
    }

    void OpeningRedrawsAfterEveryEleventhCardAndAtTheEnd()
    {
        QList<CardRecord> cards;
        for (int i = 1; i <= 34; ++i)
            cards << MakeCard(i, 0, i);
        Make(u"viele.pzb"_s, cards);
        QList<qint16> seen;
        oeffner_->BoxZeichnen = [&] { seen << store_->FachInfo[0].Anzahl; };
        Open(u"viele.pzb"_s);
        QCOMPARE(seen, (QList<qint16>{0, 11, 22, 33, 34}));
    }

    void OpeningBeginsTheSession()
    {
        Make(u"a.pzb"_s, {MakeCard(1, 0, 1), MakeCard(2, 6, 1)});
        for (int i = 0; i < 5; ++i)
            store_->sitzung.Zaehlen(true);
        for (int i = 0; i < 6; ++i)
            store_->sitzung.Zaehlen(false);
        Open(u"a.pzb"_s);
        QCOMPARE(store_->sitzung.Beginn(), clock_->jetzt);
        QCOMPARE(store_->sitzung.RichtigZaehler(), qint16(0));
        QCOMPARE(store_->sitzung.FalschZaehler(), qint16(0));
        QCOMPARE(store_->sitzung.BegAnz(), (std::array<qint16, 7>{1, 0, 0, 0, 0, 0, 1}));
    }

    void DelayLoopGrowsWithEveryFileAndStopsAtItsLargestValue()
    {
        Make(u"a.pzb"_s, {});
        clock_->perSecond = 1000;
        Open(u"a.pzb"_s);
        const qint32 once = oeffner_->verzoegerung.LoopsPerSecond;
        QVERIFY(once > 900 && once <= 1000);
        Open(u"a.pzb"_s);
        QVERIFY(oeffner_->verzoegerung.LoopsPerSecond > once + 900);
        oeffner_->verzoegerung.LoopsPerSecond = std::numeric_limits<qint32>::max() - 3;
        oeffner_->verzoegerung.CalibrateDelayLoop();
        QCOMPARE(oeffner_->verzoegerung.LoopsPerSecond, std::numeric_limits<qint32>::max());
    }

    void DelayReadsTheClockInProportion()
    {
        oeffner_->verzoegerung.LoopsPerSecond = 5000;
        clock_->readings = 0;
        oeffner_->verzoegerung.DelayMilliseconds(300);
        QCOMPARE(clock_->readings, qint64(1500));
    }

    void FehlerStatusIsAboveZeroFromTheStart() { QVERIFY(store_->FehlerStatus > 0); }

    void ClosingIsHarmlessWhenNothingIsOpen()
    {
        store_->CloseCardFile();
        store_->CloseCardFile();
        QVERIFY_EXCEPTION_THROWN(store_->Karten(), StoreError);
    }

    void FailedOpenLeavesNoFileOpenAndTheNameUnchanged()
    {
        Make(u"a.pzb"_s, {MakeCard(1, 0, 1)});
        Open(u"a.pzb"_s);
        VerifyRefused(u"fehlt.pzb"_s, 3024);
        QCOMPARE(store_->CurrentFileName, u"a.pzb"_s);
    }

    void DirectoryTextAndEmptyFilesAreRefused()
    {
        QVERIFY(QDir(directory_->path()).mkdir(u"ordner.pzb"_s));
        VerifyRefused(u"ordner.pzb"_s, 3051);
        VerifyRefused(u"nirgends/a.pzb"_s, 76);
        QFile text(Path(u"text.pzb"_s));
        QVERIFY(text.open(QIODevice::WriteOnly));
        text.write(QByteArray("Das ist keine Kartei.\r\n").repeated(100));
        text.close();
        VerifyRefused(u"text.pzb"_s, 3049);
        QCOMPARE(meldungen_->Texte().at(meldungen_->gezeigt.size() - 2),
                 u"Diese Datei ist beschädigt Reparaturversuch ?"_s);
        QFile empty(Path(u"leer.pzb"_s));
        QVERIFY(empty.open(QIODevice::WriteOnly));
        empty.close();
        VerifyRefused(u"leer.pzb"_s, 3049);
        QCOMPARE(QFileInfo(empty.fileName()).size(), 0);
    }

    void DeclinedRepairEndsWithTheReportForDamage()
    {
        QFile text(Path(u"text.pzb"_s));
        QVERIFY(text.open(QIODevice::WriteOnly));
        text.write("kaputt");
        text.close();
        meldungen_->antworten = {Meldungen::Antwort::Nein};
        VerifyRefused(u"text.pzb"_s, 3049);
        QCOMPARE(meldungen_->gezeigt.size(), 2);
        QVERIFY(meldungen_->gezeigt.first().frage);
    }

    void RepairThatFindsNothingSaysSo()
    {
        QFile text(Path(u"text.pzb"_s));
        QVERIFY(text.open(QIODevice::WriteOnly));
        text.write("kaputt");
        text.close();
        meldungen_->antworten = {Meldungen::Antwort::Ja};
        VerifyRefused(u"text.pzb"_s, 3049);
        QCOMPARE(meldungen_->Texte().at(1), u"Datei kann nicht repariert werden !"_s);
        QCOMPARE(meldungen_->gezeigt.size(), 3);
    }

    void ForeignFilesWithoutTableFieldOrIndexAreRefused()
    {
        for (const char *name : {"tabelle.pzb", "feld.pzb", "index.pzb", "sicht.pzb"}) {
            Make(QLatin1String(name), {MakeCard(1, 0, 1)});
            Sql(QLatin1String(name), "PRAGMA application_id=0");
        }
        Sql(u"tabelle.pzb"_s, "ALTER TABLE Lernkarten RENAME TO Anderes");
        VerifyRefused(u"tabelle.pzb"_s, 3078);
        Sql(u"feld.pzb"_s, "ALTER TABLE Lernkarten DROP COLUMN Antwort_ch_3");
        VerifyRefused(u"feld.pzb"_s, 3265);
        Sql(u"index.pzb"_s, "DROP INDEX BoxKey");
        VerifyRefused(u"index.pzb"_s, 3015);
        Sql(u"sicht.pzb"_s,
            "ALTER TABLE Lernkarten RENAME TO Echt; CREATE VIEW Lernkarten AS SELECT * FROM Echt");
        VerifyRefused(u"sicht.pzb"_s, 3078);
    }

    // A file that bears our mark had all this when it was made.
    void OwnFilesThatHaveLostTableOrIndexAreDamaged_data()
    {
        QTest::addColumn<QByteArray>("sql");
        QTest::addColumn<bool>("repaired");
        QTest::newRow("index gone") << QByteArray("DROP INDEX BoxKey") << true;
        QTest::newRow("index of other columns")
            << QByteArray("DROP INDEX BoxKey; CREATE UNIQUE INDEX BoxKey ON Lernkarten(FachLfdNr,FachNr)")
            << true;
        QTest::newRow("table under another name")
            << QByteArray("ALTER TABLE Lernkarten RENAME TO Lermkarten") << true;
        QTest::newRow("column gone") << QByteArray("ALTER TABLE Lernkarten DROP COLUMN Antwort_ch_3") << true;
        QTest::newRow("column too many") << QByteArray("ALTER TABLE Lernkarten ADD COLUMN mehr") << true;
        QTest::newRow("column under another name")
            << QByteArray("ALTER TABLE Lernkarten RENAME COLUMN Antwort_1 TO Antwort_9") << true;
        QTest::newRow("index too many") << QByteArray("CREATE INDEX mehr ON Lernkarten(Frage)") << true;
        QTest::newRow("version of a newer format, schema of this one")
            << QByteArray("PRAGMA user_version=3") << true;
        QTest::newRow("version that nobody writes") << QByteArray("PRAGMA user_version=16777217") << true;
        QTest::newRow("table gone") << QByteArray("DROP TABLE Lernkarten") << false;
    }

    void OwnFilesThatHaveLostTableOrIndexAreDamaged()
    {
        QFETCH(QByteArray, sql);
        QFETCH(bool, repaired);
        const QString name = u"a.pzb"_s;
        Make(name, {MakeCard(1, 0, 1), MakeCard(2, 3, 1)});
        Sql(name, sql.constData());
        VerifyRefused(name, 3049);
        QCOMPARE(meldungen_->Texte().first(), u"Diese Datei ist beschädigt Reparaturversuch ?"_s);
        if (repaired) {
            meldungen_->antworten = {Meldungen::Antwort::Ja};
            QCOMPARE(Open(name), name);
            QCOMPARE(meldungen_->Texte().last(), u"Datei wurde repariert"_s);
            QCOMPARE(store_->Karten().RecordCount(), 2);
        }
    }

    // Bytes of the header that the engine refuses with an error of its own.
    void HeadersThatTheEngineCannotReadAreDamage_data()
    {
        QTest::addColumn<int>("place");
        QTest::newRow("schema format") << 47;
        QTest::newRow("text encoding") << 59;
        QTest::newRow("read version") << 19;
        QTest::newRow("page size") << 16;
    }

    void HeadersThatTheEngineCannotReadAreDamage()
    {
        QFETCH(int, place);
        const QString name = u"a.pzb"_s;
        Make(name, {MakeCard(1, 0, 1)});
        QFile file(Path(name));
        QVERIFY(file.open(QIODevice::ReadWrite) && file.seek(place) && file.write("\x77", 1) == 1);
        file.close();
        meldungen_->antworten = {Meldungen::Antwort::Ja};
        QCOMPARE(Open(name), name);
        QCOMPARE(meldungen_->Texte(), (QStringList{u"Diese Datei ist beschädigt Reparaturversuch ?"_s,
                                                   u"Datei wurde repariert"_s}));
        QCOMPARE(store_->Karten().RecordCount(), 1);
    }

    void ForeignFileWithoutTheUnreadColumnsOpens()
    {
        Make(u"a.pzb"_s, {MakeCard(1, 0, 1)});
        Sql(u"a.pzb"_s, "PRAGMA application_id=0;"
                        "ALTER TABLE Lernkarten DROP COLUMN Picture_4_endlos;"
                        "ALTER TABLE Lernkarten DROP COLUMN Picture_4_type");
        QCOMPARE(Open(u"a.pzb"_s), u"a.pzb"_s);
        store_->Karten().MoveFirst();
        QCOMPARE(store_->Karten().Read(), MakeCard(1, 0, 1));
    }

    void CardsInImpossibleCompartmentsAreRefused()
    {
        const std::array<std::pair<const char *, int>, 7> cases{{
            {"UPDATE Lernkarten SET FachNr=7 WHERE FrageNr=2", 9},
            {"UPDATE Lernkarten SET FachNr=-1 WHERE FrageNr=2", 9},
            {"UPDATE Lernkarten SET FachNr=2.5 WHERE FrageNr=2", 9},
            {"UPDATE Lernkarten SET FachNr=NULL WHERE FrageNr=2", 94},
            {"UPDATE Lernkarten SET FachNr='drei' WHERE FrageNr=2", 13},
            {"UPDATE Lernkarten SET FrageNr=40000 WHERE FrageNr=2", 6},
            {"UPDATE Lernkarten SET FrageNr=NULL WHERE FrageNr=2", 94},
        }};
        for (const auto &[sql, number] : cases) {
            QFile::remove(Path(u"a.pzb"_s));
            Make(u"a.pzb"_s, {MakeCard(1, 0, 1), MakeCard(2, 0, 2), MakeCard(3, 4, 1)});
            Sql(u"a.pzb"_s, sql);
            meldungen_->gezeigt.clear();
            VerifyRefused(u"a.pzb"_s, number);
            QCOMPARE(meldungen_->Texte().first(), u"Diese Datei ist beschädigt Reparaturversuch ?"_s);
            // The repair gives the bad card a place and a number of its own.
            meldungen_->antworten = {Meldungen::Antwort::Ja};
            QCOMPARE(Open(u"a.pzb"_s), u"a.pzb"_s);
            const int cards = store_->Karten().RecordCount();
            QCOMPARE(cards, 3);
            QCOMPARE(std::accumulate(store_->FachInfo.begin(), store_->FachInfo.end(), 0,
                                     [](int sum, const Fach &fach) { return sum + fach.Anzahl; }),
                     cards);
            store_->CloseCardFile();
            QCOMPARE(FaultIn(Path(u"a.pzb"_s)), QString());
        }
    }

    void ABoxWithTooManyCardsIsNotDamaged()
    {
        Make(u"a.pzb"_s, {MakeCard(1, 0, 1)});
        Sql(u"a.pzb"_s, "WITH RECURSIVE n(i) AS (SELECT 2 UNION ALL SELECT i+1 FROM n WHERE i<32768) "
                        "INSERT INTO Lernkarten(FrageNr,FachNr,FachLfdNr) SELECT i-32769,0,i-32769 FROM n");
        VerifyRefused(u"a.pzb"_s, 6);
        QCOMPARE(meldungen_->gezeigt.size(), 1);
    }

    void NewerFormatIsRefused()
    {
        Make(u"a.pzb"_s, {});
        Sql(u"a.pzb"_s, "PRAGMA user_version=3; ALTER TABLE Lernkarten ADD COLUMN Neues LONGTEXT");
        VerifyRefused(u"a.pzb"_s, 3343);
    }

    void FileThatAnotherProgramHoldsIsRefusedAtOnce()
    {
        Make(u"a.pzb"_s, {MakeCard(1, 0, 1)});
        CardStore other;
        KarteiOeffner oeffner(other, *meldungen_, *clock_);
        other.KarteiPfad = store_->KarteiPfad;
        QString name = u"a.pzb"_s;
        oeffner.OpenCardFile(name);
        VerifyRefused(u"a.pzb"_s, 3045);
        name = u"a.pzb"_s;
        QVERIFY_EXCEPTION_THROWN(oeffner_->CreateCardFile(name), StoreError);
        other.Karten().MoveFirst();
        QCOMPARE(other.Felder().Frage.Text(), u"Frage 1"_s);
    }

    void FileThatMayNotBeWrittenIsRefusedAtTheOpen()
    {
        Make(u"a.pzb"_s, {MakeCard(1, 0, 1)});
        const QByteArray path = QFile::encodeName(Path(u"a.pzb"_s));
        QCOMPARE(::chmod(path.constData(), 0444), 0);
        QCOMPARE(::chmod(QFile::encodeName(directory_->path()).constData(), 0777), 0);
        // The superuser may write everything: become somebody else for the open.
        const bool root = ::geteuid() == 0;
        if (root)
            QCOMPARE(::seteuid(65534), 0);
        VerifyRefused(u"a.pzb"_s, 3051);
        QCOMPARE(::chmod(QFile::encodeName(directory_->path()).constData(), 0555) == 0, !root);
        if (root)
            QCOMPARE(::seteuid(0), 0);
        QCOMPARE(::chmod(path.constData(), 0666), 0);
        QCOMPARE(::chmod(QFile::encodeName(directory_->path()).constData(), 0555), 0);
        if (root)
            QCOMPARE(::seteuid(65534), 0);
        VerifyRefused(u"a.pzb"_s, 3051);
        if (root)
            QCOMPARE(::seteuid(0), 0);
        QCOMPARE(::chmod(QFile::encodeName(directory_->path()).constData(), 0777), 0);
    }

    void PathsWithUmlautsBlanksAndGreatLengthOpen()
    {
        QString deep = directory_->path();
        while (deep.size() < 300)
            deep += u"/Äpfel und Öl mit ß %1"_s.arg(QString(20, u'x'));
        QVERIFY(QDir().mkpath(deep));
        store_->KarteiPfad = deep;
        const QString file = u"Übung eins.pzb"_s;
        MakeCardFile(deep + u'/' + file, {MakeCard(1, 2, 1)});
        QCOMPARE(Open(file), file);
        QCOMPARE(meldungen_->Titel(), u"Merkkasten (Übung eins.pzb)"_s);
    }

    void WhatAForeignFileHoldsBesidesIsNeitherRunNorLost()
    {
        Make(u"a.pzb"_s, {MakeCard(1, 0, 1)});
        Sql(u"a.pzb"_s,
            "CREATE TABLE Notizen(t); INSERT INTO Notizen VALUES('bleibt');"
            "CREATE TRIGGER boese AFTER UPDATE ON Lernkarten BEGIN DELETE FROM Lernkarten; END;"
            "CREATE TRIGGER boese2 BEFORE UPDATE ON Lernkarten BEGIN UPDATE Notizen SET t='weg'; END");
        QCOMPARE(Open(u"a.pzb"_s), u"a.pzb"_s);
        store_->Karten().MoveFirst();
        store_->Karten().Edit();
        store_->Felder().FachLfdNr.Set(8);
        store_->Karten().Update();
        QCOMPARE(store_->Karten().RecordCount(), 1);
        store_->CloseCardFile();
        SQLite::Database database(Path(u"a.pzb"_s).toStdString());
        QCOMPARE(database.execAndGet("SELECT t FROM Notizen").getString(), std::string("bleibt"));
        QCOMPARE(database.execAndGet("SELECT count(*) FROM sqlite_schema WHERE type='trigger'").getInt(), 2);
    }

    void CleanFieldTextFlattensSeparatorTabsAndLineBreaks()
    {
        QString text = u"a;b"_s;
        QCOMPARE(CleanFieldText(text, u";"_s), u"a b"_s);
        QCOMPARE(text, u"a b"_s);
        text = u"a;b\tc\r\nd"_s;
        QCOMPARE(CleanFieldText(text, QString()), u"a;b c  d"_s);
        text = u"1x2X3"_s;
        QCOMPARE(CleanFieldText(text, u"x"_s), u"1 2 3"_s);
    }

    void ZeilenumbruchEntfernenTakesPairsOnly()
    {
        QCOMPARE(ZeilenumbruchEntfernen(u"a\r\nb\nc\rd\r\n"_s), u"ab\nc\rd"_s);
        QCOMPARE(ZeilenumbruchEntfernen(u"a\r\r\n\nb"_s), u"ab"_s);
        QCOMPARE(ZeilenumbruchEntfernen(QString()), QString());
    }

    void NullBecomesTheEmptyTextAndNothingElseChanges()
    {
        QCOMPARE(NullToEmpty({}), QVariant(QString()));
        QCOMPARE(NullToEmpty(7), QVariant(7));
        QCOMPARE(NullToEmpty(u"x"_s), QVariant(u"x"_s));
    }

    void TrimmedTakesBlanksOnly()
    {
        QCOMPARE(Trimmed(u"  a b\t "_s), u"a b\t"_s);
        QCOMPARE(Trimmed(u"\u00a0x\u00a0"_s), u"\u00a0x\u00a0"_s);
        QCOMPARE(Trimmed(u"   "_s), QString());
    }
};

PAUKFIX_CORE_TEST(CardStoreTest)
#include "CardStoreTest.moc"
