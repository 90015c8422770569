// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Laufbuehne.h"
#include "StoreTestSupport.h"
#include "TestProgram.h"

#include <QFile>

using namespace paukfix;
using namespace Qt::StringLiterals;

// The built program in real windows: cards are written and changed by the keyboard alone.
class EditorLaufTest : public Laufbuehne
{
    Q_OBJECT

private:
    // Through the menu of the main window.
    void EditorOeffnen()
    {
        for (const char *taste : {"alt", "Right", "Right", "Down"})
            QVERIFY(anzeige_->Taste("Lern-Box", taste));
        QVERIFY(anzeige_->Taste("Lern-Box", "Return"));
        QVERIFY(anzeige_->WarteAuf("Merkkasten Ändern"));
        QVERIFY(!anzeige_->Offen("Lern-Box"));
    }

    void Tippen(const QString &fenster, const QString &text)
    {
        for (const QChar c : text)
            QVERIFY(anzeige_->Taste(fenster, c));
    }

private slots:

    void init() { Aufbauen(Vorspann::Nein); }

    void ACardIsWrittenStoredAskedAndChanged()
    {
        MakeCardFile(Pfad("a.pzb"), {});
        Lauf lauf(*anzeige_, Pfad("paukfix"), {Pfad("a.pzb")});
        QVERIFY(lauf.Starten());
        QVERIFY(lauf.HatGeoeffnet(Pfad("a.pzb")));
        EditorOeffnen();
        Tippen("Merkkasten Ändern", "eins");
        for (const char *taste : {"Tab", "j", "a", "ctrl+i"})
            QVERIFY(anzeige_->Taste("Merkkasten Ändern", taste));
        QVERIFY(anzeige_->Taste("Merkkasten Ändern", "alt+F4"));

        // The box has the card, and sends it back to the editor.
        QVERIFY(anzeige_->Taste("Lern-Box", "n"));
        QVERIFY(anzeige_->Taste("Merkkasten Abfrage", "alt+b"));
        QVERIFY(anzeige_->WarteAuf("Merkkasten Ändern"));
        QVERIFY(!anzeige_->Offen("Lern-Box"));
        Tippen("Merkkasten Ändern", "x");
        QVERIFY(anzeige_->Taste("Merkkasten Ändern", "alt+r"));
        QVERIFY(anzeige_->Taste("Lern-Box", "ctrl+q"));
        QVERIFY(lauf.IstZuEnde());

        const QList<CardRecord> karten = ReadCards(Pfad("a.pzb"));
        QCOMPARE(karten.size(), 1);
        QCOMPARE(karten[0].Frage_Klartext, "xeins");
        QCOMPARE(karten[0].Antwort_1_Klartext, "ja");
        QCOMPARE(karten[0].FachNr, 0.0);
    }

    void TheSignsLeafThroughTheCardsOnEveryKeyboard_data()
    {
        QTest::addColumn<QString>("land");
        QTest::addColumn<QString>("vor");
        QTest::addColumn<QString>("zurueck");
        const QString hier = u"94"_s; // the key left of a German Y, by its place
        for (const char *land : {"de", "fr", "gb"})
            QTest::newRow(land) << land << "ctrl+shift+" + hier << "ctrl+" + hier;
        QTest::newRow("us: on comma and full stop") << "us"
                                                    << "ctrl+shift+period"
                                                    << "ctrl+shift+comma";
    }

    void TheSignsLeafThroughTheCardsOnEveryKeyboard()
    {
        QFETCH(QString, land);
        QFETCH(QString, vor);
        QFETCH(QString, zurueck);
        MakeCardFile(Pfad("a.pzb"), {MakeCard(1, 0, 1), MakeCard(2, 0, 2), MakeCard(3, 0, 3)});
        Lauf lauf(*anzeige_, Pfad("paukfix"), {Pfad("a.pzb")});
        QVERIFY(lauf.Starten());
        QVERIFY(lauf.HatGeoeffnet(Pfad("a.pzb")));
        EditorOeffnen();
        anzeige_->Tastatur(land);
        for (const QString &taste : {vor, vor, zurueck, u"x"_s, u"alt+F4"_s})
            QVERIFY(anzeige_->Taste("Merkkasten Ändern", taste));
        anzeige_->Tastatur("us");
        QVERIFY(anzeige_->Taste("Lern-Box", "ctrl+q"));
        QVERIFY(lauf.IstZuEnde());
        const QList<CardRecord> karten = ReadCards(Pfad("a.pzb"));
        QCOMPARE(karten[0], MakeCard(1, 0, 1));
        QCOMPARE(karten[1].Frage_Klartext, "xFrage 2");
        QCOMPARE(karten[2], MakeCard(3, 0, 3));
    }

