// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "KleinePlatte.h"
#include "Laufbuehne.h"
#include "StoreTestSupport.h"
#include "TestPlaces.h"
#include "TestProgram.h"

#include <QProcess>
#include <QTest>

using namespace paukfix;
using namespace Qt::StringLiterals;

// The whole program in its window: a file that fails loses no answer, and one that another program has can be
// looked at.
class HaltenLaufTest : public Laufbuehne
{
    Q_OBJECT

private:
    QString kartei_;

    // New cards that are answered by "j", each with `mehr` beside.
    void Anlegen(int anzahl, const QString &mehr) const
    {
        QList<CardRecord> karten;
        for (int i = 1; i <= anzahl; ++i) {
            karten << MakeCard(i, 0, i);
            karten.last().Antwort_1 = karten.last().Antwort_1_Klartext = u"j"_s;
            karten.last().Antwort_2 = mehr;
        }
        MakeCardFile(kartei_, karten);
    }

    void Antworten() const
    {
        QVERIFY(anzeige_->Taste("Lern-Box", "n"));
        QVERIFY(anzeige_->Tasten("Merkkasten Abfrage", {"j", "Return", "Return"}));
    }

    // The header's count of changes: it tells when an answer is in the file, which is locked.
    QByteArray Aenderungen() const
    {
        QFile datei(kartei_);
        return datei.open(QIODevice::ReadOnly) && datei.seek(24) ? datei.read(4) : QByteArray();
    }

    // The first answer is stored; behind the second one the file is gone, which is told.
    void OhneDatei() const
    {
        const QByteArray vorher = Aenderungen();
        Antworten();
        QTRY_VERIFY_WITH_TIMEOUT(Aenderungen() != vorher, 30000);
        QVERIFY(QFile::rename(kartei_, Pfad("weg.pzb")));
        Antworten();
        QVERIFY(anzeige_->WarteAuf("Merkkasten (a.pzb)"));
    }

    static QList<int> InFach2(const QString &pfad)
    {
        QList<int> nummern;
        for (const CardRecord &karte : ReadCards(pfad))
            if (karte.FachNr == 2)
                nummern << static_cast<int>(karte.FrageNr);
        return nummern;
    }

private slots:

    void init()
    {
        Aufbauen(Vorspann::Nein);
        kartei_ = Pfad("a.pzb");
        Anlegen(10, {});
    }

