// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Drehbuch.h"
#include "EditorBuehne.h"
#include "TestPlaces.h"
#include "TestProgram.h"

#include <QMimeData>
#include <QPrinter>
#include <QProcess>
#include <QPushButton>

using namespace paukfix;

// The editor on a box that is open to be looked at.
class EditorAnsehenTest : public QObject
{
    Q_OBJECT

private:
    QProcess anderes_;

    // Closes the box, has another program open it, and opens it to be looked at.
    std::unique_ptr<EditorBuehne> Ansehen()
    {
        auto b = std::make_unique<EditorBuehne>(DreiKarten());
        b->kartei.store.CloseCardFile();
        anderes_.start(WorkerPath("lock_worker"), {b->kartei.Path()});
        if (!anderes_.waitForReadyRead())
            qFatal("no other program");
        b->kartei.messages.antworten = {Meldungen::Antwort::Ja};
        b->kartei.Open();
        b->kartei.messages.gezeigt.clear();
        b->fenster = std::make_unique<PFÄndern>(b->kartei.store, b->kartei.dienste.Alle(), b->suche,
                                                b->kartei.directory.path());
        b->fenster->geschlossen = [bp = b.get()] { ++bp->geschlossen; };
        b->Nimm(*b->fenster);
        b->Zeigen();
        return b;
    }

private slots:

    void cleanup()
    {
        anderes_.closeWriteChannel();
        QVERIFY(anderes_.state() == QProcess::NotRunning || anderes_.waitForFinished());
    }

    void CardsAreReadAndNothingCanBeTyped()
    {
        const auto b = Ansehen();
        QCOMPARE(b->fenster->windowTitle(), "Merkkasten Ändern – nur zum Ansehen");
        QCOMPARE(b->Text("MaskFrageNr"), "1");
        for (const char *name : {"MFrage", "Antwort(0)", "MaskThema"}) {
            auto *feld = b->Finde(name);
            feld->setFocus();
            b->Tippe("x");
            b->Taste(Qt::Key_Delete);
            b->Taste(Qt::Key_B, Qt::ControlModifier);
        }
        QMimeData text;
        text.setText("fremd");
        b->Box("MFrage")->setFocus();
        b->Taste(Qt::Key_V, Qt::ControlModifier);
        b->Taste(Qt::Key_F, Qt::ControlModifier);
        QCOMPARE(b->Box("MFrage")->toPlainText(), "Frage 1");
        QCOMPARE(b->Box("Antwort(0)")->toPlainText(), "Antwort 1");
        QCOMPARE(b->Text("MaskThema"), "Thema 1");
        QCOMPARE(b->Text("Speicherstand"), "gespeichert");
        for (const char *name : {"MHinzufügen", "MKopieren", "MLöschen", "MBilder", "MTon", "MFontFett"})
            QVERIFY2(!b->Finde<QAction>(name)->isEnabled(), name);
        for (const char *name : {"Cadd", "CEOF", "Antwort_K", "Antwort_T"})
            QVERIFY2(!b->Finde(name)->isEnabled(), name);
        QCOMPARE(b->Text("Tastenhinweise"), ""); // they say how to store
        QVERIFY(b->Finde<QAction>("MSuchen")->isEnabled() && b->Finde<QAction>("MDrucken")->isEnabled());
        b->Klick("Cback");
        QCOMPARE(b->geschlossen, 1);
        QCOMPARE(b->Meldungstexte(), QStringList());
    }

    void OneWalksFromTheFirstCardToTheLast()
    {
        const auto b = Ansehen();
        b->Klick("CVor");
        QCOMPARE(b->Text("MaskFrageNr"), "2");
        b->Klick("CVor");
        b->Klick("CVor"); // no new card comes
        QCOMPARE(b->Text("MaskFrageNr"), "3");
        QVERIFY(!b->Neu());
        b->Box("MFrage")->setFocus();
        b->Tippe("x");
        QCOMPARE(b->Box("MFrage")->toPlainText(), "Frage 3");
        b->Klick("CZurück");
        b->Klick("CZurück");
        b->Klick("CZurück");
        QCOMPARE(b->Text("MaskFrageNr"), "1");
        QVERIFY(!b->Neu());
    }

    void ACardIsFoundAndPrinted()
    {
        const auto b = Ansehen();
        b->fenster->drucker = [&b] {
            auto pdf = std::make_unique<QPrinter>(QPrinter::HighResolution);
            pdf->setOutputFormat(QPrinter::PdfFormat);
            pdf->setOutputFileName(b->kartei.directory.filePath("druck.pdf"));
            return pdf;
        };
        {
            const Drehbuch buch({Drehbuch::In("Suchen", [&](QWidget &) {
                b->Tippe("Antwort 2");
                b->Taste(Qt::Key_Return);
            })});
            b->Taste(Qt::Key_F3);
        }
        QCOMPARE(b->Text("MaskFrageNr"), "2");
        QTRY_VERIFY(b->Finde("Antwort(0)")->hasFocus());
        b->Menue("MExtras", "MDrucken");
        QCOMPARE(b->Meldungstexte(), QStringList());
        QProcess text;
        text.start("pdftotext", {b->kartei.directory.filePath("druck.pdf"), "-"});
        QVERIFY(text.waitForFinished());
        QVERIFY(text.readAllStandardOutput().contains("Antwort 2"));
    }

    void ANumberIsGoneTo()
    {
        const auto b = Ansehen();
        b->Finde("MaskFrageNr")->setFocus();
        b->Taste(Qt::Key_A, Qt::ControlModifier);
        b->Tippe("3");
        b->Taste(Qt::Key_Return);
        QCOMPARE(b->Box("MFrage")->toPlainText(), "Frage 3");
    }
};

PAUKFIX_TEST(EditorAnsehenTest)
#include "EditorAnsehenTest.moc"
