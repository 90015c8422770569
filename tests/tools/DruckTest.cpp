// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Symbole.h"
#include "TestProgram.h"
#include "Uebersicht.h"
#include "Werkstatt.h"

#include <QApplication>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPageLayout>
#include <QPrintPreviewDialog>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QProcess>
#include <QRegularExpression>
#include <QTableView>
#include <QTimer>
#include <QToolButton>

using namespace paukfix;
using namespace Qt::StringLiterals;

// Prints ranges of cards to PDF and reads back what was printed where.
class DruckTest : public QObject
{
    Q_OBJECT

private slots:
    void PrintsTheRangeWithBothEnds();
    void FourCardsStandOnAPage();
    void EachCardStandsInItsColumn_data();
    void EachCardStandsInItsColumn();
    void LinesShowWhereToCutAndWhereToFold_data();
    void LinesShowWhereToCutAndWhereToFold();
    void FontIsFourteenPoints();
    void LongTextIsSetSmallerAndStaysWhole();
    void TextThatFitsInNoSizeEndsInAnEllipsis();
    void LongWordIsBrokenOnlyWhereNoSizeHoldsIt();
    void NothingRunsIntoANeighbour_data();
    void NothingRunsIntoANeighbour();
    void LineBreaksStay();
    void OrderIsTheGrids();
    void RangeWithoutACardPrintsNothingAndTellsSo();
    void NoNumberGetsAMessage_data();
    void NoNumberGetsAMessage();
    void NumbersAreNormalised();
    void SelectedCardsArePrintedWhereThereIsNoRange();
    void PreviewShowsThePagesAndPrintsNothing_data();
    void PreviewShowsThePagesAndPrintsNothing();
};

namespace {

constexpr QSizeF Blatt(595, 842); // A4 in points

struct Wort
{
    QString text;
    double oben = 0, links = 0, unten = 0, rechts = 0; // points from the page's corner
};

// A window with a card file that prints to a PDF file.
struct Presse : Werkstatt
{
    explicit Presse(const QList<CardRecord> &karten, QPageLayout::Orientation lage = QPageLayout::Portrait,
                    const QMarginsF &raender = {})
        : blatt(lage == QPageLayout::Portrait ? Blatt : Blatt.transposed())
    {
        Oeffnen(karten);
        fenster = std::make_unique<Uebersicht>(
            store, Alle(),
            UebersichtWege{.bearbeiten = [] {},
                           .drucker = [this, lage, raender]() -> std::unique_ptr<QPrinter> {
                               if (ohneDrucker)
                                   return nullptr;
                               auto drucker = Drucker(Pfad("druck.pdf"));
                               drucker->setPageOrientation(lage);
                               drucker->setPageMargins(raender);
                               return drucker;
                           }});
        Hand(*fenster).Zeigen();
    }

    static std::unique_ptr<QPrinter> Drucker(const QString &pfad)
    {
        auto drucker = std::make_unique<QPrinter>(QPrinter::HighResolution);
        drucker->setOutputFormat(QPrinter::PdfFormat);
        drucker->setOutputFileName(pfad);
        drucker->setPageSize(QPageSize(QPageSize::A4));
        return drucker;
    }

    void Drucken(const QString &von, const QString &bis) const
    {
        Hand(*fenster).Finde<QLineEdit>("txtVon")->setText(von);
        Hand(*fenster).Finde<QLineEdit>("txtBis")->setText(bis);
        Hand(*fenster).Klick("cmdDrucken");
    }

    static QByteArray Lauf(const QString &programm, const QStringList &argumente)
    {
        QProcess lauf;
        lauf.start(programm, argumente);
        if (!lauf.waitForFinished() || lauf.exitCode() != 0)
            qFatal("%s failed", qPrintable(programm));
        return lauf.readAllStandardOutput();
    }

