// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "AExport.h"
#include "AImport.h"
#include "Drehbuch.h"
#include "Karteianhaengen.h"
#include "TestProgram.h"
#include "Werkstatt.h"

#include <QComboBox>
#include <QElapsedTimer>
#include <QPushButton>
#include <QTableWidget>

using namespace paukfix;
using namespace Qt::StringLiterals;

// The import's window with a file: what it guesses, shows and lets be corrected.
class ImportFensterTest : public QObject
{
    Q_OBJECT

private:
    // "Frage|Antwort|Thema" of each card that is shown.
    static QStringList Vorschau(QWidget &fenster)
    {
        const auto *tafel = Hand(fenster).Finde<QTableWidget>("tblVorschau");
        QStringList karten;
        for (int i = 0; i < tafel->rowCount(); ++i)
            karten << tafel->item(i, 0)->text() + "|" + tafel->item(i, 1)->text() + "|" +
                          tafel->item(i, 2)->text();
        return karten;
    }

    static QString Vorhaben(QWidget &fenster) { return Hand(fenster).Text("Vorhaben"); }

    // With the keyboard, as in a closed box of entries.
    static void Waehle(QWidget &fenster, const char *name, int eintrag)
    {
        auto *box = Hand(fenster).Finde<QComboBox>(name);
        box->setFocus();
        QTest::keyClick(box, Qt::Key_Home);
        for (int i = 0; i < eintrag; ++i)
            QTest::keyClick(box, Qt::Key_Down);
        QCOMPARE(box->currentIndex(), eintrag);
    }

    // As if the work took long: it begins with waiting.
    static void LangeArbeiten(Werkstatt &w)
    {
        w.meldungen.beiSanduhr = [] {
            QElapsedTimer uhr;
            uhr.start();
            while (!uhr.hasExpired(400)) {
            }
        };
    }

private slots:

    void AFileIsShownAsItLooksAndCanBeCorrected()
    {
        Werkstatt w;
        w.Oeffnen({});
        w.Schreiben("a.csv", "Deutsch;Englisch;Lektion\r\n\"Haus; Hof\";house;1\r\nBaum;tree;2\r\nohne\r\n");
        AImport fenster(w.oeffner, w.Alle());
        const Hand hand(fenster);
        hand.Zeigen();
        QVERIFY(!hand.Finde("tblVorschau")->isVisible());
        QVERIFY(hand.Finde("Hinweis(1)")->isVisible());
        hand.Ersetze("lblDateiname", "a.csv");
        QVERIFY(hand.Finde("tblVorschau")->isVisible());
        QVERIFY(!hand.Finde("Hinweis(1)")->isVisible());
        QCOMPARE(hand.Text("cmbTrennzeichen"), ";");
        QCOMPARE(hand.Text("cmbForm"), "CSV");
        QCOMPARE(hand.Text("cmbFrage"), "1: Deutsch");
        QVERIFY(hand.Finde<QCheckBox>("chkUeberschrift")->isChecked());
        QCOMPARE(Vorschau(fenster), (QStringList{"Haus; Hof|house|1", "Baum|tree|2"}));
        QCOMPARE(Vorhaben(fenster),
                 "2 Karten kommen ins Fach Neu; 1 Zeile ohne Trennzeichen bleibt aus (Zeile 4).");

        Waehle(fenster, "cmbFrage", 2); // the other way round, without topic
        Waehle(fenster, "cmbAntwort", 1);
        Waehle(fenster, "cmbThema", 0);
        hand.Klick("chkUeberschrift");
        QCOMPARE(Vorschau(fenster), (QStringList{"Englisch|Deutsch|", "house|Haus; Hof|", "tree|Baum|"}));
        hand.Klick("chkUeberschrift");
        hand.Klick("cmdOK");
        QCOMPARE(w.meldungen.Texte(), QStringList{"a.csv erfolgreich eingelesen"});
        QVERIFY(!fenster.isVisible());
        const QList<CardRecord> karten = w.Karten();
        QCOMPARE(karten.size(), 2);
        QCOMPARE(karten[0].Frage, "house");
        QCOMPARE(karten[0].Antwort_1_Klartext, "Haus; Hof");
        QCOMPARE(karten[0].Picture_9_Name, "");
    }

