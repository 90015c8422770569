// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "AbfrageTestSupport.h"
#include "BildBox.h"
#include "Hausfarben.h"
#include "RichTextBox.h"
#include "TestProgram.h"

#include <QAccessible>
#include <QFontInfo>
#include <QTextBlock>
#include <QTextLayout>

#include <algorithm>

using namespace paukfix;
using namespace Qt::StringLiterals;

// What a learner sees of a card, and a screen reader says of it.
class PFUseBlickTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<AbfrageBuehne> b_;

    // The letters of a text that are marked.
    QString Markiert(const QString &name) const
    {
        QString zeichen;
        const QTextBlock block = b_->Finde<QTextEdit>(name)->document()->begin();
        for (const QTextLayout::FormatRange &teil : block.layout()->formats())
            if (teil.format.underlineStyle() == QTextCharFormat::SingleUnderline &&
                teil.format.fontWeight() == QFont::DemiBold &&
                teil.format.background().style() != Qt::NoBrush)
                zeichen += block.text().mid(teil.start, teil.length) + u'|';
        return zeichen;
    }

    // How high a line of a text is shown.
    double Zeilenhoehe(const QString &name, int block = 0) const
    {
        return b_->Finde<QTextEdit>(name)->document()->findBlockByNumber(block).layout()->lineAt(0).height();
    }

    QRect Platz(const QWidget *teil) const
    {
        return {teil->mapTo(b_->fenster.get(), QPoint()), teil->size()};
    }

    BildBox *Bild() const { return static_cast<BildBox *>(b_->Finde("Picture1")); }

    CardRecord Bildkarte(CardRecord karte, QSize groesse = {400, 300}) const
    {
        QImage bild(groesse, QImage::Format_RGB32);
        bild.fill(Qt::red);
        [[maybe_unused]] const bool da = bild.save(b_->kartei.filePath("b.bmp"));
        karte.Picture_1_Name = "b.bmp";
        return karte;
    }

