// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Anzeige.h"
#include "Programmkopie.h"
#include "StoreTestSupport.h"
#include "TestPlaces.h"
#include "TestProgram.h"

#include <QProcess>
#include <QTest>

using namespace paukfix;
using namespace Qt::StringLiterals;

// The whole program in its window: a file that fails loses no answer, and one that another program has can be
// looked at.
class HaltenLaufTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<Anzeige> anzeige_;
    std::unique_ptr<QTemporaryDir> ordner_;
    QString kartei_;

    QString Pfad(const QString &name) const { return ordner_->filePath(name); }

    void Antworten() const
    {
        QVERIFY(anzeige_->Taste("Lern-Box", "n"));
        QVERIFY(anzeige_->Tasten("Merkkasten Abfrage", {"j", "Return", "Return"}));
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

    void initTestCase() { anzeige_ = std::make_unique<Anzeige>(); }

    void cleanupTestCase() { anzeige_.reset(); }

    void init()
    {
        ordner_ = std::make_unique<QTemporaryDir>();
        ProgrammKopieren(ordner_->path(), Vorspann::Nein);
        kartei_ = Pfad("a.pzb");
        QList<CardRecord> karten;
        for (int i = 1; i <= 10; ++i) {
            karten << MakeCard(i, 0, i);
            karten.last().Antwort_1 = karten.last().Antwort_1_Klartext = u"j"_s;
        }
        MakeCardFile(kartei_, karten);
    }

    void AnAnswerWhoseFileIsGoneIsSavedElsewhere()
    {
        Lauf lauf(*anzeige_, Pfad("paukfix"), {kartei_});
        QVERIFY(lauf.Starten());
        QVERIFY(lauf.HatGeoeffnet(kartei_));
        Antworten();
        QVERIFY(QFile::rename(kartei_, Pfad("weg.pzb")));
        Antworten();
        QVERIFY(anzeige_->Taste("Merkkasten (a.pzb)", "Return")); // once more, in vain
        QVERIFY(anzeige_->Schliessen("Merkkasten (a.pzb)", "alt+u"));
        QVERIFY(anzeige_->Tasten("Kartei unter anderem Namen sichern", {"n", "e", "u", "Return"}));
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(Pfad("neu.pzb")), 30000);
        QVERIFY(lauf.HatGeoeffnet(Pfad("neu.pzb")));
        // Until the box is at rest again it takes no keys.
        QTRY_VERIFY_WITH_TIMEOUT(
            anzeige_->Taste("Lern-Box", "n") &&
                QTest::qWaitFor([&] { return anzeige_->Offen("Merkkasten Abfrage"); }, 1000),
            30000);
        QVERIFY(anzeige_->Tasten("Merkkasten Abfrage", {"j", "Return", "Return"}));
        QVERIFY(anzeige_->Taste("Lern-Box", "alt+F4"));
        QVERIFY(lauf.IstZuEnde());
        QCOMPARE(InFach2(Pfad("neu.pzb")), (QList<int>{1, 2, 3}));
        QCOMPARE(InFach2(Pfad("weg.pzb")), (QList<int>{1}));
        QCOMPARE(FaultIn(Pfad("neu.pzb")), QString());
    }

    void AKillWhileItIsAskedLeavesTheFileAsItWas()
    {
        {
            Lauf lauf(*anzeige_, Pfad("paukfix"), {kartei_});
            QVERIFY(lauf.Starten());
            QVERIFY(lauf.HatGeoeffnet(kartei_));
            Antworten(); // the box is backed up by then
            QVERIFY(QFile::rename(kartei_, Pfad("weg.pzb")));
            Antworten();
            QVERIFY(anzeige_->WarteAuf("Merkkasten (a.pzb)"));
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
