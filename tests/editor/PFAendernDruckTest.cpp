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
        text.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), pfad, QStringLiteral("-")});
        if (!text.waitForFinished() || text.exitCode() != 0)
            return QStringLiteral("pdftotext failed: ") + text.errorString();
        return QString::fromUtf8(text.readAllStandardOutput());
    }

    // The first page, 96 pixels an inch, the white around it cut off.
    QImage Seite() const
    {
        const QString bild = kartei.directory.filePath(QStringLiteral("seite"));
        QProcess seite;
        seite.start(QStringLiteral("pdftoppm"),
                    {QStringLiteral("-png"), QStringLiteral("-r"), QStringLiteral("96"),
                     QStringLiteral("-singlefile"), pfad, bild});
        seite.waitForFinished();
        return QImage(bild + QStringLiteral(".png"));
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
        text.start(QStringLiteral("pdftotext"), {QStringLiteral("-bbox"), pfad, QStringLiteral("-")});
        text.waitForFinished();
        static const QRegularExpression wort(QStringLiteral(
            R"re(<word xMin="([\d.]+)" yMin="([\d.]+)" xMax="([\d.]+)" yMax="([\d.]+)">([^<]*)<)re"));
        QList<Wort> woerter;
        const QString ausgabe = QString::fromUtf8(text.readAllStandardOutput());
        for (const QRegularExpressionMatch &fund : wort.globalMatch(ausgabe)) {
            const auto pixel = [&fund](int gruppe) { return fund.captured(gruppe).toDouble() * 96 / 72; };
            woerter << Wort{fund.captured(5), {QPointF(pixel(1), pixel(2)), QPointF(pixel(3), pixel(4))}};
        }
        return woerter;
    }

    QString pfad = kartei.directory.filePath(QStringLiteral("druck.pdf"));
};

