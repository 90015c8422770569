// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "BoxRechnung.h"
#include "LBoxBuehne.h"
#include "TestProgram.h"
#include "VollePlatte.h"

#include <QAbstractButton>
#include <QTest>

using namespace paukfix;
using namespace Qt::StringLiterals;

// Learning in the main window: compartments, capacities, moves, what the box shows.
class LBoxTest : public QObject
{
    Q_OBJECT

private slots:

    void initTestCase() { VollePlatte::Einbauen(); }

    void init() { VollePlatte::Setzen(VollePlatte::Zustand::Gesund); }

    void NeuIsRefusedWhileFach1IsTooFull()
    {
        LBoxBuehne b;
        b.OeffnenMit({1, 51});
        b.Klick("Image0(0)");
        QCOMPARE(b.meldungen.Texte(),
                 QStringList{"Fach Nr. 1 ist zu voll  Bitte erst dieses Fach bearbeiten"});
        QCOMPARE(b.meldungen.gezeigt[0].symbol, Meldungen::Symbol::Keins);
        QCOMPARE(b.meldungen.gezeigt[0].titel, QString("Merkkasten (a.pzb)"));
        QCOMPARE(b.gefragt, QStringList());
    }

    void Fach1ItselfIsAskedWhileItIsTooFull()
    {
        LBoxBuehne b;
        b.OeffnenMit({1, 51});
        b.NaechsteAntwort(true);
        b.Klick("Image0(1)");
        QCOMPARE(b.meldungen.Texte(), QStringList());
        QCOMPARE(b.gefragt, QStringList{"2"});
        QCOMPARE(b.Anzahl(1), 50);
    }

    void NeuIsRefusedWhileFach2IsTooFull()
    {
        LBoxBuehne b;
        b.OeffnenMit({1, 50, 101});
        b.Klick("Image0(0)");
        QCOMPARE(b.meldungen.Texte(),
                 QStringList{"Fach Nr. 2 ist zu voll  Bitte erst dieses Fach bearbeiten"});
    }

    void ACompartmentAtItsCapacityIsNotTooFull()
    {
        LBoxBuehne b;
        b.OeffnenMit({1, 50, 100});
        b.NaechsteAntwort(true);
        b.Klick("Image0(0)");
        QCOMPARE(b.meldungen.Texte(), QStringList());
        QCOMPARE(b.Anzahl(2), 101);
        b.Klick("Image0(1)");
        QCOMPARE(b.meldungen.Texte(),
                 QStringList{"Fach Nr. 2 ist zu voll  Bitte erst dieses Fach bearbeiten"});
    }

    void WithOneToFiveEmptyEnterAsksNeu()
    {
        LBoxBuehne b;
        b.OeffnenMit({2});
        QCOMPARE(b.fenster->VollstesFach(), 0);
        QVERIFY(b.RotUmrandet(0));
        b.Lernen(Qt::Key_Return, true);
        QCOMPARE(b.gefragt, QStringList{"1"});
    }

    void TheRedBorderLeavesNeuWhenAnotherIsFullest()
    {
        LBoxBuehne b;
        b.OeffnenMit({2});
        b.Lernen(Qt::Key_Return, false);
        QCOMPARE(b.fenster->VollstesFach(), 1);
        for (int i = 0; i < 6; ++i)
            QCOMPARE(b.RotUmrandet(i), i == 1);
    }

    void ARightNeuCardGoesToFach2()
    {
        LBoxBuehne b;
        b.OeffnenMit({1});
        b.Lernen(Qt::Key_N, true);
        QCOMPARE(b.kartei.sitzung.RichtigZaehler(), 1);
        QCOMPARE(b.Gespeichert(), (QList<QList<int>>{{}, {}, {1}, {}, {}, {}, {}}));
    }

    void ARightAnswerInFach5IsCongratulatedAndDone()
    {
        LBoxBuehne b;
        b.OeffnenMit({0, 0, 0, 0, 0, 1});
        b.Lernen(Qt::Key_5, true);
        QCOMPARE(b.meldungen.Texte(),
                 QStringList{"Sehr gut!\nDiese Frage beherrschen Sie.\nDie Frage ist vorerst erledigt"});
        QCOMPARE(b.meldungen.gezeigt[0].symbol, Meldungen::Symbol::Ausruf);
        QCOMPARE(b.Anzahl(6), 1);
        QCOMPARE(b.Gespeichert(), (QList<QList<int>>{{}, {}, {}, {}, {}, {}, {1}}));
    }