    // The text of each page.
    QStringList Seiten() const
    {
        QString text =
            QString::fromUtf8(Lauf("pdftotext", {"-layout", "-enc", "UTF-8", Pfad("druck.pdf"), "-"}));
        QStringList seiten = text.split('\f');
        seiten.removeLast();
        for (QString &seite : seiten)
            seite = seite.simplified();
        return seiten;
    }

    QList<Wort> Woerter() const
    {
        const QString text = QString::fromUtf8(Lauf("pdftotext", {"-bbox", Pfad("druck.pdf"), "-"}));
        static const QRegularExpression Muster(
            R"re(<word xMin="([\d.]+)" yMin="([\d.]+)" xMax="([\d.]+)" yMax="([\d.]+)">([^<]*)</word>)re");
        QList<Wort> woerter;
        for (auto treffer = Muster.globalMatch(text); treffer.hasNext();) {
            const auto einer = treffer.next();
            woerter.append({einer.captured(5), einer.captured(2).toDouble(), einer.captured(1).toDouble(),
                            einer.captured(4).toDouble(), einer.captured(3).toDouble()});
        }
        return woerter;
    }

    // The words of a text that stand in the column and half of a card.
    QList<Wort> WoerterIn(int spalte, bool frage) const
    {
        QList<Wort> darin;
        for (const Wort &wort : Woerter())
            if (static_cast<int>(wort.links / (blatt.width() / 4)) == spalte &&
                (wort.oben < blatt.height() / 2) == frage)
                darin << wort;
        return darin;
    }

    // The first page, two pixels a point.
    QImage Seite() const
    {
        Lauf("pdftoppm", {"-png", "-r", "144", "-singlefile", Pfad("druck.pdf"), Pfad("seite")});
        return QImage(Pfad("seite.png")).convertToFormat(QImage::Format_Grayscale8);
    }

    std::unique_ptr<Uebersicht> fenster;
    QSizeF blatt;

    bool ohneDrucker = false;
};

QList<CardRecord> Karten(int anzahl)
{
    QList<CardRecord> karten;
    for (int i = 1; i <= anzahl; ++i)
        karten << MakeCard(i, 0, i);
    return karten;
}

} // namespace

void DruckTest::PrintsTheRangeWithBothEnds()
{
    Presse presse(Karten(9));
    presse.Drucken("3", "5");
    QCOMPARE(presse.Seiten(), QStringList{"3 4 5 Frage: Frage 3 Frage: Frage 4 Frage: Frage 5 "
                                          "Antwort: Antwort: Antwort: Antwort 3 Antwort 4 Antwort 5"});
    QVERIFY(presse.meldungen.gezeigt.isEmpty());
    QVERIFY(!presse.meldungen.sanduhr);
    QVERIFY(presse.fenster->isVisible());
}

void DruckTest::FourCardsStandOnAPage()
{
    for (const auto &[cards, pages] : {std::pair{1, 1}, {4, 1}, {5, 2}, {8, 2}, {9, 3}}) {
        Presse presse(Karten(cards));
        presse.Drucken("1", "100");
        QCOMPARE(presse.Seiten().size(), pages);
        QCOMPARE(presse.Seiten().join(' ').count("Antwort:"), cards);
    }
}

void DruckTest::EachCardStandsInItsColumn_data()
{
    QTest::addColumn<QPageLayout::Orientation>("lage");
    QTest::addColumn<QMarginsF>("raender");
    QTest::newRow("portrait") << QPageLayout::Portrait << QMarginsF();
    QTest::newRow("landscape") << QPageLayout::Landscape << QMarginsF();
    QTest::newRow("margins that differ") << QPageLayout::Portrait << QMarginsF(10, 20, 30, 60);
}

