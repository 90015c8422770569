// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Farben.h"
#include "Geschehen.h"
#include "Kartenfaecher.h"
#include "LBoxBuehne.h"
#include "Lesbarkeit.h"
#include "TestProgram.h"

#include <QAbstractButton>
#include <QPalette>

using namespace paukfix;

namespace {

Kartenfaecher Gefaechert(int anzahl, double gefuellt, double innen)
{
    return {anzahl,
            {.innen = QRectF(100, 50, innen, 300),
             .gefuellt = gefuellt,
             .pixelJeTwip = 0.14,
             .tiefe = {46, -27}}};
}

} // namespace

// What the main window looks like, and what it says of the box and of the session.
class LBoxAnsichtTest : public QObject
{
    Q_OBJECT

private:
    static QString Text(const LBoxBuehne &b, const char *name) { return b.Finde<QLabel>(name)->text(); }

    static void Schreibtische()
    {
        QTest::addColumn<bool>("dunkel");
        QTest::addColumn<QSize>("groesse");
        for (const bool dunkel : {false, true})
            for (const QSize groesse : {QSize(1280, 830), QSize(911, 480), QSize(640, 400)})
                QTest::addRow("%s %d", dunkel ? "dark" : "light", groesse.width()) << dunkel << groesse;
    }

private slots:

    void UpToThirteenCardsAreAllSeen()
    {
        for (int anzahl = 1; anzahl <= 13; ++anzahl) {
            const auto faecher = Gefaechert(anzahl, 3, 140);
            QCOMPARE(faecher.Karten().size(), std::size_t(anzahl));
            // Fanned out, each stands free of the one before it.
            for (std::size_t i = 1; i < faecher.Karten().size(); ++i) {
                const auto &eine = faecher.Karten()[i - 1], &naechste = faecher.Karten()[i];
                QVERIFY(naechste.fuss + naechste.neigung >= eine.fuss + eine.neigung + 4);
            }
        }
        std::size_t vorher = 13;
        for (int anzahl = 14; anzahl < 700; ++anzahl) {
            const std::size_t gezeigt = Gefaechert(anzahl, anzahl * 240.0 / 700, 240).Karten().size();
            QVERIFY(gezeigt <= std::size_t(anzahl));
            QVERIFY2(gezeigt + 1 >= vorher || anzahl <= 20, qPrintable(QString::number(anzahl)));
            vorher = gezeigt;
        }
    }

    void CardsStandWithinTheFilledWidthAndLeanWithinTheirCompartment()
    {
        for (const double innen : {27.0, 43.0, 95.0, 243.0})
            for (const double anteil : {0.02, 0.3, 0.7, 1.0})
                for (const int anzahl : {1, 2, 7, 13, 14, 40, 700}) {
                    const double gefuellt = std::max(3.0, innen * anteil);
                    const Kartenfaecher faecher = Gefaechert(anzahl, gefuellt, innen);
                    for (const auto &karte : faecher.Karten()) {
                        QVERIFY2(karte.fuss >= 100 && karte.fuss + karte.dicke <= 100 + gefuellt + 0.001,
                                 qPrintable(QStringLiteral("%1 cards, %2 of %3: %4 + %5")
                                                .arg(anzahl)
                                                .arg(gefuellt)
                                                .arg(innen)
                                                .arg(karte.fuss)
                                                .arg(karte.dicke)));
                        QVERIFY(karte.fuss + karte.neigung + karte.dicke <= 100 + innen + 0.001);
                        QVERIFY(anteil < 1 || karte.neigung == 0);
                    }
                    QVERIFY(faecher.Karten().back().dicke >= 3);
                }
    }

    void TheHeadTellsTheWholeBox()
    {
        LBoxBuehne b;
        b.OeffnenMit({3, 2, 1, 0, 0, 1, 4});
        QCOMPARE(Text(b, "LKarten"), "11 Karten, 4 erledigt");
        QCOMPARE(b.Finde("Anteile")->accessibleName(),
                 "Karten: Neu 3, Fach 1 2, Fach 2 1, Fach 3 0, Fach 4 0, Fach 5 1, erledigt 4");
        QCOMPARE(b.Finde("LErledigt")->accessibleName(), "erledigt: 4 Karten");
        b.Fuellen(6, 1300);
        b.fenster->BoxZeichnen();
        QCOMPARE(Text(b, "LKarten"), "1.311 Karten, 1.304 erledigt");
    }