    void FormAndEncodingCanBeCorrected()
    {
        Werkstatt w;
        w.Oeffnen({});
        w.Schreiben("a.txt", "\"Hund\";\"\xD1\xEE\xE1\"\r\n");
        AImport fenster(w.oeffner, w.Alle());
        const Hand hand(fenster);
        hand.Zeigen();
        hand.Ersetze("lblDateiname", "a.txt");
        QCOMPARE(hand.Text("cmbForm"), "CSV");
        QCOMPARE(hand.Text("cmbZeichensatz"), "Windows-1252 (Westeuropa)");
        QCOMPARE(Vorschau(fenster), QStringList{u"Hund|Ñîá|"_s});
        auto *zeichensatz = hand.Finde<QComboBox>("cmbZeichensatz");
        zeichensatz->setCurrentText("Windows-1251 (Kyrillisch)");
        QCOMPARE(Vorschau(fenster), QStringList{u"Hund|Соб|"_s});
        Waehle(fenster, "cmbForm", 0);
        QCOMPARE(Vorschau(fenster), QStringList{u"\"Hund\"|\"Соб\"|"_s});
        QCOMPARE(hand.Text("cmbZeichensatz"), "Windows-1251 (Kyrillisch)"); // what was chosen stays
        Waehle(fenster, "cmbForm", 2);
        QVERIFY(!hand.Finde("cmbTrennzeichen")->isEnabled());
        QCOMPARE(Vorhaben(fenster),
                 "0 Karten kommen ins Fach Neu; 1 Zeile ohne Trennzeichen bleibt aus (Zeile 1).");
        hand.Klick("cmdOK");
        QCOMPARE(w.meldungen.Texte(),
                 QStringList{"a.txt erfolgreich eingelesen\nEs kam keine Karte herein: Die "
                             "einzige Zeile mit Text enthält das Trennzeichen „,“ nicht."});
        QVERIFY(w.Karten().isEmpty());
    }

    void CardsThatTheBoxHasAreTold()
    {
        const auto nach = [](int wahl, QString &meldung) {
            Werkstatt w;
            w.Oeffnen({MakeCard(1, 3, 1), MakeCard(2, 4, 1)});
            w.Schreiben("a.txt", "Frage 1\tAntwort 1\r\nFrage 2\tanders\r\nneu\tnew\r\n");
            AImport fenster(w.oeffner, w.Alle());
            const Hand hand(fenster);
            hand.Zeigen();
            [&] { QVERIFY(!hand.Finde("cmbVorhandene")->isVisible()); }();
            hand.Ersetze("lblDateiname", "a.txt");
            [&] {
                QVERIFY(hand.Finde("cmbVorhandene")->isVisible());
                QCOMPARE(hand.Text("lblVorhandene"), "1 gibt es schon, 1 mit anderer Antwort:");
                QCOMPARE(hand.Text("cmbVorhandene"), "trotzdem übernehmen");
                Waehle(fenster, "cmbVorhandene", wahl);
            }();
            hand.Klick("cmdOK");
            meldung = w.meldungen.Texte().value(0).section('\n', 1);
            QStringList inhalt;
            for (const CardRecord &karte : w.Karten())
                inhalt << karte.Frage_Klartext + "=" + karte.Antwort_1_Klartext;
            return inhalt;
        };
        QString meldung;
        QCOMPARE(nach(0, meldung), (QStringList{"Frage 1=Antwort 1", "Frage 2=anders", "neu=new",
                                                "Frage 1=Antwort 1", "Frage 2=Antwort 2"}));
        QCOMPARE(meldung, "");
        QCOMPARE(nach(1, meldung),
                 (QStringList{"Frage 2=anders", "neu=new", "Frage 1=Antwort 1", "Frage 2=Antwort 2"}));
        QCOMPARE(meldung, "2 Karten neu; 1 gab es schon, sie blieb aus.");
        QCOMPARE(nach(2, meldung), (QStringList{"neu=new", "Frage 1=Antwort 1", "Frage 2=anders"}));
        QCOMPARE(meldung, "1 Karte neu; 1 gab es schon, sie blieb aus; 1 mit neuer Antwort.");
    }

