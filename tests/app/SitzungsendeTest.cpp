// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Sitzungsbuehne.h"
#include "StoreTestSupport.h"
#include "TestProgram.h"

using namespace paukfix;

using Fragen = Sitzungsverwalter::Fragen;

Q_DECLARE_METATYPE(Fragen)

// The desktop's session ends while the built program holds a card that is not stored.
class SitzungsendeTest : public Sitzungsbuehne
{
    Q_OBJECT

private:
    QString Kartei() const { return ordner_->filePath("a.pzb"); }

    // The editor, on the file's only card.
    void Anfangen()
    {
        MakeCardFile(Kartei(), {MakeCard(1, 0, 1)});
        lauf_ = std::make_unique<Lauf>(*anzeige_, ordner_->filePath("paukfix"), QStringList(Kartei()));
        QVERIFY(lauf_->Starten());
        QVERIFY(lauf_->HatGeoeffnet(Kartei()));
        QVERIFY(sitzung_->Angemeldet());
        for (const char *taste : {"alt", "Right", "Right", "Down", "Return"})
            QVERIFY(anzeige_->Taste("Lern-Box", taste));
        QVERIFY(anzeige_->WarteAuf("Merkkasten Ändern"));
    }

    // The message at the end shows that the program has seen the keys before it.
    void Tasten(const QStringList &tasten)
    {
        for (const QString &taste : tasten)
            QVERIFY(anzeige_->Taste("Merkkasten Ändern", taste));
        QVERIFY(anzeige_->Taste("Merkkasten Ändern", "alt+Prior"));
        QVERIFY(anzeige_->Schliessen("Merkkasten (a.pzb)", "Return"));
        QVERIFY(anzeige_->WarteAuf("Merkkasten Ändern"));
    }

    // The end that the writer makes himself.
    void Aufhoeren()
    {
        QVERIFY(anzeige_->Taste("Merkkasten Ändern", "alt+F4"));
        QVERIFY(anzeige_->Taste("Lern-Box", "ctrl+q"));
        QVERIFY(lauf_->IstZuEnde());
    }

    // Empties the question, so that the card may not be stored.
    void Verderben() { Tasten({"ctrl+a", "Delete"}); }

    static void AlleArten()
    {
        QTest::addColumn<Fragen>("fragen");
        QTest::newRow("any question may be asked") << Fragen::Alle;
        QTest::newRow("after errors") << Fragen::NachFehlern;
    }

private slots:

    void init() { Aufbauen(Vorspann::Nein); }

    void cleanup() { Abbauen(); }

    void AChangedCardIsStoredAndTheProgramEnds_data()
    {
        AlleArten();
        QTest::newRow("nothing may be asked") << Fragen::Keine;
    }

    void AChangedCardIsStoredAndTheProgramEnds()
    {
        QFETCH(Fragen, fragen);
        Anfangen();
        Tasten({"x"});
        sitzung_->Beenden(fragen);
        QVERIFY(sitzung_->Gesichert());
        QVERIFY(sitzung_->Gelungen());
        QVERIFY(!sitzung_->Abgebrochen());
        sitzung_->Schluss();
        QVERIFY(lauf_->IstZuEnde());
        QCOMPARE(ReadCards(Kartei())[0].Frage_Klartext, "xFrage 1");
    }

    void AnUnfinishedCardStopsTheEndOfTheSession_data() { AlleArten(); }

    void AnUnfinishedCardStopsTheEndOfTheSession()
    {
        QFETCH(Fragen, fragen);
        Anfangen();
        Verderben();
        sitzung_->Beenden(fragen);
        QVERIFY(anzeige_->Schliessen("Merkkasten (a.pzb)", "Return")); // no question
        QVERIFY(anzeige_->Schliessen("Merkkasten (a.pzb)", "Return")); // discard? no
        QVERIFY(sitzung_->Gesichert());
        QCOMPARE(sitzung_->Gefragt(), 1);
        QVERIFY(sitzung_->Abgebrochen());
        QVERIFY(!sitzung_->Gelungen());
        sitzung_->DochNicht();
        // Its writer goes on where he was.
        Tasten({"d", "o", "c", "h"});
        Aufhoeren();
        QCOMPARE(ReadCards(Kartei())[0].Frage_Klartext, "doch");
    }

    void AnUnfinishedCardIsDiscardedOnRequest_data() { AlleArten(); }

    void AnUnfinishedCardIsDiscardedOnRequest()
    {
        QFETCH(Fragen, fragen);
        Anfangen();
        Verderben();
        sitzung_->Beenden(fragen);
        QVERIFY(anzeige_->Schliessen("Merkkasten (a.pzb)", "Return"));
        QVERIFY(anzeige_->Taste("Merkkasten (a.pzb)", "alt+j"));
        QVERIFY(sitzung_->Gesichert());
        QVERIFY(sitzung_->Gelungen());
        QVERIFY(!sitzung_->Abgebrochen());
        sitzung_->Schluss();
        QVERIFY(lauf_->IstZuEnde());
        QCOMPARE(ReadCards(Kartei())[0], MakeCard(1, 0, 1));
    }

    void AnUnfinishedCardThatNobodyMayBeAskedAboutIsNotLost()
    {
        Anfangen();
        Verderben();
        sitzung_->Beenden(Fragen::Keine);
        QVERIFY(sitzung_->Gesichert());
        QVERIFY(!sitzung_->Gelungen());
        sitzung_->DochNicht();
        Tasten({"d", "o", "c", "h"});
        Aufhoeren();
        QCOMPARE(ReadCards(Kartei())[0].Frage_Klartext, "doch");
    }

    void NothingChangedEndsWithoutAWord()
    {
        Anfangen();
        sitzung_->Beenden(Fragen::Alle);
        QVERIFY(sitzung_->Gesichert());
        QVERIFY(sitzung_->Gelungen());
        QCOMPARE(sitzung_->Gefragt(), 0);
        sitzung_->Schluss();
        QVERIFY(lauf_->IstZuEnde());
        QCOMPARE(ReadCards(Kartei())[0], MakeCard(1, 0, 1));
    }
};

PAUKFIX_CORE_TEST(SitzungsendeTest)
#include "SitzungsendeTest.moc"