    void TheButtonThatLeadsDoesWhatEnterDoes()
    {
        LBoxBuehne b;
        b.OeffnenMit({1, 1});
        QCOMPARE(QApplication::focusWidget(), b.Finde("Weiter"));
        b.NaechsteAntwort(true);
        b.Klick("Weiter");
        QCOMPARE(b.gefragt, QStringList{"2"});
        b.Lernen(Qt::Key_Space, true);
        QCOMPARE(b.gefragt, (QStringList{"2", "2"}));
    }

    void WithoutAFileTheButtonOpensOne()
    {
        LBoxBuehne b;
        b.Zeigen();
        QCOMPARE(b.Finde<QAbstractButton>("Weiter")->text(), "Kartei öffnen");
        QVERIFY(!b.Finde("LKarten")->isVisible());
        QVERIFY(!b.Finde("Anteile")->isVisible());
        MakeCardFile(b.Pfad("a.pzb"), {MakeCard(1, 0, 1)});
        b.dialoge.pfade = {b.Pfad("a.pzb")};
        b.Taste(Qt::Key_Return);
        QVERIFY(b.kartei.IsOpen());
        QCOMPARE(b.Finde<QAbstractButton>("Weiter")->text(), "Weiter lernen: Neu");
        QVERIFY(b.Finde("LKarten")->isVisible());
    }

    void WhatHappenedLastAndHowTheSessionGoesIsSaid()
    {
        LBoxBuehne b;
        b.OeffnenMit({2, 1});
        QCOMPARE(Text(b, "LGeschehen") + Text(b, "LBilanz") + Text(b, "LAntworten"), "");
        b.Lernen(Qt::Key_1, true);
        QCOMPARE(Text(b, "LGeschehen"),
                 "Richtig: Karte 3 ging von Fach 1 nach Fach 2 · Fach 1 ist jetzt leer");
        QCOMPARE(Text(b, "LBilanz"), "1 richtig, 0 falsch, 1 aufgestiegen");
        b.Lernen(Qt::Key_N, false);
        QCOMPARE(Text(b, "LGeschehen"), "Falsch: Karte 1 ging von Neu nach Fach 1");
        QCOMPARE(Text(b, "LBilanz"), "1 richtig, 1 falsch, 1 aufgestiegen");
        QVERIFY2(Text(b, "LAntworten").endsWith(": 1 richtig, 1 falsch"), qPrintable(Text(b, "LAntworten")));
        b.meldungen.antworten = {Meldungen::Antwort::Ja};
        b.NaechsteAbfrage([](QWidget *abfrage) {
            QTest::mouseClick(abfrage->findChild<QWidget *>("Clöschen"), Qt::LeftButton);
        });
        b.Taste(Qt::Key_N);
        QCOMPARE(Text(b, "LGeschehen"), "Karte 2 wurde gelöscht · Neu ist jetzt leer");
        // Another file begins a session; nothing is asked or shown for the old one.
        const qsizetype meldungen = b.meldungen.gezeigt.size();
        MakeCardFile(b.Pfad("b.pzb"), {MakeCard(1, 0, 1)});
        b.dialoge.pfade = {b.Pfad("b.pzb")};
        b.Menue("Möffnen")->trigger();
        QCOMPARE(Text(b, "LGeschehen") + Text(b, "LBilanz") + Text(b, "LAntworten"), "");
        QCOMPARE(b.meldungen.gezeigt.size(), meldungen);
    }

    void CardsThatMovedUpAreCountedOnceAndOnlyWhileTheyStandHigher()
    {
        const auto frage = [](int nr, int von, int nach) {
            Bewegung bewegung;
            bewegung.frageNr = nr;
            bewegung.von = von;
            bewegung.nach = nach;
            return bewegung;
        };
        Sitzung sitzung;
        sitzung.StartSessionTally(QDateTime(QDate(2026, 5, 4), QTime(9, 5)), FachStartwerte());
        Bilanz bilanz;
        QCOMPARE(bilanz.Text(sitzung), "");
        sitzung.Zaehlen(true);
        bilanz.Zaehlen(frage(1, 0, 2), sitzung);
        bilanz.Zaehlen(frage(1, 2, 3), sitzung);
        QCOMPARE(bilanz.Text(sitzung), "1 richtig, 0 falsch, 1 aufgestiegen");
        bilanz.Zaehlen(frage(2, 0, 1), sitzung); // a new card that was answered wrong
        QCOMPARE(bilanz.Text(sitzung), "1 richtig, 0 falsch, 1 aufgestiegen");
        bilanz.Zaehlen(frage(1, 3, 1), sitzung);
        QCOMPARE(bilanz.Text(sitzung), "1 richtig, 0 falsch, 0 aufgestiegen");
        QCOMPARE(Bilanz::Seither(sitzung, QDate(2026, 5, 4)), "heute seit 9:05: 1 richtig, 0 falsch");
        QCOMPARE(Bilanz::Seither(sitzung, QDate(2026, 5, 5)), "seit 4.5., 9:05: 1 richtig, 0 falsch");
        sitzung.StartSessionTally(QDateTime(QDate(2026, 5, 6), QTime(8, 0)), FachStartwerte());
        sitzung.Zaehlen(true);
        bilanz.Zaehlen(frage(9, 1, 2), sitzung);
        QCOMPARE(bilanz.Text(sitzung), "1 richtig, 0 falsch, 1 aufgestiegen");
    }

