// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "EditorBuehne.h"
#include "Lesbarkeit.h"
#include "TestProgram.h"

#include <QTest>

using namespace paukfix;

// Whether what the editor shows can be read: measured in its picture.
class PFAendernLesbarTest : public QObject
{
    Q_OBJECT

private:
    static void Reihen()
    {
        QTest::addColumn<bool>("dunkel");
        QTest::addColumn<bool>("kreuze");
        for (const bool dunkel : {false, true})
            for (const bool kreuze : {false, true})
                QTest::addRow("%s, %s", dunkel ? "dark" : "light", kreuze ? "ticks" : "text")
                    << dunkel << kreuze;
    }

private slots:

    void EveryTextAndIconIsReadable_data() { Reihen(); }

    void EveryTextAndIconIsReadable()
    {
        QFETCH(bool, dunkel);
        QFETCH(bool, kreuze);
        const Schreibtisch schreibtisch(dunkel);
        EditorBuehne b(kreuze ? QList<CardRecord>{Tickkarte(1), Tickkarte(2)} : DreiKarten());
        b.Zeigen();
        for (const char *feld : {"MFrage", "Antwort(0)", "MaskThema"}) {
            b.Finde(feld)->setFocus();
            QCoreApplication::processEvents();
            int gesehen = 0;
            QCOMPARE(Unlesbar(*b.fenster, gesehen).join(", "), QString());
            QVERIFY2(gesehen >= 20, qPrintable(QString::number(gesehen)));
        }
    }

    void OutlinesStandOut_data() { Reihen(); }

    void OutlinesStandOut()
    {
        QFETCH(bool, dunkel);
        QFETCH(bool, kreuze);
        const Schreibtisch schreibtisch(dunkel);
        EditorBuehne b(kreuze ? QList<CardRecord>{Tickkarte(1), Tickkarte(2)} : DreiKarten());
        b.Zeigen();
        b.Finde("MaskThema")->setFocus();
        QCoreApplication::processEvents();
        const QImage bild = b.fenster->grab().toImage();
        for (const QString name : {"MFrage", "Antwort(0)", "MaskThema", "MaskFrageNr", "Cadd"}) {
            // A text's outline is that of the field that it lies on.
            const QWidget *teil = b.Finde(name);
            if (name == "MFrage" || name == "Antwort(0)")
                teil = teil->parentWidget();
            const double kontrast = Umriss(bild, Auf(b.fenster.get(), teil));
            QVERIFY2(kontrast >= Farben::KontrastUmriss,
                     qPrintable(QString("%1 %2").arg(name).arg(kontrast)));
        }
    }
};

PAUKFIX_TEST(PFAendernLesbarTest)
#include "PFAendernLesbarTest.moc"
