// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Druckserver.h"
#include "Fensterbuehne.h"
#include "TestProgram.h"
#include "Uebersicht.h"

#include <QLineEdit>
#include <QPrinter>
#include <QPushButton>
#include <QTableView>

#include <memory>
#include <optional>

using namespace paukfix;

// What becomes of the overview's print job: taken, refused, or no printer at all.
class DruckauftragTest : public QObject
{
    Q_OBJECT

private slots:

    void initTestCase() { druckserver.emplace(); }

    void cleanupTestCase() { druckserver.reset(); }

    void NoPrinterGetsAMessage();
    void PrinterThatTakesNothingIsReported();
    void JobThatThePrinterTakesIsSent();
    void RefusedJobIsReported_data();
    void RefusedJobIsReported();

private:
    std::optional<Druckserver> druckserver; // before the first printer: its library looks for it once
};

namespace {

QList<CardRecord> Sechs()
{
    QList<CardRecord> karten;
    for (int i = 1; i <= 6; ++i)
        karten << MakeCard(i, 0, i);
    return karten;
}

std::unique_ptr<QPrinter> InDatei(const QString &pfad)
{
    auto drucker = std::make_unique<QPrinter>(QPrinter::HighResolution);
    drucker->setOutputFormat(QPrinter::PdfFormat);
    drucker->setOutputFileName(pfad);
    return drucker;
}

void Bereich(const QWidget &fenster, const QString &von, const QString &bis)
{
    Control<QLineEdit>(fenster, "txtVon")->setText(von);
    Control<QLineEdit>(fenster, "txtBis")->setText(bis);
}

} // namespace

void DruckauftragTest::NoPrinterGetsAMessage()
{
    Fensterbuehne w;
    w.Oeffnen({MakeCard(1, 0, 1)});
    Uebersicht window(w.store, w.Alle(),
                      {.bearbeiten = [] {}, .drucker = [] { return std::unique_ptr<QPrinter>(); }});
    Show(window);
    Bereich(window, "1", "1");
    Click(window, "cmdDrucken");
    QCOMPARE(w.meldungen.Texte(), QStringList{"Es ist kein Drucker eingerichtet."});
}

void DruckauftragTest::PrinterThatTakesNothingIsReported()
{
    Fensterbuehne w;
    w.Oeffnen({MakeCard(1, 0, 1)});
    Uebersicht window(w.store, w.Alle(),
                      {.bearbeiten = [] {}, .drucker = [&] { return InDatei(w.Pfad("fehlt/druck.pdf")); }});
    Show(window);
    Bereich(window, "1", "1");
    Click(window, "cmdDrucken");
    QCOMPARE(w.meldungen.Texte(), QStringList{"Leider ist folgender Fehler Aufgetreten: "
                                              "Der Drucker nimmt den Druckauftrag nicht an."});
    QVERIFY(Control<QPushButton>(window, "cmdDrucken")->isEnabled());
}

// The real road: the printer that the system offers.
void DruckauftragTest::JobThatThePrinterTakesIsSent()
{
    druckserver->SetAntwort(0);
    Fensterbuehne w;
    w.Oeffnen(Sechs());
    Uebersicht window(w.store, w.Alle(), {});
    Show(window);
    Bereich(window, "1", "5");
    const int before = druckserver->Dokumente();
    Click(window, "cmdDrucken");
    QCOMPARE(w.meldungen.Texte(), QStringList());
    QCOMPARE(druckserver->Dokumente(), before + 1);
    const auto *notice = Control<QLabel>(window, "Tastenhinweise");
    QCOMPARE(notice->text(), "5 Karten an den Drucker geschickt");
    QTest::keyClick(Control<QTableView>(window, "grdDataGrid"), Qt::Key_Down);
    QVERIFY(notice->text().startsWith("Eingabe öffnet die Karte"));
}

void DruckauftragTest::RefusedJobIsReported_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("grund");
    QTest::newRow("takes nothing") << Druckserver::NimmtNichts
                                   << " Er ist angehalten und nimmt zurzeit keine Aufträge an.";
    QTest::newRow("has gone") << Druckserver::GibtEsNicht << " Diesen Drucker gibt es nicht mehr.";
    QTest::newRow("any other reason") << 0x0507 << " Das Drucksystem meldet: server-error-busy";
}

void DruckauftragTest::RefusedJobIsReported()
{
    QFETCH(int, status);
    QFETCH(QString, grund);
    druckserver->SetAntwort(status);
    Fensterbuehne w;
    w.Oeffnen(Sechs());
    Uebersicht window(w.store, w.Alle(), {});
    Show(window);
    Bereich(window, "1", "5");
    const int before = druckserver->Auftraege();
    Click(window, "cmdDrucken");
    QCOMPARE(w.meldungen.Texte(),
             QStringList{"Leider ist folgender Fehler Aufgetreten: Der Drucker „Buero“ nimmt den "
                         "Druckauftrag nicht an." +
                         grund});
    QCOMPARE(druckserver->Auftraege(), before + 1);
    QVERIFY(!Control<QLabel>(window, "Tastenhinweise")->text().contains("geschickt"));
    QVERIFY(window.isVisible());
    QVERIFY(Control<QPushButton>(window, "cmdDrucken")->isEnabled());
    QVERIFY(!w.meldungen.sanduhr);
}

PAUKFIX_TEST(DruckauftragTest)
#include "DruckauftragTest.moc"
