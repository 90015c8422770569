// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "VerlaufFenster.h"

#include "Diagramm.h"
#include "Drehbuch.h"
#include "Farben.h"
#include "Gemaltes.h"
#include "Hausfarben.h"
#include "TestProgram.h"
#include "Verlaufsbuehne.h"

#include <QAccessible>
#include <QClipboard>
#include <QFile>
#include <QTabBar>
#include <QTableView>

using namespace paukfix;

namespace {

const QDate Heute(2026, 11, 21);

// Sixty days, learned on all but each fifth; today 24 right and 6 wrong, and seven cards of 87 are done.
Verlaufsbuch::Auskunft Beispiel()
{
    Verlaufsbuch::Auskunft auskunft;
    for (int i = 59; i >= 0; --i) {
        Tagesstand stand{Heute.addDays(-i), 10 + i % 7, 1 + i % 3, {}};
        if (i % 5 == 4)
            stand.richtig = stand.falsch = 0;
        stand.karten = {35 + i / 2, 8, 13, 9, 8, 7, 7 - i / 9};
        auskunft.stand.tage.push_back(stand);
    }
    auskunft.stand.tage.back() = {Heute, 24, 6, {35, 8, 13, 9, 8, 7, 7}};
    return auskunft;
}

QString Sentence(const QWidget *teil)
{
    return QAccessible::queryAccessibleInterface(const_cast<QWidget *>(teil))->text(QAccessible::Name);
}

void Einfaerben(bool dunkel)
{
    QPalette farben = QApplication::palette();
    farben.setColor(QPalette::Window, dunkel ? QColor(0x23, 0x25, 0x29) : QColor(0xF0, 0xF0, 0xEF));
    farben.setColor(QPalette::WindowText, dunkel ? QColor(0xEC, 0xEA, 0xF0) : QColor(0x24, 0x23, 0x2E));
    QApplication::setPalette(farben);
}

// The colours of a place in a picture of the window, by how often they are there; the most frequent first.
QList<QColor> FarbenIn(const QImage &bild, const QRect &wo)
{
    QHash<QRgb, int> wieOft;
    for (int y = wo.top(); y <= wo.bottom(); ++y)
        for (int x = wo.left(); x <= wo.right(); ++x)
            ++wieOft[bild.pixel(x, y)];
    QList<QRgb> alle = wieOft.keys();
    std::ranges::sort(alle, [&](QRgb a, QRgb b) { return wieOft[a] > wieOft[b]; });
    QList<QColor> farben;
    for (const QRgb farbe : alle)
        farben << QColor(farbe);
    return farben;
}

// Of the most frequent colour with the one that stands out most.
double Kontrast(const QList<QColor> &farben)
{
    double groesster = 1;
    for (const QColor &farbe : farben)
        groesster = std::max(groesster, Farben::Kontrast(farben.first(), farbe));
    return groesster;
}

} // namespace

// The real window, by key and mouse.
class VerlaufFensterTest : public QObject
{
    Q_OBJECT

private slots:

    void initTestCase() { palette_ = QApplication::palette(); }

    void cleanup() { QApplication::setPalette(palette_); }

    void EachNumberIsASentence()
    {
        VerlaufFenster fenster("Englisch.pzb", Beispiel(), Heute);
        const Hand hand(fenster);
        hand.Zeigen();
        QCOMPARE(fenster.windowTitle(), "Verlauf");
        QCOMPARE(hand.Text("LKartei"), "Englisch.pzb");
        QStringList saetze;
        for (const char *name : {"richtig", "falsch", "inFolge", "erledigt"}) {
            saetze << hand.Text(name);
            QCOMPARE(Sentence(hand.Finde(name)), saetze.last());
        }
        QCOMPARE(saetze[0], "324 richtig in 30 Tagen");
        QCOMPARE(saetze[1], "53 falsch in 30 Tagen");
        QCOMPARE(saetze[2], "4 Tage in Folge gelernt");
        QVERIFY2(saetze[3].startsWith("7 von 87 erledigt; alle etwa am "), qPrintable(saetze[3]));
    }

