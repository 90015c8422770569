// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "AbfrageTestSupport.h"
#include "TestProgram.h"

using namespace paukfix;

// What the query says about its keys, and that they do it: self-judged cards, the way back, a sound again.
class PFUseTastenTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<AbfrageBuehne> b_;

    QString Hinweise() const { return b_->Text("Tastenhinweise"); }

    // A card that the learner judges.
    static CardRecord SelbstKarte()
    {
        CardRecord karte = TippKarte("x");
        karte.Antworttyp = 3;
        return karte;
    }

    static CardRecord KlangKarte(const QString &frage, const QString &richtig)
    {
        CardRecord karte = TippKarte("ja");
        karte.Picture_6_Name = frage;
        karte.Picture_7_Name = richtig;
        return karte;
    }

    QString Datei(const QString &name) const { return b_->kartei.filePath(name); }

private slots:

    void init() { b_ = std::make_unique<AbfrageBuehne>(); }

    // Within the tenth of a second that the toolkit takes to click a button by its shortcut.
    void AKeyRightBehindAShortcutFindsItDone()
    {
        const auto ausgang = b_->Fragen(MakeCard(1, 0, 1), [&] {
            b_->Antworten("x");
            b_->Taste(Qt::Key_R, Qt::AltModifier);
            b_->Taste(Qt::Key_Return);
        });
        QCOMPARE(ausgang, Richtig);
    }

    void TheOptionThatEnterWouldChooseIsMarked()
    {
        b_->Fragen(SelbstKarte(), [&] {
            b_->Klick("Antwort(0)"); // the mouse takes the marks away
            b_->Antworten("x");
            QCOMPARE(b_->FokusName(), "Ergebnis_R");
            QVERIFY(b_->fenster->testAttribute(Qt::WA_KeyboardFocusChange));
            QVERIFY2(Hinweise().startsWith("Pfeiltasten wählen · Eingabe bestätigt"), qPrintable(Hinweise()));
        });
    }

    void BothOptionsAreReachedByArrowsAndByTab_data()
    {
        QTest::addColumn<int>("hin");
        QTest::addColumn<int>("zurueck");
        QTest::newRow("arrows across") << int(Qt::Key_Right) << int(Qt::Key_Left);
        QTest::newRow("arrows down") << int(Qt::Key_Down) << int(Qt::Key_Up);
        QTest::newRow("tab") << int(Qt::Key_Tab) << int(Qt::Key_Backtab);
    }

    void BothOptionsAreReachedByArrowsAndByTab()
    {
        QFETCH(int, hin);
        QFETCH(int, zurueck);
        const auto dazu = zurueck == Qt::Key_Backtab ? Qt::ShiftModifier : Qt::NoModifier;
        const auto ausgang = b_->Fragen(SelbstKarte(), [&] {
            b_->Antworten("x");
            b_->Taste(Qt::Key(hin));
            QCOMPARE(b_->FokusName(), "Ergebnis_F");
            b_->Taste(Qt::Key(zurueck), dazu);
            QCOMPARE(b_->FokusName(), "Ergebnis_R");
            QVERIFY(!b_->Finde<QRadioButton>("Ergebnis_R")->isChecked());
            b_->Taste(Qt::Key(hin));
            QVERIFY(!b_->Finde<QRadioButton>("Ergebnis_F")->isChecked());
            b_->Taste(Qt::Key_Return);
            QVERIFY(b_->Finde<QRadioButton>("Ergebnis_F")->isChecked());
            QCOMPARE(b_->FokusName(), "Command3");
        });
        QCOMPARE(ausgang, Falsch);
    }

    void TheWayBackIsOfferedUntilThereIsAVerdict()
    {
        const QString zurueck = "Esc ohne Antwort zurück";
        b_->Fragen(KreuzKarte("1"), [&] { QVERIFY(Hinweise().endsWith(zurueck)); });
        b_->Fragen(TippKarte("x"), [&] {
            QVERIFY(b_->Text("Antworttasten").endsWith(zurueck));
            QVERIFY(b_->Finde("Antworttasten")->isVisible());
            b_->Antworten("x");
            QVERIFY(!b_->Finde("Antworttasten")->isVisible());
            QVERIFY2(!Hinweise().contains("Esc"), qPrintable(Hinweise()));
        });
        const auto ausgang = b_->Fragen(SelbstKarte(), [&] {
            b_->Antworten("x");
            QVERIFY(Hinweise().endsWith(zurueck));
            b_->Taste(Qt::Key_Escape);
        });
        QCOMPARE(ausgang, Nichts);
    }

    void TheSoundOfTheMomentIsPlayedAgain()
    {
        b_->Fragen(KlangKarte("frage.wav", "richtig.wav"), [&] {
            const QPushButton *knopf = b_->Finde<QPushButton>("NochEinmal");
            QVERIFY(knopf->isVisible());
            QVERIFY(!knopf->accessibleName().isEmpty());
            b_->Tippe("ja");
            b_->Klick(knopf);
            QCOMPARE(b_->ton.gespielt, QStringList({Datei("frage.wav"), Datei("frage.wav")}));
            QCOMPARE(b_->FokusName(), "Antwort(0)");
            b_->Taste(Qt::Key_F5);
            QTRY_COMPARE(b_->ton.gespielt.size(), 3);
            QCOMPARE(b_->ton.gespielt.last(), Datei("frage.wav"));
            b_->Taste(Qt::Key_Return);
            QCOMPARE(b_->ton.gespielt.last(), Datei("richtig.wav"));
            b_->Taste(Qt::Key_F5);
            QTRY_COMPARE(b_->ton.gespielt.size(), 5);
            QCOMPARE(b_->ton.gespielt.last(), Datei("richtig.wav"));
            QCOMPARE(b_->FokusName(), "Command3");
            b_->Taste(Qt::Key_Tab);
            QCOMPARE(b_->FokusName(), "NochEinmal");
            b_->Taste(Qt::Key_Space);
            QCOMPARE(b_->ton.gespielt.size(), 6);
        });
        QCOMPARE(b_->meldungen.Texte(), QStringList());
    }

    void WithoutASoundNoneIsOfferedAndNothingJumps()
    {
        for (const auto &[frage, richtig] : {std::pair("frage.wav", ""), std::pair("", "richtig.wav")}) {
            b_->Fragen(KlangKarte(frage, richtig), [&, frage = QString(frage)] {
                const QPushButton *knopf = b_->Finde<QPushButton>("NochEinmal");
                const auto plaetze = [&] {
                    QList<QRect> orte;
                    for (const char *name : {"Clöschen", "Command1", "Cpruefen", "Command3", "MFrage"})
                        orte << b_->Finde<QWidget>(name)->geometry();
                    return orte;
                };
                QCOMPARE(knopf->isVisible(), !frage.isEmpty());
                const QList<QRect> vorher = plaetze();
                b_->Antworten("ja");
                QCOMPARE(knopf->isVisible(), frage.isEmpty());
                QCOMPARE(plaetze(), vorher);
            });
        }
        // The applause is the program's own.
        b_->Fragen(TippKarte("ja"), [&] {
            b_->Antworten("ja");
            QVERIFY(!b_->Finde<QPushButton>("NochEinmal")->isVisible());
            const auto gespielt = b_->ton.gespielt.size();
            b_->Taste(Qt::Key_F5);
            QCoreApplication::processEvents();
            QCOMPARE(b_->ton.gespielt.size(), gespielt);
        });
    }
};

PAUKFIX_TEST(PFUseTastenTest)
#include "PFUseTastenTest.moc"
