// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Druckserver.h"
#include "TestProgram.h"
#include "Uebersicht.h"
#include "Werkstatt.h"

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

void Bereich(QWidget &fenster, const QString &von, const QString &bis)
{
    Hand(fenster).Finde<QLineEdit>("txtVon")->setText(von);
    Hand(fenster).Finde<QLineEdit>("txtBis")->setText(bis);
}

} // namespace

void DruckauftragTest::NoPrinterGetsAMessage()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 0, 1)});
    Uebersicht window(w.store, w.Alle(),
                      {.bearbeiten = [] {}, .drucker = [] { return std::unique_ptr<QPrinter>(); }});
    Hand(window).Zeigen();
    Bereich(window, "1", "1");
    Hand(window).Klick("cmdDrucken");
    QCOMPARE(w.meldungen.Texte(), QStringList{"Es ist kein Drucker eingerichtet."});
}

void DruckauftragTest::PrinterThatTakesNothingIsReported()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 0, 1)});
    Uebersicht window(w.store, w.Alle(),
                      {.bearbeiten = [] {}, .drucker = [&] { return InDatei(w.Pfad("fehlt/druck.pdf")); }});
    Hand(window).Zeigen();
    Bereich(window, "1", "1");
    Hand(window).Klick("cmdDrucken");
    QCOMPARE(w.meldungen.Texte(), QStringList{"Leider ist folgender Fehler Aufgetreten: "
                                              "Der Drucker nimmt den Druckauftrag nicht an."});
    QVERIFY(Hand(window).Finde<QPushButton>("cmdDrucken")->isEnabled());
}

// The real road: the printer that the system offers.
void DruckauftragTest::JobThatThePrinterTakesIsSent()
{
    druckserver->SetAntwort(0);
    Werkstatt w;
    w.Oeffnen(Sechs());
    Uebersicht window(w.store, w.Alle(), {});
    Hand(window).Zeigen();
    Bereich(window, "1", "5");
    const int before = druckserver->Dokumente();
    Hand(window).Klick("cmdDrucken");
    QCOMPARE(w.meldungen.Texte(), QStringList());
    QCOMPARE(druckserver->Dokumente(), before + 1);
    const auto *notice = Hand(window).Finde<QLabel>("Tastenhinweise");
    QCOMPARE(notice->text(), "5 Karten an den Drucker geschickt");
    Hand(window).Taste("grdDataGrid", Qt::Key_Down);
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
    Werkstatt w;
    w.Oeffnen(Sechs());
    Uebersicht window(w.store, w.Alle(), {});
    Hand(window).Zeigen();
    Bereich(window, "1", "5");
    const int before = druckserver->Auftraege();
    Hand(window).Klick("cmdDrucken");
    QCOMPARE(w.meldungen.Texte(),
             QStringList{"Leider ist folgender Fehler Aufgetreten: Der Drucker „Buero“ nimmt den "
                         "Druckauftrag nicht an." +
                         grund});
    QCOMPARE(druckserver->Auftraege(), before + 1);
    QVERIFY(!Hand(window).Text("Tastenhinweise").contains("geschickt"));
    QVERIFY(window.isVisible());
    QVERIFY(Hand(window).Finde<QPushButton>("cmdDrucken")->isEnabled());
    QVERIFY(!w.meldungen.sanduhr);
}

PAUKFIX_TEST(DruckauftragTest)
#include "DruckauftragTest.moc"