    void TheCardThatEntersACompartmentIsAskedLast()
    {
        LBoxBuehne b;
        b.OeffnenMit({0, 3});
        for (int i = 0; i < 4; ++i)
            b.Lernen(Qt::Key_1, false);
        QCOMPARE(b.gefragt, (QStringList{"1", "2", "3", "1"}));
        QCOMPARE(b.kartei.sitzung.FalschZaehler(), 4);
        QCOMPARE(b.Gespeichert()[1], (QList<int>{2, 3, 1}));
    }

    void KeysAskTheirCompartment_data()
    {
        QTest::addColumn<int>("taste");
        QTest::addColumn<QString>("gefragt");
        QTest::newRow("1") << int(Qt::Key_1) << "2";
        QTest::newRow("2") << int(Qt::Key_2) << "3";
        QTest::newRow("3") << int(Qt::Key_3) << "4";
        QTest::newRow("4") << int(Qt::Key_4) << "5";
        QTest::newRow("5") << int(Qt::Key_5) << "6";
        QTest::newRow("N") << int(Qt::Key_N) << "1";
        QTest::newRow("Enter") << int(Qt::Key_Return) << "2";
        QTest::newRow("keypad Enter") << int(Qt::Key_Enter) << "2";
        QTest::newRow("Space") << int(Qt::Key_Space) << "2";
    }

    void KeysAskTheirCompartment()
    {
        QFETCH(int, taste);
        QFETCH(QString, gefragt);
        LBoxBuehne b;
        b.OeffnenMit({1, 1, 1, 1, 1, 1});
        b.Lernen(Qt::Key(taste), true);
        QCOMPARE(b.gefragt, QStringList{gefragt});
    }

    void BothLettersOfNeuWork()
    {
        LBoxBuehne b;
        b.OeffnenMit({2});
        b.NaechsteAntwort(true);
        QTest::keyClick(b.Fokus(), 'n');
        b.NaechsteAntwort(true);
        QTest::keyClick(b.Fokus(), 'N', Qt::ShiftModifier);
        QCOMPARE(b.gefragt, (QStringList{"1", "2"}));
    }

    void OtherKeysDoNothing()
    {
        LBoxBuehne b;
        b.OeffnenMit({1, 1, 1, 1, 1, 1});
        for (const Qt::Key taste : {Qt::Key_0, Qt::Key_6, Qt::Key_A, Qt::Key_Escape, Qt::Key_F5})
            b.Taste(taste);
        b.Taste(Qt::Key_1, Qt::ControlModifier);
        QCOMPARE(b.meldungen.Texte(), QStringList());
        QVERIFY(!QApplication::activeModalWidget());
    }

    void ClickingACompartmentAsksItsFirstCard()
    {
        LBoxBuehne b;
        b.OeffnenMit({2, 2, 2, 2, 2, 2});
        for (int fach = 5; fach >= 0; --fach) {
            b.NaechsteAntwort(true);
            b.Klick(QString("Image0(%1)").arg(fach));
        }
        QCOMPARE(b.gefragt, (QStringList{"11", "9", "7", "5", "3", "1"}));
    }

    void NameAndCountOfACompartmentAreClickedToo()
    {
        LBoxBuehne b;
        b.OeffnenMit({1, 1});
        b.NaechsteAntwort(true);
        b.Klick("Label2");
        QCOMPARE(b.gefragt, QStringList{"2"});
    }

