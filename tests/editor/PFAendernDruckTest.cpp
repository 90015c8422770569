// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Drehbuch.h"
#include "Druckserver.h"
#include "EditorBuehne.h"
#include "Farben.h"
#include "MeldungenFenster.h"
#include "TestProgram.h"

#include <QImage>
#include <QMessageBox>
#include <QPrinter>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>

#include <algorithm>

using namespace paukfix;
using namespace Qt::StringLiterals;

namespace {

// Prints into a file and reads it back with the tools of another house.
struct Druckbuehne : EditorBuehne
{
    explicit Druckbuehne(const QList<CardRecord> &cards, Meldungen *fensterMeldungen = nullptr)
        : EditorBuehne(cards, fensterMeldungen)
    {
        drucker = [this] {
            auto pdf = std::make_unique<QPrinter>(QPrinter::HighResolution);
            pdf->setOutputFormat(QPrinter::PdfFormat);
            pdf->setOutputFileName(pfad);
            return pdf;
        };
    }

    void Drucken() { Menue("MExtras", "MDrucken"); }

    QString Gedruckt() const
    {
        QProcess text;
        text.start(u"pdftotext"_s, {u"-layout"_s, pfad, u"-"_s});
        if (!text.waitForFinished() || text.exitCode() != 0)
            return u"pdftotext failed: "_s + text.errorString();
        return QString::fromUtf8(text.readAllStandardOutput());
    }

    // The first page, 96 pixels an inch, the white around it cut off.
    QImage Seite() const
    {
        const QString bild = kartei.directory.filePath(u"seite"_s);
        QProcess seite;
        seite.start(u"pdftoppm"_s, {u"-png"_s, u"-r"_s, u"96"_s, u"-singlefile"_s, pfad, bild});
        seite.waitForFinished();
        return QImage(bild + u".png"_s);
    }

    // The words of the first page, and where they stand on its picture.
    struct Wort
    {
        QString text;
        QRectF lage; // pixels, 96 an inch
    };

    QList<Wort> Woerter() const
    {
        QProcess text;
        text.start(u"pdftotext"_s, {u"-bbox"_s, pfad, u"-"_s});
        text.waitForFinished();
        static const QRegularExpression wort(
            uR"re(<word xMin="([\d.]+)" yMin="([\d.]+)" xMax="([\d.]+)" yMax="([\d.]+)">([^<]*)<)re"_s);
        QList<Wort> woerter;
        const QString ausgabe = QString::fromUtf8(text.readAllStandardOutput());
        for (const QRegularExpressionMatch &fund : wort.globalMatch(ausgabe)) {
            const auto pixel = [&fund](int gruppe) { return fund.captured(gruppe).toDouble() * 96 / 72; };
            woerter << Wort{fund.captured(5), {QPointF(pixel(1), pixel(2)), QPointF(pixel(3), pixel(4))}};
        }
        return woerter;
    }

    QString pfad = kartei.directory.filePath(u"druck.pdf"_s);
};

const QStringList NichtGedruckt{u"CZZurück"_s, u"CVVor"_s, u"CZurück"_s, u"CVor"_s,
                                u"Cadd"_s,     u"Cback"_s, u"Frame2"_s,  u"CEOF"_s};

QPalette Dunkel()
{
    QPalette palette(QColor(50, 50, 50), QColor(40, 40, 40));
    palette.setColor(QPalette::WindowText, Qt::white);
    palette.setColor(QPalette::Base, QColor(20, 20, 20));
    palette.setColor(QPalette::Text, Qt::white);
    palette.setColor(QPalette::ButtonText, Qt::white);
    return palette;
}

} // namespace

class PFAendernDruckTest : public QObject
{
    Q_OBJECT

private slots:

    void initTestCase() { druckserver.emplace(); }

    void cleanupTestCase() { druckserver.reset(); }

    void PrintHoldsTheCardWithoutTheNavigation()
    {
        CardRecord card = MakeCard(17, 3, 1);
        card.Frage = u"Was ist ein Kranich?"_s;
        card.Antwort_1 = u"Ein Schreitvogel"_s;
        card.Antwort_2 = u"Unsichtbares"_s;
        card.Picture_9_Name = u"Vogelkunde"_s;
        Druckbuehne b({card});
        b.Zeigen();
        b.Drucken();
        QVERIFY(b.Meldungstexte().isEmpty());
        const QString text = b.Gedruckt();
        for (const char *da :
             {"Was ist ein Kranich?", "Ein Schreitvogel", "Vogelkunde", "17", "Fach:", "3", "Frage:"})
            QVERIFY2(text.contains(QString::fromUtf8(da)), qPrintable(text));
        for (const char *fort :
             {"Unsichtbares", "richtig", "Ankreuzen", "Text/Zahl", "hinzuf", "Zur", ">>", "<", "Neue Karte"})
            QVERIFY2(!text.contains(QString::fromUtf8(fort)), fort);
    }

