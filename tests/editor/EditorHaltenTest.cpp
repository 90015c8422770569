// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "EditorBuehne.h"
#include "MeldungenFenster.h"
#include "TestProgram.h"
#include "VollePlatte.h"

#include <QLabel>
#include <QMessageBox>

using namespace paukfix;

namespace {

constexpr qsizetype NochEinmal = 0, Sichern = 1, Verwerfen = 2;

} // namespace

// A card that cannot be stored is kept in the form until its writer has decided.
class EditorHaltenTest : public QObject
{
    Q_OBJECT

private:
    // The editor on three cards, the first of which is changed, or with a new one, on a disk that is full.
    static void Schreiben(EditorBuehne &b, bool neue)
    {
        b.Zeigen();
        if (neue) {
            b.Klick("CEOF");
            b.Box("Antwort(0)")->setFocus();
            b.Tippe("neue Antwort");
        }
        b.Box("MFrage")->setFocus();
        b.Tippe("Wort ");
        VollePlatte::Setzen(VollePlatte::Zustand::Voll, b.kartei.Path());
    }

    static QString Frage(const EditorBuehne &b)
    {
        return "Fehler beim Speichern der Karte: Der Datenträger ist voll; in „" + b.kartei.Path() +
               "“ wurde nichts gespeichert.\n\nDie Karte steht noch im Formular. Was soll geschehen?";
    }

    static QStringList Fragen(const QString &pfad)
    {
        QStringList fragen;
        for (const CardRecord &karte : ReadCards(pfad))
            fragen << karte.Frage_Klartext;
        fragen.sort();
        return fragen;
    }

    static void BeideArten()
    {
        QTest::addColumn<bool>("neue");
        QTest::newRow("changed card") << false;
        QTest::newRow("new card") << true;
    }

    static QStringList Danach(bool neue)
    {
        return neue ? QStringList{"Frage 1", "Frage 2", "Frage 3", "Wort "}
                    : QStringList{"Frage 2", "Frage 3", "Wort Frage 1"};
    }

private slots:

    void initTestCase() { VollePlatte::Einbauen(); }

    void cleanup() { VollePlatte::Setzen(VollePlatte::Zustand::Gesund); }

    void ItStaysInTheFormUntilItIsStored_data() { BeideArten(); }

    void ItStaysInTheFormUntilItIsStored()
    {
        QFETCH(bool, neue);
        EditorBuehne b(DreiKarten());
        Schreiben(b, neue);
        b.kartei.messages.wahlen = {NochEinmal, -1}; // and the question is closed
        b.Taste(Qt::Key_I, Qt::ControlModifier);
        QCOMPARE(b.Meldungstexte(), (QStringList{Frage(b), Frage(b)}));
        QVERIFY(b.Box("MFrage")->toPlainText().startsWith("Wort "));
        QCOMPARE(b.Neu(), neue);
        QCOMPARE(b.Text("Speicherstand"), "geändert");
        b.kartei.messages.wahlen = {NochEinmal};
        b.kartei.messages.beiFrage = [] { VollePlatte::Setzen(VollePlatte::Zustand::Gesund); };
        b.Taste(Qt::Key_I, Qt::ControlModifier);
        QCOMPARE(b.Text("Speicherstand"), "gespeichert");
        QCOMPARE(b.kartei.store.FachInfo[0].Anzahl, qint16(neue ? 3 : 2));
        b.kartei.store.schritte.Zuruecknehmen();
        QCOMPARE(b.kartei.store.schritte.Zurueckzunehmen(), QString());
        b.kartei.store.schritte.Wiederholen();
        b.kartei.store.CloseCardFile();
        QCOMPARE(Fragen(b.kartei.Path()), Danach(neue));
    }

    void SavedUnderAnotherNameTheEditorGoesOnThere_data() { BeideArten(); }

    void SavedUnderAnotherNameTheEditorGoesOnThere()
    {
        QFETCH(bool, neue);
        EditorBuehne b(DreiKarten());
        const QString ziel = b.programm.filePath("neu.pzb");
        QFile konfig(b.programm.filePath("konfig.dat"));
        QVERIFY(konfig.open(QIODevice::WriteOnly));
        konfig.write("[recentfiles]\r\n[Font]\r\nFontName=Arial\r\n[Animation]\r\nAnimation=False\r\n");
        konfig.close();
        Schreiben(b, neue);
        b.kartei.messages.wahlen = {Sichern, Sichern};
        b.dialoge.pfade = {QString(), ziel}; // cancelled at first
        b.Klick("Cback");
        QCOMPARE(b.Meldungstexte(), (QStringList{Frage(b), Frage(b)}));
        QCOMPARE(b.geschlossen, 1);
        QCOMPARE(b.kartei.store.OffenerPfad(), ziel);
        QCOMPARE(b.kartei.store.KarteiPfad, b.programm.path());
        QCOMPARE(b.kartei.store.Karten().Index(), QString("BoxKey"));
        QCOMPARE(b.konfig.MDat[0], ziel);
        QCOMPARE(b.kartei.store.FachInfo[0].Anzahl, qint16(neue ? 3 : 2));
        b.kartei.store.CloseCardFile();
        QCOMPARE(Fragen(ziel), Danach(neue));
        QCOMPARE(Fragen(b.kartei.Path()), (QStringList{"Frage 1", "Frage 2", "Frage 3"}));
    }