    void TheLastNumberIsSaidWholeBesideTheOthers()
    {
        Verlaufsbuch::Auskunft auskunft = Beispiel();
        auskunft.stand.tage = {auskunft.stand.tage.back()}; // of one day nothing can be foretold
        VerlaufFenster fenster("Englisch.pzb", auskunft, Heute);
        const Hand hand(fenster);
        fenster.resize(820, 460);
        hand.Zeigen();
        QVERIFY(hand.Text("erledigt").endsWith("Ende noch nicht abzusehen"));
        QCOMPARE(fenster.width(), 820);
        QStringList gemalt = Gemaltes(fenster);
        QVERIFY2(gemalt.contains("erledigt; Ende noch nicht abzusehen"), qPrintable(gemalt.join('|')));
    }

    void PicturesAreReadInWords()
    {
        VerlaufFenster fenster("Englisch.pzb", Beispiel(), Heute);
        const Hand hand(fenster);
        hand.Zeigen();
        const auto beschreibung = [&](const char *name) {
            return QAccessible::queryAccessibleInterface(hand.Finde(name))->text(QAccessible::Description);
        };
        QCOMPARE(Sentence(hand.Finde("Antwortbild")), "Antworten am Tag");
        QCOMPARE(beschreibung("Antwortbild"),
                 "324 richtig und 53 falsch in 30 Tagen; heute 24 richtig und 6 falsch; am meisten am 21. "
                 "Nov.: 24 richtig und 6 falsch. Alle Tage nennt die Tabelle.");
        QCOMPARE(Sentence(hand.Finde("Faecherbild")), "Inhalt der Fächer");
        QVERIFY2(beschreibung("Faecherbild")
                     .startsWith("Heute Neu: 35, Fach 1: 8, Fach 2: 13, Fach 3: 9, Fach 4: 8, Fach 5: 7, "
                                 "erledigt: 7; am 23. Okt. Neu: 49"),
                 qPrintable(beschreibung("Faecherbild")));
    }

    void ThePeriodIsChosenByKeyAndMouse()
    {
        VerlaufFenster fenster("Englisch.pzb", Beispiel(), Heute);
        const Hand hand(fenster);
        hand.Zeigen();
        const QString dreissig = hand.Text("richtig");
        hand.Klick("Zeitraum(1)");
        QVERIFY(hand.Text("richtig").endsWith(" richtig in 12 Wochen"));
        QCOMPARE(hand.Finde<QTableView>("Tabelle")->model()->rowCount(), 60);
        hand.Taste(Qt::Key_A, Qt::AltModifier);
        QTRY_VERIFY2(hand.Text("richtig").endsWith(" richtig seit dem 23. Sept."),
                     qPrintable(hand.Text("richtig")));
        hand.Taste(Qt::Key_3, Qt::AltModifier);
        QTRY_COMPARE(hand.Text("richtig"), dreissig);
        hand.Finde("Zeitraum(0)")->setFocus();
        hand.Taste(Qt::Key_Right);
        QVERIFY(hand.Text("richtig").endsWith(" richtig in 12 Wochen"));
    }

    void TheTableShowsTheSameNumbers()
    {
        VerlaufFenster fenster("Englisch.pzb", Beispiel(), Heute);
        const Hand hand(fenster);
        hand.Zeigen();
        auto *tabelle = hand.Finde<QTableView>("Tabelle");
        QVERIFY(!tabelle->isVisible());
        hand.Taste(Qt::Key_T, Qt::AltModifier);
        QTRY_VERIFY(tabelle->isVisible()); // a key presses a button as long as can be seen
        QVERIFY(!hand.Finde("Antwortbild")->isVisible());
        QCOMPARE(hand.Text("cmdTabelle"), "als Bild");
        QCOMPARE(tabelle->model()->rowCount(), 30);
        QStringList kopf, letzte;
        for (int spalte = 0; spalte < tabelle->model()->columnCount(); ++spalte) {
            kopf << tabelle->model()->headerData(spalte, Qt::Horizontal).toString();
            letzte << tabelle->model()->index(29, spalte).data().toString();
        }
        QCOMPARE(kopf.join(' '), "Tag richtig falsch Neu Fach 1 Fach 2 Fach 3 Fach 4 Fach 5 erledigt");
        QCOMPARE(letzte.join(' '), "21.11.2026 24 6 35 8 13 9 8 7 7");
        // Today is in sight, and the keys go through the days.
        QCOMPARE(tabelle->currentIndex().row(), 29);
        QVERIFY(tabelle->viewport()->rect().contains(tabelle->visualRect(tabelle->currentIndex()).center()));
        QCOMPARE(hand.FokusName(), "Tabelle");
        hand.Taste(Qt::Key_Up);
        QCOMPARE(tabelle->currentIndex().row(), 28);
        hand.Taste(Qt::Key_B, Qt::AltModifier);
        QTRY_VERIFY(!tabelle->isVisible());
        QVERIFY(hand.Finde("Antwortbild")->isVisible());
    }