private slots:

    void init() { b_ = std::make_unique<AbfrageBuehne>(); }

    void TheHeadSaysWhereTheCardIs()
    {
        CardRecord ohneThema = TippKarte("x");
        ohneThema.Picture_9_Name.clear();
        b_->Oeffnen({ohneThema, MakeCard(90, 0, 90), MakeCard(91, 0, 91), MakeCard(92, 5, 1)});
        b_->Fragen([&] {
            QCOMPARE(b_->Text("MaskFachNr"), "0");
            QVERIFY(b_->Finde("FachName")->isVisible());
            QCOMPARE(b_->Text("FachName"), "· Neu");
            QVERIFY(!b_->Finde("MaskThema")->isVisible());
            QCOMPARE(b_->Text("Uebrig"), "noch 2 in diesem Fach");
            QCOMPARE(b_->Finde("MaskFrageNr")->accessibleName(), "Frage Nr. 17");
        });
        CardRecord karte = TippKarte("x");
        karte.FachNr = 3;
        karte.Picture_9_Name = "Hauptstädte";
        b_->Fragen(karte, [&] {
            QVERIFY(!b_->Finde("FachName")->isVisible());
            QVERIFY(b_->Finde("MaskThema")->isVisible());
            QCOMPARE(b_->Finde("MaskThema")->accessibleName(), "Thema Hauptstädte");
            QCOMPARE(b_->Text("Uebrig"), "die letzte in diesem Fach");
        });
    }

    // Cards that were written with the standard font look like those that name no size.
    void TheShownSizeIsTheStoredOneTimesAFactor()
    {
        const double fenster = QFontMetricsF(QApplication::font()).lineSpacing();
        double ohne = 0;
        CardRecord karte = TippKarte("x");
        karte.Frage = "Wort";
        b_->Fragen(karte, [&] { ohne = Zeilenhoehe("MFrage"); });
        QVERIFY2(qAbs(ohne / fenster - 2) < 0.15, qPrintable(QString::number(ohne / fenster)));
        karte.Frage = "{\\rtf1\\fs20 Wort\\par\\fs40 Wort\\par}";
        b_->Fragen(karte, [&] {
            QVERIFY(qAbs(Zeilenhoehe("MFrage") - ohne) < 2);
            QVERIFY(qAbs(Zeilenhoehe("MFrage", 1) / Zeilenhoehe("MFrage") - 2) < 0.1);
        });
        karte.Frage = u"Ein langer Satz, der viel Platz braucht. "_s.repeated(40);
        b_->Fragen(karte, [&] {
            const double klein = Zeilenhoehe("MFrage");
            QVERIFY2(klein < ohne * 0.8 && klein / fenster > 1.2,
                     qPrintable(QString::number(klein / fenster)));
        });
    }

    void ThereIsNoFieldForTheSolutionBeforeThereIsOne()
    {
        b_->Fragen(TippKarte("x"), [&] {
            QVERIFY(!b_->Finde("Antwort(5)")->isVisible());
            b_->Antworten("y");
            QVERIFY(b_->Finde("Antwort(5)")->isVisible());
            // Straight below, so that letters compare.
            QCOMPARE(Platz(b_->Finde<QTextEdit>("Antwort(5)")->viewport()).left(),
                     Platz(b_->Finde<QTextEdit>("Antwort(0)")->viewport()).left());
            QCOMPARE(Zeilenhoehe("Antwort(5)"), Zeilenhoehe("Antwort(0)"));
        });
    }

    void DifferingLettersAreMarkedAndNamed()
    {
        b_->Fragen(TippKarte("Ginkgo Hinweis: ein Baum"), [&] {
            b_->Antworten(" gingko");
            QCOMPARE(Markiert("Antwort(0)"), "g|gk|");
            QCOMPARE(Markiert("Antwort(5)"), "G|kg|");
            QCOMPARE(b_->Text("Unterschied"), "Großschreibung; zwei Buchstaben haben den Platz getauscht");
            QVERIFY(b_->Finde("Unterschied")->isVisible());
            // It is a help, not a verdict, and changes no text.
            QCOMPARE(b_->fenster->Urteil(), Falsch);
            QCOMPARE(b_->Finde<QTextEdit>("Antwort(5)")->toPlainText(), "Ginkgo Hinweis: ein Baum");
            QCOMPARE(b_->Finde<QTextEdit>("Antwort(0)")->toPlainText(), " gingko");
            b_->Klick("Ergebnis_R");
            QCOMPARE(b_->fenster->Urteil(), Richtig);
        });
        b_->Fragen(TippKarte("Ginkgo"), [&] {
            b_->Antworten("Ginkgo");
            QCOMPARE(Markiert("Antwort(0)") + Markiert("Antwort(5)") + b_->Text("Unterschied"), QString());
        });
    }

    // What is compared is the plain text; where the formatted one is another, its letters prove nothing.
    void NothingIsMarkedInATextThatWasNotCompared()
    {
        CardRecord karte = TippKarte("Ginkgo");
        karte.Antwort_1 = "Ginkgos";
        b_->Fragen(karte, [&] {
            b_->Antworten("gingko");
            QCOMPARE(Markiert("Antwort(0)") + Markiert("Antwort(5)"), QString());
        });
    }

    void EachLineOfATickCardSaysHowItWasAnswered()
    {
        b_->Fragen(KreuzKarte("13"), [&] {
            QCOMPARE(b_->Finde<QTextEdit>("Antwort(4)")->placeholderText(), "leer");
            QCOMPARE(b_->Finde<QTextEdit>("Antwort(0)")->placeholderText(), "");
            b_->Klick("Check1(0)");
            b_->Klick("Check1(1)");
            b_->Taste(Qt::Key_Return);
            QCOMPARE(b_->Text("Vermerk(0)"), "richtig");
            QCOMPARE(b_->Text("Vermerk(1)"), "falsch angekreuzt");
            QCOMPARE(b_->Text("Vermerk(2)"), "richtig, nicht angekreuzt");
            QCOMPARE(b_->Text("Vermerk(3)"), "");
            QCOMPARE(b_->Text("Vermerk(4)"), "");
            const Hausfarben &farben = HausfarbenZu(b_->fenster->palette());
            const auto schrift = [&](const char *name) {
                return b_->Finde(name)->palette().color(QPalette::WindowText);
            };
            QCOMPARE(schrift("Vermerk(0)"), farben.richtigText);
            QCOMPARE(schrift("Vermerk(1)"), farben.falschText);
            QCOMPARE(schrift("Vermerk(2)"), farben.richtigText);
            const QImage bild = b_->fenster->grab().toImage();
            const QColor grund[] = {farben.richtigGrund, farben.falschGrund, farben.richtigGrund, farben.feld,
                                    farben.antwortzone};
            for (int i = 0; i < 5; ++i) {
                const QRect kreuz = Platz(b_->Check1(i));
                QCOMPARE(bild.pixelColor(kreuz.right() + 6, kreuz.center().y()), grund[i]);
            }
        });
    }

    // The ticks can be read again, and not changed.
    void TabReachesTicksAndRightTicksAfterTheCheck()
    {
        b_->Fragen(KreuzKarte("1"), [&] {
            b_->Taste(Qt::Key_Return);
            QStringList besucht;
            for (int i = 0; i < 30 && !besucht.contains(b_->FokusName()); ++i) {
                besucht << b_->FokusName();
                b_->Taste(Qt::Key_Tab);
            }
            for (int i = 0; i < 5; ++i) {
                QVERIFY(besucht.contains(QString("Check1(%1)").arg(i)));
                QVERIFY(besucht.contains(QString("Check2(%1)").arg(i)));
            }
            b_->Check1(2)->setFocus();
            b_->Taste(Qt::Key_Space);
            b_->Check2(2)->setFocus();
            b_->Taste(Qt::Key_Space);
            QVERIFY(!b_->Check1(2)->isChecked() && !b_->Check2(2)->isChecked());
            QVERIFY(b_->Check1(0)->accessibleDescription() == "richtig, nicht angekreuzt");
        });
    }

    void TheRowSaysWhereTheCardGoes_data()
    {
        QTest::addColumn<int>("fach");
        QTest::addColumn<QString>("richtig");
        QTest::addColumn<QString>("falsch");
        QTest::newRow("Neu") << 0 << "Die Karte steigt in Fach 2 auf."
                             << "Die Karte geht in Fach 1.";
        QTest::newRow("1") << 1 << "Die Karte steigt in Fach 2 auf."
                           << "Die Karte bleibt in Fach 1.";
        QTest::newRow("4") << 4 << "Die Karte steigt in Fach 5 auf."
                           << "Die Karte geht in Fach 1.";
        QTest::newRow("5") << 5 << "Die Karte ist vorerst erledigt."
                           << "Die Karte geht in Fach 1.";
    }

    void TheRowSaysWhereTheCardGoes()
    {
        QFETCH(int, fach);
        QFETCH(QString, richtig);
        QFETCH(QString, falsch);
        CardRecord karte = TippKarte("Ginkgo");
        karte.FachNr = fach;
        b_->Fragen(karte, [&] {
            b_->Antworten("Ginkgo");
            QCOMPARE(b_->Text("Urteil"), "Richtig!");
            QCOMPARE(b_->Text("Urteilssatz"), richtig);
            b_->Klick("Ergebnis_F");
            QCOMPARE(b_->Text("Urteil"), "Leider falsch");
            QCOMPARE(b_->Text("Urteilssatz"), falsch);
        });
    }

    void ASmallWindowSaysWhereTheCardGoesToo()
    {
        b_->Fragen(TippKarte("Ginkgo"), [&] {
            b_->fenster->resize(640, 430);
            b_->Antworten("Ginkgo");
            const auto *satz = b_->Finde<QLabel>("Urteilssatz");
            QVERIFY(satz->isVisible());
            QVERIFY(satz->width() >= satz->sizeHint().width());
        });
    }

    void TheNarrowestWindowShowsTheVerdictWhole()
    {
        b_->Fragen(TippKarte("Ginkgo"), [&] {
            b_->fenster->resize(b_->fenster->minimumWidth(), 430);
            b_->Antworten("gingko");
            QVERIFY2(b_->fenster->width() < 480, qPrintable(QString::number(b_->fenster->width())));
            const QWidget *zeile = b_->Finde("Urteil")->parentWidget();
            for (const char *name : {"Urteil", "Ergebnis_R", "Ergebnis_F"}) {
                const QWidget *teil = b_->Finde(name);
                QTRY_VERIFY2(teil->width() >= teil->sizeHint().width(), name); // laid out later
                QVERIFY2(zeile->rect().contains(teil->geometry()), name);
            }
            QVERIFY(b_->Finde("Image1")->isVisible());
        });
    }

    void BothTicksOfALineStandAtOneHeight()
    {
        b_->Fragen(KreuzKarte("1"), [&] {
            b_->Taste(Qt::Key_Return);
            for (int i = 0; i < 5; ++i)
                QCOMPARE(Platz(b_->Finde(QString("Check2(%1)").arg(i))).center().y(),
                         Platz(b_->Check1(i)).center().y());
        });
    }

    // The keyboard goes to the button, so what it says is said.
    void TheVerdictIsSaidWithTheButtonThatGetsTheKeyboard()
    {
        b_->Fragen(TippKarte("Ginkgo"), [&] {
            b_->Antworten("gingko");
            QCOMPARE(b_->FokusName(), "Command3");
            const QString gesagt =
                QAccessible::queryAccessibleInterface(b_->Finde("Command3"))->text(QAccessible::Description);
            for (const char *wort : {"Leider falsch", "in Fach 1", "Lösung: Ginkgo", "Großschreibung"})
                QVERIFY2(gesagt.contains(wort), qPrintable(gesagt));
            b_->Klick("Ergebnis_R");
            QVERIFY(b_->Finde("Command3")->accessibleDescription().startsWith("Richtig!"));
        });
    }

    void AHandThatClicksTwiceHasMeantTheFirst()
    {
        b_->Fragen(TippKarte("x"), [&] {
            const QPoint doppelt = Platz(b_->Finde("Cpruefen")).center();
            QTest::mouseDClick(b_->fenster->windowHandle(), Qt::LeftButton, {}, doppelt);
            QVERIFY(b_->fenster->isVisible());
            QCOMPARE(b_->fenster->Urteil(), Falsch);
            QCOMPARE(Platz(b_->Finde("Command3")), Platz(b_->Finde("Cpruefen")));
            b_->Klick("Command3"); // half a second later
            QVERIFY(!b_->fenster->isVisible());
        });
        // Keys are free at once.
        b_->Fragen(TippKarte("x"), [&] {
            b_->Klick("Cpruefen");
            b_->Taste(Qt::Key_Return);
            QVERIFY(!b_->fenster->isVisible());
        });
    }

    void APictureNeverCoversText_data()
    {
        QTest::addColumn<QSize>("groesse");
        QTest::addColumn<QRect>("platz");
        QTest::addColumn<bool>("kreuz");
        const QRect plaetze[] = {
            {}, {600, 90, 240, 180}, {20, 300, 300, 300}, {250, 60, 200, 150}, {0, 0, 2000, 2000}};
        for (const QSize groesse : {QSize(1040, 690), QSize(910, 470), QSize(640, 398), QSize(10, 10)})
            for (const QRect &platz : plaetze)
                for (const bool kreuz : {false, true})
                    QTest::addRow("%dx%d, %d,%d, %s", groesse.width(), groesse.height(), platz.x(), platz.y(),
                                  kreuz ? "ticked" : "typed")
                        << groesse << platz << kreuz;
    }

    void APictureNeverCoversText()
    {
        QFETCH(QSize, groesse);
        QFETCH(QRect, platz);
        QFETCH(bool, kreuz);
        CardRecord karte = Bildkarte(kreuz ? KreuzKarte("1") : TippKarte("x"));
        karte.Frage = "Zu welchem Baum gehört dieses Blatt, und woran erkennt man es im Winter?";
        karte.Pictureleft = 15.0 * platz.x();
        karte.PictureTop = 15.0 * platz.y();
        karte.Picturewidth = platz.isEmpty() ? 0 : 15.0 * platz.width();
        karte.Pictureheight = platz.isEmpty() ? 0 : 15.0 * platz.height();
        b_->Fragen(karte, [&] {
            b_->fenster->resize(groesse);
            QCoreApplication::processEvents();
            b_->Taste(Qt::Key_Return);
            const QRect bild = Platz(Bild());
            QVERIFY(bild.width() >= 20 && bild.height() >= 20);
            QVERIFY(!bild.intersects(Platz(b_->Finde<QTextEdit>("MFrage")->viewport())));
            QVERIFY(b_->Finde<QTextEdit>("MFrage")->viewport()->width() >= bild.width());
            for (const char *name : {"Antwort(0)", "MaskFrageNr", "Urteil", "Command3"})
                QVERIFY2(!bild.intersects(Platz(b_->Finde(name))), name);
            QVERIFY(b_->fenster->rect().contains(Platz(b_->Finde("Ergebnis_F"))));
            QVERIFY(b_->fenster->height() <= std::max(groesse.height(), 398));
        });
    }

    void AClickShowsThePictureLargeUntilTheNextKey()
    {
        b_->Fragen(Bildkarte(TippKarte("x")), [&] {
            b_->Klick("Picture1");
            QWidget *gross = b_->Finde("GrossesBild");
            QVERIFY(gross->isVisible());
            QCOMPARE(gross->geometry(), b_->fenster->rect());
            QVERIFY(b_->fenster->grab().toImage().pixelColor(b_->fenster->rect().center()) ==
                    QColor(Qt::red));
            b_->Taste(Qt::Key_P, Qt::ControlModifier); // is no one's but the picture's
            QVERIFY(!gross->isVisible());
            QCOMPARE(b_->fenster->Urteil(), Nichts);
            QCOMPARE(b_->FokusName(), "Antwort(0)");
            QCOMPARE(b_->Finde<QTextEdit>("Antwort(0)")->toPlainText(), "");
            b_->Finde("Picture1")->setFocus();
            b_->Taste(Qt::Key_Space);
            QVERIFY(gross->isVisible());
            b_->Klick("GrossesBild");
            QVERIFY(!gross->isVisible());
            b_->Klick("Picture1");
            b_->Taste(Qt::Key_Escape);
            QVERIFY(!gross->isVisible() && b_->fenster->isVisible());
        });
    }

    // Nobody waits for pixels that cannot be seen, nor misses those that can.
    void ALargePictureIsReadAsSmallAsItIsShown()
    {
        b_->Fragen(Bildkarte(TippKarte("x"), {3200, 2400}), [&] {
            const QSize gelesen = Bild()->Bild().size();
            QVERIFY(gelesen.width() >= Bild()->width() && gelesen.width() <= 1600);
            b_->fenster->resize(2600, 2000);
            QTRY_VERIFY(Bild()->Bild().width() >= Bild()->width());
            QVERIFY(Bild()->Bild().width() > gelesen.width());
        });
    }

    void TheVerdictsEdgeStandsInTheCardsCorner()
    {
        b_->Fragen(TippKarte("x"), [&] {
            const QRect frage = Platz(b_->Finde("MFrage"));
            b_->Antworten("y");
            const QWidget *kante = b_->Finde("Frame1");
            const int y = Platz(kante).center().y();
            QTRY_COMPARE(b_->fenster->grab().toImage().pixelColor(Platz(kante).left() + 5, y),
                         QColor(255, 0, 0)); // it appears softly
            QCOMPARE(b_->fenster->grab().toImage().pixelColor(Platz(kante).left() + 10, y),
                     HausfarbenZu(b_->fenster->palette()).tinte);
            QCOMPARE(Platz(b_->Finde("MFrage")), frage);
        });
    }
};

PAUKFIX_TEST(PFUseBlickTest)
#include "PFUseBlickTest.moc"