    void TheWalkGoesOnInTheNewFile()
    {
        EditorBuehne b(DreiKarten());
        Schreiben(b, false);
        b.kartei.messages.wahlen = {Sichern};
        b.dialoge.pfade = {b.programm.filePath("neu.pzb")};
        b.Klick("CVor");
        QCOMPARE(b.Text("MaskFrageNr"), "2");
        b.Klick("CZurück");
        QCOMPARE(b.Box("MFrage")->toPlainText(), "Wort Frage 1");
    }

    void WhatIsDiscardedLeavesTheStoredCard_data() { BeideArten(); }

    void WhatIsDiscardedLeavesTheStoredCard()
    {
        QFETCH(bool, neue);
        EditorBuehne b(DreiKarten());
        Schreiben(b, neue);
        b.kartei.messages.wahlen = {Verwerfen};
        b.Klick("Cadd");
        QCOMPARE(b.Box("MFrage")->toPlainText(), neue ? "" : "Frage 1");
        QCOMPARE(b.Text("Speicherstand"), "gespeichert");
        b.Klick("Cback");
        QCOMPARE(b.Meldungstexte().size(), 1);
        QCOMPARE(b.geschlossen, 1);
        b.kartei.store.CloseCardFile();
        QCOMPARE(Fragen(b.kartei.Path()), (QStringList{"Frage 1", "Frage 2", "Frage 3"}));
    }

    void ACardThatWasStoredWhileNobodyCouldTellIsNotThereTwice()
    {
        // Every call fails once; behind the failure nothing can be read until the learner is asked.
        for (int call = 1;; ++call) {
            EditorBuehne c(DreiKarten());
            c.Zeigen();
            c.Klick("CEOF");
            c.Box("Antwort(0)")->setFocus();
            c.Tippe("neue Antwort");
            c.Box("MFrage")->setFocus();
            c.Tippe("Wort ");
            c.kartei.messages.wahlen = {NochEinmal, NochEinmal};
            c.kartei.messages.beiFrage = [] { VollePlatte::Setzen(VollePlatte::Zustand::Gesund); };
            VollePlatte::Scheitern(call, VollePlatte::Art::Halb, VollePlatte::Zustand::Kaputt);
            c.Taste(Qt::Key_I, Qt::ControlModifier);
            const bool failed = VollePlatte::Gescheitert().has_value();
            VollePlatte::Scheitern(0);
            VollePlatte::Setzen(VollePlatte::Zustand::Gesund);
            QCOMPARE(c.kartei.store.FachInfo[0].Anzahl, qint16(3));
            c.kartei.store.CloseCardFile();
            QCOMPARE(Fragen(c.kartei.Path()), Danach(true));
            if (!failed)
                break;
        }
    }

    // The real question: Escape leads back to the card, Alt+V discards it.
    void TheQuestionCanBeClosed()
    {
        MeldungenFenster meldungen;
        EditorBuehne b(DreiKarten(), &meldungen);
        Schreiben(b, false);
        QStringList knoepfe;
        {
            const Drehbuch buch({Drehbuch::In<QMessageBox>([&](QMessageBox &box) {
                for (const QAbstractButton *knopf : box.buttons())
                    if (knopf->isVisible())
                        knoepfe << knopf->text();
                QTest::keyClick(&box, Qt::Key_Escape);
            })});
            b.Klick("Cback");
        }
        knoepfe.sort();
        QCOMPARE(knoepfe, (QStringList{"&noch einmal", "&unter anderem Namen sichern", "&verwerfen"}));
        QCOMPARE(b.geschlossen, 0);
        QVERIFY(b.fenster->isVisible());
        QCOMPARE(b.Box("MFrage")->toPlainText(), "Wort Frage 1");
        const Drehbuch buch({Drehbuch::In<QMessageBox>(
            [&](QMessageBox &box) { QTest::keyClick(&box, Qt::Key_V, Qt::AltModifier); })});
        b.Klick("Cback");
        QCOMPARE(b.geschlossen, 1);
    }
};

PAUKFIX_TEST(EditorHaltenTest)
#include "EditorHaltenTest.moc"