    void TickCardIsPrintedWithAllAnswersAndTicks()
    {
        CardRecord card = MakeCard(1, 0, 1);
        card.Antworttyp = 2;
        card.Antwort_1 = u"Amsel"_s;
        card.Antwort_2 = u"Drossel"_s;
        card.Antwort_3 = u"Fink"_s;
        card.Antwort_4 = u"Star"_s;
        card.Antwort_5 = u"Meise"_s;
        Druckbuehne b({card});
        b.Zeigen();
        b.Drucken();
        const QString text = b.Gedruckt();
        for (const char *da : {"Amsel", "Drossel", "Fink", "Star", "Meise"})
            QVERIFY2(text.contains(QString::fromUtf8(da)), da);
        QCOMPARE(text.count(u"richtig"_s), 5);
    }

    void NewCardIsPrintedAsItStands()
    {
        Druckbuehne b(DreiKarten());
        b.Zeigen();
        b.Klick("CEOF");
        b.Tippe("MFrage", u"halb fertig"_s);
        b.Drucken();
        const QString text = b.Gedruckt();
        QVERIFY(text.contains(u"Neue Karte"_s));
        QVERIFY(text.contains(u"halb fertig"_s));
        QVERIFY(b.Neu());
        QCOMPARE(b.Text("MFrage"), u"halb fertig"_s);
        QCOMPARE(b.kartei.store.HighestCardNumber, qint16(3));
    }

    void WhileThePrinterWorksTheNavigationIsAwayOnAWhiteGroundUnderTheHourglass()
    {
        Druckbuehne b(DreiKarten());
        b.Zeigen();
        bool gedruckt = false;
        const auto pdf = b.drucker;
        b.drucker = [&] {
            gedruckt = true;
            [&] { // a macro of the test returns from here
                for (const QString &name : NichtGedruckt)
                    QVERIFY2(!b.Finde(name.toUtf8().constData())->isVisible(), qPrintable(name));
                QVERIFY(b.kartei.messages.sanduhr);
                QCOMPARE(b.Finde("Formular")->palette().color(QPalette::Window), QColor(Qt::white));
            }();
            return pdf();
        };
        b.Drucken();
        QVERIFY(gedruckt);
    }

    void PictureIsOnThePrintAndTheGroundIsWhiteInADarkDesktopToo()
    {
        const QPalette vorher = QApplication::palette();
        QApplication::setPalette(Dunkel());
        {
            CardRecord card = MakeCard(1, 0, 1);
            card.Picture_1_Name = u"b.bmp"_s;
            card.Pictureleft = 6000;
            card.PictureTop = 1500;
            card.Picturewidth = card.Pictureheight = 3000;
            Druckbuehne b({card});
            QImage bild(200, 200, QImage::Format_RGB32);
            bild.fill(Qt::magenta);
            QVERIFY(bild.save(b.kartei.directory.filePath(u"b.bmp"_s)));
            b.Zeigen();
            b.Drucken();
            const QImage seite = b.Seite();
            QVERIFY(!seite.isNull());
            qint64 magenta = 0;
            qint64 weiss = 0;
            for (int y = 0; y < seite.height(); ++y) {
                for (int x = 0; x < seite.width(); ++x) {
                    const QColor farbe = seite.pixelColor(x, y);
                    magenta += farbe.red() > 200 && farbe.blue() > 200 && farbe.green() < 60;
                    weiss += farbe.lightness() > 250;
                }
            }
            const qint64 alle = qint64(seite.width()) * seite.height();
            QVERIFY2(magenta > alle / 100, qPrintable(QString::number(magenta)));
            QVERIFY2(weiss > alle * 8 / 10, qPrintable(QString::number(weiss)));
        }
        QApplication::setPalette(vorher);
    }

    void EveryWordIsDarkOnPaperInADarkDesktopToo()
    {
        const QPalette vorher = QApplication::palette();
        QApplication::setPalette(Dunkel());
        {
            CardRecord card = MakeCard(1, 0, 1);
            card.Antworttyp = 2;
            card.Antwort_ch_2 = true;
            Druckbuehne b({card});
            b.Zeigen();
            b.Drucken();
            b.Drucken(); // on the light grey ground that the first left
            const QImage seite = b.Seite();
            const QList<Druckbuehne::Wort> woerter = b.Woerter();
            QCOMPARE(std::ranges::count(woerter, u"richtig"_s, &Druckbuehne::Wort::text), 5);
            for (const Druckbuehne::Wort &wort : woerter) {
                int dunkelstes = 255;
                const QRect lage = wort.lage.toAlignedRect() & seite.rect();
                for (int y = lage.top(); y <= lage.bottom(); ++y)
                    for (int x = lage.left(); x <= lage.right(); ++x)
                        dunkelstes = std::min(dunkelstes, seite.pixelColor(x, y).lightness());
                QVERIFY2(dunkelstes < 100, qPrintable(wort.text));
            }
        }
        QApplication::setPalette(vorher);
    }