    void ACardThatStaysOrIsDoneIsSaidSo()
    {
        FachTabelle tabelle = FachStartwerte();
        Bewegung bewegung;
        bewegung.frageNr = 7;
        bewegung.von = bewegung.nach.emplace(1);
        QCOMPARE(Geschehen(bewegung, tabelle), "Falsch: Karte 7 bleibt in Fach 1");
        bewegung.von = 5;
        bewegung.nach = 6;
        bewegung.richtig = true;
        tabelle[5].Anzahl = 1;
        QCOMPARE(Geschehen(bewegung, tabelle), "Richtig: Karte 7 ist erledigt");
    }

    void EveryTextCanBeRead_data() { Schreibtische(); }

    void EveryTextCanBeRead()
    {
        QFETCH(bool, dunkel);
        QFETCH(QSize, groesse);
        const Schreibtisch schreibtisch(dunkel);
        LBoxBuehne b;
        b.OeffnenMit({30, 52, 13, 9, 8, 7, 7});
        b.Lernen(Qt::Key_1, true);
        b.fenster->resize(groesse);
        QTRY_COMPARE(b.fenster->size(), groesse);
        QCoreApplication::processEvents();
        const QImage bild = b.fenster->grab().toImage();
        QStringList namen{"Weiter", "LKarten", "LGeschehen", "LBilanz", "LErledigt", "LKartei"};
        for (const char *name : {"LWeiter", "LAntworten", "LTasten"})
            if (b.Finde(name)->isVisible() && b.Finde(name)->width() >= b.Finde(name)->sizeHint().width())
                namen << name;
        for (int i = 1; i <= 6; ++i)
            namen << QString("Label%1").arg(i);
        for (const QString &name : namen) {
            const QWidget *teil = b.Finde(name);
            QVERIFY2(teil->isVisible(), qPrintable(name));
            const QRect platz = Auf(b.fenster.get(), teil);
            QVERIFY2(b.fenster->rect().contains(platz), qPrintable(name));
            // Of a plate the paper, of which there may be little more than its letters.
            const bool schild = name.startsWith("Label") || name == "LErledigt";
            const Lesbarkeit text(bild, schild ? QRect(platz.center() - QPoint(5, 7), QSize(11, 14))
                                               : platz.adjusted(2, 2, -2, -2));
            QVERIFY2(text.kontrast >= Farben::KontrastText,
                     qPrintable(QString("%1 %2").arg(name).arg(text.kontrast)));
        }
        // The counts on the near walls, and the name of the die's key.
        for (int i = 0; i < 6; ++i) {
            const QRect schild = Auf(b.fenster.get(), b.Finde(QString("Label%1").arg(i + 1)));
            const QRect zahl(schild.left() + 2, schild.bottom() + 6, schild.width() - 4, 16);
            QVERIFY(Lesbarkeit(bild, zahl).kontrast >= Farben::KontrastText);
        }
        const QRect wuerfel = Auf(b.fenster.get(), b.Wuerfel());
        QVERIFY(Lesbarkeit(bild, {wuerfel.left(), wuerfel.bottom() + 6, wuerfel.width(), 22}).kontrast >=
                Farben::KontrastText);
    }

    void OutlinesStandOut_data() { Schreibtische(); }

