// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Sitzungsbuehne.h"
#include "StoreTestSupport.h"
#include "TestProgram.h"

using namespace paukfix;

using Fragen = Sitzungsverwalter::Fragen;

// Texts of other word processors in the built program, in real windows.
class TexttreueLaufTest : public Sitzungsbuehne
{
    Q_OBJECT

private:
    QString Kartei() const { return ordner_->filePath("a.pzb"); }

    static CardRecord Karte()
    {
        CardRecord karte = MakeCard(1, 0, 1);
        karte.Frage = "{\\rtf1\\ansi eins{\\pict\\wmetafile8 00}{\\footnote x} zwei\\par}";
        karte.Frage_Klartext = "eins zwei ";
        karte.Antwort_1 = "{\\rtf1\\ansi ja\\par\\par}";
        karte.Antwort_1_Klartext = "ja\r\n";
        return karte;
    }

    static void SindGleich(const CardRecord &eine, const CardRecord &andere)
    {
        QCOMPARE(eine.Frage, andere.Frage);
        QCOMPARE(eine.Frage_Klartext, andere.Frage_Klartext);
        QCOMPARE(eine.Antwort_1, andere.Antwort_1);
        QCOMPARE(eine.Antwort_1_Klartext, andere.Antwort_1_Klartext);
    }

    // The editor, on the file's only card, with the keyboard in the question.
    void Anfangen()
    {
        MakeCardFile(Kartei(), {Karte()});
        lauf_ = std::make_unique<Lauf>(*anzeige_, ordner_->filePath("paukfix"), QStringList(Kartei()));
        QVERIFY(lauf_->Starten());
        QVERIFY(lauf_->HatGeoeffnet(Kartei()));
        for (const char *taste : {"alt", "Right", "Right", "Down", "Return"})
            QVERIFY(anzeige_->Taste("Lern-Box", taste));
        QVERIFY(anzeige_->WarteAuf("Merkkasten Ändern"));
    }

    void Taste(const char *taste) { QVERIFY(anzeige_->Taste("Merkkasten Ändern", taste)); }

    // The message at the end shows that the program has seen the keys before it.
    void Abwarten()
    {
        Taste("alt+f");
        Taste("alt+Prior");
        QVERIFY(anzeige_->Schliessen("Merkkasten (a.pzb)", "Return"));
    }

    void Aufhoeren()
    {
        Taste("alt+F4");
        QVERIFY(anzeige_->Taste("Lern-Box", "ctrl+q"));
        QVERIFY(lauf_->IstZuEnde());
    }

private slots:

    void init() { Aufbauen(Vorspann::Nein); }

    void cleanup() { Abbauen(); }

    void AtTheEndOfTheSessionTheTextsStayAndTheTopicIsStored()
    {
        Anfangen();
        QVERIFY(sitzung_->Angemeldet());
        Taste("alt+t");
        Taste("End");
        Taste("x");
        Abwarten();
        sitzung_->Beenden(Fragen::Alle);
        QVERIFY(sitzung_->Gesichert());
        QVERIFY(sitzung_->Gelungen());
        sitzung_->Schluss();
        QVERIFY(lauf_->IstZuEnde());
        const CardRecord karte = ReadCards(Kartei())[0];
        QCOMPARE(karte.Picture_9_Name, "Thema 1x");
        SindGleich(karte, Karte());
    }

    void WhatIsTypedBlindlyUnderTheQuestionChangesNothing()
    {
        Anfangen();
        QVERIFY(anzeige_->Taste("Merkkasten Ändern", "d"));
        QVERIFY(anzeige_->Tasten("Merkkasten (a.pzb)", {"a", "s", "space"}));
        QVERIFY(anzeige_->WarteAuf("Merkkasten Ändern"));
        Aufhoeren();
        QCOMPARE(ReadCards(Kartei())[0], Karte());
    }

    void WhoAgreesGoesOnTyping()
    {
        Anfangen();
        Taste("x");
        QVERIFY(anzeige_->Schliessen("Merkkasten (a.pzb)", "alt+j"));
        Taste("y");
        Aufhoeren();
        const CardRecord karte = ReadCards(Kartei())[0];
        QCOMPARE(karte.Frage_Klartext, "xyeins zwei");
        QCOMPARE(karte.Antwort_1, Karte().Antwort_1);
        QCOMPARE(karte.Antwort_1_Klartext, Karte().Antwort_1_Klartext);
    }

    void ACopyHasTheTextsOfItsCard()
    {
        Anfangen();
        for (const char *taste : {"alt+x", "k"})
            Taste(taste);
        QVERIFY(anzeige_->Schliessen("Merkkasten (a.pzb)", "Return"));
        Aufhoeren();
        const QList<CardRecord> karten = ReadCards(Kartei());
        QCOMPARE(karten.size(), 2);
        SindGleich(karten[0], Karte());
        SindGleich(karten[1], Karte());
    }
};

PAUKFIX_CORE_TEST(TexttreueLaufTest)
#include "TexttreueLaufTest.moc"
