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

class CardStoreTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> directory_;
    std::unique_ptr<TestMeldungen> meldungen_;
    std::unique_ptr<TestUhr> uhr_;
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
        const auto &last = meldungen_->gezeigt.last();
        QVERIFY2(last.text.endsWith(QStringLiteral(" Fcode: %1").arg(number)), qPrintable(last.text));
        QVERIFY2(last.text.size() > 20, qPrintable(last.text));
        QCOMPARE(last.titel, QStringLiteral("Merkkasten"));
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
        uhr_ = std::make_unique<TestUhr>();
        store_ = std::make_unique<CardStore>();
        oeffner_ = std::make_unique<KarteiOeffner>(*store_, *meldungen_, *uhr_);
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
        QString name = QStringLiteral("neu.pzb");
        oeffner_->CreateCardFile(name);
        QCOMPARE(name, QStringLiteral("neu.pzb"));
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
        QString name = QStringLiteral("neu.pzb");
        oeffner_->CreateCardFile(name);
        QVERIFY(store_->Karten().HasField(u"PictureLeft"));
        QVERIFY(store_->Karten().HasField(u"Picture_3_name"));
    }

    void EmptyNewFileHasAllCountsZero()
    {
        QString name = QStringLiteral("neu.pzb");
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
        Make(QStringLiteral("alt.pzb"), {MakeCard(1, 0, 1)});
        QString name = QStringLiteral("alt.pzb");
        oeffner_->CreateCardFile(name);
        QVERIFY(meldungen_->gezeigt.isEmpty());
        QCOMPARE(store_->FachInfo[0].Anzahl, qint16(0));
        QCOMPARE(QDir(directory_->path()).entryList(QDir::Files | QDir::Hidden),
                 QStringList{QStringLiteral("alt.pzb")});
    }

    void CreatingOverTheOpenFileClosesItFirst()
    {
        Make(QStringLiteral("alt.pzb"), {MakeCard(1, 0, 1)});
        QCOMPARE(Open(QStringLiteral("alt.pzb")), QStringLiteral("alt.pzb"));
        QString name = QStringLiteral("alt.pzb");
        oeffner_->CreateCardFile(name);
        QVERIFY(store_->IsOpen());
        QCOMPARE(store_->Karten().RecordCount(), 0);
    }

    void CreatingWhereNothingMayBeWrittenThrowsAndKeepsTheOpenFile()
    {
        Make(QStringLiteral("offen.pzb"), {MakeCard(1, 0, 1)});
        Open(QStringLiteral("offen.pzb"));
        QString name = QStringLiteral("gibtsnicht/neu.pzb");
        QVERIFY_EXCEPTION_THROWN(oeffner_->CreateCardFile(name), StoreError);
        QVERIFY(store_->IsOpen());
        QVERIFY(!meldungen_->sanduhr);
    }

    void OpeningCountsTheCardsAndTakesTheLastRunningNumber()
    {
        Make(QStringLiteral("zwei.pzb"),
             {MakeCard(7, 0, 1), MakeCard(2, 3, 1), MakeCard(9, 3, 2), MakeCard(4, 3, 5)});
        QCOMPARE(Open(QStringLiteral("zwei.pzb")), QStringLiteral("zwei.pzb"));
        QCOMPARE(store_->FachInfo[0].Anzahl, qint16(1));
        QCOMPARE(store_->FachInfo[3].Anzahl, qint16(3));
        QCOMPARE(store_->FachInfo[3].LfdMax, qint16(5));
        for (const std::size_t leer : {1U, 2U, 4U, 5U, 6U})
            QCOMPARE(store_->FachInfo[leer].Anzahl, qint16(0));
        QCOMPARE(store_->HighestCardNumber, qint16(9));
        QCOMPARE(store_->CurrentFileName, QStringLiteral("zwei.pzb"));
        QCOMPARE(meldungen_->Titel(), QStringLiteral("Merkkasten (zwei.pzb)"));
        QCOMPARE(store_->FehlerStatus, qint16(0));
        QVERIFY(store_->Karten().AtEOF());
        QCOMPARE(store_->Karten().Index(), QStringLiteral("BoxKey"));
    }

    void OpeningClearsWhatAKillLeft()
    {
        Make(QStringLiteral("a.pzb"), {MakeCard(1, 0, 1)});
        QVERIFY(QDir(directory_->path()).mkdir("a.pzb.reparatur"));
        WriteFileSynced(Path("a.pzb.reparatur/kopie"), "halb");
        WriteFileSynced(Path(".paukfix-0123.neu"), "halb");
        Open(QStringLiteral("a.pzb"));
        QCOMPARE(store_->FachInfo[0].Anzahl, qint16(1));
        QCOMPARE(QDir(directory_->path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                 QStringList("a.pzb"));
    }

    void OpeningResetsTheBoxTableToItsStartValues()
    {
        Make(QStringLiteral("a.pzb"), {});
        Open(QStringLiteral("a.pzb"));
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
        Make(QStringLiteral("viele.pzb"), cards);
        QList<qint16> seen;
        oeffner_->BoxZeichnen = [&] { seen << store_->FachInfo[0].Anzahl; };
        Open(QStringLiteral("viele.pzb"));
        QCOMPARE(seen, (QList<qint16>{0, 11, 22, 33, 34}));
    }

    void OpeningBeginsTheSession()
    {
        Make(QStringLiteral("a.pzb"), {MakeCard(1, 0, 1), MakeCard(2, 6, 1)});
        for (int i = 0; i < 5; ++i)
            store_->sitzung.Zaehlen(true);
        for (int i = 0; i < 6; ++i)
            store_->sitzung.Zaehlen(false);
        Open(QStringLiteral("a.pzb"));
        QCOMPARE(store_->sitzung.Beginn(), uhr_->jetzt);
        QCOMPARE(store_->sitzung.RichtigZaehler(), qint16(0));
        QCOMPARE(store_->sitzung.FalschZaehler(), qint16(0));
        QCOMPARE(store_->sitzung.BegAnz(), (std::array<qint16, 7>{1, 0, 0, 0, 0, 0, 1}));
    }

    void DelayLoopGrowsWithEveryFileAndStopsAtItsLargestValue()
    {
        Make(QStringLiteral("a.pzb"), {});
        uhr_->perSecond = 1000;
        Open(QStringLiteral("a.pzb"));
        const qint32 once = oeffner_->verzoegerung.LoopsPerSecond;
        QVERIFY(once > 900 && once <= 1000);
        Open(QStringLiteral("a.pzb"));
        QVERIFY(oeffner_->verzoegerung.LoopsPerSecond > once + 900);
        oeffner_->verzoegerung.LoopsPerSecond = std::numeric_limits<qint32>::max() - 3;
        oeffner_->verzoegerung.CalibrateDelayLoop();
        QCOMPARE(oeffner_->verzoegerung.LoopsPerSecond, std::numeric_limits<qint32>::max());
    }

    void DelayReadsTheClockInProportion()
    {
        oeffner_->verzoegerung.LoopsPerSecond = 5000;
        uhr_->readings = 0;
        oeffner_->verzoegerung.DelayMilliseconds(300);
        QCOMPARE(uhr_->readings, qint64(1500));
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
        Make(QStringLiteral("a.pzb"), {MakeCard(1, 0, 1)});
        Open(QStringLiteral("a.pzb"));
        VerifyRefused(QStringLiteral("fehlt.pzb"), 3024);
        QCOMPARE(store_->CurrentFileName, QStringLiteral("a.pzb"));
    }

    void DirectoryTextAndEmptyFilesAreRefused()
    {
        QVERIFY(QDir(directory_->path()).mkdir(QStringLiteral("ordner.pzb")));
        VerifyRefused(QStringLiteral("ordner.pzb"), 3051);
        VerifyRefused(QStringLiteral("nirgends/a.pzb"), 76);
        QFile text(Path(QStringLiteral("text.pzb")));
        QVERIFY(text.open(QIODevice::WriteOnly));
        text.write(QByteArray("Das ist keine Kartei.\r\n").repeated(100));
        text.close();
        VerifyRefused(QStringLiteral("text.pzb"), 3049);
        QCOMPARE(meldungen_->Texte().at(meldungen_->gezeigt.size() - 2),
                 QStringLiteral("Diese Datei ist beschädigt Reparaturversuch ?"));
        QFile empty(Path(QStringLiteral("leer.pzb")));
        QVERIFY(empty.open(QIODevice::WriteOnly));
        empty.close();
        VerifyRefused(QStringLiteral("leer.pzb"), 3049);
        QCOMPARE(QFileInfo(empty.fileName()).size(), 0);
    }

    void DeclinedRepairEndsWithTheReportForDamage()
    {
        QFile text(Path(QStringLiteral("text.pzb")));
        QVERIFY(text.open(QIODevice::WriteOnly));
        text.write("kaputt");
        text.close();
        meldungen_->antworten = {Meldungen::Antwort::Nein};
        VerifyRefused(QStringLiteral("text.pzb"), 3049);
        QCOMPARE(meldungen_->gezeigt.size(), 2);
        QVERIFY(meldungen_->gezeigt.first().frage);
    }

    void RepairThatFindsNothingSaysSo()
    {
        QFile text(Path(QStringLiteral("text.pzb")));
        QVERIFY(text.open(QIODevice::WriteOnly));
        text.write("kaputt");
        text.close();
        meldungen_->antworten = {Meldungen::Antwort::Ja};
        VerifyRefused(QStringLiteral("text.pzb"), 3049);
        QCOMPARE(meldungen_->Texte().at(1), QStringLiteral("Datei kann nicht repariert werden !"));
        QCOMPARE(meldungen_->gezeigt.size(), 3);
    }

    void ForeignFilesWithoutTableFieldOrIndexAreRefused()
    {
        for (const char *name : {"tabelle.pzb", "feld.pzb", "index.pzb", "sicht.pzb"}) {
            Make(QLatin1String(name), {MakeCard(1, 0, 1)});
            Sql(QLatin1String(name), "PRAGMA application_id=0");
        }
        Sql(QStringLiteral("tabelle.pzb"), "ALTER TABLE Lernkarten RENAME TO Anderes");
        VerifyRefused(QStringLiteral("tabelle.pzb"), 3078);
        Sql(QStringLiteral("feld.pzb"), "ALTER TABLE Lernkarten DROP COLUMN Antwort_ch_3");
        VerifyRefused(QStringLiteral("feld.pzb"), 3265);
        Sql(QStringLiteral("index.pzb"), "DROP INDEX BoxKey");
        VerifyRefused(QStringLiteral("index.pzb"), 3015);
        Sql(QStringLiteral("sicht.pzb"),
            "ALTER TABLE Lernkarten RENAME TO Echt; CREATE VIEW Lernkarten AS SELECT * FROM Echt");
        VerifyRefused(QStringLiteral("sicht.pzb"), 3078);
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
            << QByteArray("PRAGMA user_version=2") << true;
        QTest::newRow("version that nobody writes") << QByteArray("PRAGMA user_version=16777217") << true;
        QTest::newRow("table gone") << QByteArray("DROP TABLE Lernkarten") << false;
    }

    void OwnFilesThatHaveLostTableOrIndexAreDamaged()
    {
        QFETCH(QByteArray, sql);
        QFETCH(bool, repaired);
        const QString name = QStringLiteral("a.pzb");
        Make(name, {MakeCard(1, 0, 1), MakeCard(2, 3, 1)});
        Sql(name, sql.constData());
        VerifyRefused(name, 3049);
        QCOMPARE(meldungen_->Texte().first(),
                 QStringLiteral("Diese Datei ist beschädigt Reparaturversuch ?"));
        if (repaired) {
            meldungen_->antworten = {Meldungen::Antwort::Ja};
            QCOMPARE(Open(name), name);
            QCOMPARE(meldungen_->Texte().last(), QStringLiteral("Datei wurde repariert"));
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
        const QString name = QStringLiteral("a.pzb");
        Make(name, {MakeCard(1, 0, 1)});
        QFile file(Path(name));
        QVERIFY(file.open(QIODevice::ReadWrite) && file.seek(place) && file.write("\x77", 1) == 1);
        file.close();
        meldungen_->antworten = {Meldungen::Antwort::Ja};
        QCOMPARE(Open(name), name);
        QCOMPARE(meldungen_->Texte(),
                 (QStringList{QStringLiteral("Diese Datei ist beschädigt Reparaturversuch ?"),
                              QStringLiteral("Datei wurde repariert")}));
        QCOMPARE(store_->Karten().RecordCount(), 1);
    }

    void ForeignFileWithoutTheUnreadColumnsOpens()
    {
        Make(QStringLiteral("a.pzb"), {MakeCard(1, 0, 1)});
        Sql(QStringLiteral("a.pzb"), "PRAGMA application_id=0;"
                                     "ALTER TABLE Lernkarten DROP COLUMN Picture_4_endlos;"
                                     "ALTER TABLE Lernkarten DROP COLUMN Picture_4_type");
        QCOMPARE(Open(QStringLiteral("a.pzb")), QStringLiteral("a.pzb"));
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
            QFile::remove(Path(QStringLiteral("a.pzb")));
            Make(QStringLiteral("a.pzb"), {MakeCard(1, 0, 1), MakeCard(2, 0, 2), MakeCard(3, 4, 1)});
            Sql(QStringLiteral("a.pzb"), sql);
            meldungen_->gezeigt.clear();
            VerifyRefused(QStringLiteral("a.pzb"), number);
            QCOMPARE(meldungen_->Texte().first(),
                     QStringLiteral("Diese Datei ist beschädigt Reparaturversuch ?"));
            // The repair gives the bad card a place and a number of its own.
            meldungen_->antworten = {Meldungen::Antwort::Ja};
            QCOMPARE(Open(QStringLiteral("a.pzb")), QStringLiteral("a.pzb"));
            const int cards = store_->Karten().RecordCount();
            QCOMPARE(cards, 3);
            QCOMPARE(std::accumulate(store_->FachInfo.begin(), store_->FachInfo.end(), 0,
                                     [](int sum, const Fach &fach) { return sum + fach.Anzahl; }),
                     cards);
            store_->CloseCardFile();
            QCOMPARE(FaultIn(Path(QStringLiteral("a.pzb"))), QString());
        }
    }

    void ABoxWithTooManyCardsIsNotDamaged()
    {
        Make(QStringLiteral("a.pzb"), {MakeCard(1, 0, 1)});
        Sql(QStringLiteral("a.pzb"),
            "WITH RECURSIVE n(i) AS (SELECT 2 UNION ALL SELECT i+1 FROM n WHERE i<32768) "
            "INSERT INTO Lernkarten(FrageNr,FachNr,FachLfdNr) SELECT i-32769,0,i-32769 FROM n");
        VerifyRefused(QStringLiteral("a.pzb"), 6);
        QCOMPARE(meldungen_->gezeigt.size(), 1);
    }

    void NewerFormatIsRefused()
    {
        Make(QStringLiteral("a.pzb"), {});
        Sql(QStringLiteral("a.pzb"),
            "PRAGMA user_version=2; ALTER TABLE Lernkarten ADD COLUMN Neues LONGTEXT");
        VerifyRefused(QStringLiteral("a.pzb"), 3343);
    }

    void FileThatAnotherProgramHoldsIsRefusedAtOnce()
    {
        Make(QStringLiteral("a.pzb"), {MakeCard(1, 0, 1)});
        CardStore other;
        KarteiOeffner oeffner(other, *meldungen_, *uhr_);
        other.KarteiPfad = store_->KarteiPfad;
        QString name = QStringLiteral("a.pzb");
        oeffner.OpenCardFile(name);
        VerifyRefused(QStringLiteral("a.pzb"), 3045);
        name = QStringLiteral("a.pzb");
        QVERIFY_EXCEPTION_THROWN(oeffner_->CreateCardFile(name), StoreError);
        other.Karten().MoveFirst();
        QCOMPARE(other.Felder().Frage.Text(), QStringLiteral("Frage 1"));
    }

    void FileThatMayNotBeWrittenIsRefusedAtTheOpen()
    {
        Make(QStringLiteral("a.pzb"), {MakeCard(1, 0, 1)});
        const QByteArray path = QFile::encodeName(Path(QStringLiteral("a.pzb")));
        QCOMPARE(::chmod(path.constData(), 0444), 0);
        QCOMPARE(::chmod(QFile::encodeName(directory_->path()).constData(), 0777), 0);
        // The superuser may write everything: become somebody else for the open.
        const bool root = ::geteuid() == 0;
        if (root)
            QCOMPARE(::seteuid(65534), 0);
        VerifyRefused(QStringLiteral("a.pzb"), 3051);
        QCOMPARE(::chmod(QFile::encodeName(directory_->path()).constData(), 0555) == 0, !root);
        if (root)
            QCOMPARE(::seteuid(0), 0);
        QCOMPARE(::chmod(path.constData(), 0666), 0);
        QCOMPARE(::chmod(QFile::encodeName(directory_->path()).constData(), 0555), 0);
        if (root)
            QCOMPARE(::seteuid(65534), 0);
        VerifyRefused(QStringLiteral("a.pzb"), 3051);
        if (root)
            QCOMPARE(::seteuid(0), 0);
        QCOMPARE(::chmod(QFile::encodeName(directory_->path()).constData(), 0777), 0);
    }

    void PathsWithUmlautsBlanksAndGreatLengthOpen()
    {
        QString deep = directory_->path();
        while (deep.size() < 300)
            deep += QStringLiteral("/Äpfel und Öl mit ß %1").arg(QString(20, u'x'));
        QVERIFY(QDir().mkpath(deep));
        store_->KarteiPfad = deep;
        const QString file = QStringLiteral("Übung eins.pzb");
        MakeCardFile(deep + u'/' + file, {MakeCard(1, 2, 1)});
        QCOMPARE(Open(file), file);
        QCOMPARE(meldungen_->Titel(), QStringLiteral("Merkkasten (Übung eins.pzb)"));
    }

    void WhatAForeignFileHoldsBesidesIsNeitherRunNorLost()
    {
        Make(QStringLiteral("a.pzb"), {MakeCard(1, 0, 1)});
        Sql(QStringLiteral("a.pzb"),
            "CREATE TABLE Notizen(t); INSERT INTO Notizen VALUES('bleibt');"
            "CREATE TRIGGER boese AFTER UPDATE ON Lernkarten BEGIN DELETE FROM Lernkarten; END;"
            "CREATE TRIGGER boese2 BEFORE UPDATE ON Lernkarten BEGIN UPDATE Notizen SET t='weg'; END");
        QCOMPARE(Open(QStringLiteral("a.pzb")), QStringLiteral("a.pzb"));
        store_->Karten().MoveFirst();
        store_->Karten().Edit();
        store_->Felder().FachLfdNr.Set(8);
        store_->Karten().Update();
        QCOMPARE(store_->Karten().RecordCount(), 1);
        store_->CloseCardFile();
        SQLite::Database database(Path(QStringLiteral("a.pzb")).toStdString());
        QCOMPARE(database.execAndGet("SELECT t FROM Notizen").getString(), std::string("bleibt"));
        QCOMPARE(database.execAndGet("SELECT count(*) FROM sqlite_schema WHERE type='trigger'").getInt(), 2);
    }

    void CleanFieldTextFlattensSeparatorTabsAndLineBreaks()
    {
        QString text = QStringLiteral("a;b");
        QCOMPARE(CleanFieldText(text, QStringLiteral(";")), QStringLiteral("a b"));
        QCOMPARE(text, QStringLiteral("a b"));
        text = QStringLiteral("a;b\tc\r\nd");
        QCOMPARE(CleanFieldText(text, QString()), QStringLiteral("a;b c  d"));
        text = QStringLiteral("1x2X3");
        QCOMPARE(CleanFieldText(text, QStringLiteral("x")), QStringLiteral("1 2 3"));
    }

    void ZeilenumbruchEntfernenTakesPairsOnly()
    {
        QCOMPARE(ZeilenumbruchEntfernen(QStringLiteral("a\r\nb\nc\rd\r\n")), QStringLiteral("ab\nc\rd"));
        QCOMPARE(ZeilenumbruchEntfernen(QStringLiteral("a\r\r\n\nb")), QStringLiteral("ab"));
        QCOMPARE(ZeilenumbruchEntfernen(QString()), QString());
    }

    void NullBecomesTheEmptyTextAndNothingElseChanges()
    {
        QCOMPARE(NullToEmpty({}), QVariant(QString()));
        QCOMPARE(NullToEmpty(7), QVariant(7));
        QCOMPARE(NullToEmpty(QStringLiteral("x")), QVariant(QStringLiteral("x")));
    }

    void TrimmedTakesBlanksOnly()
    {
        QCOMPARE(Trimmed(QStringLiteral("  a b\t ")), QStringLiteral("a b\t"));
        QCOMPARE(Trimmed(QStringLiteral("\u00a0x\u00a0")), QStringLiteral("\u00a0x\u00a0"));
        QCOMPARE(Trimmed(QStringLiteral("   ")), QString());
    }
};

PAUKFIX_CORE_TEST(CardStoreTest)
#include "CardStoreTest.moc"