    // Some of them delete in a text box of the desktop.
    void TheMenusKeysHoldAgainstTheTextBox()
    {
        MakeCardFile(Pfad("a.pzb"), {MakeCard(1, 0, 1)});
        Lauf lauf(*anzeige_, Pfad("paukfix"), {Pfad("a.pzb")});
        QVERIFY(lauf.Starten());
        QVERIFY(lauf.HatGeoeffnet(Pfad("a.pzb")));
        EditorOeffnen();
        // One caret, many keys: each would delete, or open something.
        for (const char *taste :
             {"Right", "Right", "ctrl+k", "ctrl+u", "ctrl+h", "ctrl+n", "ctrl+t", "ctrl+f"})
            QVERIFY(anzeige_->Taste("Merkkasten Ändern", taste));
        Tippen("Merkkasten Ändern", "x");
        QVERIFY(anzeige_->Taste("Merkkasten Ändern", "ctrl+i"));
        QVERIFY(anzeige_->Taste("Merkkasten Ändern", "alt+F4"));
        QVERIFY(anzeige_->Taste("Lern-Box", "ctrl+q"));
        QVERIFY(lauf.IstZuEnde());
        const CardRecord karte = ReadCards(Pfad("a.pzb"))[0];
        QCOMPARE(karte.Frage_Klartext, "Frxage 1");
        // Italic, underlined, lowered, and no more bold.
        for (const char *format : {"\\i", "\\ul", "\\dn2", "\\fs14"})
            QVERIFY2(karte.Frage.contains(format), qPrintable(karte.Frage));
        QVERIFY2(!karte.Frage.contains("\\b\\"), qPrintable(karte.Frage));
    }

    void UndoAndRedoHaveTheKeysThatUsersKnow()
    {
        MakeCardFile(Pfad("a.pzb"), {MakeCard(1, 0, 1)});
        Lauf lauf(*anzeige_, Pfad("paukfix"), {Pfad("a.pzb")});
        QVERIFY(lauf.Starten());
        QVERIFY(lauf.HatGeoeffnet(Pfad("a.pzb")));
        EditorOeffnen();
        const auto tasten = [this](const QStringList &folge, const char *fenster = "Merkkasten Ändern") {
            for (const QString &taste : folge)
                QVERIFY(anzeige_->Taste(fenster, taste));
        };
        for (const char *feld : {"alt+f", "alt+a", "alt+t"})
            tasten({feld, "Home", "x", "ctrl+z", "ctrl+z", "ctrl+y"});
        // The term that is typed, taken back and brought again is on the card.
        tasten({"F3"});
        tasten({"r", "ctrl+z", "ctrl+y", "Return"}, "Suchen");
        tasten({"Delete", "alt+F4"}); // the "r" that is marked
        QVERIFY(anzeige_->Taste("Lern-Box", "ctrl+q"));
        QVERIFY(lauf.IstZuEnde());
        const CardRecord karte = ReadCards(Pfad("a.pzb"))[0];
        QCOMPARE(karte.Frage_Klartext, "xFage 1");
        QCOMPARE(karte.Antwort_1_Klartext, "xAntwort 1");
        QCOMPARE(karte.Picture_9_Name, "xThema 1");
    }

    void TheBoxComesBackToItsPlaceAndSize()
    {
        MakeCardFile(Pfad("a.pzb"), {MakeCard(1, 0, 1)});
        Lauf lauf(*anzeige_, Pfad("paukfix"), {Pfad("a.pzb")});
        QVERIFY(lauf.Starten());
        QVERIFY(lauf.HatGeoeffnet(Pfad("a.pzb")));
        QVERIFY(anzeige_->Versetzen("Lern-Box", {151, 83}, {1000, 700}));
        const QString lage = anzeige_->Lage("Lern-Box");
        for (int i = 0; i < 2; ++i) { // and does not creep
            EditorOeffnen();
            QVERIFY(anzeige_->Taste("Merkkasten Ändern", "alt+F4"));
            QTRY_COMPARE(anzeige_->Lage("Lern-Box"), lage);
        }
        QVERIFY(anzeige_->Taste("Lern-Box", "ctrl+q"));
        QVERIFY(lauf.IstZuEnde());
    }

    void AnUnfinishedCardKeepsTheEditorOpenUntilItIsDiscarded()
    {
        MakeCardFile(Pfad("a.pzb"), {});
        Lauf lauf(*anzeige_, Pfad("paukfix"), {Pfad("a.pzb")});
        QVERIFY(lauf.Starten());
        QVERIFY(lauf.HatGeoeffnet(Pfad("a.pzb")));
        EditorOeffnen();
        Tippen("Merkkasten Ändern", "halb");
        QVERIFY(anzeige_->Taste("Merkkasten Ändern", "alt+F4"));
        QVERIFY(anzeige_->Schliessen("Merkkasten (a.pzb)", "Return")); // no answer
        QVERIFY(anzeige_->Schliessen("Merkkasten (a.pzb)", "Return")); // discard? no
        QVERIFY(anzeige_->Taste("Merkkasten Ändern", "alt+F4"));
        QVERIFY(anzeige_->Schliessen("Merkkasten (a.pzb)", "Return"));
        QVERIFY(anzeige_->Schliessen("Merkkasten (a.pzb)", "alt+j"));
        QVERIFY(anzeige_->Taste("Lern-Box", "ctrl+q"));
        QVERIFY(lauf.IstZuEnde());
        QVERIFY(ReadCards(Pfad("a.pzb")).isEmpty());
    }
};

PAUKFIX_CORE_TEST(EditorLaufTest)
#include "EditorLaufTest.moc"