    void AfterwardsAllIsBackOnALightGreyGround_data()
    {
        QTest::addColumn<bool>("dunkel");
        QTest::newRow("light") << false;
        QTest::newRow("dark") << true;
    }

    void AfterwardsAllIsBackOnALightGreyGround()
    {
        QFETCH(bool, dunkel);
        const QPalette vorher = QApplication::palette();
        if (dunkel)
            QApplication::setPalette(Dunkel());
        {
            Druckbuehne b(DreiKarten());
            b.Zeigen();
            const QColor textgrund = b.Finde("MFrage")->palette().color(QPalette::Base);
            b.Finde("Antwort(0)")->setFocus();
            b.Drucken();
            for (const QString &name : NichtGedruckt)
                QVERIFY2(b.Finde(name.toUtf8().constData())->isVisible(), qPrintable(name));
            const QPalette palette = b.Finde("Formular")->palette();
            QCOMPARE(palette.color(QPalette::Window), QColor(0xC0, 0xC0, 0xC0));
            for (const QLabel *label : b.Finde("Formular")->findChildren<QLabel *>()) {
                if (label->isVisible())
                    QVERIFY2(Farben::Kontrast(label->palette().color(QPalette::WindowText),
                                              label->palette().color(QPalette::Window)) >= 4.5,
                             qPrintable(label->objectName() + label->text()));
            }
            // The boxes are the desktop's again, and the keyboard is where it was.
            QCOMPARE(b.Finde("MFrage")->palette().color(QPalette::Base), textgrund);
            QVERIFY(b.Finde("Antwort(0)")->hasFocus());
            QVERIFY(!b.kartei.messages.sanduhr);
            // Printing is no change.
            QVERIFY(b.fenster->close());
            QCOMPARE(b.kartei.Stored()[0], MakeCard(1, 0, 1));
        }
        QApplication::setPalette(vorher);
    }

    void WithoutAPrinterThatIsSaidAndAllIsBack()
    {
        Druckbuehne b(DreiKarten());
        b.drucker = nullptr;
        b.Zeigen();
        b.Drucken();
        QCOMPARE(b.Meldungstexte(), QStringList(u"Fehler beim Drucken: Es ist kein Drucker eingerichtet."_s));
        for (const QString &name : NichtGedruckt)
            QVERIFY(b.Finde(name.toUtf8().constData())->isVisible());
        QCOMPARE(b.Finde("Formular")->palette().color(QPalette::Window), QColor(0xC0, 0xC0, 0xC0));
    }

    void FailureIsToldWhenTheFormIsItselfAgain()
    {
        MeldungenFenster meldungen;
        Druckbuehne b(DreiKarten(), &meldungen);
        b.drucker = nullptr;
        b.Zeigen();
        bool knoepfe = false;
        QColor grund;
        const Drehbuch buch({Drehbuch::In<QMessageBox>([&](QMessageBox &box) {
            knoepfe = b.Finde("CVor")->isVisible();
            grund = b.Finde("Formular")->palette().color(QPalette::Window);
            box.accept();
        })});
        b.Drucken();
        QVERIFY(buch.Fertig());
        QVERIFY(knoepfe);
        QCOMPARE(grund, QColor(0xC0, 0xC0, 0xC0));
    }

    void PrinterThatFailsIsSaidAndAllIsBack()
    {
        Druckbuehne b(DreiKarten());
        b.pfad = u"/nirgends/druck.pdf"_s;
        b.Zeigen();
        b.Drucken();
        QCOMPARE(b.Meldungstexte(),
                 QStringList(u"Fehler beim Drucken: Der Drucker nimmt den Druckauftrag nicht an."_s));
        QVERIFY(!b.kartei.messages.sanduhr);
        QVERIFY(b.Finde("CVor")->isVisible());
    }

    // The real road: the printer that the system offers.
    void JobThatThePrinterTakesIsSentAndARefusedOneIsTold()
    {
        Druckbuehne b(DreiKarten());
        b.drucker = Standarddrucker;
        b.Zeigen();
        druckserver->SetAntwort(0);
        b.Drucken();
        QCOMPARE(b.Meldungstexte(), QStringList());
        QCOMPARE(druckserver->Dokumente(), 1);
        druckserver->SetAntwort(Druckserver::NimmtNichts);
        b.Drucken();
        QCOMPARE(
            b.Meldungstexte(),
            QStringList(u"Fehler beim Drucken: Der Drucker „Buero“ nimmt den Druckauftrag nicht an. Er ist "
                        u"angehalten und nimmt zurzeit keine Aufträge an."_s));
        QCOMPARE(druckserver->Auftraege(), 2);
        QVERIFY(b.Finde("CVor")->isVisible());
    }

private:
    std::optional<Druckserver> druckserver; // before the first printer: its library looks for it once
};

PAUKFIX_TEST(PFAendernDruckTest)
#include "PFAendernDruckTest.moc"