    void TheTableIsCopiedForSpreadsheets_data()
    {
        QTest::addColumn<int>("weg");
        QTest::newRow("mouse") << 0;
        QTest::newRow("key") << 1;
        QTest::newRow("Ctrl+C in the table") << 2;
    }

    void TheTableIsCopiedForSpreadsheets()
    {
        QFETCH(int, weg);
        QGuiApplication::clipboard()->clear();
        VerlaufFenster fenster("Englisch.pzb", Beispiel(), Heute);
        const Hand hand(fenster);
        hand.Zeigen();
        if (weg == 0) {
            hand.Klick("cmdKopieren");
        } else if (weg == 1) {
            hand.Taste(Qt::Key_K, Qt::AltModifier);
        } else {
            hand.Klick("cmdTabelle");
            hand.Taste(Qt::Key_C, Qt::ControlModifier);
        }
        QTRY_VERIFY(!QGuiApplication::clipboard()->text().isEmpty());
        const QStringList zeilen = QGuiApplication::clipboard()->text().split('\n');
        QCOMPARE(zeilen.size(), 32); // with the head, and nothing behind the last line's end
        QCOMPARE(zeilen[0], "Tag\trichtig\tfalsch\tNeu\tFach 1\tFach 2\tFach 3\tFach 4\tFach 5\terledigt");
        QCOMPARE(zeilen[30], "21.11.2026\t24\t6\t35\t8\t13\t9\t8\t7\t7");
        QCOMPARE(zeilen[31], "");
        QCOMPARE(hand.Text("LKopiert"), "30 Tage liegen in der Zwischenablage.");
    }

    void ZurueckClosesIt_data()
    {
        QTest::addColumn<int>("taste");
        QTest::newRow("mouse") << 0;
        QTest::newRow("enter") << int(Qt::Key_Return);
        QTest::newRow("escape") << int(Qt::Key_Escape);
        QTest::newRow("mnemonic") << int(Qt::Key_R);
    }

    void ZurueckClosesIt()
    {
        QFETCH(int, taste);
        VerlaufFenster fenster("Englisch.pzb", Beispiel(), Heute);
        const Hand hand(fenster);
        hand.Zeigen();
        QCOMPARE(hand.FokusName(), "cmdZurück");
        if (taste)
            hand.Taste(Qt::Key(taste), taste == Qt::Key_R ? Qt::AltModifier : Qt::NoModifier);
        else
            hand.Klick("cmdZurück");
        QTRY_VERIFY(!fenster.isVisible());
    }

