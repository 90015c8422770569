// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Statistik.h"

#include "LBoxBuehne.h"
#include "TestProgram.h"

using namespace paukfix;

namespace {

QStringList Spalte(QWidget &fenster, const QString &name)
{
    QStringList texte;
    for (int i = 0; i < 7; ++i)
        texte << Hand(fenster).Text(QString("%1(%2)").arg(name).arg(i));
    return texte;
}

} // namespace

// The statistics of a session, learned through the real main window.
class StatistikTest : public QObject
{
    Q_OBJECT

private slots:

    void AChangeIsWrittenWithItsSign()
    {
        QCOMPARE(AenderungsText(3), "+3");
        QCOMPARE(AenderungsText(-3), "-3");
        QCOMPARE(AenderungsText(0), "0");
        QCOMPARE(AenderungsText(-65535), "-65535");
    }

    void CountersAtTheirEndsAreAddedUp()
    {
        LBoxBuehne b;
        for (int i = 0; i < 32767; ++i)
            b.kartei.sitzung.Zaehlen(true);
        for (int i = 0; i < 32767; ++i)
            b.kartei.sitzung.Zaehlen(false);
        QCOMPARE(StatistikLesen(b.kartei, {}).gesamt, 65534);
    }

    void TimesAreWrittenAsTheSystemDoes()
    {
        LBoxBuehne b;
        b.OeffnenMit({1});
        const QDateTime spaeter = b.clock.jetzt.addSecs(3600);
        const StatistikWerte werte = StatistikLesen(b.kartei, spaeter, QLocale(QLocale::German));
        QCOMPARE(werte.Beginn, "21.11.26 09:30:00");
        QCOMPARE(werte.DatZeit, "21.11.26 10:30:00");
        const StatistikWerte system = StatistikLesen(b.kartei, spaeter);
        QVERIFY(system.DatZeit.startsWith(QLocale::system().toString(spaeter.date(), QLocale::ShortFormat)));
    }

    void WithoutACardFileNoSessionHasBegun()
    {
        LBoxBuehne b;
        const StatistikWerte werte = StatistikLesen(b.kartei, b.clock.jetzt, QLocale(QLocale::German));
        QCOMPARE(werte.Beginn, "–");
        QCOMPARE(werte.DatZeit, "21.11.26 09:30:00");
        Statistik fenster(werte);
        for (const char *spalte : {"BegAnz", "AktAnz", "ÄndAnz"})
            QCOMPARE(Spalte(fenster, QString::fromUtf8(spalte)),
                     (QStringList{"0", "0", "0", "0", "0", "0", "0"}));
        QCOMPARE(Hand(fenster).Text("gesamt"), "0");
    }

    void RightAfterOpeningNothingHasChanged()
    {
        LBoxBuehne b;
        b.OeffnenMit({3, 1, 0, 2, 0, 0, 4});
        Statistik fenster(StatistikLesen(b.kartei, b.clock.Now()));
        QCOMPARE(fenster.windowTitle(), "Statistik");
        QCOMPARE(Spalte(fenster, "BegAnz"), (QStringList{"3", "1", "0", "2", "0", "0", "4"}));
        QCOMPARE(Spalte(fenster, "AktAnz"), (QStringList{"3", "1", "0", "2", "0", "0", "4"}));
        QCOMPARE(Spalte(fenster, "ÄndAnz"), (QStringList{"0", "0", "0", "0", "0", "0", "0"}));
        QCOMPARE(Hand(fenster).Text("richtig"), "0");
        QCOMPARE(Hand(fenster).Text("falsch"), "0");
        QCOMPARE(Hand(fenster).Text("gesamt"), "0");
    }

    void ARightAnswerOnANewCardMovesOneCount()
    {
        LBoxBuehne b;
        b.OeffnenMit({2});
        b.Lernen(Qt::Key_N, true);
        Statistik fenster(StatistikLesen(b.kartei, b.clock.Now()));
        QCOMPARE(Spalte(fenster, "ÄndAnz"), (QStringList{"-1", "0", "+1", "0", "0", "0", "0"}));
        QCOMPARE(Spalte(fenster, "BegAnz"), (QStringList{"2", "0", "0", "0", "0", "0", "0"}));
        QCOMPARE(Spalte(fenster, "AktAnz"), (QStringList{"1", "0", "1", "0", "0", "0", "0"}));
        QCOMPARE(Hand(fenster).Text("richtig"), "1");
        QCOMPARE(Hand(fenster).Text("falsch"), "0");
        QCOMPARE(Hand(fenster).Text("gesamt"), "1");
    }

    void AWrongAnswerInCompartment1RaisesFalschAlone()
    {
        LBoxBuehne b;
        b.OeffnenMit({0, 2});
        b.Lernen(Qt::Key_1, false);
        Statistik fenster(StatistikLesen(b.kartei, b.clock.Now()));
        QCOMPARE(Spalte(fenster, "ÄndAnz"), (QStringList{"0", "0", "0", "0", "0", "0", "0"}));
        QCOMPARE(Hand(fenster).Text("falsch"), "1");
        QCOMPARE(Hand(fenster).Text("gesamt"), "1");
    }

