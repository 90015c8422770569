// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Laufbuehne.h"
#include "StoreTestSupport.h"
#include "TestPlaces.h"
#include "TestProgram.h"

#include <QRandomGenerator>
#include <QTest>

#include <set>

using namespace paukfix;
using namespace Qt::StringLiterals;

// The whole program in its window, learning by the keyboard alone until it is closed or killed.
class LernlaufTest : public Laufbuehne
{
    Q_OBJECT

private:
    QString kartei_;

    void Starten(Lauf &lauf)
    {
        QVERIFY(lauf.Starten());
        QVERIFY(lauf.HatGeoeffnet(kartei_));
    }

    // Asks with a key of the main window, answers, and goes on.
    void Antworten(const QString &taste, const QString &antwort)
    {
        QVERIFY(anzeige_->Taste("Lern-Box", taste));
        for (const QChar c : antwort)
            QVERIFY(anzeige_->Taste("Merkkasten Abfrage", c));
        QVERIFY(anzeige_->Taste("Merkkasten Abfrage", "Return"));
        QVERIFY(anzeige_->Taste("Merkkasten Abfrage", "Return"));
    }

private slots:

    void init()
    {
        Aufbauen(Vorspann::Nein);

        kartei_ = Pfad(u"Lernen mit Ümlaut.pzb"_s);
        QList<CardRecord> karten;
        for (int i = 1; i <= 40; ++i) {
            karten << MakeCard(i, i % 4, i);
            karten.last().Antwort_1 = karten.last().Antwort_1_Klartext = u"ja"_s;
        }
        MakeCardFile(kartei_, karten);
    }

    void CardsAreLearnedWithTheKeyboardAlone()
    {
        Lauf lauf(*anzeige_, Pfad("paukfix"), {kartei_});
        Starten(lauf);
        Antworten("n", "ja");
        Antworten("n", "x");
        QVERIFY(anzeige_->Taste("Lern-Box", "alt+F4"));
        QVERIFY(lauf.IstZuEnde());
        QList<QPair<int, int>> orte;
        for (const CardRecord &karte : ReadCards(kartei_))
            if (karte.FrageNr == 4 || karte.FrageNr == 8)
                orte << qMakePair(static_cast<int>(karte.FrageNr), static_cast<int>(karte.FachNr));
        QCOMPARE(orte, (QList<QPair<int, int>>{{8, 1}, {4, 2}}));
    }

    void NoKeyIsLostBetweenBoxAndQuery_data()
    {
        QTest::addColumn<bool>("animation");
        QTest::newRow("cards lie still") << false;
        QTest::newRow("cards fly") << true;
    }

    // Box, query and box again, as fast as fingers type: each answer arrives whole, each digit in the box.
    void NoKeyIsLostBetweenBoxAndQuery()
    {
        QFETCH(bool, animation);
        if (animation) {
            QVERIFY(QFile::remove(Pfad("konfig.dat")));
            QVERIFY(QFile::copy(SourceFile("assets/konfig.dat"), Pfad("konfig.dat")));
        }
        const QString antwort = u"donaudampfschiffahrt"_s;
        QList<CardRecord> karten;
        for (int i = 1; i <= 30; ++i) {
            karten << MakeCard(i, 3, i);
            karten.last().Antwort_1 = karten.last().Antwort_1_Klartext = antwort;
        }
        QVERIFY(QFile::remove(kartei_));
        MakeCardFile(kartei_, karten);
        Lauf lauf(*anzeige_, Pfad("paukfix"), {kartei_});
        Starten(lauf);
        QVERIFY(anzeige_->Tippen("Lern-Box", ("3" + antwort + "\r\r").repeated(20)));
        QVERIFY(anzeige_->Taste("Lern-Box", "alt+F4"));
        QVERIFY(lauf.IstZuEnde());
        QMap<int, int> karteiNachher; // cards by compartment
        for (const CardRecord &karte : ReadCards(kartei_))
            ++karteiNachher[static_cast<int>(karte.FachNr)];
        QCOMPARE(karteiNachher, (QMap<int, int>{{3, 10}, {4, 20}}));
    }

    void AMenuThatIsLeftGivesTheKeyboardBack()
    {
        Lauf lauf(*anzeige_, Pfad("paukfix"), {kartei_});
        Starten(lauf);
        QVERIFY(anzeige_->WarteAufFenster(1));
        for (const char *taste : {"alt", "Down"})
            QVERIFY(anzeige_->Taste("Lern-Box", taste));
        QVERIFY(anzeige_->WarteAufFenster(2));
        QVERIFY(anzeige_->Taste("Lern-Box", "Escape"));
        QVERIFY(anzeige_->WarteAufFenster(1));
        Antworten("n", "ja");
    }

    // A message after a right answer would take the keyboard from the next one.
    void WithoutASoundDeviceTheAnswersGoOn()
    {
        const QProcessEnvironment vorher = anzeige_->umgebung;
        anzeige_->umgebung.remove("SDL_AUDIODRIVER");
        anzeige_->umgebung.insert("PULSE_SERVER", "unix:/nicht/da");
        anzeige_->umgebung.insert("ALSA_CONFIG_PATH", "/dev/null");
        Lauf lauf(*anzeige_, Pfad("paukfix"), {kartei_});
        anzeige_->umgebung = vorher;
        Starten(lauf);
        for (int i = 0; i < 3; ++i)
            Antworten("n", "ja");
        QVERIFY(anzeige_->Taste("Lern-Box", "alt+F4"));
        QVERIFY(lauf.IstZuEnde());
    }

    // Every answered card has moved exactly once, the one that was being stored once or not at all.
    void AKillAtAnyMomentLosesNoAnswer()
    {
        const int kills = qEnvironmentVariableIsSet("PAUKFIX_SHORT_TESTS") ? 2 : 12;
        QRandomGenerator zufall(99);
        for (int kill = 0; kill < kills; ++kill) {
            const QList<CardRecord> vorher = ReadCards(kartei_);
            Lauf lauf(*anzeige_, Pfad("paukfix"), {kartei_});
            Starten(lauf);
            const int antworten = 1 + static_cast<int>(zufall.bounded(3));
            for (int i = 0; i < antworten; ++i)
                Antworten("Return", "x");
            QTest::qWait(static_cast<int>(zufall.bounded(60))); // the moment of the kill
            lauf.prozess.kill();
            QVERIFY(lauf.prozess.waitForFinished());

            const QList<CardRecord> nachher = ReadCards(kartei_);
            QCOMPARE(nachher.size(), vorher.size());
            std::set<double> bewegt;
            for (const CardRecord &karte : nachher)
                for (const CardRecord &alt : vorher)
                    if (alt.FrageNr == karte.FrageNr && alt != karte) {
                        QCOMPARE(karte.FachNr, 1.0); // wrong answers only
                        QCOMPARE(karte.Frage, alt.Frage);
                        bewegt.insert(karte.FrageNr);
                    }
            const int zahl = static_cast<int>(bewegt.size());
            QVERIFY2(zahl == antworten || zahl == antworten - 1,
                     qPrintable(u"kill %1: %2 of %3 answers"_s.arg(kill).arg(zahl).arg(antworten)));
            CardFile file(kartei_);
            QCOMPARE(file.Database().execAndGet("PRAGMA integrity_check").getString(), std::string("ok"));
        }
    }
};

PAUKFIX_CORE_TEST(LernlaufTest)
#include "LernlaufTest.moc"