void DruckTest::EachCardStandsInItsColumn()
{
    QFETCH(QPageLayout::Orientation, lage);
    QFETCH(QMarginsF, raender);
    Presse presse(Karten(5), lage, raender);
    presse.Drucken("1", "4");
    for (int i = 0; i < 4; ++i) {
        const QList<Wort> question = presse.WoerterIn(i, true);
        const QList<Wort> answer = presse.WoerterIn(i, false);
        const auto text = [](const QList<Wort> &words) {
            QStringList texts;
            for (const Wort &word : words)
                texts << word.text;
            return texts.join(' ');
        };
        const QString number = QString::number(i + 1);
        QCOMPARE(text(question), number + " Frage: Frage " + number);
        QCOMPARE(text(answer), "Antwort: Antwort " + number);
        // The box of a word begins within its line, a little below the line's top.
        QVERIFY2(std::abs(question[0].oben - presse.blatt.height() * 0.05) < 8,
                 qPrintable(QString::number(question[0].oben)));
        QVERIFY2(std::abs(answer[0].oben - presse.blatt.height() * 0.55) < 8,
                 qPrintable(QString::number(answer[0].oben)));
        const double left = presse.blatt.width() * (i / 4.0 + 1 / 40.0);
        QVERIFY2(std::abs(question[0].links - left) < 3, qPrintable(QString::number(question[0].links)));
        QVERIFY2(std::abs(answer[0].links - left) < 3, qPrintable(QString::number(answer[0].links)));
    }
}

void DruckTest::LinesShowWhereToCutAndWhereToFold_data()
{
    QTest::addColumn<int>("karten");
    QTest::newRow("full page") << 4;
    QTest::newRow("two cards") << 2;
}

void DruckTest::LinesShowWhereToCutAndWhereToFold()
{
    QFETCH(int, karten);
    Presse presse(Karten(karten));
    presse.Drucken("1", "4");
    const QImage seite = presse.Seite();
    const auto dunkel = [&](int x, int y) { // there, or in a pixel beside
        for (int dx = -1; dx <= 1; ++dx)
            for (int dy = -1; dy <= 1; ++dy)
                if (seite.rect().contains(x + dx, y + dy) &&
                    seite.pixelColor(x + dx, y + dy).lightness() < 230)
                    return true;
        return false;
    };
    for (int schnitt = 1; schnitt < 4; ++schnitt) {
        int linie = 0;
        for (int y = 0; y < seite.height(); ++y)
            linie += dunkel(seite.width() * schnitt / 4, y);
        QCOMPARE(linie > seite.height() * 99 / 100, schnitt <= karten);
    }
    int falz = 0;
    for (int x = 0; x < seite.width(); ++x)
        falz += dunkel(x, seite.height() / 2);
    const int breite = seite.width() * karten / 4;
    QVERIFY2(falz > breite / 3 && falz < breite * 9 / 10, qPrintable(QString::number(falz))); // dashed
    // Thin: nothing else is drawn, so little of the paper is not white.
    qint64 tinte = 0;
    for (int y = 0; y < seite.height(); ++y)
        for (int x = 0; x < seite.width(); ++x)
            tinte += seite.pixelColor(x, y).lightness() < 128;
    QVERIFY(tinte < qint64(seite.width()) * seite.height() / 100);
}

void DruckTest::FontIsFourteenPoints()
{
    Presse presse(Karten(1));
    presse.Drucken("1", "1");
    QList<Wort> question;
    for (const Wort &wort : presse.Woerter())
        if (wort.text == "Frage:" || wort.text == "1")
            question << wort;
    // Two lines of a 14-point font are about one line height apart.
    const double distance = question[1].oben - question[0].oben;
    const double expected = QFontMetricsF(QFont(QApplication::font().family(), 14)).lineSpacing() * 72 /
                            QApplication::primaryScreen()->logicalDotsPerInch();
    QVERIFY2(std::abs(distance - expected) < 1.5, qPrintable(QString::number(distance)));
}

