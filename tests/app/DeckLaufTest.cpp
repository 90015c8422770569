// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "ProgrammBuehne.h"
#include "TestProgram.h"

#include <QComboBox>

using namespace paukfix;

// Decks of other programs go out and come in through the whole program: its real windows and reports, real
// files.
class DeckLaufTest : public ProgrammBuehne
{
    Q_OBJECT

private:
    static QString Probe(const QString &name) { return QStringLiteral(DECKS_DIR "/") + name; }

    // Closes the report or the message that tells how it went, whichever comes.
    Drehbuch::Szene Ergebnis()
    {
        return [this] {
            QWidget *fenster = QApplication::activeModalWidget();
            if (!fenster || (!fenster->inherits("QMessageBox") && fenster->objectName() != "Bericht"))
                return false;
            Hand::Aktivieren(fenster);
            if (!fenster->isActiveWindow())
                return false;
            const auto *box = qobject_cast<QMessageBox *>(fenster);
            meldungen_ << (box ? box->text() : Hand(*fenster).Text("Berichttext"));
            Hand(*fenster).Taste(box ? Qt::Key_Return : Qt::Key_Escape);
            return true;
        };
    }

    void Beenden()
    {
        QTRY_VERIFY(Hand::Bereit("LBOX"));
        Hand::An("LBOX").Taste(Qt::Key_Q, Qt::ControlModifier);
        QTRY_VERIFY(!Hand::Offen("LBOX"));
        programm_.reset();
    }

private slots:

    void init() { Aufstellen(); }

    void cleanup() { Abraeumen(); }

    void ADroppedDeckJoinsTheOpenBoxAndGoesWithCtrlZ()
    {
        OeffnenMitZweiDateien();
        QString inhalt;
        const Drehbuch buch({[] {
                                 QWidget *fenster = Hand::Bereit("FremdeKartei");
                                 return fenster && Hand(*fenster).Finde("cmdOK")->isEnabled();
                             },
                             Drehbuch::In("FremdeKartei",
                                          [&](QWidget &fenster) {
                                              inhalt = Hand(fenster).Text("Inhalt");
                                              Hand(fenster).Klick("cmdOK");
                                          }),
                             Ergebnis()});
        QVERIFY(Fallenlassen(Probe("basic.apkg")));
        QTRY_VERIFY(buch.Fertig());
        QVERIFY2(inhalt.contains("40 Karten"), qPrintable(inhalt));
        QVERIFY2(meldungen_.join(' ').contains("40 Karten eingelesen"), qPrintable(meldungen_.join(' ')));
        QTRY_VERIFY(Hand::Bereit("LBOX"));
        QCOMPARE(Kartei(), "a.pzb");
        QVERIFY(QFile::exists(Pfad("schach.jpg")));
        Hand::An("LBOX").Taste(Qt::Key_Z, Qt::ControlModifier);
        Beenden();
        QCOMPARE(ReadCards(Pfad("a.pzb")), (QList{MakeCard(1, 0, 1), MakeCard(2, 0, 2)}));
    }

    void ABoxGoesOutAndComesInAgain_data()
    {
        QTest::addColumn<int>("form");
        QTest::addColumn<QString>("datei");
        QTest::newRow("package") << 0 << "aus.apkg";
        QTest::newRow("KVTML") << 1 << "aus.kvtml";
    }

    void ABoxGoesOutAndComesInAgain()
    {
        QFETCH(const int, form);
        QFETCH(const QString, datei);
        OeffnenMitZweiDateien();
        const Drehbuch hinaus({Drehbuch::In("Karteiausgeben",
                                            [&](QWidget &fenster) {
                                                const Hand hand(fenster);
                                                hand.Finde<QComboBox>("cmbForm")->setCurrentIndex(form);
                                                hand.Ersetze("lblDateiname", Pfad(datei));
                                                hand.Klick("cmdOK");
                                            }),
                               Ergebnis()});
        Waehlen("MKartei_ausgeben");
        QTRY_VERIFY(hinaus.Fertig());
        QVERIFY2(meldungen_.join(' ').startsWith(Pfad(datei) + " erfolgreich geschrieben"),
                 qPrintable(meldungen_.join(' ')));
        QVERIFY(QFile::exists(Pfad(datei)));
        QTRY_VERIFY(Hand::Bereit("LBOX"));

        const Drehbuch herein({Drehbuch::In("FremdeKartei",
                                            [&](QWidget &fenster) {
                                                const Hand hand(fenster);
                                                hand.Ersetze("lblDateiname", Pfad(datei));
                                                hand.Taste(Qt::Key_Tab); // now it is looked through
                                            }),
                               [] {
                                   QWidget *fenster = Hand::Bereit("FremdeKartei");
                                   return fenster && Hand(*fenster).Finde("cmdOK")->isEnabled();
                               },
                               Drehbuch::In("FremdeKartei",
                                            [&](QWidget &fenster) {
                                                const Hand hand(fenster);
                                                hand.Finde("optNeu")->setFocus();
                                                hand.Taste(Qt::Key_Space);
                                                hand.Ersetze("lblZiel", Pfad("neu.pzb"));
                                                hand.Klick("cmdOK");
                                            }),
                               Ergebnis()});
        Waehlen("MFremdeKartei");
        QTRY_VERIFY(herein.Fertig());
        QTRY_COMPARE(Kartei(), "neu.pzb");
        Beenden();
        const QList<CardRecord> vorher = ReadCards(Pfad("a.pzb"));
        const QList<CardRecord> nachher = ReadCards(Pfad("neu.pzb"));
        QCOMPARE(nachher.size(), vorher.size());
        for (qsizetype i = 0; i < vorher.size(); ++i) {
            QCOMPARE(nachher[i].Frage_Klartext, vorher[i].Frage_Klartext);
            QCOMPARE(nachher[i].Antwort_1_Klartext, vorher[i].Antwort_1_Klartext);
            QCOMPARE(nachher[i].Picture_9_Name, vorher[i].Picture_9_Name);
        }
    }
};

PAUKFIX_TEST(DeckLaufTest)
#include "DeckLaufTest.moc"
