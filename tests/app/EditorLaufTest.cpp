// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Anzeige.h"
#include "Programmkopie.h"
#include "StoreTestSupport.h"

#include <QFile>

// The built program in real windows: cards are written and changed by the keyboard alone.
class EditorLaufTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<Anzeige> anzeige_;
    std::unique_ptr<QTemporaryDir> ordner_;

    QString Pfad(const QString &name) const { return ordner_->filePath(name); }

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

    void initTestCase() { anzeige_ = std::make_unique<Anzeige>(); }

    void cleanupTestCase() { anzeige_.reset(); }

    void init()
    {
        ordner_ = std::make_unique<QTemporaryDir>();
        ProgrammKopieren(ordner_->path(), Vorspann::Nein);
    }

    void ACardIsWrittenStoredAskedAndChanged()
    {
        MakeCardFile(Pfad("a.pzb"), {});
        Lauf lauf(*anzeige_, Pfad("paukfix"), {Pfad("a.pzb")});
        QVERIFY(lauf.Starten());
        QVERIFY(lauf.HatGeoeffnet(Pfad("a.pzb")));
        EditorOeffnen();
        Tippen("Merkkasten Ändern", "eins");
        for (const char *taste : {"Tab", "Tab", "j", "a", "ctrl+i"})
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
        QVERIFY(anzeige_->Taste("Merkkasten (a.pzb)", "Return")); // no answer
        QVERIFY(anzeige_->Taste("Merkkasten (a.pzb)", "Return")); // discard? no
        QVERIFY(anzeige_->Taste("Merkkasten Ändern", "alt+F4"));
        QVERIFY(anzeige_->Taste("Merkkasten (a.pzb)", "Return"));
        QVERIFY(anzeige_->Taste("Merkkasten (a.pzb)", "alt+j"));
        QVERIFY(anzeige_->Taste("Lern-Box", "ctrl+q"));
        QVERIFY(lauf.IstZuEnde());
        QVERIFY(ReadCards(Pfad("a.pzb")).isEmpty());
    }
};

QTEST_GUILESS_MAIN(EditorLaufTest)
#include "EditorLaufTest.moc"
