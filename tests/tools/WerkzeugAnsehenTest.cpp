// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "AExport.h"
#include "AnderesProgramm.h"
#include "FremdeKartei.h"
#include "Karteiausgeben.h"
#include "Karteipacken.h"
#include "TestPlaces.h"
#include "TestProgram.h"
#include "Uebersicht.h"
#include "Werkstatt.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPrinter>
#include <QProcess>
#include <QRadioButton>
#include <QTableView>
#include <QTest>

using namespace paukfix;

namespace {

// A box that another program has, open to be looked at.
struct Schaufenster : Werkstatt
{
    Schaufenster()
    {
        MakeCardFile(Pfad("offen.pzb"), {MakeCard(1, 0, 1), MakeCard(2, 3, 1), MakeCard(3, 6, 1)});
        anderes.start(WorkerPath("lock_worker"), {Pfad("offen.pzb")});
        if (!anderes.waitForReadyRead())
            qFatal("no other program");
        vorher = Bytes("offen.pzb");
        meldungen.antworten = {Meldungen::Antwort::Ja};
        QString name = u"offen.pzb"_s;
        oeffner.OpenCardFile(name);
        meldungen.gezeigt.clear();
    }

    // Nothing has happened to the box, and the other program has it still.
    void BoxPruefen()
    {
        QVERIFY(store.NurAnsehen());
        QCOMPARE(store.CurrentFileName, u"offen.pzb"_s);
        QCOMPARE(GapInLock(Pfad("offen.pzb")), QString());
        QCOMPARE(Bytes("offen.pzb"), vorher);
    }

    QProcess anderes;
    QByteArray vorher;
};

} // namespace

// What only reads works on a box that is looked at, in the real windows.
class WerkzeugAnsehenTest : public QObject
{
    Q_OBJECT

private slots:

    void ItsCardsAreExported()
    {
        Schaufenster s;
        AExport dialog(s.oeffner, s.Alle());
        Hand(dialog).Zeigen();
        Hand(dialog).Ersetze("lblDateiname", "liste.txt");
        Hand(dialog).Taste("lblDateiname", Qt::Key_Return);
        QCOMPARE(s.meldungen.Texte(), QStringList{"liste.txt erfolgreich geschrieben"});
        QCOMPARE(s.Bytes("liste.txt"),
                 QByteArray("Frage\tAntwort\tThema\r\nFrage 1\tAntwort 1\tThema 1\r\n"
                            "Frage 2\tAntwort 2\tThema 2\r\nFrage 3\tAntwort 3\tThema 3\r\n"));
        s.BoxPruefen();
    }

    void ItGoesOutToOtherPrograms_data()
    {
        QTest::addColumn<int>("form");
        QTest::addColumn<QString>("datei");
        QTest::newRow("a package") << 0 << "offen.apkg";
        QTest::newRow("KVTML") << 1 << "offen.kvtml";
    }

    void ItGoesOutToOtherPrograms()
    {
        QFETCH(int, form);
        QFETCH(QString, datei);
        Schaufenster s;
        {
            Karteiausgeben dialog(s.oeffner, s.Alle());
            Hand(dialog).Zeigen();
            Hand(dialog).Finde<QComboBox>("cmbForm")->setCurrentIndex(form);
            QCOMPARE(Hand(dialog).Text("lblDateiname"), s.Pfad(datei));
            Hand(dialog).Klick("cmdOK");
            QVERIFY(!dialog.isVisible());
        }
        s.BoxPruefen();
        // Read again it holds the cards; there is no box that they could come into but a new one.
        FremdeKartei dialog(s.oeffner, s.Alle(), nullptr, s.Pfad(datei));
        Hand(dialog).Zeigen();
        QTRY_VERIFY(Hand(dialog).Text("Inhalt").contains("3 Karten"));
        auto *offen = Hand(dialog).Finde<QRadioButton>("optOffen");
        QCOMPARE(offen->text(), u"die geöffnete Kartei (nur zum Ansehen)"_s);
        QVERIFY(!offen->isEnabled() && !offen->isChecked());
        QVERIFY(Hand(dialog).Finde<QRadioButton>("optNeu")->isChecked());
        Hand(dialog).Ersetze("lblZiel", s.Pfad("neu.pzb"));
        Hand(dialog).Klick("cmdOK");
        QVERIFY2(!dialog.isVisible(), qPrintable(s.meldungen.Texte().join('|')));
        QCOMPARE(s.store.CurrentFileName, u"neu.pzb"_s);
        QVERIFY(!s.store.NurAnsehen());
        QCOMPARE(s.store.Karten().RecordCount(), 3);
        QCOMPARE(s.Bytes("offen.pzb"), s.vorher);
    }

    void ItIsPacked()
    {
        Schaufenster s;
        Karteipacken dialog(s.oeffner, s.Alle());
        Hand(dialog).Zeigen();
        Hand(dialog).Ersetze("lblDateiname", "offen.pzbz");
        Hand(dialog).Klick("cmdOK");
        QVERIFY2(!dialog.isVisible(), qPrintable(s.meldungen.Texte().join('|')));
        QVERIFY(s.Bytes("offen.pzbz").startsWith("PK"));
        s.BoxPruefen();
    }

    void ItsCardsAreSearchedAndPrinted()
    {
        Schaufenster s;
        Uebersicht fenster(s.store, s.Alle(),
                           {.bearbeiten = [] {},
                            .drucker =
                                [&] {
                                    auto drucker = std::make_unique<QPrinter>();
                                    drucker->setOutputFormat(QPrinter::PdfFormat);
                                    drucker->setOutputFileName(s.Pfad("druck.pdf"));
                                    return drucker;
                                }});
        Hand(fenster).Zeigen();
        Hand(fenster).Ersetze("txtSuchen", "Frage 2");
        QCOMPARE(Hand(fenster).Text("Treffer"), "1 von 3 Karten");
        Hand(fenster).Ersetze("txtSuchen", "");
        Hand(fenster).Ersetze("txtVon", "2");
        Hand(fenster).Ersetze("txtBis", "3");
        Hand(fenster).Klick("cmdDrucken");
        QCOMPARE(s.meldungen.Texte(), QStringList());
        QProcess text;
        text.start("pdftotext", {s.Pfad("druck.pdf"), "-"});
        QVERIFY(text.waitForFinished());
        const QByteArray gedruckt = text.readAllStandardOutput();
        QVERIFY2(gedruckt.contains("Frage 2") && gedruckt.contains("Antwort 3") &&
                     !gedruckt.contains("Frage 1"),
                 gedruckt.constData());
        s.BoxPruefen();
    }
};

PAUKFIX_TEST(WerkzeugAnsehenTest)
#include "WerkzeugAnsehenTest.moc"
