// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Farben.h"
#include "KastenMasse.h"
#include "LBoxBuehne.h"
#include "TestProgram.h"

#include <QAbstractButton>

using namespace paukfix;

// What the main window says about the next step, and that it can be read in every size.
class LBoxHinweisTest : public QObject
{
    Q_OBJECT

private:
    static QString Tasten(const LBoxBuehne &b) { return b.Finde<QLabel>("LTasten")->text(); }

    static QString Weiter(const LBoxBuehne &b) { return b.Finde<QAbstractButton>("Weiter")->text(); }

    static bool IstMarkiert(const LBoxBuehne &b)
    {
        const QImage bild = b.fenster->grab().toImage();
        for (int y = 0; y < bild.height(); ++y)
            for (int x = 0; x < bild.width(); ++x)
                if (bild.pixelColor(x, y) == Farben::VollstesFach)
                    return true;
        return false;
    }

private slots:

    void TheButtonThatLeadsNamesTheFullestCompartmentAndWhatStandsInIt()
    {
        LBoxBuehne b;
        b.OeffnenMit({1, 51, 100});
        QCOMPARE(Weiter(b), "Weiter lernen: Fach 1");
        QCOMPARE(b.Finde<>("Weiter")->accessibleDescription(), "Eingabe: falsch beantwortete Karten");
        QCOMPARE(b.Finde<QLabel>("LWeiter")->text(), "Eingabe falsch beantwortete Karten");
        QCOMPARE(Tasten(b), "1 bis 5, N Fach wählen · W würfeln · F1 Handbuch");
    }

    void BehindTheQuestionForAFileTheButtonSaysWhatItDoes()
    {
        LBoxBuehne b;
        QString gesagt;
        b.dialoge.beimFragen = [&] { gesagt = Weiter(b); };
        b.Zeigen();
        QCOMPARE(gesagt, "Kartei öffnen");
    }

    void CompartmentsThatLockEachOtherAreNamedWithAWayOut()
    {
        LBoxBuehne b;
        b.OeffnenMit({1, 51, 101, 1});
        for (const Qt::Key taste : {Qt::Key_N, Qt::Key_1, Qt::Key_2, Qt::Key_3})
            b.Taste(taste);
        QCOMPARE(b.gefragt, QStringList());
        QCOMPARE(b.meldungen.gezeigt.size(), 4);
        const auto *geschehen = b.Finde<QLabel>("LGeschehen");
        QCOMPARE(geschehen->text(), "Fach 1 und 2 sperren einander: Karten löschen (ändern › Karten) oder "
                                    "Extras › Alle Karten nach Neu");
        QCOMPARE(geschehen->toolTip(), geschehen->text());
        QCOMPARE(Tasten(b), "");
        b.kartei.FachInfo.Entnehmen(2);
        b.fenster->BoxZeichnen();
        QCOMPARE(geschehen->text(), "");
        QVERIFY(!Tasten(b).isEmpty());
    }

    void TheMissingSoundDeviceIsSaidBesideTheKeys()
    {
        LBoxBuehne b;
        b.OeffnenMit({1});
        b.fenster->resize(640, b.fenster->height());
        const auto *label = b.Finde<QLabel>("LTongeraet");
        const auto *tasten = b.Finde<QLabel>("LTasten");
        QVERIFY(!label->isVisible());
        b.fenster->Status().SetTongeraet(false);
        QVERIFY(label->isVisible());
        QCOMPARE(label->text(), "kein Tongerät");
        QTRY_VERIFY(tasten->width() >= tasten->sizeHint().width() &&
                    label->width() >= label->sizeHint().width());
        b.fenster->Status().SetTongeraet(true);
        QVERIFY(!label->isVisible());
    }

    void TheAutomaticModeIsSaidWhileItIsOn()
    {
        LBoxBuehne b;
        b.OeffnenMit({1});
        QAction *schalter = b.Menue("MAutoschalter");
        const auto *label = b.Finde<QLabel>("LAutomatik");
        QVERIFY(!label->isVisible());
        schalter->trigger();
        QVERIFY(label->isVisible());
        QCOMPARE(label->text(), "Automatik läuft");
        schalter->trigger();
        QVERIFY(!label->isVisible());
        schalter->trigger();
        b.fenster->Automatisch().AutomatikAus();
        QVERIFY(!label->isVisible());
    }

