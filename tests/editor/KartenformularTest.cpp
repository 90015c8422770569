// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Kartenformular.h"

#include "Bildbuehne.h"
#include "Knopfzeile.h"
#include "TestProgram.h"

#include <QSignalSpy>

using namespace paukfix;
using namespace Qt::StringLiterals;

namespace {

// The form without window, commands and card file.
struct Formularbuehne : TestDienste, Hand
{
    Formularbuehne()
    {
        BildSchreiben(ordner.filePath(u"rot.bmp"_s), {200, 150}, Qt::red);
        form.Anfuegen(Knopfzeile(&form));
        form.resize(1000, 700);
        form.show();
        Nimm(form);
    }

    RichTextBox *Box(const QString &name) { return Finde<RichTextBox>(name); }

    QTemporaryDir ordner;
    Kartenformular form{Alle(), ordner.path(), nullptr};
    QSignalSpy geaendert{&form, &Kartenformular::geaendert};
    QSignalSpy auswahl{&form, &Kartenformular::auswahlGeaendert};
};

Kartenblatt Blatt(Antwortart art)
{
    Kartenblatt blatt;
    blatt.Frage = u"Wie viele?"_s;
    blatt.Antwort = {u"eins"_s, u"zwei"_s, {}, {}, u"fünf"_s};
    blatt.Antwort_ch = {false, true, false, false, true};
    blatt.art = art;
    blatt.Thema = u"Zahlen"_s;
    blatt.lage = {1500, 1500, 3000, 1500};
    return blatt;
}

const Formularkopf Kopf{u"12"_s, u"3"_s};

} // namespace

class KartenformularTest : public QObject
{
    Q_OBJECT

private slots:

    void FillingTheFormTouchesNothing()
    {
        Formularbuehne b;
        b.form.Zeigen(Blatt(Antwortart::Ankreuzen), Kopf);
        QVERIFY(b.geaendert.isEmpty());
        QVERIFY(b.auswahl.isEmpty());
        const Kartenblatt blatt = b.form.Inhalt();
        QVERIFY(!blatt.Frage_bearbeitet);
        QCOMPARE(blatt.Antwort_bearbeitet, (std::array<bool, AntwortBoxen>{}));
        QCOMPARE(blatt.Frage_Klartext, u"Wie viele?"_s);
        QCOMPARE(blatt.Antwort_Klartext[4], u"fünf"_s);
        QCOMPARE(blatt.Antwort_ch, Blatt(Antwortart::Ankreuzen).Antwort_ch);
        QCOMPARE(blatt.art, Antwortart::Ankreuzen);
        QCOMPARE(blatt.Thema, u"Zahlen"_s);
        QVERIFY(blatt.lage == Blatt(Antwortart::Ankreuzen).lage);
        QCOMPARE(b.form.Nummer(), u"12"_s);
    }

    void ItKnowsWhichTextWasTouched()
    {
        Formularbuehne b;
        b.form.Zeigen(Blatt(Antwortart::Ankreuzen), Kopf);
        QTest::keyClicks(b.Box("Antwort(1)"), u"x"_s);
        QCOMPARE(b.geaendert.size(), 1);
        Kartenblatt blatt = b.form.Inhalt();
        QVERIFY(!blatt.Frage_bearbeitet);
        QCOMPARE(blatt.Antwort_bearbeitet,
                 (std::array<bool, AntwortBoxen>{false, true, false, false, false}));
        QTest::keyClicks(b.Box("MFrage"), u"y"_s);
        QVERIFY(b.form.Inhalt().Frage_bearbeitet);
        b.form.Gespeichert();
        blatt = b.form.Inhalt();
        QVERIFY(!blatt.Frage_bearbeitet);
        QCOMPARE(blatt.Antwort_bearbeitet, (std::array<bool, AntwortBoxen>{}));
        QCOMPARE(blatt.Frage_Klartext, u"yWie viele?"_s);
    }

    void TypeAndTicksAreSaidApartFromTexts()
    {
        Formularbuehne b;
        b.form.Zeigen(Blatt(Antwortart::Text), Kopf);
        QVERIFY(!b.Box("Antwort(1)")->isVisible());
        b.Klick("Antwort_K");
        QCOMPARE(b.auswahl.size(), 1);
        QVERIFY(b.Box("Antwort(1)")->isVisible());
        b.Klick("Check1(0)");
        QCOMPARE(b.auswahl.size(), 2);
        QVERIFY(b.form.Inhalt().Antwort_ch[0]);
        QVERIFY(b.geaendert.isEmpty());
    }

