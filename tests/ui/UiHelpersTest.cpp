// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CharFormat.h"
#include "Farben.h"
#include "KurzLabel.h"
#include "RichTextBox.h"
#include "Step.h"
#include "StoreTestSupport.h"
#include "TestProgram.h"
#include "Twips.h"

#include <QApplication>
#include <QSignalSpy>
#include <QTest>
#include <QTextBlock>
#include <QTextLayout>
#include <QVBoxLayout>

#include <limits>

using namespace paukfix;
using namespace Qt::StringLiterals;

class UiHelpersTest : public QObject
{
    Q_OBJECT

private:
    static QPalette Dunkel()
    {
        QPalette palette;
        palette.setColor(QPalette::Base, QColor(30, 30, 32));
        palette.setColor(QPalette::Text, QColor(238, 238, 238));
        return palette;
    }

    // The colours that the box paints its text with.
    static QColor Gemalt(const RichTextBox &box)
    {
        const auto formate = box.document()->firstBlock().layout()->formats();
        return formate.isEmpty() ? QColor() : formate.first().format.foreground().color();
    }

private slots:

    void ATextThatHasItsRoomIsShownToItsEnd()
    {
        KurzLabel label;
        QFont schrift = label.font();
        schrift.setHintingPreference(QFont::PreferNoHinting); // letters of any width
        for (int groesse = 16; groesse < 60; ++groesse) {
            schrift.setPointSizeF(groesse / 2.0 + 0.3);
            label.setFont(schrift);
            for (QString text = "W: würfeln"; text.size() < 60; text += "Fach i") {
                label.setText(text);
                QCOMPARE(label.fontMetrics().elidedText(text, Qt::ElideRight, label.sizeHint().width()),
                         text);
            }
        }
    }