const QStringList NichtGedruckt{
    QStringLiteral("CZZurück"), QStringLiteral("CVVor"), QStringLiteral("CZurück"), QStringLiteral("CVor"),
    QStringLiteral("Cadd"),     QStringLiteral("Cback"), QStringLiteral("Frame2"),  QStringLiteral("CEOF")};

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
        card.Frage = QStringLiteral("Was ist ein Kranich?");
        card.Antwort_1 = QStringLiteral("Ein Schreitvogel");
        card.Antwort_2 = QStringLiteral("Unsichtbares");
        card.Picture_9_Name = QStringLiteral("Vogelkunde");
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
        card.Antwort_1 = QStringLiteral("Amsel");
        card.Antwort_2 = QStringLiteral("Drossel");
        card.Antwort_3 = QStringLiteral("Fink");
        card.Antwort_4 = QStringLiteral("Star");
        card.Antwort_5 = QStringLiteral("Meise");
        Druckbuehne b({card});
        b.Zeigen();
        b.Drucken();
        const QString text = b.Gedruckt();
        for (const char *da : {"Amsel", "Drossel", "Fink", "Star", "Meise"})
            QVERIFY2(text.contains(QString::fromUtf8(da)), da);
        QCOMPARE(text.count(QStringLiteral("richtig")), 5);
    }

    void NewCardIsPrintedAsItStands()
    {
        Druckbuehne b(DreiKarten());
        b.Zeigen();
        b.Klick("CEOF");
        b.Tippen("MFrage", QStringLiteral("halb fertig"));
        b.Drucken();
        const QString text = b.Gedruckt();
        QVERIFY(text.contains(QStringLiteral("Neue Karte")));
        QVERIFY(text.contains(QStringLiteral("halb fertig")));
        QVERIFY(b.Neu());
        QCOMPARE(b.Text("MFrage"), QStringLiteral("halb fertig"));
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
                    QVERIFY2(!b.Steuerung(name.toUtf8().constData())->isVisible(), qPrintable(name));
                QVERIFY(b.kartei.messages.sanduhr);
                QCOMPARE(b.Steuerung("Formular")->palette().color(QPalette::Window), QColor(Qt::white));
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
            card.Picture_1_Name = QStringLiteral("b.bmp");
            card.Pictureleft = 6000;
            card.PictureTop = 1500;
            card.Picturewidth = card.Pictureheight = 3000;
            Druckbuehne b({card});
            QImage bild(200, 200, QImage::Format_RGB32);
            bild.fill(Qt::magenta);
            QVERIFY(bild.save(b.kartei.directory.filePath(QStringLiteral("b.bmp"))));
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
            QCOMPARE(std::ranges::count(woerter, QStringLiteral("richtig"), &Druckbuehne::Wort::text), 5);
            for (const Druckbuehne::Wort &wort : woerter) {
                int dunkelstes = 255;
                const QRect lage = wort.lage.toAlignedRect() & seite.rect();
                for (int y = lage.top(); y <= lage.bottom(); ++y) {
                    for (int x = lage.left(); x <= lage.right(); ++x)
                        dunkelstes = std::min(dunkelstes, seite.pixelColor(x, y).lightness());
                }
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
            const QColor textgrund = b.Steuerung("MFrage")->palette().color(QPalette::Base);
            b.Steuerung("Antwort(0)")->setFocus();
            b.Drucken();
            for (const QString &name : NichtGedruckt)
                QVERIFY2(b.Steuerung(name.toUtf8().constData())->isVisible(), qPrintable(name));
            const QPalette palette = b.Steuerung("Formular")->palette();
            QCOMPARE(palette.color(QPalette::Window), QColor(0xC0, 0xC0, 0xC0));
            for (const QLabel *label : b.Steuerung("Formular")->findChildren<QLabel *>()) {
                if (label->isVisible())
                    QVERIFY2(Farben::Kontrast(label->palette().color(QPalette::WindowText),
                                              label->palette().color(QPalette::Window)) >= 4.5,
                             qPrintable(label->objectName() + label->text()));
            }
            // The boxes are the desktop's again, and the keyboard is where it was.
            QCOMPARE(b.Steuerung("MFrage")->palette().color(QPalette::Base), textgrund);
            QVERIFY(b.Steuerung("Antwort(0)")->hasFocus());
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
        QCOMPARE(b.Meldungstexte(),
                 QStringList(QStringLiteral("Fehler beim Drucken: Es ist kein Drucker eingerichtet.")));
        for (const QString &name : NichtGedruckt)
            QVERIFY(b.Steuerung(name.toUtf8().constData())->isVisible());
        QCOMPARE(b.Steuerung("Formular")->palette().color(QPalette::Window), QColor(0xC0, 0xC0, 0xC0));
    }

    void FailureIsToldWhenTheFormIsItselfAgain()
    {
        MeldungenFenster meldungen;
        Druckbuehne b(DreiKarten(), &meldungen);
        b.drucker = nullptr;
        b.Zeigen();
        bool knoepfe = false;
        QColor grund;
        const Drehbuch buch({[&] {
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            if (!box)
                return false;
            knoepfe = b.Steuerung("CVor")->isVisible();
            grund = b.Steuerung("Formular")->palette().color(QPalette::Window);
            box->accept();
            return true;
        }});
        b.Drucken();
        QVERIFY(buch.Fertig());
        QVERIFY(knoepfe);
        QCOMPARE(grund, QColor(0xC0, 0xC0, 0xC0));
    }

    void PrinterThatFailsIsSaidAndAllIsBack()
    {
        Druckbuehne b(DreiKarten());
        b.pfad = QStringLiteral("/nirgends/druck.pdf");
        b.Zeigen();
        b.Drucken();
        QCOMPARE(
            b.Meldungstexte(),
            QStringList(QStringLiteral("Fehler beim Drucken: Der Drucker nimmt den Druckauftrag nicht an.")));
        QVERIFY(!b.kartei.messages.sanduhr);
        QVERIFY(b.Steuerung("CVor")->isVisible());
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
        QCOMPARE(b.Meldungstexte(),
                 QStringList(QStringLiteral(
                     "Fehler beim Drucken: Der Drucker „Buero“ nimmt den Druckauftrag nicht an. Er ist "
                     "angehalten und nimmt zurzeit keine Aufträge an.")));
        QCOMPARE(druckserver->Auftraege(), 2);
        QVERIFY(b.Steuerung("CVor")->isVisible());
    }

private:
    std::optional<Druckserver> druckserver; // before the first printer: its library looks for it once
};

PAUKFIX_TEST(PFAendernDruckTest)
#include "PFAendernDruckTest.moc"
