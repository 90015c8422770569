// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "AExport.h"
#include "AImport.h"
#include "AlleNull.h"
#include "ErlNull.h"
#include "Karteianhaengen.h"
#include "Karteispiegeln.h"
#include "TestProgram.h"
#include "Themaausfiltern.h"
#include "Werkstatt.h"

#include <QComboBox>
#include <QLabel>
#include <QListWidget>

using namespace paukfix;
using namespace Qt::StringLiterals;

// What the tools' dialogs tell before they do it.
class VorhabenTest : public QObject
{
    Q_OBJECT

private:
    template <typename Fenster>
    static QString Vorhaben(Fenster &&fenster)
    {
        const Hand hand(fenster);
        return hand.Finde<QLabel>(u"Vorhaben"_s)->text();
    }

    // Three typed cards (one with a picture, one with a sound and done), a ticked one in compartment 2.
    static QList<CardRecord> Karten()
    {
        QList<CardRecord> karten{MakeCard(1, 0, 1), MakeCard(2, 3, 1), MakeCard(3, 6, 1), MakeCard(4, 2, 1)};
        karten[1].Picture_1_Name = "bild.jpg";
        karten[1].Picture_9_Name = "Obst";
        karten[2].Picture_7_Name = "ton.wav";
        karten[3].Antworttyp = 2;
        return karten;
    }

private slots:

    void ExportTellsWhatStaysOut()
    {
        Werkstatt w;
        w.Oeffnen(Karten());
        QCOMPARE(Vorhaben(AExport(w.oeffner, w.Alle())),
                 "3 Karten, 2 davon ohne ihre Bilder und Töne; 1 zum Ankreuzen bleibt aus.");
        w.Oeffnen({MakeCard(1, 0, 1)}, "b.pzb");
        QCOMPARE(Vorhaben(AExport(w.oeffner, w.Alle())), "1 Karte.");
    }

    void ImportCountsTheLinesOfTheFile()
    {
        Werkstatt w;
        w.Oeffnen({});
        w.Schreiben("text.txt", "a\tb\r\n\r\nc\td\te\r\nohne;\r\n");
        AImport fenster(w.oeffner, w.Alle());
        Hand(fenster).Zeigen();
        QCOMPARE(Vorhaben(fenster), "");
        Hand(fenster).Ersetze("lblDateiname", w.Pfad("text.txt"));
        QCOMPARE(Vorhaben(fenster),
                 "2 Karten kommen ins Fach Neu; 1 Zeile ohne Trennzeichen bleibt aus (Zeile 4).");
        Hand(fenster).Finde<QComboBox>("cmbTrennzeichen")->setCurrentText(";");
        QCOMPARE(Vorhaben(fenster),
                 "1 Karte kommt ins Fach Neu; 2 Zeilen ohne Trennzeichen bleiben aus (Zeilen 1 und 3).");
        Hand(fenster).Finde<QComboBox>("cmbTrennzeichen")->setCurrentText(",");
        QCOMPARE(Vorhaben(fenster), "");
        QVERIFY(w.meldungen.gezeigt.isEmpty());
    }

    void AppendCountsTheCardsOfTheFile()
    {
        Werkstatt w;
        MakeCardFile(w.Pfad("quelle.pzb"), Karten());
        w.Oeffnen({});
        w.Schreiben("kaputt.pzb", "nichts");
        Karteianhängen fenster(w.oeffner, w.Alle());
        Hand(fenster).Zeigen();
        Hand(fenster).Ersetze("lblDateiname", w.Pfad("quelle.pzb"));
        QCOMPARE(Vorhaben(fenster), "4 Karten kommen ins Fach Neu.");
        for (const char *andere : {"kaputt.pzb", "fehlt.pzb", "offen.pzb"}) {
            Hand(fenster).Ersetze("lblDateiname", w.Pfad(andere));
            QCOMPARE(Vorhaben(fenster), "");
        }
        QVERIFY(w.meldungen.gezeigt.isEmpty());
    }

    void AppendTellsWhatTheBoxHasAndLeavesItOut()
    {
        Werkstatt w;
        CardRecord andere = MakeCard(9, 3, 9);
        andere.Frage_Klartext = "Frage 2";
        MakeCardFile(w.Pfad("quelle.pzb"), {MakeCard(1, 5, 1), andere, MakeCard(7, 2, 1)});
        w.Oeffnen({MakeCard(1, 0, 1), MakeCard(2, 4, 1)});
        Karteianhängen fenster(w.oeffner, w.Alle());
        const Hand hand(fenster);
        hand.Zeigen();
        QVERIFY(!hand.Finde("cmbVorhandene")->isVisible());
        hand.Ersetze("lblDateiname", w.Pfad("quelle.pzb"));
        QCOMPARE(hand.Text("lblVorhandene"), "1 gibt es schon, 1 mit anderer Antwort:");
        hand.Taste("cmbVorhandene", Qt::Key_End);
        QCOMPARE(hand.Text("cmbVorhandene"), "Antwort erneuern");
        hand.Klick("cmdOK");
        QCOMPARE(hand.Text("Ergebnis"), "1 Karte angehängt, 1 schon da, 1 mit neuer Antwort");
        QVERIFY(!hand.Finde("cmbVorhandene")->isVisible());
        const QList<CardRecord> karten = w.Karten();
        QCOMPARE(karten.size(), 3);
        QCOMPARE(karten[1].Frage_Klartext, "Frage 7");
        QCOMPARE(karten[2].Antwort_1_Klartext, "Antwort 9");
        QCOMPARE(karten[2].FachNr, 4);
    }

    void FilterCountsWhatIsKept()
    {
        Werkstatt w;
        w.Oeffnen(Karten());
        Themaausfiltern fenster(w.oeffner, w.Alle());
        Hand(fenster).Zeigen();
        QCOMPARE(Vorhaben(fenster), "4 Karten kommen in die neue Datei; keine bleibt aus.");
        auto *liste = Hand(fenster).Finde<QListWidget>("lstÜbernehmen");
        liste->setCurrentItem(liste->findItems("Obst", Qt::MatchExactly).value(0));
        QTest::keyClick(liste, Qt::Key_Space);
        QCOMPARE(Vorhaben(fenster), "3 Karten kommen in die neue Datei; 1 Karte bleibt aus.");
    }

    void MirrorTellsWhatStaysAsItIs()
    {
        Werkstatt w;
        w.Oeffnen(Karten());
        QCOMPARE(Vorhaben(Karteispiegeln(w.oeffner, w.Alle())),
                 "3 Karten mit vertauschten Seiten; 1 zum Ankreuzen unverändert.");
    }

    void BackToNewTellsHowMany()
    {
        Werkstatt w;
        w.Oeffnen(Karten());
        QCOMPARE(Vorhaben(AlleNull(w.oeffner, w.Alle())),
                 "4 Karten kommen nach Neu, 3 davon aus anderen Fächern.");
        QCOMPARE(Vorhaben(ErlNull(w.oeffner, w.Alle())), "1 Karte kommt nach Neu.");
        w.Oeffnen({MakeCard(1, 0, 1)}, "b.pzb");
        QCOMPARE(Vorhaben(ErlNull(w.oeffner, w.Alle())), "Es gibt keine erledigten Karten.");
    }
};

PAUKFIX_TEST(VorhabenTest)
#include "VorhabenTest.moc"
