// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Fensterbuehne.h"
#include "Uebersicht.h"

#include <QLineEdit>
#include <QPrinter>
#include <QProcess>
#include <QPushButton>
#include <QRegularExpression>
#include <QTableView>

// Prints ranges of cards to PDF and reads back what was printed where.
class DruckTest : public QObject
{
    Q_OBJECT

private slots:
    void PrintsTheRangeWithBothEnds();
    void FourCardsStandOnAPage();
    void EachCardStandsInItsQuarter();
    void FontIsFourteenPoints();
    void LongTextsWrapAndStayInTheirPlace();
    void LineBreaksStay();
    void OrderIsTheGrids();
    void VonAboveBisPrintsNothing();
    void NoNumberGetsAMessage_data();
    void NoNumberGetsAMessage();
    void NumbersAreNormalised();
    void NoPrinterGetsAMessage();
    void PrinterThatTakesNothingIsReported();
};

namespace {

constexpr double PageHeight = 842; // A4 in points

struct Wort
{
    QString text;
    double oben = 0, links = 0, unten = 0, rechts = 0; // points from the page's corner
};

// A window with a card file that prints to a PDF file.
struct Presse : Fensterbuehne
{
    explicit Presse(const QList<CardRecord> &karten)
    {
        Oeffnen(karten);
        fenster = std::make_unique<Uebersicht>(
            umgebung,
            UebersichtWege{.bearbeiten = [] {}, .drucker = [this] { return Drucker(Pfad("druck.pdf")); }});
        Show(*fenster);
    }

    static std::unique_ptr<QPrinter> Drucker(const QString &pfad)
    {
        auto drucker = std::make_unique<QPrinter>(QPrinter::HighResolution);
        drucker->setOutputFormat(QPrinter::PdfFormat);
        drucker->setOutputFileName(pfad);
        drucker->setPageSize(QPageSize(QPageSize::A4));
        drucker->setPageMargins(QMarginsF(0, 0, 0, 0));
        return drucker;
    }