void DruckTest::LongTextIsSetSmallerAndStaysWhole()
{
    QList<CardRecord> karten = Karten(2);
    karten[0].Antwort_1_Klartext = u"Ein langer Satz. "_s.repeated(40) + "Ende";
    Presse presse(karten);
    presse.Drucken("1", "2");
    QVERIFY(!presse.Seiten().front().contains(QChar(0x2026)));
    const QList<Wort> lang = presse.WoerterIn(0, false);
    QCOMPARE(lang.size(), 1 + 40 * 3 + 1);
    QCOMPARE(lang.back().text, "Ende");
    QVERIFY(lang.back().unten < presse.blatt.height());
    // Only there.
    const double klein = lang[0].unten - lang[0].oben;
    const Wort kurz = presse.WoerterIn(1, false).front();
    QVERIFY(kurz.unten - kurz.oben > klein * 1.1);
}

void DruckTest::TextThatFitsInNoSizeEndsInAnEllipsis()
{
    QList<CardRecord> karten = Karten(2);
    karten[0].Frage_Klartext = u"Wort "_s.repeated(2000);
    karten[0].Antwort_1_Klartext = QString(30000, QChar('\n')) + "Ende"; // nothing to be seen but the mark
    Presse presse(karten);
    presse.Drucken("1", "2");
    const QList<Wort> question = presse.WoerterIn(0, true);
    QVERIFY(question.size() > 150);
    QCOMPARE(question.back().text, QString(QChar(0x2026)));
    QCOMPARE(presse.WoerterIn(0, false).back().text, QString(QChar(0x2026)));
}

void DruckTest::LongWordIsBrokenOnlyWhereNoSizeHoldsIt()
{
    QList<CardRecord> karten = Karten(2);
    karten[0].Frage_Klartext = "Geburtstagskarteikasten";
    karten[1].Frage_Klartext = QString(150, QChar('x'));
    Presse presse(karten);
    presse.Drucken("1", "2");
    QCOMPARE(presse.WoerterIn(0, true).back().text, "Geburtstagskarteikasten");
    const QList<Wort> broken = presse.WoerterIn(1, true);
    QString whole;
    for (const Wort &wort : broken)
        if (wort.text.startsWith('x'))
            whole += wort.text;
    QCOMPARE(whole, karten[1].Frage_Klartext);
    // A word that is broken anyhow is not set smaller for it.
    QVERIFY(std::abs((broken[0].unten - broken[0].oben) - (broken.back().unten - broken.back().oben)) < 0.5);
    const Wort answer = presse.WoerterIn(1, false).front();
    QVERIFY(std::abs((broken[0].unten - broken[0].oben) - (answer.unten - answer.oben)) < 0.5);
}

void DruckTest::NothingRunsIntoANeighbour_data()
{
    QTest::addColumn<QPageLayout::Orientation>("lage");
    QTest::newRow("portrait") << QPageLayout::Portrait;
    QTest::newRow("landscape") << QPageLayout::Landscape;
}

void DruckTest::NothingRunsIntoANeighbour()
{
    QFETCH(QPageLayout::Orientation, lage);
    QList<CardRecord> karten = Karten(4);
    const QStringList texts{u"Wort "_s.repeated(2000), QString(3000, QChar('x')),
                            u"Zeile\r\n\tmit Abstand\r\n"_s.repeated(100),
                            u"\u05E9\u05DC\u05D5\u05DD "_s.repeated(500)};
    for (int i = 0; i < 4; ++i)
        karten[i].Frage_Klartext = karten[i].Antwort_1_Klartext = texts[i];
    Presse presse(karten, lage);
    presse.Drucken("1", "4");
    QCOMPARE(presse.Seiten().size(), 1);
    QCOMPARE(presse.Seiten().front().count(QChar(0x2026)), 8);
    const double breite = presse.blatt.width() / 4;
    const double mitte = presse.blatt.height() / 2;
    int words = 0;
    for (const Wort &wort : presse.Woerter()) {
        const double links = std::fmod(wort.links, breite);
        QVERIFY2(links > 10 && links + wort.rechts - wort.links < breite - 10, qPrintable(wort.text));
        QVERIFY2(wort.unten < mitte - 20 || wort.oben > mitte + 20, qPrintable(wort.text));
        QVERIFY2(wort.oben > 20 && wort.unten < presse.blatt.height() - 20, qPrintable(wort.text));
        ++words;
    }
    QVERIFY(words > 500);
}