    void ASmallWindowShowsOnePictureAtATime()
    {
        VerlaufFenster fenster("Englisch.pzb", Beispiel(), Heute);
        const Hand hand(fenster);
        fenster.resize(1000, 800);
        hand.Zeigen();
        QVERIFY(hand.Finde("Antwortbild")->isVisible() && hand.Finde("Faecherbild")->isVisible());
        QVERIFY(!hand.Finde("Reiter")->isVisible());
        QCOMPARE(hand.Finde("richtig")->y(), hand.Finde("erledigt")->y());
        fenster.resize(640, 430);
        QTRY_COMPARE(fenster.size(), QSize(640, 430));
        QVERIFY(hand.Finde("Antwortbild")->isVisible() && !hand.Finde("Faecherbild")->isVisible());
        QCOMPARE(hand.Finde("richtig")->y(), hand.Finde("falsch")->y());
        QVERIFY(hand.Finde("erledigt")->y() > hand.Finde("richtig")->y());
        hand.Taste(Qt::Key_F, Qt::AltModifier);
        QVERIFY(!hand.Finde("Antwortbild")->isVisible() && hand.Finde("Faecherbild")->isVisible());
        // All of it lies in the window, and nothing on anything else.
        QList<QRect> orte;
        for (const char *name : {"richtig", "falsch", "inFolge", "erledigt", "Reiter", "Faecherbild",
                                 "cmdTabelle", "cmdKopieren", "cmdZurück"}) {
            const auto *teil = hand.Finde(QString::fromUtf8(name));
            const QRect ort(teil->mapTo(&fenster, QPoint()), teil->size());
            QVERIFY2(fenster.rect().contains(ort), name);
            for (const QRect &anderer : orte)
                QVERIFY2(!anderer.intersects(ort), name);
            orte << ort;
        }
    }

    // In the pictures as they are painted.
    void ItIsReadableInLightAndDark_data()
    {
        QTest::addColumn<bool>("dunkel");
        QTest::newRow("light") << false;
        QTest::newRow("dark") << true;
    }

    void ItIsReadableInLightAndDark()
    {
        QFETCH(bool, dunkel);
        Einfaerben(dunkel);
        VerlaufFenster fenster("Englisch.pzb", Beispiel(), Heute);
        const Hand hand(fenster);
        fenster.resize(1100, 800);
        hand.Zeigen();
        const QImage bild = fenster.grab().toImage();
        const auto ort = [&](const char *name) {
            const QWidget *teil = hand.Finde(name);
            return QRect(teil->mapTo(&fenster, QPoint()), teil->size()).adjusted(3, 3, -3, -3);
        };
        // The texts of the numbers, and the names at the right of both pictures.
        for (const char *name : {"richtig", "falsch", "inFolge", "erledigt"})
            QVERIFY(Kontrast(FarbenIn(bild, ort(name))) >= 4.5);
        const auto rechts = [&](const char *name) {
            QRect teil = ort(name);
            teil.setLeft(teil.right() - 70);
            return teil;
        };
        for (const char *name : {"Antwortbild", "Faecherbild"})
            QVERIFY(Kontrast(FarbenIn(bild, rechts(name))) >= 4.5);
        // The bars on their ground.
        const QList<QColor> balken = FarbenIn(bild, ort("Antwortbild")).mid(0, 3);
        const Hausfarben &haus = HausfarbenZu(fenster.palette());
        QCOMPARE(balken.first(), haus.karte);
        QVERIFY(balken.contains(haus.faecher[FachErledigt]));
        QVERIFY(Farben::Kontrast(haus.faecher[FachErledigt], haus.karte) >= 3);
        QVERIFY(Farben::Kontrast(haus.faecher[FachFalsch], haus.karte) >= 3);
        // All seven layers are there, and a line of the ground lies between each two.
        const QRect flaechen = ort("Faecherbild");
        const int spalte = flaechen.left() + flaechen.width() * 3 / 4;
        QList<QColor> folge;
        bool linie = true;
        for (int y = flaechen.top(); y <= flaechen.bottom(); ++y) {
            const QColor farbe = bild.pixelColor(spalte, y);
            const bool schicht = std::ranges::find(haus.faecher, farbe) != haus.faecher.end();
            if (schicht && (folge.isEmpty() || folge.last() != farbe)) {
                QVERIFY(linie);
                folge << farbe;
            }
            linie = !schicht;
        }
        QCOMPARE(folge, QList<QColor>(haus.faecher.begin(), haus.faecher.end()));
    }

