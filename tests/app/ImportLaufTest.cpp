// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "ProgrammBuehne.h"
#include "TestProgram.h"

#include <QTableWidget>

using namespace paukfix;

// A list comes in through the whole program, by its real windows and file dialog.
class ImportLaufTest : public ProgrammBuehne
{
    Q_OBJECT

private:
    static Drehbuch::Szene ImDateidialog(const QString &name, QStringList &filter)
    {
        return Drehbuch::In<QFileDialog>([=, &filter](QFileDialog &dialog) {
            QCOMPARE(dialog.windowTitle(), "ASCII import");
            filter = dialog.nameFilters();
            Hand(dialog).Ersetze("fileNameEdit", name);
            Hand(dialog).Taste(Qt::Key_Return);
        });
    }

private slots:

    void init() { Aufstellen(); }

    void cleanup() { Abraeumen(); }

    void ATableComesInByKeyAndMouseAndGoesOutWithCtrlZ()
    {
        OeffnenMitZweiDateien();
        QFile datei(Pfad("Tabelle.csv"));
        QVERIFY(datei.open(QIODevice::WriteOnly));
        datei.write("\xEF\xBB\xBF"
                    "Deutsch;Englisch\r\n\"Größe; Maß\";\"size\nmeasure\"\r\n"
                    "Frage 1;Antwort 1\r\nFrage 2;neue Antwort\r\n");
        datei.close();
        QStringList filter;
        QString erste;
        const Drehbuch buch(
            {Drehbuch::In("AImport", [](QWidget &fenster) { Hand(fenster).Klick("cmdDateiname"); }),
             ImDateidialog(Pfad("Tabelle.csv"), filter),
             Drehbuch::In("AImport",
                          [&](QWidget &fenster) {
                              const Hand hand(fenster);
                              erste = hand.Finde<QTableWidget>("tblVorschau")->item(0, 0)->text();
                              hand.Finde("cmbVorhandene")->setFocus();
                              hand.Taste(Qt::Key_End);
                              QCOMPARE(hand.Text("cmbVorhandene"), "Antwort erneuern");
                              hand.Klick("cmdOK");
                          }),
             Meldung()});
        Waehlen("MAscii_Import");
        QTRY_VERIFY(buch.Fertig());
        QVERIFY(filter.join(' ').contains("*.csv"));
        QVERIFY(filter.join(' ').contains("*.tsv"));
        QCOMPARE(erste, "Größe; Maß");
        QCOMPARE(meldungen_,
                 QStringList{Pfad("Tabelle.csv") + " erfolgreich eingelesen\n1 Karte neu; 1 gab es "
                                                   "schon, sie blieb aus; 1 mit neuer Antwort."});
        QTRY_VERIFY(Hand::Bereit("LBOX"));
        Hand::An("LBOX").Taste(Qt::Key_Q, Qt::ControlModifier);
        QTRY_VERIFY(!Hand::Offen("LBOX"));
        programm_.reset();
        QList<CardRecord> karten = ReadCards(Pfad("a.pzb"));
        QCOMPARE(karten.size(), 3);
        QCOMPARE(karten[1].Antwort_1_Klartext, "neue Antwort");
        QCOMPARE(karten[2].Frage_Klartext, "Größe; Maß");
        QCOMPARE(karten[2].Antwort_1, "size\r\nmeasure");
    }

    void ADroppedListIsShownInTheWindowAndComesIn()
    {
        OeffnenMitZweiDateien();
        QFile datei(Pfad("Tabelle.csv"));
        QVERIFY(datei.open(QIODevice::WriteOnly));
        datei.write("Baum;tree\r\nHaus;house\r\n");
        datei.close();
        QString gewaehlt;
        QString erste;
        const Drehbuch buch({[] {
                                 QWidget *fenster = Hand::Bereit("AImport");
                                 return fenster && Hand(*fenster).Finde("tblVorschau")->isVisible();
                             },
                             Drehbuch::In("AImport",
                                          [&](QWidget &fenster) {
                                              const Hand hand(fenster);
                                              gewaehlt = hand.Text("lblDateiname");
                                              erste =
                                                  hand.Finde<QTableWidget>("tblVorschau")->item(0, 0)->text();
                                              hand.Taste(Qt::Key_Return);
                                          }),
                             Meldung()});
        QVERIFY(Fallenlassen(Pfad("Tabelle.csv")));
        QTRY_VERIFY(buch.Fertig());
        QCOMPARE(gewaehlt, Pfad("Tabelle.csv"));
        QCOMPARE(erste, "Baum");
        QTRY_VERIFY(Hand::Bereit("LBOX"));
        QCOMPARE(Kartei(), "a.pzb");
        Hand::An("LBOX").Taste(Qt::Key_Q, Qt::ControlModifier);
        QTRY_VERIFY(!Hand::Offen("LBOX"));
        programm_.reset();
        const QList<CardRecord> karten = ReadCards(Pfad("a.pzb"));
        QCOMPARE(karten.size(), 4);
        QCOMPARE(karten[3].Frage, "Haus");
    }

    void AnImportIsTakenBack()
    {
        OeffnenMitZweiDateien();
        const QList<CardRecord> vorher{MakeCard(1, 0, 1), MakeCard(2, 0, 2)};
        QFile datei(Pfad("liste.txt"));
        QVERIFY(datei.open(QIODevice::WriteOnly));
        datei.write("Frage 1\tanders\r\nneu\tnew\r\n");
        datei.close();
        const Drehbuch buch(
            {Schreiben("AImport", Pfad("liste.txt")), Taste("AImport", Qt::Key_Return), Meldung()});
        Waehlen("MAscii_Import");
        QTRY_VERIFY(buch.Fertig());
        QTRY_VERIFY(Hand::Bereit("LBOX"));
        Hand::An("LBOX").Taste(Qt::Key_Z, Qt::ControlModifier);
        Hand::An("LBOX").Taste(Qt::Key_Q, Qt::ControlModifier);
        QTRY_VERIFY(!Hand::Offen("LBOX"));
        programm_.reset();
        QCOMPARE(ReadCards(Pfad("a.pzb")), vorher);
    }
};

PAUKFIX_TEST(ImportLaufTest)
#include "ImportLaufTest.moc"