    void AnAnswerWhoseFileIsGoneIsSavedElsewhere()
    {
        QVERIFY(QFile::remove(kartei_));
        Anlegen(500, QString(50'000, u'x')); // to be copied takes its time
        Lauf lauf(*anzeige_, Pfad("paukfix"), {kartei_});
        QVERIFY(lauf.Starten());
        QVERIFY(lauf.HatGeoeffnet(kartei_));
        OhneDatei();
        QVERIFY(anzeige_->Schliessen("Merkkasten (a.pzb)", "Return")); // once more, in vain
        QVERIFY(anzeige_->Schliessen("Merkkasten (a.pzb)", "alt+u"));
        QVERIFY(anzeige_->Tasten("Kartei unter anderem Namen sichern", {"n", "e", "u", "Return"}));
        Antworten(); // while the box is being copied: no key is lost
        QVERIFY(lauf.HatGeoeffnet(Pfad("neu.pzb")));
        QVERIFY(anzeige_->Taste("Lern-Box", "alt+F4"));
        QVERIFY(lauf.IstZuEnde());
        QCOMPARE(InFach2(Pfad("neu.pzb")), (QList<int>{1, 2, 3}));
        QCOMPARE(InFach2(Pfad("weg.pzb")), (QList<int>{1}));
        QCOMPARE(FaultIn(Pfad("neu.pzb")), QString());
    }

    void AFullDiskLosesNoAnswer_data()
    {
        QTest::addColumn<bool>("echt");
        QTest::addColumn<bool>("woanders");
        QTest::newRow("room is made") << true << false;
        QTest::newRow("the box is saved on another disk") << true << true;
        QTest::newRow("files may grow again") << false << false;
        QTest::newRow("files may grow again, and the box is saved elsewhere") << false << true;
    }

    void AFullDiskLosesNoAnswer()
    {
        QFETCH(bool, echt);
        QFETCH(bool, woanders);
        QVERIFY(QDir(ordner_->path()).mkdir("platte"));
        KleinePlatte platte(*anzeige_, Pfad("paukfix"), kartei_, Pfad("platte"), echt);
        QVERIFY(platte.lauf.Starten());
        QVERIFY(platte.Bereit());
        QVERIFY(platte.lauf.HatGeoeffnet(platte.Kartei()));
        const QDir sicherungen(Pfad("Sicherungen"));
        QTRY_VERIFY_WITH_TIMEOUT( // it would be told where that failed
            !sicherungen.entryList(QDir::Dirs | QDir::NoDotAndDotDot).isEmpty() &&
                !QDir(sicherungen.filePath(sicherungen.entryList(QDir::Dirs | QDir::NoDotAndDotDot).first()))
                     .entryList({"*.pzb"})
                     .isEmpty(),
            30000);
        platte.Fuellen();
        Antworten();
        QVERIFY(anzeige_->Schliessen("Merkkasten (a.pzb)", "Return")); // once more, in vain
        QVERIFY(anzeige_->WarteAuf("Merkkasten (a.pzb)"));
        if (!woanders || !platte.IstEcht())
            platte.Leeren();
        if (woanders) {
            QVERIFY(anzeige_->Schliessen("Merkkasten (a.pzb)", "alt+u"));
            QVERIFY(anzeige_->Tippen("Kartei unter anderem Namen sichern", Pfad("neu.pzb") + '\r'));
        } else {
            QVERIFY(anzeige_->Schliessen("Merkkasten (a.pzb)", "Return"));
        }
        Antworten();
        QVERIFY(anzeige_->Taste("Lern-Box", "alt+F4"));
        QVERIFY(platte.lauf.IstZuEnde());
        const QString danach = Pfad(woanders ? "neu.pzb" : "danach.pzb");
        QVERIFY(woanders || QFile::copy(platte.Kartei(), danach));
        QCOMPARE(InFach2(danach), (QList<int>{1, 2}));
        QCOMPARE(FaultIn(danach), QString());
    }

    void AKillWhileItIsAskedLeavesTheFileAsItWas()
    {
        {
            Lauf lauf(*anzeige_, Pfad("paukfix"), {kartei_});
            QVERIFY(lauf.Starten());
            QVERIFY(lauf.HatGeoeffnet(kartei_));
            OhneDatei(); // the box is backed up by then
            QVERIFY(QFile::rename(Pfad("weg.pzb"), kartei_));
            QVERIFY(
                anzeige_->Taste("Merkkasten (a.pzb)", "Return")); // and is killed on the way, or behind it
            lauf.prozess.kill();
            QVERIFY(lauf.prozess.waitForFinished());
        }
        const QList<int> danach = InFach2(kartei_);
        QVERIFY(danach == QList<int>{1} || danach == (QList<int>{1, 2}));
        QCOMPARE(FaultIn(kartei_), QString());
        Lauf lauf(*anzeige_, Pfad("paukfix"), {kartei_});
        QVERIFY(lauf.Starten());
        QVERIFY(lauf.HatGeoeffnet(kartei_));
        QVERIFY(anzeige_->Taste("Lern-Box", "alt+F4"));
        QVERIFY(lauf.IstZuEnde());
    }

    void ABoxThatAnotherProgramHasIsLookedAt()
    {
        QProcess anderes;
        anderes.start(WorkerPath("lock_worker"), {kartei_});
        QVERIFY(anderes.waitForReadyRead());
        Lauf lauf(*anzeige_, Pfad("paukfix"), {kartei_});
        QVERIFY(lauf.Starten());
        QVERIFY(anzeige_->Schliessen("Merkkasten", "Return")); // it is locked
        QVERIFY(anzeige_->Schliessen("Merkkasten", "Return")); // to be looked at: yes
        const QString box = "Lern-Box – nur zum Ansehen";
        QVERIFY(anzeige_->Taste(box, "n"));
        QVERIFY(anzeige_->Schliessen("Merkkasten (a.pzb) – nur zum Ansehen", "Return")); // is not asked
        QVERIFY(anzeige_->Taste(box, "Return"));
        QVERIFY(anzeige_->Taste("Lernkarten", "Return")); // the first card
        QVERIFY(anzeige_->Tasten("Merkkasten Ändern – nur zum Ansehen", {"x", "ctrl+i"}));
        QVERIFY(anzeige_->Schliessen("Merkkasten Ändern – nur zum Ansehen", "alt+F4"));
        QVERIFY(anzeige_->Taste(box, "alt+F4"));
        QVERIFY(lauf.IstZuEnde());
        anderes.closeWriteChannel();
        QVERIFY(anderes.waitForFinished());
        QCOMPARE(ReadCards(kartei_).first().Frage, u"Frage 1"_s);
    }
};

PAUKFIX_TEST(HaltenLaufTest)
#include "HaltenLaufTest.moc"