    void EveryFieldGoesOutAndInByTheWindows()
    {
        Werkstatt w;
        CardRecord kreuz = MakeCard(2, 4, 7);
        kreuz.Antworttyp = 2;
        kreuz.Antwort_ch_2 = true;
        const QList<CardRecord> karten{MakeCard(5, 0, 3), kreuz};
        w.Oeffnen(karten);
        AExport hinaus(w.oeffner, w.Alle());
        Hand(hinaus).Zeigen();
        Waehle(hinaus, "cmbForm", 3);
        QVERIFY(!Hand(hinaus).Finde("cmbTrennzeichen")->isEnabled());
        QVERIFY(!Hand(hinaus).Finde("cmbZeichensatz")->isEnabled());
        QCOMPARE(Vorhaben(hinaus),
                 "2 Karten mit Fächern, Formaten, Haken, Themen und den Namen der Bilder und Töne.");
        Hand(hinaus).Klick("cmdDateiname");
        QCOMPARE(w.dialoge.zumSpeichern.value(0).endung, "csv");
        Hand(hinaus).Ersetze("lblDateiname", "a.csv");
        Hand(hinaus).Klick("cmdOK");
        QCOMPARE(w.meldungen.Texte(), QStringList{"a.csv erfolgreich geschrieben"});
        w.Oeffnen({}, "leer.pzb");
        AImport herein(w.oeffner, w.Alle());
        Hand(herein).Zeigen();
        Hand(herein).Ersetze("lblDateiname", "a.csv");
        QVERIFY(!Hand(herein).Finde("cmbFrage")->isVisible());
        QVERIFY(!Hand(herein).Finde("chkUeberschrift")->isVisible());
        QVERIFY(Hand(herein).Finde<QCheckBox>("chkFaecher")->isChecked());
        QCOMPARE(Vorhaben(herein), "2 Karten kommen mit allen Feldern in ihre Fächer.");
        QCOMPARE(Vorschau(herein), (QStringList{"Frage 5|Antwort 5|Thema 5", "Frage 2|Antwort 2|Thema 2"}));
        Hand(herein).Klick("cmdOK");
        QCOMPARE(w.Karten(), karten);
    }

    void TheWindowFitsASmallScreen()
    {
        Werkstatt w;
        w.Oeffnen({MakeCard(1, 3, 1)});
        w.Schreiben("a.txt", "Frage 1\tAntwort 1\r\n");
        AImport fenster(w.oeffner, w.Alle());
        Hand(fenster).Zeigen();
        Hand(fenster).Ersetze("lblDateiname", "a.txt");
        QVERIFY(Hand(fenster).Finde("cmbVorhandene")->isVisible());
        fenster.resize(640, 430);
        QTRY_COMPARE(fenster.size(), QSize(640, 430));
        for (const char *name : {"cmbTrennzeichen", "cmbZeichensatz", "lblDateiname", "cmbThema",
                                 "chkUeberschrift", "tblVorschau", "cmbVorhandene", "cmdOK", "cmdZurück"}) {
            const auto *teil = Hand(fenster).Finde(QString::fromUtf8(name));
            const QRect ort(teil->mapTo(&fenster, QPoint()), teil->size());
            QVERIFY2(fenster.rect().contains(ort), name);
            QVERIFY2(qobject_cast<const QTableWidget *>(teil) ||
                         teil->height() >= teil->minimumSizeHint().height(),
                     name);
            QVERIFY2(teil->parentWidget()->rect().contains(teil->geometry()), name); // not cut off by it
        }
        const auto rechts = [&](const char *name) {
            const auto *teil = Hand(fenster).Finde(QString::fromUtf8(name));
            return teil->mapTo(&fenster, teil->rect().topRight()).x();
        };
        QCOMPARE(rechts("cmbZeichensatz"), rechts("cmdDateiname"));
        const auto *tafel = Hand(fenster).Finde<QTableWidget>("tblVorschau");
        QVERIFY(tafel->viewport()->height() >= 3 * tafel->rowHeight(0) / 2);
    }

    // The explanation makes room for the first cards, and the window grows for some more of them; on a small
    // screen it must not, or the buttons would be lost.
    void TheFirstCardsHaveTheirRoomWithinTheScreen()
    {
        Werkstatt w;
        w.Oeffnen({});
        w.Schreiben("a.txt", QByteArray("Frage 1\tAntwort 1\r\n").repeated(9));
        AImport fenster(w.oeffner, w.Alle());
        Hand(fenster).Zeigen();
        const QRect schirm = fenster.screen()->availableGeometry();
        fenster.move(schirm.left(), schirm.bottom() - fenster.height());
        QCoreApplication::processEvents();
        Hand(fenster).Ersetze("lblDateiname", "a.txt");
        const auto *tafel = Hand(fenster).Finde<QTableWidget>("tblVorschau");
        QVERIFY(tafel->isVisible());
        QTRY_VERIFY(tafel->viewport()->height() >= 5 * tafel->rowHeight(0));
        QVERIFY(schirm.contains(fenster.frameGeometry()));
    }