    void ADeletedCardIsNoAnswer()
    {
        LBoxBuehne b;
        b.OeffnenMit({2});
        b.meldungen.antworten = {Meldungen::Antwort::Ja};
        b.NaechsteAbfrage([](QWidget *abfrage) { Hand(*abfrage).Klick("Clöschen"); });
        b.Taste(Qt::Key_N);
        const StatistikWerte werte = StatistikLesen(b.kartei, b.clock.Now());
        QCOMPARE(werte.Fach[0].beginn, 2);
        QCOMPARE(werte.Fach[0].jetzt, 1);
        QCOMPARE(werte.gesamt, 0);
    }

    void OpeningAnotherFileBeginsAnew()
    {
        LBoxBuehne b;
        b.OeffnenMit({2});
        b.Lernen(Qt::Key_N, true);
        MakeCardFile(b.Pfad("b.pzb"), {MakeCard(1, 4, 1)});
        b.dialoge.pfade = {b.Pfad("b.pzb")};
        b.clock.jetzt = b.clock.jetzt.addDays(1);
        b.Menue("Möffnen")->trigger();
        const StatistikWerte werte = StatistikLesen(b.kartei, b.clock.Now(), QLocale(QLocale::German));
        QCOMPARE(werte.Beginn, "22.11.26 09:30:00");
        QCOMPARE(werte.Fach[4].beginn, 1);
        QCOMPARE(werte.gesamt, 0);
    }

    // Whichever way a session ended without another one: nothing of it is left to be compared with.
    void WithoutAFileNoSessionIsShown_data()
    {
        QTest::addColumn<bool>("oeffnen");
        QTest::newRow("an open that failed") << true;
        QTest::newRow("a file that was closed behind an error") << false;
    }

    void WithoutAFileNoSessionIsShown()
    {
        QFETCH(bool, oeffnen);
        LBoxBuehne b;
        b.OeffnenMit({3});
        b.Lernen(Qt::Key_N, true);
        b.Lernen(Qt::Key_N, false);
        if (oeffnen) {
            b.dialoge.pfade = {b.Pfad("fehlt.pzb")};
            b.Menue("Möffnen")->trigger();
        } else {
            QVERIFY(QFile::remove(b.Pfad("a.pzb")));
            b.meldungen.wahlen = {2}; // the answer is let go
            b.Lernen(Qt::Key_N, true);
        }
        QVERIFY(!b.kartei.IsOpen());
        const StatistikWerte werte = StatistikLesen(b.kartei, b.clock.Now());
        QCOMPARE(werte.Beginn, "–");
        QCOMPARE(werte.richtig, 0);
        QCOMPARE(werte.falsch, 0);
        for (const auto &fach : werte.Fach) {
            QCOMPARE(fach.beginn, 0);
            QCOMPARE(fach.jetzt, 0);
        }
    }

    void ItKeepsTheFiguresOfTheMomentItWasOpened()
    {
        LBoxBuehne b;
        b.OeffnenMit({2});
        Statistik fenster(StatistikLesen(b.kartei, b.clock.Now()));
        b.Lernen(Qt::Key_N, true);
        QCOMPARE(Hand(fenster).Text("gesamt"), "0");
    }

    void ZurueckClosesIt_data()
    {
        QTest::addColumn<int>("taste");
        QTest::newRow("mouse") << 0;
        QTest::newRow("enter") << int(Qt::Key_Return);
        QTest::newRow("space") << int(Qt::Key_Space);
        QTest::newRow("escape") << int(Qt::Key_Escape);
    }

    void ZurueckClosesIt()
    {
        QFETCH(int, taste);
        Statistik fenster(StatistikWerte{});
        const Hand hand(fenster);
        hand.Zeigen();
        if (taste)
            hand.Taste(Qt::Key(taste));
        else
            hand.Klick("cmdZurück");
        QVERIFY(!fenster.isVisible());
    }

    // Then is hollow and now is filled, and both are as long as their counts.
    void TheBarsTellThenFromNowWithoutColour()
    {
        StatistikWerte werte;
        werte.Fach[0] = {10, 5};
        werte.Fach[1] = {0, 10};
        Statistik fenster(werte);
        fenster.show();
        QVERIFY(QTest::qWaitForWindowExposed(&fenster));
        const auto helligkeit = [&](int fach, double x, double y) {
            QWidget *balken = Hand(fenster).Finde(QString("Balken(%1)").arg(fach));
            const QImage bild = balken->grab().toImage().convertToFormat(QImage::Format_Grayscale8);
            return qGray(bild.pixel(int(bild.width() * x),
                                    int(bild.height() / 2.0 + balken->fontMetrics().height() * y)));
        };
        const int grund = helligkeit(2, 0.5, 0);
        QCOMPARE(helligkeit(0, 0.75, -0.2), grund);               // hollow
        QVERIFY(std::abs(helligkeit(0, 0.25, 0.2) - grund) > 40); // filled
        QCOMPARE(helligkeit(0, 0.75, 0.2), grund);                // half as long
        QVERIFY(std::abs(helligkeit(1, 0.9, 0.2) - grund) > 40);
        QCOMPARE(Hand(fenster).Finde("Balken(0)")->accessibleName(), "Fach Neu: 10, jetzt 5");
    }
};

PAUKFIX_TEST(StatistikTest)
#include "StatistikTest.moc"
