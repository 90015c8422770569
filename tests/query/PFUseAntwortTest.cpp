// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "AbfrageTestSupport.h"
#include "TestProgram.h"

#include <QScrollBar>

#include <algorithm>
#include <set>

using namespace paukfix;

// Answering a card and judging the answer.
class PFUseAntwortTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<AbfrageBuehne> b_;

    // The verdict on a typed answer, after the window was closed by go-on.
    qint16 Urteil(const QString &antwort, const QString &eingabe)
    {
        const Ergebnis ausgang = b_->Fragen(TippKarte(antwort), [&] {
            b_->Antworten(eingabe);
            b_->Taste(Qt::Key_Return);
            QVERIFY(!b_->fenster->isVisible());
        });
        return ausgang ? static_cast<qint16>(*ausgang) : qint16(98);
    }

    // The verdict on a tick card where the lines in `kreuze` are ticked by mouse.
    qint16 KreuzUrteil(const QString &richtig, const QString &kreuze)
    {
        const Ergebnis ausgang = b_->Fragen(KreuzKarte(richtig), [&] {
            for (const QChar zeile : kreuze)
                b_->Klick(b_->Check1(zeile.digitValue() - 1));
            b_->Klick("Cpruefen");
        });
        return ausgang ? static_cast<qint16>(*ausgang) : qint16(98);
    }

    // Sets a column of all cards behind the program's back and opens the file again.
    void Sql(const char *sql)
    {
        b_->store.CloseCardFile();
        SQLite::Database(b_->kartei.filePath("a.pzb").toStdString(), SQLite::OPEN_READWRITE).exec(sql);
        b_->Oeffnen();
    }

    QList<int> ZeilenVonOben() const
    {
        QList<int> zeilen{0, 1, 2, 3, 4};
        std::sort(zeilen.begin(), zeilen.end(), [this](int eine, int andere) {
            const auto y = [this](int i) { return b_->Check1(i)->mapTo(b_->fenster.get(), QPoint()).y(); };
            return y(eine) < y(andere);
        });
        return zeilen;
    }