    void Drucken(const QString &von, const QString &bis) const
    {
        Control<QLineEdit>(*fenster, "txtVon")->setText(von);
        Control<QLineEdit>(*fenster, "txtBis")->setText(bis);
        Click(*fenster, "cmdDrucken");
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

    std::unique_ptr<Uebersicht> fenster;
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
    QCOMPARE(presse.Seiten(), QStringList{"3 Frage: Frage 3 Antwort: Antwort 3 4 Frage: Frage 4 "
                                          "Antwort: Antwort 4 5 Frage: Frage 5 Antwort: Antwort 5"});
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

void DruckTest::EachCardStandsInItsQuarter()
{
    Presse presse(Karten(4));
    presse.Drucken("1", "4");
    QList<double> numbers;
    QList<double> answers;
    for (const Wort &wort : presse.Woerter()) {
        if (wort.text == "Antwort:")
            answers << wort.oben;
        if (wort.text == QString::number(numbers.size() + 1) && wort.links < 40)
            numbers << wort.oben;
    }
    QCOMPARE(numbers.size(), 4);
    QCOMPARE(answers.size(), 4);
    for (int i = 0; i < 4; ++i) {
        // The box of a word begins within its line, a little below the line's top.
        QVERIFY2(std::abs(numbers[i] - PageHeight / 4 * (i + 0.05)) < 8,
                 qPrintable(QString::number(numbers[i])));
        QVERIFY2(std::abs(answers[i] - PageHeight / 4 * (i + 0.55)) < 8,
                 qPrintable(QString::number(answers[i])));
    }
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

void DruckTest::LongTextsWrapAndStayInTheirPlace()
{
    QList<CardRecord> karten = Karten(2);
    karten[0].Frage_Klartext = QStringLiteral("Wort ").repeated(2000);
    karten[0].Antwort_1_Klartext = QString(3000, QChar('x')); // no place to break
    Presse presse(karten);
    presse.Drucken("1", "2");
    QCOMPARE(presse.Seiten().size(), 1);
    const QString text = presse.Seiten().front();
    QVERIFY(text.count("Wort") > 30);
    QCOMPARE(text.count(QChar(0x2026)), 2);
    QVERIFY(text.endsWith("2 Frage: Frage 2 Antwort: Antwort 2"));
    int words = 0;
    for (const Wort &wort : presse.Woerter()) {
        QVERIFY(wort.links > 25 && wort.rechts < 595 - 25);
        if (wort.text.startsWith("Wort")) {
            ++words;
            QVERIFY2(wort.unten < PageHeight / 4 * 0.55, qPrintable(QString::number(wort.unten)));
        }
        if (wort.text.startsWith("xx"))
            QVERIFY(wort.oben > PageHeight / 4 * 0.55 - 3 && wort.unten < PageHeight / 4);
    }
    QVERIFY(words > 30);
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
    QCOMPARE(presse.Seiten(),
             QStringList{"2 Frage: Frage 2 Antwort: Antwort 2 1 Frage: Frage 1 Antwort: Antwort 1"});
}

void DruckTest::VonAboveBisPrintsNothing()
{
    Presse presse(Karten(3));
    presse.Drucken("3", "1");
    presse.Drucken("7", "9");
    QVERIFY(!QFile::exists(presse.Pfad("druck.pdf")));
    QVERIFY(presse.meldungen.gezeigt.isEmpty());
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
    QVERIFY(Control<QLineEdit>(*presse.fenster, field == "Von:" ? "txtVon" : "txtBis")->hasFocus());
    QCOMPARE(Control<QLineEdit>(*presse.fenster, "txtVon")->text(), von);
}

void DruckTest::NumbersAreNormalised()
{
    Presse presse(Karten(3));
    presse.Drucken("  +2", " 0003 ");
    QCOMPARE(Control<QLineEdit>(*presse.fenster, "txtVon")->text(), "2");
    QCOMPARE(Control<QLineEdit>(*presse.fenster, "txtBis")->text(), "3");
    QCOMPARE(presse.Seiten().join(' ').count("Antwort:"), 2);
    // Enter in a field of the range prints too.
    QFile::remove(presse.Pfad("druck.pdf"));
    QTest::keyClick(Control<QLineEdit>(*presse.fenster, "txtBis"), Qt::Key_Return);
    QTRY_VERIFY(QFile::exists(presse.Pfad("druck.pdf")));
}

void DruckTest::NoPrinterGetsAMessage()
{
    Fensterbuehne w;
    w.Oeffnen(Karten(1));
    Uebersicht window(w.umgebung,
                      {.bearbeiten = [] {}, .drucker = [] { return std::unique_ptr<QPrinter>(); }});
    Show(window);
    Control<QLineEdit>(window, "txtVon")->setText("1");
    Control<QLineEdit>(window, "txtBis")->setText("1");
    Click(window, "cmdDrucken");
    QCOMPARE(w.meldungen.Texte(), QStringList{"Es ist kein Drucker eingerichtet."});
}

void DruckTest::PrinterThatTakesNothingIsReported()
{
    Fensterbuehne w;
    w.Oeffnen(Karten(1));
    Uebersicht window(w.umgebung, {.bearbeiten = [] {},
                                   .drucker = [&] { return Presse::Drucker(w.Pfad("fehlt/druck.pdf")); }});
    Show(window);
    Control<QLineEdit>(window, "txtVon")->setText("1");
    Control<QLineEdit>(window, "txtBis")->setText("1");
    Click(window, "cmdDrucken");
    QCOMPARE(w.meldungen.Texte(), QStringList{"Leider ist folgender Fehler Aufgetreten: "
                                              "Der Drucker nimmt den Druckauftrag nicht an."});
    QVERIFY(Control<QPushButton>(window, "cmdDrucken")->isEnabled());
}

QTEST_MAIN(DruckTest)
#include "DruckTest.moc"