void DruckTest::LineBreaksStay()
{
    QList<CardRecord> karten = Karten(1);
    karten[0].Frage_Klartext = "oben\r\nunten";
    Presse presse(karten);
    presse.Drucken("1", "1");
    double above = 0;
    double below = 0;
    for (const Wort &wort : presse.Woerter()) {
        if (wort.text == "oben")
            above = wort.oben;
        if (wort.text == "unten")
            below = wort.oben;
    }
    QVERIFY(above > 0 && below > above + 10);
}

void DruckTest::OrderIsTheGrids()
{
    Presse presse(Karten(3));
    QTest::keyClick(presse.fenster.get(), Qt::Key_1, Qt::ControlModifier);
    presse.Drucken("1", "2");
    QCOMPARE(presse.WoerterIn(0, true).front().text, "2");
    QCOMPARE(presse.WoerterIn(1, true).front().text, "1");
    QVERIFY(presse.WoerterIn(2, true).isEmpty());
}

void DruckTest::RangeWithoutACardPrintsNothingAndTellsSo()
{
    Presse presse(Karten(3));
    presse.Drucken("3", "1");
    presse.Drucken("7", "9");
    QVERIFY(!QFile::exists(presse.Pfad("druck.pdf")));
    QCOMPARE(presse.meldungen.Texte(),
             (QStringList{"Von 3 bis 1 gibt es keine Karte; es wurde nichts gedruckt.",
                          "Von 7 bis 9 gibt es keine Karte; es wurde nichts gedruckt."}));
    QVERIFY(!presse.meldungen.sanduhr);
}

void DruckTest::NoNumberGetsAMessage_data()
{
    QTest::addColumn<QString>("von");
    QTest::addColumn<QString>("bis");
    QTest::addColumn<QString>("field");
    QTest::newRow("empty") << ""
                           << "3"
                           << "Von:";
    QTest::newRow("letters") << "1"
                             << "drei"
                             << "Bis:";
    QTest::newRow("too large") << "1"
                               << "32768"
                               << "Bis:";
    QTest::newRow("too small") << "-32769"
                               << "3"
                               << "Von:";
    QTest::newRow("zero") << "0"
                          << "3"
                          << "Von:";
    QTest::newRow("up to zero") << "1"
                                << "0"
                                << "Bis:";
    QTest::newRow("below zero") << "-5"
                                << "3"
                                << "Von:";
    QTest::newRow("fraction") << "1,5"
                              << "3"
                              << "Von:";
    QTest::newRow("hexadecimal") << "0x1"
                                 << "3"
                                 << "Von:";
}

void DruckTest::NoNumberGetsAMessage()
{
    QFETCH(QString, von);
    QFETCH(QString, bis);
    QFETCH(QString, field);
    Presse presse(Karten(3));
    presse.Drucken(von, bis);
    QCOMPARE(presse.meldungen.Texte(),
             QStringList{"Bitte bei „" + field + "“ eine ganze Zahl von 1 bis 32767 eingeben."});
    QVERIFY(!QFile::exists(presse.Pfad("druck.pdf")));
    QVERIFY(Hand(*presse.fenster).Finde<QLineEdit>(field == "Von:" ? "txtVon" : "txtBis")->hasFocus());
    QCOMPARE(Hand(*presse.fenster).Text("txtVon"), von);
}