private slots:

    void init() { b_ = std::make_unique<AbfrageBuehne>(); }

    // --- typed answers

    void AHintIsNotCompared()
    {
        const QString antwort = "Berlin Hinweis: seit 1990 wieder Hauptstadt";
        QCOMPARE(Urteil(antwort, "Berlin"), qint16(-1));
        QCOMPARE(Urteil(antwort, "  Berlin "), qint16(-1));
        QCOMPARE(Urteil(antwort, "berlin"), qint16(0));
    }

    void AnAnswerWithoutHintIsNotTrimmed() { QCOMPARE(Urteil("Berlin  ", "Berlin"), qint16(0)); }

    void JokerAcceptsAnEmptyAnswer() { QCOMPARE(Urteil("Joker", ""), qint16(-1)); }

    void LinesAreJoinedOnBothSides()
    {
        b_->Fragen(TippKarte("eins\r\nzwei"), [&] {
            b_->Tippe("eins");
            b_->Taste(Qt::Key_Return, Qt::ShiftModifier);
            QVERIFY(!b_->Finde<QPushButton>("Command3")->isEnabled());
            b_->Tippe("zwei");
            b_->Taste(Qt::Key_Return);
        });
        QCOMPARE(b_->fenster->Urteil(), Richtig);
    }

    void PastedLinesAreJoinedToo()
    {
        b_->Fragen(TippKarte("eins\r\nzwei"), [&] {
            b_->Finde<QTextEdit>("Antwort(0)")->setPlainText("eins\nzwei");
            b_->Taste(Qt::Key_Return);
        });
        QCOMPARE(b_->fenster->Urteil(), Richtig);
    }

    void TheSolutionIsShownFormattedWithItsHint()
    {
        CardRecord karte = TippKarte("Berlin Hinweis: groß");
        karte.Antwort_1 = "{\\rtf1 \\b Berlin\\b0  Hinweis: gro\\'df\\par}";
        b_->Fragen(karte, [&] {
            b_->Antworten("Bonn");
            QCOMPARE(b_->Text("Antwort(5)"), "Berlin Hinweis: groß");
            QVERIFY(QTextCursor(b_->Finde<QTextEdit>("Antwort(5)")->document()).charFormat().fontWeight() >=
                    QFont::Bold);
            QCOMPARE(b_->Text("Antwort(0)"), "Bonn");
        });
        QCOMPARE(b_->fenster->Urteil(), Falsch);
    }

    void OnlyAnswerOneCounts()
    {
        CardRecord karte = TippKarte("eins");
        karte.Antwort_2 = karte.Antwort_2_Klartext = "zwei";
        b_->Fragen(karte, [&] { b_->Antworten("zwei"); });
        QCOMPARE(b_->fenster->Urteil(), Falsch);
    }

    // --- ticking

    void TicksMustAgreeInAllFiveLines()
    {
        QCOMPARE(KreuzUrteil("25", "25"), qint16(-1));
        QCOMPARE(KreuzUrteil("25", "2"), qint16(0));
        QCOMPARE(KreuzUrteil("25", "125"), qint16(0));
        QCOMPARE(KreuzUrteil("12345", "12345"), qint16(-1));
    }

    void ACardWithoutRightTicksWantsNone()
    {
        QCOMPARE(KreuzUrteil("", ""), qint16(-1));
        for (const char *zeile : {"1", "2", "3", "4", "5"})
            QCOMPARE(KreuzUrteil("", zeile), qint16(0));
    }

    void TheRightTicksAppearBesideTheLearners()
    {
        b_->Fragen(KreuzKarte("13"), [&] {
            for (int i = 0; i < 5; ++i) {
                QVERIFY(b_->Check1(i)->isVisible());
                QVERIFY(!b_->Check1(i)->isChecked());
                QVERIFY(!b_->Check2(i)->isVisible());
            }
            QVERIFY(!b_->Finde<QLabel>("Label4")->isVisible());
            QCOMPARE(b_->Text("Antwort(2)"), "drei");
            b_->Klick(b_->Check1(1));
            b_->Klick("Cpruefen");
            QVERIFY(b_->Finde<QLabel>("Label4")->isVisible());
            for (int i = 0; i < 5; ++i) {
                QVERIFY(b_->Check2(i)->isVisible());
                QCOMPARE(b_->Check2(i)->isChecked(), i == 0 || i == 2);
                QCOMPARE(b_->Check1(i)->isChecked(), i == 1);
                // What was ticked stands as it was judged.
                b_->Klick(b_->Check1(i));
                b_->Klick(b_->Finde<QTextEdit>(QString("Antwort(%1)").arg(i))->viewport());
                QCOMPARE(b_->Check1(i)->isChecked(), i == 1);
                QCOMPARE(b_->Check2(i)->isChecked(), i == 0 || i == 2);
            }
        });
    }

    void AClickOnATickBoxMovesTheFocusToTheCheckButton()
    {
        b_->Fragen(KreuzKarte("1"), [&] {
            b_->Klick(b_->Check1(2));
            QCOMPARE(b_->FokusName(), "Cpruefen");
            b_->Check1(3)->setFocus();
            b_->Klick(b_->Finde<QTextEdit>("Antwort(0)")->viewport());
            QVERIFY(b_->Check1(0)->isChecked());
            QCOMPARE(b_->FokusName(), "Cpruefen");
        });
    }

    void TheKeyboardTicksLineAfterLine()
    {
        b_->Fragen(KreuzKarte(""), [&] {
            const QList<int> zeilen = ZeilenVonOben();
            QCOMPARE(b_->FokusName(), b_->Check1(zeilen[0])->objectName());
            b_->Taste(Qt::Key_Space);
            QVERIFY(b_->Check1(zeilen[0])->isChecked());
            QCOMPARE(b_->FokusName(), b_->Check1(zeilen[0])->objectName());
            b_->Taste(Qt::Key_Tab);
            b_->Taste(Qt::Key_Space);
            QVERIFY(b_->Check1(zeilen[1])->isChecked());
            for (int i = 0; i < 5; ++i) {
                QCOMPARE(b_->Check1(zeilen[i])->text(), QString::number(i + 1));
                const bool vorher = b_->Check1(zeilen[i])->isChecked();
                b_->Taste(static_cast<Qt::Key>(Qt::Key_1 + i));
                QCOMPARE(b_->Check1(zeilen[i])->isChecked(), !vorher);
            }
            b_->Taste(Qt::Key_6);
            b_->Taste(Qt::Key_0);
            b_->Taste(Qt::Key_Return);
            QVERIFY(b_->Finde<QPushButton>("Command3")->isEnabled());
            b_->Taste(Qt::Key_1);
            QVERIFY(!b_->Check1(zeilen[0])->isChecked());
        });
    }

    void TheRandomOrderSurvivesTheLayoutAndLeadsTheTabOrder()
    {
        std::set<QList<int>> folgen;
        for (int runde = 0; runde < 6; ++runde) {
            b_->Fragen(KreuzKarte("3"), [&] {
                const QList<int> zeilen = ZeilenVonOben();
                folgen.insert(zeilen);
                b_->fenster->resize(b_->fenster->size() + QSize(200, 150));
                QVERIFY(QTest::qWaitFor([&] { return b_->Finde<QWidget>("Karte")->width() > 800; }));
                QCOMPARE(ZeilenVonOben(), zeilen);
                for (const int i : zeilen) {
                    QCOMPARE(b_->FokusName(), b_->Check1(i)->objectName());
                    // Answer and both ticks travel together.
                    const auto mitte = [&](QWidget *w) {
                        return w->mapTo(b_->fenster.get(), w->rect().center()).y();
                    };
                    QVERIFY(qAbs(mitte(b_->Check1(i)) - mitte(b_->Finde(QString("Antwort(%1)").arg(i)))) <=
                            2);
                    QVERIFY(qAbs(mitte(b_->Check1(i)) - mitte(b_->Check2(i))) <= 2);
                    b_->Taste(Qt::Key_Tab);
                }
                QCOMPARE(b_->FokusName(), "Cpruefen");
                b_->Klick(b_->Check1(2));
                b_->Taste(Qt::Key_Return);
                QCOMPARE(ZeilenVonOben(), zeilen);
            });
            QCOMPARE(b_->fenster->Urteil(), Richtig);
        }
        QVERIFY(folgen.size() > 1);
    }

    void ALongAnswerIsScrolledFromItsTickBox()
    {
        CardRecord karte = KreuzKarte("");
        karte.Antwort_1 = QString("lang ").repeated(800);
        b_->Fragen(karte, [&] {
            b_->Check1(0)->setFocus();
            b_->Taste(Qt::Key_PageDown);
            QVERIFY(b_->Finde<QTextEdit>("Antwort(0)")->verticalScrollBar()->value() > 0);
            b_->Taste(Qt::Key_PageUp);
            QCOMPARE(b_->Finde<QTextEdit>("Antwort(0)")->verticalScrollBar()->value(), 0);
        });
    }

    // --- other answer types

    void AnUnknownAnswerTypeHasNoVerdictUntilTheLearnerChooses_data()
    {
        QTest::addColumn<QString>("typ");
        for (const char *typ : {"0", "3", "NULL", "-1"})
            QTest::newRow(typ) << typ;
    }

    void AnUnknownAnswerTypeHasNoVerdictUntilTheLearnerChooses()
    {
        QFETCH(QString, typ);
        b_->Oeffnen({TippKarte("x"), MakeCard(90, 5, 90)});
        Sql(qPrintable("UPDATE Lernkarten SET Antworttyp=" + typ));
        const auto pruefen = [&] {
            QVERIFY(b_->Finde<QTextEdit>("Antwort(0)")->isVisible());
            b_->Antworten("x");
            QCOMPARE(b_->fenster->Urteil(), Nichts);
            QCOMPARE(b_->Text("Antwort(5)"), "x");
            QVERIFY(!b_->Finde<QPushButton>("Command3")->isEnabled());
            QVERIFY(!b_->Finde<QWidget>("Frame1")->isVisible());
            QVERIFY(!b_->Finde<QRadioButton>("Ergebnis_R")->isChecked());
            QVERIFY(!b_->Finde<QRadioButton>("Ergebnis_F")->isChecked());
            QCOMPARE(b_->ton.gespielt, QStringList());
        };
        QCOMPARE(b_->Fragen([&] {
            pruefen();
            b_->Taste(Qt::Key_Escape);
        }),
                 Nichts);

        QCOMPARE(b_->Fragen([&] {
            pruefen();
            b_->Klick("Ergebnis_F");
            QVERIFY(b_->Finde<QPushButton>("Command3")->isEnabled());
        }),
                 Falsch);

        QCOMPARE(b_->Fragen([&] {
            pruefen();
            QCOMPARE(b_->FokusName(), "Ergebnis_R");
            b_->Taste(Qt::Key_Return);
            QCOMPARE(b_->FokusName(), "Command3");
        }),
                 Richtig);
    }

    // --- the verdict

    void TheVerdictColoursTheFrame()
    {
        b_->Fragen(TippKarte("a"), [&] {
            b_->Antworten("a");
            QWidget *rahmen = b_->Finde<QWidget>("Frame1");
            QVERIFY(rahmen->isVisible());
            QCOMPARE(rahmen->palette().color(QPalette::Window), QColor(0, 255, 0));
            QVERIFY(b_->Finde<QRadioButton>("Ergebnis_R")->isChecked());
            QVERIFY(b_->fenster->grab().toImage().pixelColor(rahmen->mapTo(
                        b_->fenster.get(), QPoint(3, rahmen->height() / 2))) == QColor(0, 255, 0));
            b_->Klick("Ergebnis_F");
            QCOMPARE(rahmen->palette().color(QPalette::Window), QColor(255, 0, 0));
            QCOMPARE(b_->FokusName(), "Command3");
        });
        QCOMPARE(b_->fenster->Urteil(), Falsch);
    }

    void TheLearnerMayOverrideTheVerdict()
    {
        const Ergebnis ausgang = b_->Fragen(TippKarte("Berlin"), [&] {
            b_->Antworten("Bonn");
            QCOMPARE(b_->fenster->Urteil(), Falsch);
            b_->Klick("Ergebnis_R");
            QCOMPARE(b_->fenster->Urteil(), Richtig);
            b_->Klick("Ergebnis_F");
            QCOMPARE(b_->fenster->Urteil(), Falsch);
            b_->Taste(Qt::Key_R, Qt::AltModifier);
            QVERIFY(QTest::qWaitFor([&] { return b_->Finde<QRadioButton>("Ergebnis_R")->isChecked(); }));
            QCOMPARE(b_->FokusName(), "Command3");
            b_->Taste(Qt::Key_Return);
        });
        QCOMPARE(ausgang, Richtig);
    }

    void ACheckedAnswerIsNotJudgedAgain()
    {
        b_->Fragen(TippKarte("Berlin"), [&] {
            b_->Antworten("Bonn");
            b_->Klick("Ergebnis_R");
            b_->Klick(b_->Finde<QTextEdit>("Antwort(0)")->viewport());
            b_->Tippe("x");
            QCOMPARE(b_->Text("Antwort(0)"), "Bonn");
            b_->Taste(Qt::Key_P, Qt::ControlModifier);
            QVERIFY(!b_->Finde<QPushButton>("Cpruefen")->isEnabled());
            QCOMPARE(b_->fenster->Urteil(), Richtig);
            b_->Taste(Qt::Key_Return);
            QVERIFY(!b_->fenster->isVisible());
        });
        QCOMPARE(b_->fenster->Urteil(), Richtig);
    }

    void NothingJumpsWhenTheSolutionAppears_data()
    {
        QTest::addColumn<bool>("ankreuzen");
        QTest::newRow("typed") << false;
        QTest::newRow("ticked") << true;
    }

    void NothingJumpsWhenTheSolutionAppears()
    {
        QFETCH(bool, ankreuzen);
        b_->Fragen(ankreuzen ? KreuzKarte("1") : TippKarte("x"), [&] {
            const auto lage = [&] {
                QList<QRect> orte;
                for (const char *name : {"MFrage", "Antwort(0)", "Antwort(4)", "Check1(0)", "Cpruefen",
                                         "Command3", "Command1"}) {
                    auto *w = b_->Finde<QWidget>(name);
                    orte << QRect(w->mapTo(b_->fenster.get(), QPoint()), w->size());
                }
                return orte;
            };
            const auto vorher = lage();
            b_->Taste(Qt::Key_Return);
            QVERIFY(b_->Finde<QRadioButton>("Ergebnis_R")->isVisible());
            QCoreApplication::sendPostedEvents();
            QCoreApplication::processEvents();
            QCOMPARE(lage(), vorher);
        });
    }
};

PAUKFIX_TEST(PFUseAntwortTest)
#include "PFUseAntwortTest.moc"
