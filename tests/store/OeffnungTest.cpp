// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Oeffnung.h"

#include "KarteEinordnen.h"
#include "SafeFile.h"
#include "StoreTestSupport.h"
#include "TestProgram.h"

#include <QTest>
#include <SQLiteCpp/Database.h>

using namespace paukfix;

using Ausgang = Oeffnung::Ausgang;

// The opening of card files without anybody to ask: what it returns, and what it leaves.
class OeffnungTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> directory_;
    TestClock clock_;
    std::unique_ptr<CardStore> kartei_;

    QString Path(const QString &name) const { return directory_->filePath(name); }

    void Sql(const QString &name, const char *sql)
    {
        SQLite::Database database(Path(name).toStdString(), SQLite::OPEN_READWRITE);
        database.exec(sql);
    }

    // A box with answers in its session.
    void OpenGoodBox()
    {
        MakeCardFile(Path("gut.pzb"), {MakeCard(4, 0, 1), MakeCard(9, 3, 5)});
        QCOMPARE(Oeffnen(*kartei_, "gut.pzb", clock_).ausgang, Ausgang::Offen);
        kartei_->Karten().MoveFirst();
        KarteEinordnen(*kartei_, Gefragt(*kartei_), true);
        QCOMPARE(kartei_->sitzung.RichtigZaehler(), qint16(1));
    }

    void VerifyNothingOpen() const
    {
        QVERIFY(!kartei_->IsOpen());
        QVERIFY_EXCEPTION_THROWN(kartei_->Karten(), StoreError);
        QVERIFY_EXCEPTION_THROWN(kartei_->Felder(), StoreError);
        QVERIFY(kartei_->OffenerPfad().isEmpty());
        QVERIFY(kartei_->FehlerStatus > 0);
        QCOMPARE(kartei_->HighestCardNumber, qint16(0));
        for (const Fach &fach : kartei_->FachInfo)
            QVERIFY(fach.Anzahl == 0 && fach.LfdMax == 0);
        QVERIFY(!kartei_->sitzung.Beginn().isValid());
        QCOMPARE(kartei_->sitzung.RichtigZaehler(), qint16(0));
        QCOMPARE(kartei_->sitzung.BegAnz(), Sitzung::Anzahlen{});
    }