    void TheHeadAloneKeepsWhatWasTyped()
    {
        Formularbuehne b;
        b.form.Zeigen(Blatt(Antwortart::Text), Kopf);
        QTest::keyClicks(b.Box("MFrage"), u"y"_s);
        b.form.KopfZeigen({u"13"_s, u"0"_s, true});
        QCOMPARE(b.form.Nummer(), u"13"_s);
        QVERIFY(b.Finde<QLabel>("LabelNeu")->isVisible());
        QVERIFY(b.form.Inhalt().Frage_bearbeitet);
    }

    void ANumberIsSaidWithEnterAndGoesWithEscape()
    {
        Formularbuehne b;
        b.form.Zeigen(Blatt(Antwortart::Text), Kopf);
        QSignalSpy nummer(&b.form, &Kartenformular::nummerEingegeben);
        auto *zeile = b.Finde<QLineEdit>("MaskFrageNr");
        QTest::keyClicks(zeile, u"7"_s);
        QCOMPARE(b.form.Nummer(), u"12"_s);
        QTest::keyClick(zeile, Qt::Key_Escape);
        QCOMPARE(zeile->text(), u"12"_s);
        QVERIFY(nummer.isEmpty());
        zeile->selectAll();
        QTest::keyClicks(zeile, u"7"_s);
        QTest::keyClick(zeile, Qt::Key_Return);
        QCOMPARE(nummer.size(), 1);
        QCOMPARE(nummer[0][0].toString(), u"7"_s);
        QVERIFY(b.geaendert.isEmpty());
    }

    void TheKeyboardGoesToNoAnswerThatIsNotThere()
    {
        Formularbuehne b;
        b.form.Zeigen(Blatt(Antwortart::Text), Kopf);
        b.form.FokusAufAntwort(3);
        QCOMPARE(b.form.focusWidget(), b.Box("Antwort(0)"));
        b.form.Zeigen(Blatt(Antwortart::Ankreuzen), Kopf);
        b.form.FokusAufAntwort(3);
        QCOMPARE(b.form.focusWidget(), b.Box("Antwort(3)"));
        b.form.Zeigen(Blatt(Antwortart::Text), Kopf);
        QCOMPARE(b.form.focusWidget(), b.Box("Antwort(0)"));
    }

    void PicturesComeFromTheDirectoryThatWasGiven()
    {
        Formularbuehne b;
        Kartenblatt blatt = Blatt(Antwortart::Text);
        blatt.pictureNames[2] = u"rot.bmp"_s;
        b.form.Zeigen(blatt, Kopf);
        QVERIFY(b.Finde<BildBox>("Picture1")->isVisible());
        b.form.Dateien()[2].clear();
        b.form.BilderZeigen();
        QVERIFY(!b.Finde<BildBox>("Picture1")->isVisible());
        QVERIFY(b.form.Inhalt().lage == blatt.lage);
        QVERIFY(b.meldungen.gezeigt.isEmpty());
    }

    void WithoutAPrinterTheFormIsItselfAgainButGrey()
    {
        Formularbuehne b;
        Kartenblatt blatt = Blatt(Antwortart::Text);
        blatt.pictureNames[0] = u"rot.bmp"_s;
        b.form.Zeigen(blatt, Kopf);
        bool gefragt = false;
        const auto keiner = [&]() -> std::unique_ptr<QPrinter> {
            gefragt = !b.Finde<QWidget>("Cadd")->isVisible() && !b.Finde<QWidget>("Frame2")->isVisible() &&
                      !b.Finde<QWidget>("Tastenhinweise")->isVisible() &&
                      !b.Finde<QWidget>("Sizer")->isVisible() && b.Finde<QWidget>("Picture1")->isVisible() &&
                      b.form.palette().color(QPalette::Window) == QColor(Qt::white);
            return nullptr;
        };
        QVERIFY_EXCEPTION_THROWN(b.form.Drucken(keiner), StoreError);
        QVERIFY(gefragt);
        for (const char *name : {"Cadd", "Cback", "Frame2", "Tastenhinweise", "Sizer"})
            QVERIFY2(b.Finde<QWidget>(name)->isVisible(), name);
        QCOMPARE(b.form.palette().color(QPalette::Window), QColor(0xC0, 0xC0, 0xC0));
        QCOMPARE(b.form.palette().color(QPalette::WindowText), QColor(Qt::black));
    }
};

PAUKFIX_TEST(KartenformularTest)
#include "KartenformularTest.moc"