    void LabelForOneLineMeasuresNoMoreThanALine()
    {
        KurzLabel label;
        label.setText(u"kurz"_s);
        const QSize kurz = label.sizeHint();
        QVERIFY(kurz.width() >= label.fontMetrics().horizontalAdvance(u"kurz"_s));
        label.setText(u"kurz\nund lang"_s);
        QCOMPARE(label.sizeHint().height(), kurz.height());
        label.setText(QString(50'000, u'M'));
        QVERIFY(label.sizeHint().width() < 100'000);
        QVERIFY(!label.grab().isNull());
        QCOMPARE(label.text().size(), 50'000);
    }

    void ShortTextEndsBetweenCharacters()
    {
        QCOMPARE(Kurztext(u"abc"_s, 3), u"abc"_s);
        QCOMPARE(Kurztext(u"abcd"_s, 3), u"abc…"_s);
        QCOMPARE(Kurztext(u"ab😀d"_s, 3), u"ab…"_s);
        QCOMPARE(Einzeilig(u"\r\na\r\n\r\nb\u2028c\n"_s), u"a b c"_s);
    }

    void PixelsSurviveTheWayThroughTwips()
    {
        for (int pixel = -4000; pixel <= 4000; ++pixel)
            QCOMPARE(PixelVonTwips(TwipsVonPixel(pixel)), pixel);
    }

    void TwipsRoundToTheNearestPixel_data()
    {
        QTest::addColumn<double>("twips");
        QTest::addColumn<int>("pixel");
        QTest::newRow("0") << 0.0 << 0;
        QTest::newRow("7") << 7.0 << 0;
        QTest::newRow("8") << 8.0 << 1;
        QTest::newRow("half to even below") << 7.5 << 0;
        QTest::newRow("half to even above") << 22.5 << 2;
        QTest::newRow("negative") << -390.0 << -26;
        QTest::newRow("absurd") << 1e300 << 100'000;
        QTest::newRow("absurd negative") << -1e300 << -100'000;
        QTest::newRow("infinite") << std::numeric_limits<double>::infinity() << 100'000;
        QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN() << 0;
    }

    void TwipsRoundToTheNearestPixel()
    {
        QFETCH(double, twips);
        QFETCH(int, pixel);
        QCOMPARE(PixelVonTwips(twips), pixel);
    }

    void AFailedStepIsReportedAndTheNextOneRuns()
    {
        TestMeldungen meldungen;
        bool danach = false;
        QVERIFY(!Step(meldungen, "Fehler beim Tun ", [] { throw StoreError(3021, "Kein Datensatz."); }));
        QVERIFY(Step(meldungen, "Fehler danach ", [&] { danach = true; }));
        QVERIFY(danach);
        QCOMPARE(meldungen.Texte(), QStringList("Fehler beim Tun Kein Datensatz."));
    }

    void ContrastIsThatOfTheStandard()
    {
        QCOMPARE(Farben::Kontrast(Qt::black, Qt::white), 21.0);
        QCOMPARE(Farben::Kontrast(Qt::white, Qt::white), 1.0);
        QVERIFY(qAbs(Farben::Kontrast(QColor(0x77, 0x77, 0x77), Qt::white) - 4.478) < 0.001);
    }

    void EveryColourBecomesReadableOnEveryGround()
    {
        for (int grau = 0; grau < 256; grau += 15) {
            for (const QColor &farbe : {QColor(Farben::Richtig), QColor(Farben::Falsch), QColor(Qt::blue),
                                        QColor(grau, grau, grau), QColor(Qt::black), QColor(Qt::white)}) {
                const QColor grund(grau, grau, grau);
                QVERIFY2(Farben::Kontrast(Farben::Lesbar(farbe, grund), grund) >= 4.5,
                         qPrintable(grund.name()));
            }
        }
        QCOMPARE(Farben::Lesbar(Qt::blue, Qt::white), QColor(Qt::blue));
    }

    void BlackTextIsReadableOnTheSignalColours()
    {
        QVERIFY(Farben::Kontrast(Farben::AufSignal, Farben::Richtig) >= 4.5);
        QVERIFY(Farben::Kontrast(Farben::AufSignal, Farben::Falsch) >= 4.5);
    }

    void PlainTextHasCarriageReturnAndLineFeed()
    {
        RichTextBox box;
        box.ZeigeRichText("{\\rtf1 eins\\par zwei\\line drei\\par}");
        QCOMPARE(box.PlainText(), "eins\r\nzwei\r\ndrei");
        QTest::keyClick(&box, Qt::Key_X);
        QCOMPARE(box.PlainText(), "xeins\r\nzwei\r\ndrei");
    }

    void TabMovesTheFocusOn()
    {
        QWidget fenster;
        auto *eine = new RichTextBox(&fenster);
        auto *andere = new RichTextBox(&fenster);
        auto *layout = new QVBoxLayout(&fenster);
        layout->addWidget(eine);
        layout->addWidget(andere);
        fenster.show();
        QVERIFY(QTest::qWaitForWindowActive(&fenster));
        eine->setFocus();
        QTest::keyClick(eine, Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), andere);
        QCOMPARE(eine->PlainText(), QString());
    }

    void DarkTextIsReadableOnADarkGroundAndKeepsItsColour()
    {
        RichTextBox box;
        const QString blau = "{\\rtf1{\\colortbl;\\red0\\green0\\blue128;}\\cf1 blau}";
        box.ZeigeRichText(blau);
        QCOMPARE(Gemalt(box), QColor());
        const QString vorher = box.RichText();

        QSignalSpy geaendert(&box, &QTextEdit::textChanged);
        box.setPalette(Dunkel());
        QVERIFY(Gemalt(box).isValid());
        QVERIFY(Farben::Kontrast(Gemalt(box), QColor(30, 30, 32)) >= 4.5);
        QVERIFY(Gemalt(box).blue() > Gemalt(box).red());
        QCOMPARE(box.RichText(), vorher);
        QCOMPARE(geaendert.count(), 0);

        box.setPalette(QPalette());
        QCOMPARE(Gemalt(box), QColor());
    }

    // Black is the desktop's text colour, so it is white on a dark ground, not grey.
    void BlackTextTakesTheColourOfTheDesktop()
    {
        RichTextBox box;
        box.setPalette(Dunkel());
        QTextCharFormat format;
        SetTextColour(format, Qt::black);
        box.setCurrentCharFormat(format);
        QTest::keyClicks(&box, "schwarz");
        QCOMPARE(Gemalt(box), QColor());
        SetTextColour(format, QColor(0, 0, 128));
        box.selectAll();
        box.mergeCurrentCharFormat(format);
        QVERIFY(Gemalt(box).isValid());
    }

    void ABoxIsAsHighAsItsTextUpToALimit()
    {
        RichTextBox box;
        box.setFrameShape(QFrame::NoFrame);
        box.SetHoechstens(4);
        box.ZeigeRichText("eine Zeile");
        const int eine = box.heightForWidth(400);
        box.ZeigeRichText("eine Zeile\r\nund noch eine");
        const int zwei = box.heightForWidth(400);
        QVERIFY(zwei > eine);
        box.ZeigeRichText(QString("viel Text ").repeated(20'000));
        QCOMPARE(box.heightForWidth(400), box.fontMetrics().lineSpacing() * 4);
    }
};

PAUKFIX_TEST(UiHelpersTest)
#include "UiHelpersTest.moc"