    void WithoutAFileNoKeyIsOfferedAndNoCompartmentMarked()
    {
        LBoxBuehne b;
        b.Zeigen();
        QCOMPARE(Tasten(b), "");
        QVERIFY(!IstMarkiert(b));
        QCOMPARE(b.Finde("Image0(0)")->accessibleName(), "Fach Neu: 0 von 700 Karten");
        MakeCardFile(b.Pfad("a.pzb"), {MakeCard(1, 0, 1)});
        b.dialoge.pfade = {b.Pfad("a.pzb"), b.Pfad("fehlt.pzb")};
        b.Menue("Möffnen")->trigger();
        QVERIFY(!Tasten(b).isEmpty());
        QCOMPARE(Weiter(b), "Weiter lernen: Neu");
        QVERIFY(IstMarkiert(b));
        b.Menue("Möffnen")->trigger();
        QCOMPARE(Tasten(b), "");
        QVERIFY(!IstMarkiert(b));
    }

    void AnEmptyBoxSaysHowToGetCardsAndTakesKeys()
    {
        LBoxBuehne b;
        MakeCardFile(b.Pfad("a.pzb"), {});
        LBoxFenster offen;
        int editor = 0;
        offen.MKarten = [&] { ++editor; };
        b.Zeigen(b.Pfad("a.pzb"), offen);
        const auto *zettel = b.Finde<QLabel>("Hinweis");
        QVERIFY(zettel->isVisible());
        QCOMPARE(zettel->text(), "Noch keine Karten: ändern › Karten legt welche an.");
        QCOMPARE(Tasten(b), "");
        b.Taste(Qt::Key_N);
        QCOMPARE(b.meldungen.Texte(), QStringList{"Fach Nr. 0 ist leer"});
        b.Klick("Hinweis"); // does what it says, and not what lies beneath
        QCOMPARE(editor, 1);
        QCOMPARE(b.meldungen.gezeigt.size(), 1);
        b.Fuellen(6, 1);
        b.fenster->BoxZeichnen();
        QVERIFY(!zettel->isVisible());
        QVERIFY(!Tasten(b).isEmpty());
    }

    void TheDieStandsBesideItsKeyInEverySize()
    {
        const FachTabelle tabelle = FachStartwerte();
        const QSize kleinste = KastenMasse::Mindestgroesse(QApplication::font());
        for (const QSize groesse : {kleinste, QSize(1190, 560), QSize(1190, 900), QSize(2500, 1300)}) {
            const KastenMasse masse(groesse, tabelle, QApplication::font());
            QVERIFY(masse.wuerfel.bottom() < masse.wuerfelTaste.top());
            QVERIFY(QRect(QPoint(), groesse).contains(masse.wuerfelTaste));
        }
    }

    void TheLetteringGrowsWithTheBoxAndFitsItsPlates()
    {
        LBoxBuehne b;
        b.OeffnenMit({700, 50, 100, 250, 400, 700});
        QList<int> schrift;
        for (const QSize groesse : {QSize(760, 480), QSize(1250, 700), QSize(2500, 1300)}) {
            b.fenster->resize(groesse);
            QTRY_COMPARE(b.fenster->size(), groesse);
            QCoreApplication::processEvents();
            for (int i = 1; i <= 6; ++i) {
                const auto *schild = b.Finde<QLabel>(QString("Label%1").arg(i));
                QVERIFY(schild->fontMetrics().horizontalAdvance(schild->text()) <= schild->width());
                QVERIFY(schild->fontMetrics().height() <= schild->height());
            }
            schrift << b.Finde<QLabel>("Label1")->font().pixelSize();
        }
        QVERIFY(schrift[1] >= schrift[0] * 1.2);
        QVERIFY(schrift[2] >= schrift[1] * 1.5);
    }
};

PAUKFIX_TEST(LBoxHinweisTest)
#include "LBoxHinweisTest.moc"