void DruckTest::NumbersAreNormalised()
{
    Presse presse(Karten(3));
    presse.Drucken("  +2", " 0003 ");
    QCOMPARE(Hand(*presse.fenster).Text("txtVon"), "2");
    QCOMPARE(Hand(*presse.fenster).Text("txtBis"), "3");
    QCOMPARE(presse.Seiten().join(' ').count("Antwort:"), 2);
    // Enter in a field of the range prints too.
    QFile::remove(presse.Pfad("druck.pdf"));
    Hand(*presse.fenster).Taste("txtBis", Qt::Key_Return);
    QTRY_VERIFY(QFile::exists(presse.Pfad("druck.pdf")));
}

void DruckTest::SelectedCardsArePrintedWhereThereIsNoRange()
{
    Presse presse(Karten(4));
    auto *gitter = Hand(*presse.fenster).Finde<QTableView>("grdDataGrid");
    const auto *vorhaben = Hand(*presse.fenster).Finde<QLabel>("Vorhaben");
    QCOMPARE(vorhaben->text(), "1 gewählte Karte");
    QTest::keyClick(gitter, Qt::Key_Down);
    QTest::keyClick(gitter, Qt::Key_Down, Qt::ShiftModifier);
    QCOMPARE(vorhaben->text(), "2 gewählte Karten");
    presse.Drucken("", "");
    QCOMPARE(presse.WoerterIn(0, true).front().text, "2");
    QCOMPARE(presse.WoerterIn(1, true).front().text, "3");
    QVERIFY(presse.WoerterIn(2, true).isEmpty());
    QCOMPARE(Hand(*presse.fenster).Finde<QLabel>("Tastenhinweise")->text(),
             "2 Karten an den Drucker geschickt");
    // A range wins, and counts also what a filter hides.
    Hand(*presse.fenster).Finde<QLineEdit>("txtSuchen")->setText("Frage 4");
    Hand(*presse.fenster).Finde<QLineEdit>("txtVon")->setText("1");
    QCOMPARE(vorhaben->text(), "");
    Hand(*presse.fenster).Finde<QLineEdit>("txtBis")->setText("3");
    QCOMPARE(vorhaben->text(), "3 Karten");
}

void DruckTest::PreviewShowsThePagesAndPrintsNothing_data()
{
    QTest::addColumn<bool>("printer");
    QTest::newRow("of a printer") << true;
    QTest::newRow("without a printer") << false;
}

void DruckTest::PreviewShowsThePagesAndPrintsNothing()
{
    QFETCH(bool, printer);
    Presse presse(Karten(9));
    presse.ohneDrucker = !printer;
    int seiten = 0;
    QList<QImage> symbole;
    QTimer zuschauer;
    QObject::connect(&zuschauer, &QTimer::timeout, [&] {
        auto *vorschau = qobject_cast<QPrintPreviewDialog *>(QApplication::activeModalWidget());
        if (!vorschau || !vorschau->isVisible())
            return;
        for (const QToolButton *knopf : vorschau->findChildren<QToolButton *>())
            symbole << knopf->icon().pixmap(20).toImage();
        seiten = vorschau->findChild<QPrintPreviewWidget *>()->pageCount();
        vorschau->reject();
    });
    zuschauer.start(10);
    Hand(*presse.fenster).Finde<QLineEdit>("txtVon")->setText("1");
    Hand(*presse.fenster).Finde<QLineEdit>("txtBis")->setText("9");
    Hand(*presse.fenster).Klick("cmdVorschau");
    QCOMPARE(seiten, 3);
    for (const Symbole symbol : {Symbole::Seitenbreite, Symbole::Vergroessern, Symbole::AnsAnfang,
                                 Symbole::Vor, Symbole::AlleSeiten, Symbole::Drucken})
        QVERIFY(symbole.contains(Symbol(symbol).pixmap(20).toImage()));
    QVERIFY(!QFile::exists(presse.Pfad("druck.pdf")));
    QVERIFY(presse.meldungen.gezeigt.isEmpty());
}

PAUKFIX_TEST(DruckTest)
#include "DruckTest.moc"
