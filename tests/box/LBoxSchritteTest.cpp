// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardAdd.h"
#include "CardTransaction.h"
#include "LBoxBuehne.h"
#include "TestProgram.h"

using namespace paukfix;

// Ctrl+Z and Ctrl+Y in the real window, and the entries that name what they would do.
class LBoxSchritteTest : public QObject
{
    Q_OBJECT

private:
    static QString Text(const LBoxBuehne &b, const char *eintrag) { return b.Menue(eintrag)->text(); }

private slots:

    void AnAnswerIsTakenBackByKeyAndGivenAgain()
    {
        LBoxBuehne b;
        b.OeffnenMit({0, 2, 1});
        QVERIFY(!b.Menue("MZurücknehmen")->isEnabled());
        b.Lernen(Qt::Key_1, true);
        QCOMPARE(b.Anzahl(1), 1);
        QCOMPARE(b.Anzahl(2), 2);
        QCOMPARE(b.kartei.sitzung.RichtigZaehler(), 1);
        QCOMPARE(Text(b, "MZurücknehmen"), "Antwort auf Frage 1 zurücknehmen");
        QVERIFY(!b.Menue("MWiederholen")->isEnabled());

        b.Taste(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(b.Anzahl(1), 2);
        QCOMPARE(b.Anzahl(2), 1);
        QCOMPARE(b.kartei.sitzung.RichtigZaehler(), 0);
        QCOMPARE(b.Text("LGeschehen"), "Antwort auf Frage 1 zurückgenommen");
        QCOMPARE(b.Text("LBilanz"), "");
        QCOMPARE(Text(b, "MZurücknehmen"), "nichts zurückzunehmen");
        QVERIFY(!b.Menue("MZurücknehmen")->isEnabled());
        QCOMPARE(Text(b, "MWiederholen"), "Antwort auf Frage 1 wiederholen");
        b.Taste(Qt::Key_Z, Qt::ControlModifier); // nothing is left
        QCOMPARE(b.Anzahl(1), 2);

        b.Taste(Qt::Key_Y, Qt::ControlModifier);
        QCOMPARE(b.Anzahl(1), 1);
        QCOMPARE(b.Anzahl(2), 2);
        QCOMPARE(b.kartei.sitzung.RichtigZaehler(), 1);
        QCOMPARE(b.Text("LGeschehen"), "Antwort auf Frage 1 wiederholt");
        QCOMPARE(b.Text("LBilanz"), "1 richtig, 0 falsch, 1 aufgestiegen");
        b.Taste(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(b.meldungen.Texte(), QStringList());
        QCOMPARE(b.Gespeichert(), (QList<QList<int>>{{}, {1, 2}, {3}, {}, {}, {}, {}}));
    }

    void TheCardThatWasTakenBackIsAskedNext()
    {
        LBoxBuehne b;
        b.OeffnenMit({0, 3});
        b.Lernen(Qt::Key_1, false);
        b.Taste(Qt::Key_Z, Qt::ControlModifier);
        b.Lernen(Qt::Key_Return, true);
        QCOMPARE(b.gefragt, (QStringList{"1", "1"}));
        QCOMPARE(b.Gespeichert(), (QList<QList<int>>{{}, {2, 3}, {1}, {}, {}, {}, {}}));
    }

    // Undone it would have to be kept whole to be done again, which has its bounds.
    void WhatCouldNotBeDoneAgainIsAskedAboutFirst()
    {
        LBoxBuehne b;
        b.OeffnenMit({0, 1});
        {
            const Aenderung schritt(b.kartei, "Import");
            CardTransaction zug(b.kartei.Karten());
            int karten = 40;
            AddSimpleCards(b.kartei, [&](SimpleCard &karte) {
                karte = {QString(1'000'000, u'x'), "Antwort", "Thema"};
                return karten-- > 0;
            });
            zug.Commit();
        }
        b.fenster->BoxZeichnen();
        QCOMPARE(Text(b, "MZurücknehmen"), "Import zurücknehmen (endgültig)");
        b.Taste(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(
            b.meldungen.Texte(),
            QStringList{"Import zurücknehmen?\n\nSo viele Karten können danach nicht wiederholt werden."});
        QCOMPARE(b.meldungen.vorgaben, QList{Meldungen::Antwort::Nein});
        QCOMPARE(b.Anzahl(0), 40);
        b.meldungen.antworten = {Meldungen::Antwort::Ja};
        b.Taste(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(b.Anzahl(0), 0);
        QCOMPARE(Text(b, "MWiederholen"), "nichts zu wiederholen");
    }

    void TheSessionForgetsWhatWasTakenBack()
    {
        LBoxBuehne b;
        b.OeffnenMit({0, 3});
        b.Lernen(Qt::Key_1, true);
        b.Lernen(Qt::Key_1, true);
        QCOMPARE(b.Text("LBilanz"), "2 richtig, 0 falsch, 2 aufgestiegen");
        b.Taste(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(b.Text("LBilanz"), "1 richtig, 0 falsch, 1 aufgestiegen");
    }

    void StepsGoBackOneByOneThroughTheMenu()
    {
        LBoxBuehne b;
        b.OeffnenMit({0, 3});
        b.Lernen(Qt::Key_1, true);
        b.Lernen(Qt::Key_1, false);
        b.Lernen(Qt::Key_1, true);
        QCOMPARE(Text(b, "MZurücknehmen"), "Antwort auf Frage 3 zurücknehmen");
        b.Menue("MZurücknehmen")->trigger();
        QCOMPARE(Text(b, "MZurücknehmen"), "Antwort auf Frage 2 zurücknehmen");
        b.Menue("MZurücknehmen")->trigger();
        QCOMPARE(Text(b, "MZurücknehmen"), "Antwort auf Frage 1 zurücknehmen");
        QCOMPARE(Text(b, "MWiederholen"), "Antwort auf Frage 2 wiederholen");
        QCOMPARE(b.Gespeichert(), (QList<QList<int>>{{}, {2, 3}, {1}, {}, {}, {}, {}}));
    }

    void WhatCannotBeTakenBackIsSaidAndStays()
    {
        LBoxBuehne b;
        b.OeffnenMit({0, 2});
        b.Lernen(Qt::Key_1, true);
        QVERIFY(QFile::rename(b.Pfad("a.pzb"), b.Pfad("weg.pzb")));
        b.Taste(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(b.meldungen.Texte(),
                 QStringList{"Fehler beim Zurücknehmen: Die Datei „" + b.Pfad("a.pzb") +
                             "“ wurde gelöscht, umbenannt oder ersetzt, während sie offen war."});
        QCOMPARE(b.Anzahl(2), 1);
        QCOMPARE(Text(b, "MZurücknehmen"), "Antwort auf Frage 1 zurücknehmen");
        QVERIFY(QFile::rename(b.Pfad("weg.pzb"), b.Pfad("a.pzb")));
        b.Taste(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(b.Gespeichert(), (QList<QList<int>>{{}, {1, 2}, {}, {}, {}, {}, {}}));
    }

    void AnotherBoxBeginsAnotherHistory()
    {
        LBoxBuehne b;
        b.OeffnenMit({0, 2});
        b.Lernen(Qt::Key_1, true);
        MakeCardFile(b.Pfad("b.pzb"), {MakeCard(1, 1, 1)});
        b.dialoge.pfade = {b.Pfad("b.pzb")};
        b.Menue("Möffnen")->trigger();
        QTRY_COMPARE(b.kartei.CurrentFileName, "b.pzb");
        QCOMPARE(Text(b, "MZurücknehmen"), "nichts zurückzunehmen");
        b.Taste(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(b.Gespeichert(), (QList<QList<int>>{{}, {2}, {1}, {}, {}, {}, {}}));
    }
};

PAUKFIX_TEST(LBoxSchritteTest)
#include "LBoxSchritteTest.moc"