    void OutlinesStandOut()
    {
        QFETCH(bool, dunkel);
        QFETCH(QSize, groesse);
        const Schreibtisch schreibtisch(dunkel);
        LBoxBuehne b;
        b.OeffnenMit({30, 8, 13, 9, 8, 7, 7});
        b.fenster->resize(groesse);
        QTRY_COMPARE(b.fenster->size(), groesse);
        QCoreApplication::processEvents();
        const QImage bild = b.fenster->grab().toImage();
        // Every share of the bar.
        const QRect anteile = Auf(b.fenster.get(), b.Finde("Anteile"));
        const QColor grund = bild.pixelColor(anteile.left() - 8, anteile.top() + 3);
        QList<QColor> farben;
        for (int x = anteile.left() + 6; x < anteile.right() - 6; ++x) {
            const QColor farbe = bild.pixelColor(x, anteile.top() + 3);
            if (farbe == bild.pixelColor(x + 1, anteile.top() + 3) && farbe != grund &&
                !farben.contains(farbe))
                farben << farbe;
        }
        QCOMPARE(farben.size(), 7);
        for (const QColor &farbe : farben)
            QVERIFY2(Farben::Kontrast(farbe, grund) >= Farben::KontrastUmriss, qPrintable(farbe.name()));
        // The border of the fullest: red, and beside it what makes it seen on the box.
        const QRect fach1 = Auf(b.fenster.get(), b.Finde("Image0(1)"));
        const Lesbarkeit rahmen(bild, {fach1.left() - 10, fach1.bottom() - 2, fach1.width() + 20, 12});
        QVERIFY(rahmen.kontrast >= Farben::KontrastUmriss);
        // A front card's upper edge against the window.
        const QRect fach5 = Auf(b.fenster.get(), b.Finde("Image0(5)"));
        const Lesbarkeit karten(bild, {fach5.left() + 4, fach5.top() - 8, fach5.width() / 2, 16});
        QVERIFY(karten.kontrast >= Farben::KontrastUmriss);
    }

    void FocusIsSeenAtEveryStop()
    {
        LBoxBuehne b;
        b.OeffnenMit({2, 1, 1, 1, 1, 1});
        QStringList stationen;
        QImage vorher;
        do {
            const QWidget *dort = b.Fokus();
            QVERIFY2(!stationen.contains(dort->objectName()), qPrintable(dort->objectName()));
            stationen << dort->objectName();
            QCoreApplication::processEvents();
            const QImage jetzt = b.fenster->grab().toImage();
            if (!vorher.isNull()) {
                const QRect platz = Auf(b.fenster.get(), dort).adjusted(-4, -4, 4, 4) & b.fenster->rect();
                QVERIFY2(vorher.copy(platz) != jetzt.copy(platz), qPrintable(dort->objectName()));
            }
            vorher = jetzt;
            b.Taste(Qt::Key_Tab);
        } while (b.Fokus()->objectName() != "Weiter" && stationen.size() < 20);
        QCOMPARE(stationen.first(), "Weiter");
        for (const char *name : {"Image0(0)", "Image0(1)", "Image0(5)", "PicWürfel"})
            QVERIFY2(stationen.contains(name), name);
    }

    void ASmallWindowGivesUpTheLegendFirstThenTheAnswersThenTheCapacities()
    {
        LBoxBuehne b;
        b.OeffnenMit({30, 8, 13, 9, 8, 7, 7});
        b.Lernen(Qt::Key_1, true);
        const auto bei = [&](QSize groesse) {
            b.fenster->resize(groesse);
            QCoreApplication::processEvents();
            return QString(b.Finde("LWeiter")->isVisible() ? "Taste " : "") +
                   (b.Finde("LAntworten")->isVisible() ? "Antworten" : "");
        };
        QCOMPARE(bei({1280, 830}), "Taste Antworten");
        QCOMPARE(bei({640, 400}), "");
        // Whatever is given up: the button, the counts and the box are there, and nothing covers another.
        const QRect knopf = Auf(b.fenster.get(), b.Finde("Weiter"));
        QVERIFY(knopf.bottom() < Auf(b.fenster.get(), b.Finde("Image0(0)")).top());
        QVERIFY(knopf.right() < Auf(b.fenster.get(), b.Finde("LKarten")).left());
        QVERIFY(b.fenster->rect().contains(Auf(b.fenster.get(), b.Finde("LErledigt"))));
    }

    // What is drawn again in part looks like what is drawn as a whole.
    void AChangedCountIsDrawnAsIfAllWereDrawn()
    {
        LBoxBuehne b;
        b.OeffnenMit({30, 8, 13, 9, 8, 7, 7});
        b.fenster->grab();
        b.Fuellen(3, 60);
        b.Fuellen(6, 1);
        b.fenster->BoxZeichnen();
        const QImage inTeilen = b.fenster->grab().toImage();
        b.fenster->resize(b.fenster->size() + QSize(1, 0));
        b.fenster->grab();
        b.fenster->resize(b.fenster->size() - QSize(1, 0));
        QCoreApplication::processEvents();
        QCOMPARE(b.fenster->grab().toImage(), inTeilen);
    }
};

PAUKFIX_TEST(LBoxAnsichtTest)
#include "LBoxAnsichtTest.moc"