    void ABoxWithoutAPastSaysSo()
    {
        Verlaufsbuch::Auskunft auskunft;
        auskunft.stand.tage = {{Heute, 0, 0, {3}}};
        VerlaufFenster fenster("Neu.pzb", auskunft, Heute);
        const Hand hand(fenster);
        hand.Zeigen();
        QCOMPARE(hand.Text("richtig"), "0 richtig in 30 Tagen");
        QCOMPARE(hand.Text("inFolge"), "0 Tage in Folge gelernt");
        QCOMPARE(hand.Text("erledigt"), "0 von 3 erledigt; Ende noch nicht abzusehen");
        QVERIFY(!hand.Finde("LHinweis")->isVisible());
        fenster.grab();
        // And one of which nothing is known at all.
        VerlaufFenster leer("Neu.pzb", {}, Heute);
        QCOMPARE(Hand(leer).Text("erledigt"), "0 von 0 erledigt");
        leer.grab();
    }

    void ThatItCannotBeKeptIsSaid()
    {
        Verlaufsbuch::Auskunft auskunft = Beispiel();
        auskunft.fehler = "Der Datenträger ist voll.";
        VerlaufFenster fenster("Englisch.pzb", auskunft, Heute);
        const Hand hand(fenster);
        hand.Zeigen();
        QCOMPARE(hand.Text("LHinweis"),
                 "Der Verlauf kann zurzeit nicht gespeichert werden: Der Datenträger ist voll.");
        QVERIFY(hand.Finde("LHinweis")->isVisible());
    }

    void WhetherACopyIsTheSameBoxIsAsked()
    {
        Verlaufsbuehne b;
        b.Anlegen("a.pzb");
        b.Oeffnen("a.pzb");
        b.Antworten(true);
        b.Tage();
        b.kartei.CloseCardFile();
        QVERIFY(QFile::copy(b.Pfad("a.pzb"), b.Pfad("kopie.pzb")));
        b.Oeffnen("kopie.pzb");
        b.Antworten(true);
        b.meldungen.antworten = {Meldungen::Antwort::Ja};
        QString gezeigt;
        {
            const Drehbuch buch({Drehbuch::In("Verlauf", [&](QWidget &fenster) {
                gezeigt = Hand(fenster).Text("richtig");
                Hand(fenster).Taste(Qt::Key_Escape);
            })});
            VerlaufZeigen(*b.buch, "kopie.pzb", b.clock.jetzt.date(), b.meldungen, nullptr);
        }
        QCOMPARE(gezeigt, "2 richtig in 30 Tagen");
        QCOMPARE(b.meldungen.Texte(),
                 QStringList{"Der Verlauf kennt viele dieser Karten aus „" + b.Pfad("a.pzb") +
                             "“. Gehört der Verlauf von dort zu dieser Kartei?"});
        // Not again.
        const Drehbuch buch(
            {Drehbuch::In("Verlauf", [](QWidget &fenster) { Hand(fenster).Taste(Qt::Key_Escape); })});
        VerlaufZeigen(*b.buch, "kopie.pzb", b.clock.jetzt.date(), b.meldungen, nullptr);
        QCOMPARE(b.meldungen.gezeigt.size(), 1);
    }

    void ADamagedFileIsSaidOnce()
    {
        Verlaufsbuehne b;
        b.Beenden();
        QFile datei(b.Verlaufspfad());
        QVERIFY(datei.open(QIODevice::WriteOnly));
        datei.write("keine Datenbank");
        datei.close();
        b.Starten();
        b.Anlegen("a.pzb");
        b.Oeffnen("a.pzb");
        for (int i = 0; i < 2; ++i) {
            const Drehbuch buch(
                {Drehbuch::In("Verlauf", [](QWidget &fenster) { Hand(fenster).Taste(Qt::Key_Escape); })});
            VerlaufZeigen(*b.buch, "a.pzb", b.clock.jetzt.date(), b.meldungen, nullptr);
        }
        QCOMPARE(b.meldungen.Texte(),
                 QStringList{"Die Datei des Verlaufs war beschädigt; der Verlauf hat neu begonnen. Die "
                             "beschädigte Datei heißt jetzt „verlauf-beschädigt.sqlite“."});
    }

private:
    QPalette palette_;
};

PAUKFIX_TEST(VerlaufFensterTest)
#include "VerlaufFensterTest.moc"
