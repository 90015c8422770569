// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "AbfrageTestSupport.h"
#include "Lesbarkeit.h"
#include "TestProgram.h"

#include <QTest>

using namespace paukfix;

// Whether what the query shows can be read: measured in its picture.
class PFUseLesbarTest : public QObject
{
    Q_OBJECT

private:
    static void Reihen()
    {
        QTest::addColumn<bool>("dunkel");
        QTest::addColumn<QSize>("groesse");
        for (const bool dunkel : {false, true})
            for (const QSize groesse : {QSize(1000, 700), QSize(640, 430)})
                QTest::addRow("%s %d", dunkel ? "dark" : "light", groesse.width()) << dunkel << groesse;
    }

    static void Pruefen(const AbfrageBuehne &b, int wenigstens)
    {
        QCoreApplication::processEvents();
        int gesehen = 0;
        QCOMPARE(Unlesbar(*b.fenster, gesehen).join(", "), QString());
        QVERIFY2(gesehen >= wenigstens, qPrintable(QString::number(gesehen)));
    }

private slots:

    void ATypedAnswerIsReadable_data() { Reihen(); }

    void ATypedAnswerIsReadable()
    {
        QFETCH(bool, dunkel);
        QFETCH(QSize, groesse);
        const Schreibtisch schreibtisch(dunkel);
        for (const char *antwort : {"Ginkgo", "Gingko", ""}) {
            AbfrageBuehne b;
            b.Fragen(TippKarte("Ginkgo"), [&] {
                b.fenster->resize(groesse);
                b.Tippe(antwort);
                Pruefen(b, 5);
                b.Taste(Qt::Key_Return);
                Pruefen(b, 7);
            });
        }
    }

    void TickedAnswersAreReadable_data() { Reihen(); }

    void TickedAnswersAreReadable()
    {
        QFETCH(bool, dunkel);
        QFETCH(QSize, groesse);
        const Schreibtisch schreibtisch(dunkel);
        AbfrageBuehne b;
        b.Fragen(KreuzKarte("13"), [&] {
            b.fenster->resize(groesse);
            b.Taste(Qt::Key_1);
            b.Taste(Qt::Key_2);
            Pruefen(b, 7);
            b.Taste(Qt::Key_Return);
            Pruefen(b, 7);
        });
    }

    void OutlinesStandOut_data() { Reihen(); }

    void OutlinesStandOut()
    {
        QFETCH(bool, dunkel);
        QFETCH(QSize, groesse);
        const Schreibtisch schreibtisch(dunkel);
        AbfrageBuehne b;
        b.Fragen(TippKarte("Ginkgo"), [&] {
            b.fenster->resize(groesse);
            QCoreApplication::processEvents();
            const QImage bild = b.fenster->grab().toImage();
            // The field draws the outline of the answer that is typed on it.
            for (const QWidget *teil : {b.Finde("Antwort(0)")->parentWidget(), b.Finde("Cpruefen")}) {
                const QString name = teil->objectName();
                const double kontrast = Umriss(bild, Auf(b.fenster.get(), teil));
                QVERIFY2(kontrast >= Farben::KontrastUmriss,
                         qPrintable(QString("%1 %2").arg(name).arg(kontrast)));
            }
        });
    }
};

PAUKFIX_TEST(PFUseLesbarTest)
#include "PFUseLesbarTest.moc"