private slots:

    void init()
    {
        directory_ = std::make_unique<QTemporaryDir>();
        kartei_ = std::make_unique<CardStore>();
        kartei_->KarteiPfad = directory_->path();
    }

    void cleanup()
    {
        kartei_.reset();
        directory_.reset();
    }

    void AnOpenBoxIsCountedAndHasASession()
    {
        MakeCardFile(Path("a.pzb"), {MakeCard(4, 0, 1), MakeCard(9, 3, 5)});
        const Oeffnung oeffnung = Oeffnen(*kartei_, "a.pzb", clock_);
        QCOMPARE(oeffnung.ausgang, Ausgang::Offen);
        QVERIFY(!oeffnung.fehler);
        QVERIFY(kartei_->IsOpen());
        QCOMPARE(kartei_->OffenerPfad(), Path("a.pzb"));
        QCOMPARE(kartei_->CurrentFileName, "a.pzb");
        QCOMPARE(kartei_->FehlerStatus, qint16(0));
        QCOMPARE(kartei_->HighestCardNumber, qint16(9));
        QCOMPARE(kartei_->FachInfo[3].LfdMax, qint16(5));
        QCOMPARE(kartei_->sitzung.Beginn(), clock_.jetzt);
        QCOMPARE(kartei_->sitzung.BegAnz(), (Sitzung::Anzahlen{1, 0, 0, 1, 0, 0, 0}));
    }

    void WhatCannotBeOpenedLeavesNothingHalf_data()
    {
        QTest::addColumn<QByteArray>("sql"); // over a file of two cards; none: the file is no database
        QTest::addColumn<int>("ausgang");
        QTest::addColumn<int>("nummer");
        const auto row = [](const char *name, const char *sql, Ausgang ausgang, int nummer) {
            QTest::newRow(name) << QByteArray(sql) << static_cast<int>(ausgang) << nummer;
        };
        row("no database", "", Ausgang::Beschaedigt, Fehler::Beschaedigt);
        row("no table", "PRAGMA application_id=0; DROP TABLE Lernkarten", Ausgang::Gescheitert,
            Fehler::TabelleFehlt);
        row("a field less", "PRAGMA application_id=0; ALTER TABLE Lernkarten DROP COLUMN Antwort_ch_3",
            Ausgang::Gescheitert, Fehler::FeldFehlt);
        row("a card in no compartment", "UPDATE Lernkarten SET FachNr=7 WHERE FrageNr=2",
            Ausgang::Beschaedigt, Fehler::IndexAusserhalb);
        row("a card with too high a number", "UPDATE Lernkarten SET FrageNr=40000 WHERE FrageNr=2",
            Ausgang::Beschaedigt, Fehler::Ueberlauf);
        row("too many cards",
            "WITH RECURSIVE n(i) AS (SELECT 3 UNION ALL SELECT i+1 FROM n WHERE i<32769) "
            "INSERT INTO Lernkarten(FrageNr,FachNr,FachLfdNr) SELECT i-32769,0,i-32769 FROM n",
            Ausgang::Gescheitert, Fehler::Ueberlauf);
        row("a newer format", "PRAGMA user_version=3; ALTER TABLE Lernkarten ADD COLUMN Neues LONGTEXT",
            Ausgang::Gescheitert, Fehler::FormatUnbekannt);
    }

    void WhatCannotBeOpenedLeavesNothingHalf()
    {
        QFETCH(QByteArray, sql);
        QFETCH(int, ausgang);
        QFETCH(int, nummer);
        if (sql.isEmpty()) {
            WriteFileSynced(Path("a.pzb"), "kaputt");
        } else {
            MakeCardFile(Path("a.pzb"), {MakeCard(1, 0, 1), MakeCard(2, 0, 2)});
            Sql("a.pzb", sql.constData());
        }
        const QByteArray before = ReadFile(Path("a.pzb"), 1 << 26);
        OpenGoodBox();
        const Oeffnung oeffnung = Oeffnen(*kartei_, "a.pzb", clock_);
        QCOMPARE(static_cast<int>(oeffnung.ausgang), ausgang);
        QCOMPARE(oeffnung.fehler->Number(), nummer);
        VerifyNothingOpen();
        QCOMPARE(kartei_->CurrentFileName, "gut.pzb");
        QCOMPARE(ReadFile(Path("a.pzb"), 1 << 26), before);
        // Neither file is held.
        if (!sql.isEmpty())
            Sql("a.pzb", "BEGIN EXCLUSIVE; COMMIT");
        QCOMPARE(Oeffnen(*kartei_, "gut.pzb", clock_).ausgang, Ausgang::Offen);
    }

    void AMissingFileClosesWhatWasOpen()
    {
        OpenGoodBox();
        const Oeffnung oeffnung = Oeffnen(*kartei_, "fehlt.pzb", clock_);
        QCOMPARE(oeffnung.ausgang, Ausgang::Gescheitert);
        QCOMPARE(oeffnung.fehler->Number(), Fehler::KarteiNichtGefunden);
        VerifyNothingOpen();
    }

    // Whoever looks at the progress may end it, before the first card is counted and behind the eleventh.
    void WhatIsEndedHalfWayLeavesNothingHalf()
    {
        QList<CardRecord> karten;
        for (int i = 1; i <= 15; ++i)
            karten << MakeCard(i, 0, i);
        MakeCardFile(Path("a.pzb"), karten);
        const auto ende = [] { throw StoreError(Fehler::Abgebrochen, "genug"); };
        int gezaehlt = 0;
        const Oeffnungsmelder pruefung{.pruefung = [&] { return Progress([&](int, int) { ende(); }); }};
        const Oeffnungsmelder zaehlung{.gezaehlt = [&] {
            gezaehlt = kartei_->FachInfo[0].Anzahl;
            ende();
        }};
        for (const auto *melder : {&pruefung, &zaehlung}) {
            OpenGoodBox();
            const Oeffnung oeffnung = Oeffnen(*kartei_, "a.pzb", clock_, *melder);
            QCOMPARE(oeffnung.ausgang, Ausgang::Gescheitert);
            QCOMPARE(oeffnung.fehler->Number(), Fehler::Abgebrochen);
            VerifyNothingOpen();
            QFile::remove(Path("gut.pzb"));
        }
        QCOMPARE(gezaehlt, 11);
        QCOMPARE(Oeffnen(*kartei_, "a.pzb", clock_).ausgang, Ausgang::Offen);
        QCOMPARE(kartei_->FachInfo[0].Anzahl, qint16(15));
    }

    void AFileIsCheckedUnlessItWasWrittenJustNow()
    {
        int geprueft = 0;
        const Oeffnungsmelder melder{.pruefung = [&] {
            ++geprueft;
            return Progress();
        }};
        MakeCardFile(Path("a.pzb"), {MakeCard(1, 0, 1)});
        QCOMPARE(Oeffnen(*kartei_, "a.pzb", clock_, melder, Vertrauen::EbenGeschrieben).ausgang,
                 Ausgang::Offen);
        QCOMPARE(kartei_->FachInfo[0].Anzahl, qint16(1));
        QCOMPARE(geprueft, 0);
        QCOMPARE(Oeffnen(*kartei_, "a.pzb", clock_, melder).ausgang, Ausgang::Offen);
        QCOMPARE(geprueft, 1);
    }

    void ANewFileIsMadeBesideTheOpenBox()
    {
        OpenGoodBox();
        KarteiAnlegen(*kartei_, "neu.pzb");
        QVERIFY(kartei_->IsOpen());
        QCOMPARE(kartei_->OffenerPfad(), Path("gut.pzb"));
        QCOMPARE(kartei_->sitzung.RichtigZaehler(), qint16(1));
        QCOMPARE(Oeffnen(*kartei_, "neu.pzb", clock_).ausgang, Ausgang::Offen);
        QCOMPARE(kartei_->Karten().RecordCount(), 0);
    }

    void ASessionCountsAnswersTo32767()
    {
        Sitzung sitzung;
        for (int i = 0; i < 32'768; ++i) {
            sitzung.Zaehlen(true);
            if (i % 2 == 0)
                sitzung.Zaehlen(false);
        }
        QCOMPARE(sitzung.RichtigZaehler(), qint16(32'767));
        QCOMPARE(sitzung.FalschZaehler(), qint16(16'384));
        sitzung.StartSessionTally(clock_.jetzt, FachStartwerte());
        QCOMPARE(sitzung.RichtigZaehler(), qint16(0));
    }
};

PAUKFIX_CORE_TEST(OeffnungTest)
#include "OeffnungTest.moc"