    void KnownCardsLeaveTheTextsOfAppendingTheirRoom()
    {
        Werkstatt w;
        w.Oeffnen({MakeCard(1, 0, 1)});
        MakeCardFile(w.Pfad("b.pzb"), {MakeCard(1, 0, 1)});
        Karteianhängen fenster(w.oeffner, w.Alle());
        Hand(fenster).Zeigen();
        Hand(fenster).Ersetze("lblDateiname", "b.pzb");
        QTRY_VERIFY(Hand(fenster).Finde("cmbVorhandene")->isVisible());
        QCoreApplication::processEvents();
        int texte = 0;
        for (const QLabel *label : fenster.findChildren<QLabel *>())
            if (label->isVisible() && label->wordWrap() && !label->text().isEmpty()) {
                QVERIFY2(label->height() >= label->heightForWidth(label->width()), qPrintable(label->text()));
                ++texte;
            }
        QVERIFY(texte >= 3);
    }

    // One that takes a while is counted too, and nobody has to wait for it.
    void ALargeFileIsCountedBeforehand()
    {
        Werkstatt w;
        w.Oeffnen({MakeCard(1, 0, 1)});
        QByteArray zeilen;
        for (int i = 1; i <= 3000; ++i)
            zeilen += "Frage " + QByteArray::number(i) + "\tAntwort " + QByteArray::number(i) + '\t' +
                      QByteArray("x").repeated(3000) + "\r\n";
        w.Schreiben("a.txt", zeilen);
        AImport fenster(w.oeffner, w.Alle());
        const Hand hand(fenster);
        hand.Zeigen();
        hand.Ersetze("lblDateiname", "a.txt");
        QCOMPARE(Vorhaben(fenster), "3000 Karten kommen ins Fach Neu.");
        QCOMPARE(hand.Text("lblVorhandene"), "1 gibt es schon:");
        LangeArbeiten(w);
        auto *abbrechen = hand.Finde<QPushButton>("cmdAbbrechen");
        const Drehbuch buch({[&] {
            if (!abbrechen->isVisible())
                return false;
            Hand::Klick(abbrechen);
            return true;
        }});
        hand.Finde("chkUeberschrift")->setFocus();
        hand.Taste(Qt::Key_Space);
        QVERIFY(buch.Fertig());
        QCOMPARE(Vorhaben(fenster), "Die ersten Karten; gezählt wird erst beim Einlesen.");
        QVERIFY(Vorschau(fenster).value(0).startsWith("Frage 2|Antwort 2|"));
        QCOMPARE(w.meldungen.Texte(), QStringList());
    }

    void LongWorkIsEndedByItsButtonOrEscape_data()
    {
        QTest::addColumn<bool>("mitMaus");
        QTest::newRow("button") << true;
        QTest::newRow("Escape") << false;
    }

    void LongWorkIsEndedByItsButtonOrEscape()
    {
        QFETCH(bool, mitMaus);
        Werkstatt w;
        w.Oeffnen({MakeCard(1, 0, 1)});
        w.Schreiben("a.txt", QByteArray("a\tb\r\n").repeated(20'000));
        AImport fenster(w.oeffner, w.Alle());
        const Hand hand(fenster);
        hand.Zeigen();
        hand.Ersetze("lblDateiname", "a.txt");
        LangeArbeiten(w);
        auto *abbrechen = hand.Finde<QPushButton>("cmdAbbrechen");
        QVERIFY(!abbrechen->isVisible());
        const Drehbuch buch({[&] {
            if (!abbrechen->isVisible())
                return false;
            QTest::keyClick(fenster.windowHandle(), Qt::Key_Return); // goes nowhere
            if (mitMaus)
                Hand::Klick(abbrechen);
            else
                QTest::keyClick(fenster.windowHandle(), Qt::Key_Escape);
            return true;
        }});
        hand.Klick("cmdOK");
        QVERIFY(buch.Fertig());
        QCOMPARE(w.meldungen.Texte(), QStringList{"Abgebrochen. Es bleibt alles, wie es war."});
        QVERIFY(fenster.isVisible());
        QVERIFY(!abbrechen->isVisible());
        QVERIFY(hand.Finde("cmdOK")->isEnabled());
        QCOMPARE(w.Karten(), QList{MakeCard(1, 0, 1)});
        QVERIFY(w.ZaehlerStimmen());
    }
};

PAUKFIX_TEST(ImportFensterTest)
#include "ImportFensterTest.moc"