    void AFocusedCompartmentIsAskedByEnter()
    {
        LBoxBuehne b;
        b.OeffnenMit({1, 1, 0, 1});
        auto *fach3 = b.Finde("Image0(3)");
        for (int i = 0; i < 20 && QApplication::focusWidget() != fach3; ++i)
            b.Taste(Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), fach3);
        b.Lernen(Qt::Key_Return, true);
        QCOMPARE(b.gefragt, QStringList{"3"});
    }

    // Enter, answer, Enter, Enter, and the next Enter asks the next card.
    void AfterAQueryTheNextKeyWorks()
    {
        LBoxBuehne b;
        b.OeffnenMit({3});
        for (int i = 0; i < 3; ++i) {
            b.Lernen(Qt::Key_N, true);
            QTRY_COMPARE(QApplication::focusWidget(), b.Finde<>("Weiter"));
        }
        QCOMPARE(b.gefragt, (QStringList{"1", "2", "3"}));
        QCOMPARE(b.Anzahl(2), 3);
    }

    void AnEmptyCompartmentSaysSo()
    {
        LBoxBuehne b;
        b.OeffnenMit({1, 0, 0, 1});
        b.Taste(Qt::Key_1);
        b.Taste(Qt::Key_2);
        b.Taste(Qt::Key_5);
        QCOMPARE(b.meldungen.Texte(),
                 (QStringList{"Fach Nr. 1 ist leer", "Fach Nr. 2 ist leer", "Fach Nr. 5 ist leer"}));
    }

    void AnEmptyBoxSaysThatNeuIsEmpty()
    {
        LBoxBuehne b;
        b.OeffnenMit({});
        b.Taste(Qt::Key_Space);
        QCOMPARE(b.meldungen.Texte(), QStringList{"Fach Nr. 0 ist leer"});
    }

    void WithoutAFileClicksAndKeysAreInert()
    {
        LBoxBuehne b;
        b.Zeigen();
        QVERIFY(b.kartei.FehlerStatus > 0);
        for (int i = 0; i < 6; ++i)
            b.Klick(QString("Image0(%1)").arg(i));
        b.Klick("PicWürfel");
        for (const Qt::Key taste : {Qt::Key_1, Qt::Key_N, Qt::Key_Return, Qt::Key_Space, Qt::Key_W})
            b.Taste(taste);
        QCOMPARE(b.meldungen.Texte(), QStringList());
    }

    void AQueryClosedWithoutVerdictMovesNothing()
    {
        LBoxBuehne b;
        b.OeffnenMit({2});
        b.NaechsteAbfrage([](QWidget *abfrage) { abfrage->close(); });
        b.Taste(Qt::Key_N);
        QCOMPARE(b.gefragt, QStringList{"1"});
        QVERIFY(!b.pfuse->Urteil());
        QCOMPARE(b.Anzahl(0), 2);
        QCOMPARE(b.kartei.sitzung.RichtigZaehler(), 0);
        QCOMPARE(b.kartei.sitzung.FalschZaehler(), 0);
        QVERIFY(!b.Finde("Karte")->isVisible());
        QCOMPARE(b.Gespeichert()[0], (QList<int>{1, 2}));
    }

    void AWrongAnswerThatTheLearnerCallsRightMovesUp()
    {
        LBoxBuehne b;
        b.OeffnenMit({1});
        b.NaechsteAbfrage([&b](QWidget *abfrage) {
            b.Tippe("fast richtig");
            b.Taste(Qt::Key_Return);
            QVERIFY(b.pfuse->Urteil() == AbfrageErgebnis::Falsch);
            const Hand hand(*abfrage);
            hand.Klick("Ergebnis_R");
            QVERIFY(hand.Finde<QAbstractButton>("Ergebnis_R")->isChecked());
            hand.Klick("Command3");
        });
        b.Taste(Qt::Key_N);
        QCOMPARE(b.kartei.sitzung.RichtigZaehler(), 1);
        QCOMPARE(b.kartei.sitzung.FalschZaehler(), 0);
        QCOMPARE(b.Gespeichert(), (QList<QList<int>>{{}, {}, {1}, {}, {}, {}, {}}));
    }

    void WithoutAnEditorNoCardIsSentToIt()
    {
        LBoxBuehne b;
        b.OeffnenMit({1});
        bool angeboten = true;
        b.NaechsteAbfrage(
            [&](QWidget *abfrage) { angeboten = Hand(*abfrage).Finde("Command1")->isEnabled(); });
        b.Taste(Qt::Key_N);
        QVERIFY(!angeboten);
    }

    void ADeletedCardIsNotMoved()
    {
        LBoxBuehne b;
        b.OeffnenMit({2});
        b.meldungen.antworten = {Meldungen::Antwort::Ja};
        b.NaechsteAbfrage([](QWidget *abfrage) { Hand(*abfrage).Klick("Clöschen"); });
        b.Taste(Qt::Key_N);
        QCOMPARE(b.Anzahl(0), 1);
        QCOMPARE(b.kartei.sitzung.RichtigZaehler() + b.kartei.sitzung.FalschZaehler(), 0);
        QVERIFY(!b.Finde("Karte")->isVisible());
        QCOMPARE(b.Gespeichert(), (QList<QList<int>>{{2}, {}, {}, {}, {}, {}, {}}));
    }

    void EditOpensTheEditorOnTheAskedCard()
    {
        LBoxBuehne b;
        b.OeffnenMit({2});
        QString bearbeitet;
        LBoxFenster offen;
        offen.MKarten = [&] { bearbeitet = QString::number(b.kartei.Felder().FrageNr.Number()); };
        b.fenster->SetFenster(offen);
        b.Menue("MAutoschalter")->trigger();
        QVERIFY(b.Menue("MAutoschalter")->isChecked());
        b.NaechsteAbfrage([](QWidget *abfrage) { Hand(*abfrage).Klick("Command1"); });
        b.Taste(Qt::Key_N);
        QCOMPARE(bearbeitet, QString("1"));
        QVERIFY(!b.Finde("Karte")->isVisible());
        QVERIFY(!b.Menue("MAutoschalter")->isChecked());
        QCOMPARE(b.Menue("MAutoschalter")->text(), QString("einschalten"));
        QCOMPARE(b.Anzahl(0), 2);
    }

    void TheAskedCardLiesBesideTheBox()
    {
        LBoxBuehne b;
        b.OeffnenMit({1});
        QVERIFY(!b.Finde("Karte")->isVisible());
        QString nummer;
        b.NaechsteAbfrage([&](QWidget *) {
            QVERIFY(b.Finde("Karte")->isVisible());
            nummer = b.Finde<QLabel>("MFrageNr")->text();
            QCOMPARE(b.Finde<QLabel>("FrageNr")->text(), QString("FrageNr:"));
        });
        b.Taste(Qt::Key_N);
        QCOMPARE(nummer, QString("1"));
    }

    void BarsShowTheCounts()
    {
        LBoxBuehne b;
        b.OeffnenMit({350, 25, 0, 250});
        QVERIFY(b.Balken(0)->isVisible());
        QVERIFY(b.Balken(1)->isVisible());
        QVERIFY(!b.Balken(2)->isVisible());
        const int voll = b.Finde("Image0(3)")->width();
        QCOMPARE(b.Balken(3)->width(), voll);
        QCOMPARE(b.Balken(0)->width(), b.Finde("Image0(0)")->width());
        const double anteil = double(b.Balken(1)->width()) / b.Finde("Image0(1)")->width();
        QVERIFY(anteil > 0.4 && anteil < 0.6);
        QCOMPARE(BoxRechnen(b.kartei.FachInfo).Breite[1], 100);
        QCOMPARE(b.Finde("Image0(1)")->accessibleName(), QString("Fach 1: 25 von 50 Karten"));
        QCOMPARE(b.Finde("Image0(3)")->accessibleName(),
                 QString("Fach 3: 250 von 250 Karten, vollstes Fach"));
    }

    void AnOverfullCompartmentIsNamedSo()
    {
        LBoxBuehne b;
        b.OeffnenMit({0, 51});
        QCOMPARE(b.Finde("Image0(1)")->accessibleName(),
                 QString("Fach 1: 51 von 50 Karten, zu voll, vollstes Fach"));
    }

    void LargeCountsOfNeighboursStandApart()
    {
        LBoxBuehne b;
        b.OeffnenMit({});
        b.Fuellen(1, 9000);
        b.Fuellen(2, 8888);
        b.fenster->BoxZeichnen();
        const QImage bild = b.fenster->grab().toImage();
        const auto platz = [&](const QString &name) {
            const QWidget *fach = b.Finde(name);
            return QRect(fach->mapTo(b.fenster.get(), QPoint()), fach->size());
        };
        const QRect eins = platz("Image0(1)"), zwei = platz("Image0(2)");
        const auto hellstes = [&](int von, int bis) {
            int hell = 0;
            for (int x = von; x <= bis; ++x)
                for (int y = eins.bottom() + 8; y < eins.bottom() + 50; ++y)
                    hell = std::max(hell, qGray(bild.pixel(x, y)));
            return hell;
        };
        const int grenze = (eins.right() + zwei.left()) / 2;
        QVERIFY(hellstes(eins.left(), eins.right()) > 200);
        QVERIFY(hellstes(grenze - 1, grenze + 1) < 150);
    }

    void TenLinesDrawTheTraysBesideTheCompartments()
    {
        LBoxBuehne b;
        b.Zeigen(); // no compartment is marked as the fullest
        b.Finde("Hinweis")->hide();
        for (const QSize groesse : {b.fenster->size(), QSize(1300, 700)}) {
            b.fenster->resize(groesse);
            for (int i = 1; i <= 10; ++i) {
                const auto *linie = b.Finde<QWidget>(u"Line%1"_s.arg(i));
                QTRY_VERIFY(linie->isVisible());
                const QRect platz = linie->geometry();
                QCOMPARE(std::min(platz.width(), platz.height()), 1);
                QVERIFY(std::max(platz.width(), platz.height()) > 50);
                for (int fach = 0; fach < 6; ++fach)
                    QVERIFY(!platz.intersects(b.Finde(QString("Image0(%1)").arg(fach))->geometry()));
                // Seen on the wall, with the wall on both sides.
                const QImage bild = linie->parentWidget()->grab().toImage();
                const bool steht = platz.width() == 1;
                const QPoint mitte = platz.bottomRight() - (steht ? QPoint(0, 20) : QPoint(20, 0));
                const QPoint daneben = steht ? QPoint(1, 0) : QPoint(0, 1);
                const int hell = bild.pixelColor(mitte).lightness();
                QVERIFY(hell > bild.pixelColor(mitte + daneben).lightness() + 10);
                QVERIFY2(hell > bild.pixelColor(mitte - daneben).lightness() + 10,
                         qPrintable(linie->objectName()));
            }
        }
    }

    void CompartmentsScaleWithTheWindow()
    {
        LBoxBuehne b;
        b.OeffnenMit({1, 1, 1, 1, 1, 1});
        for (const QSize groesse : {QSize(760, 480), QSize(1500, 700)}) {
            b.fenster->resize(groesse);
            QTRY_COMPARE(b.fenster->size(), groesse);
            const double mass = b.Finde("Image0(0)")->width() / 1750.0;
            const QList<int> breiten{1750, 200, 310, 680, 1030, 1750},
                links{390, 3390, 3630, 3990, 4710, 5790};
            const int nullpunkt = b.Finde("Image0(0)")->x() - qRound(390 * mass);
            for (int i = 0; i < 6; ++i) {
                const QWidget *fach = b.Finde(QString("Image0(%1)").arg(i));
                QVERIFY(qAbs(fach->width() - breiten[i] * mass) <= 2);
                QVERIFY(qAbs(fach->x() - nullpunkt - links[i] * mass) <= 3);
            }
        }
    }

    void TooltipsAreLetterByLetter()
    {
        LBoxBuehne b;
        b.OeffnenMit({1});
        const QStringList tooltips{"Neue Karten",
                                   "falsch beantwortete Karten",
                                   "1x richtig beantwortet  ",
                                   "2x richtig beantwortet",
                                   "3x richtig beantwortet",
                                   "4x richtig beantwortet"};
        for (int i = 0; i < 6; ++i)
            QCOMPARE(b.Finde(QString("Image0(%1)").arg(i))->toolTip(), tooltips[i]);
        QCOMPARE(b.Wuerfel()->toolTip(), QString("Zufallsauswahl"));
    }

    void AFullDiskShowsWhatIsStored()
    {
        LBoxBuehne b;
        b.OeffnenMit({2, 0, 1});
        b.meldungen.wahlen.push_back(2);
        b.NaechsteAbfrage([&](QWidget *) {
            b.Tippe("Antwort 1");
            b.Taste(Qt::Key_Return);
            VollePlatte::Setzen(VollePlatte::Zustand::Voll);
            b.Taste(Qt::Key_Return);
        });
        b.Taste(Qt::Key_N);
        QCOMPARE(b.meldungen.Texte(),
                 QStringList{"Die Antwort konnte nicht gespeichert werden: Der Datenträger ist "
                             "voll; in „" +
                             b.Pfad("a.pzb") +
                             "“ wurde nichts gespeichert.\n\nDie Antwort ist noch nicht verloren. Was soll "
                             "geschehen?"});
        QCOMPARE(b.Anzahl(0), 2);
        QCOMPARE(b.Anzahl(2), 1);
        QCOMPARE(b.kartei.sitzung.RichtigZaehler(), 0);
        QCOMPARE(b.kartei.FehlerStatus, 0);
        QCOMPARE(b.Finde("Image0(0)")->accessibleName(), QString("Fach Neu: 2 von 700 Karten"));

        VollePlatte::Setzen(VollePlatte::Zustand::Gesund);
        b.Lernen(Qt::Key_N, true);
        QCOMPARE(b.gefragt, (QStringList{"1", "1"}));
        QCOMPARE(b.Gespeichert(), (QList<QList<int>>{{2}, {}, {3, 1}, {}, {}, {}, {}}));
    }

    void AFileThatIsGoneIsClosed()
    {
        LBoxBuehne b;
        b.OeffnenMit({2});
        b.NaechsteAbfrage([&](QWidget *) {
            b.Tippe("Antwort 1");
            b.Taste(Qt::Key_Return);
            QVERIFY(QFile::rename(b.Pfad("a.pzb"), b.Pfad("weg.pzb")));
            b.Taste(Qt::Key_Return);
        });
        b.meldungen.wahlen.push_back(2);
        b.Taste(Qt::Key_N);
        QCOMPARE(b.meldungen.Texte(),
                 QStringList({"Die Antwort konnte nicht gespeichert werden: Die Datei „" + b.Pfad("a.pzb") +
                                  "“ wurde gelöscht, umbenannt oder ersetzt, während sie offen war.\n\nDie "
                                  "Antwort ist noch nicht verloren. Was soll geschehen?",
                              "Die Kartei wurde geschlossen."}));
        QVERIFY(b.kartei.FehlerStatus > 0);
        QCOMPARE(b.Anzahl(0), 0);
        QCOMPARE(b.meldungen.Titel(), QString("Merkkasten"));
        QCOMPARE(b.Finde<QLabel>("Hinweis")->text(),
                 QString("Keine Kartei geöffnet.\n\nStrg+O öffnet eine, Strg+N legt eine neue an."));
        QVERIFY(b.Finde<QLabel>("Hinweis")->isVisible());
        b.Taste(Qt::Key_N);
        QCOMPARE(b.meldungen.gezeigt.size(), 2);
    }

    void ACardThatCannotBeReadClosesTheFile_data()
    {
        QTest::addColumn<int>("taste");
        QTest::newRow("compartment") << int(Qt::Key_3);
        QTest::newRow("die") << int(Qt::Key_W);
    }

    void ACardThatCannotBeReadClosesTheFile()
    {
        QFETCH(int, taste);
        LBoxBuehne b;
        b.OeffnenMit({2, 2, 2, 2, 2, 2});
        b.kartei.Karten().Beside(
            [](SQLite::Database &database) { sqlite3_db_release_memory(database.getHandle()); });
        VollePlatte::Setzen(VollePlatte::Zustand::Kaputt);
        b.Taste(static_cast<Qt::Key>(taste));
        QCOMPARE(b.meldungen.Texte(),
                 QStringList("Die Karte kann nicht gelesen werden: Ein-/Ausgabefehler bei der Datei „" +
                             b.Pfad("a.pzb") + "“.\n\nDie Kartei wurde geschlossen."));
        QVERIFY(!b.kartei.IsOpen());
        VollePlatte::Setzen(VollePlatte::Zustand::Gesund);
        QCOMPARE(ReadCards(b.Pfad("a.pzb")).size(), 12);
    }

    void ABrokenDiskClosesTheFile()
    {
        LBoxBuehne b;
        b.OeffnenMit({700, 40, 60, 200, 300, 600});
        b.NaechsteAbfrage([&b](QWidget *) {
            VollePlatte::Setzen(VollePlatte::Zustand::Kaputt);
            b.Tippe(u"Antwort "_s + b.gefragt.last());
            b.Taste(Qt::Key_Return);
            b.Taste(Qt::Key_Return);
        });
        b.meldungen.wahlen.push_back(2);
        b.Taste(Qt::Key_N);
        b.fenster->BoxZeichnen();
        QVERIFY(!b.meldungen.gezeigt.isEmpty());
        VollePlatte::Setzen(VollePlatte::Zustand::Gesund);
        // Whatever the engine had in its memory, nothing has moved.
        QCOMPARE(b.kartei.sitzung.RichtigZaehler(), 0);
        b.kartei.CloseCardFile();
        QCOMPARE(ReadCards(b.Pfad("a.pzb")).size(), 1900);
        QCOMPARE(b.Gespeichert()[0].size(), 700);
    }
};

PAUKFIX_TEST(LBoxTest)
#include "LBoxTest.moc"
