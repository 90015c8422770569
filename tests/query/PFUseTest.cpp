// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "AbfrageTestSupport.h"
#include "Hausfarben.h"
#include "TestProgram.h"

#include <QAccessible>

using namespace paukfix;

// Showing a card, the keys, and what closing the window means.
class PFUseTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<AbfrageBuehne> b_;

    // Sets a column of all cards behind the program's back and opens the file again.
    void Sql(const char *sql)
    {
        b_->store.CloseCardFile();
        SQLite::Database(b_->kartei.filePath("a.pzb").toStdString(), SQLite::OPEN_READWRITE).exec(sql);
        b_->Oeffnen();
    }

private slots:

    void init() { b_ = std::make_unique<AbfrageBuehne>(); }

    // --- showing the card

    void TheCardIsShown()
    {
        CardRecord karte = TippKarte("Berlin");
        karte.FachNr = 3;
        karte.Frage = "{\\rtf1 Haupt\\b stadt\\b0 ?\\par}";
        karte.Picture_9_Name = "Länder & <b>Städte</b>";
        b_->Fragen(karte, [&] {
            QCOMPARE(b_->fenster->objectName(), "PFUse");
            QCOMPARE(b_->fenster->windowTitle(), "Merkkasten Abfrage");
            QVERIFY(b_->fenster->isModal());
            QCOMPARE(b_->Text("MaskFrageNr"), "17");
            QCOMPARE(b_->Text("MaskFachNr"), "3");
            QCOMPARE(b_->Text("MaskThema"), "Länder & <b>Städte</b>");
            QCOMPARE(b_->Finde<QLabel>("MaskThema")->textFormat(), Qt::PlainText);
            QCOMPARE(b_->Text("MFrage"), "Hauptstadt?");
            QTextCursor zeichen(b_->Finde<QTextEdit>("MFrage")->document());
            zeichen.setPosition(7);
            QVERIFY(zeichen.charFormat().fontWeight() >= QFont::Bold);
            QCOMPARE(b_->Text("Antwort(0)"), "");
            QCOMPARE(b_->Text("Antwort(5)"), "");
            QCOMPARE(b_->FokusName(), "Antwort(0)");
            QVERIFY(!b_->Finde<QWidget>("Frame1")->isVisible());
            QVERIFY(!b_->Finde<QRadioButton>("Ergebnis_R")->isVisible());
            QVERIFY(!b_->Finde<QLabel>("Label4")->isVisible());
            QVERIFY(!b_->Check1(0)->isVisible());
        });
    }

    void TopicOfAnySizeIsAskedWithItsBeginning()
    {
        b_->Oeffnen({TippKarte("x"), MakeCard(90, 5, 90)});
        Sql("UPDATE Lernkarten SET Picture_9_Name=replace(hex(zeroblob(25000)),'0','M')");
        b_->Fragen([&] {
            QCOMPARE(b_->Text("MaskThema").size(), 50'000);
            QVERIFY(b_->Finde<QLabel>("MaskThema")->sizeHint().width() < 100'000);
            QVERIFY(b_->Finde<QLabel>("MaskThema")->toolTip().size() < 10'000);
            b_->Antworten("x");
        });
        QCOMPARE(b_->fenster->Urteil(), Richtig);
    }

    void NullTextsAreShownEmpty()
    {
        b_->Oeffnen({TippKarte("x"), MakeCard(90, 5, 90)});
        Sql("UPDATE Lernkarten SET Frage=NULL, Antwort_1=NULL, Antwort_1_Klartext=NULL, Picture_9_Name=NULL,"
            " Picture_1_Name=NULL, PictureTop=NULL, Pictureleft=NULL, Antwort_ch_1=NULL");
        b_->Fragen([&] {
            QCOMPARE(b_->Text("MaskThema"), "");
            QCOMPARE(b_->Text("MFrage"), "");
            b_->Taste(Qt::Key_Return);
            QCOMPARE(b_->Text("Antwort(5)"), "");
        });
        QCOMPARE(b_->fenster->Urteil(), Richtig);
        QCOMPARE(b_->meldungen.Texte(), QStringList());
    }

    void NullTextsOfATickCardAreShownEmpty()
    {
        b_->Oeffnen({KreuzKarte("1"), MakeCard(90, 5, 90)});
        Sql("UPDATE Lernkarten SET Antwort_1=NULL, Antwort_2=NULL, Antwort_5=NULL, Antwort_ch_1=NULL");
        b_->Fragen([&] {
            QCOMPARE(b_->Text("Antwort(0)"), "");
            QCOMPARE(b_->Text("Antwort(2)"), "drei");
            b_->Taste(Qt::Key_Return);
        });
        QCOMPARE(b_->fenster->Urteil(), Richtig);
    }

    void WithoutACurrentCardTheErrorIsReportedAndNothingIsAsked()
    {
        b_->Oeffnen({TippKarte("x")});
        b_->store.Karten().MoveNext();
        b_->FensterBauen();
        QCOMPARE(b_->fenster->Fragen(true), Nichts);
        QCOMPARE(b_->meldungen.Texte(),
                 QStringList("Fehler beim Lesen der Karte: Kein aktueller Datensatz."));
    }

    // --- keys

    void EnterChecksWithEitherKey()
    {
        for (const Qt::Key taste : {Qt::Key_Return, Qt::Key_Enter}) {
            b_->Fragen(TippKarte("a"), [&] {
                b_->Tippe("a");
                b_->Taste(taste);
                QVERIFY(b_->Finde<QPushButton>("Command3")->isEnabled());
                QCOMPARE(b_->Text("Antwort(0)"), "a");
            });
        }
    }

    void ControlPChecksWhereverTheFocusIs_data()
    {
        QTest::addColumn<QString>("fokus");
        for (const char *name : {"Antwort(0)", "MFrage", "Cpruefen", "Command1", "Clöschen"})
            QTest::newRow(name) << QString::fromUtf8(name);
    }

    void ControlPChecksWhereverTheFocusIs()
    {
        QFETCH(QString, fokus);
        b_->Fragen(TippKarte(""), [&] {
            b_->Finde<QWidget>(fokus)->setFocus();
            b_->Taste(Qt::Key_P, Qt::ControlModifier);
            QVERIFY(b_->Finde<QPushButton>("Command3")->isEnabled());
        });
        QCOMPARE(b_->fenster->Urteil(), Richtig);
        QCOMPARE(b_->meldungen.Texte(), QStringList());
    }

    void TypingIntoTheQuestionIsRefused_data()
    {
        QTest::addColumn<int>("taste");
        QTest::addColumn<int>("dazu");
        QTest::newRow("letter") << int(Qt::Key_X) << int(Qt::NoModifier);
        QTest::newRow("capital") << int(Qt::Key_X) << int(Qt::ShiftModifier);
        QTest::newRow("digit") << int(Qt::Key_1) << int(Qt::NoModifier);
        QTest::newRow("blank") << int(Qt::Key_Space) << int(Qt::NoModifier);
        QTest::newRow("Enter") << int(Qt::Key_Return) << int(Qt::NoModifier);
        QTest::newRow("Backspace") << int(Qt::Key_Backspace) << int(Qt::NoModifier);
        QTest::newRow("Delete") << int(Qt::Key_Delete) << int(Qt::NoModifier);
        QTest::newRow("paste") << int(Qt::Key_V) << int(Qt::ControlModifier);
        QTest::newRow("cut") << int(Qt::Key_X) << int(Qt::ControlModifier);
    }

    void TypingIntoTheQuestionIsRefused()
    {
        QFETCH(int, taste);
        QFETCH(int, dazu);
        b_->Fragen(TippKarte("x"), [&] {
            b_->Klick(b_->Finde<QTextEdit>("MFrage")->viewport());
            QCOMPARE(b_->FokusName(), "MFrage");
            b_->Taste(static_cast<Qt::Key>(taste), Qt::KeyboardModifiers(dazu));
            QCOMPARE(b_->meldungen.Texte(), QStringList("Jetzt bitte nicht ändern"));
            QCOMPARE(b_->Text("MFrage"), "Frage 17");
            QVERIFY(!b_->Finde<QPushButton>("Command3")->isEnabled());
        });
    }

    void ReadingAndCopyingTheQuestionIsAllowed()
    {
        b_->Fragen(TippKarte("x"), [&] {
            b_->Finde<QTextEdit>("MFrage")->setFocus();
            for (const Qt::Key taste : {Qt::Key_Right, Qt::Key_End, Qt::Key_PageDown, Qt::Key_Home,
                                        Qt::Key_Shift, Qt::Key_Control, Qt::Key_F5})
                b_->Taste(taste);
            b_->Taste(Qt::Key_A, Qt::ControlModifier);
            b_->Taste(Qt::Key_C, Qt::ControlModifier);
            b_->Taste(Qt::Key_Tab);
            QVERIFY(b_->FokusName() != "MFrage");
        });
        QCOMPARE(b_->meldungen.Texte(), QStringList());
    }

    void TheKeyboardAloneIsEnough()
    {
        const Ergebnis ausgang = b_->Fragen(TippKarte("Berlin"), [&] {
            b_->Tippe("Berlin");
            b_->Taste(Qt::Key_Return);
            QCOMPARE(b_->FokusName(), "Command3");
            b_->Taste(Qt::Key_Return);
            QVERIFY(!b_->fenster->isVisible());
        });
        QCOMPARE(ausgang, Richtig);
    }

    void EnterOnATickBoxChecksToo()
    {
        b_->Fragen(KreuzKarte(""), [&] {
            b_->Taste(Qt::Key_Return);
            QCOMPARE(b_->FokusName(), "Command3");
        });
        QCOMPARE(b_->fenster->Urteil(), Richtig);
    }

    void AHeldEnterNeitherChecksNorCloses()
    {
        b_->Fragen(TippKarte("x"), [&] {
            QKeyEvent gehalten(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, "\r", true);
            QApplication::sendEvent(b_->Finde("Antwort(0)"), &gehalten);
            QVERIFY(!b_->Finde<QPushButton>("Command3")->isEnabled());
            b_->Taste(Qt::Key_Return);
            QCOMPARE(b_->FokusName(), "Command3");
            QKeyEvent weiter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, "\r", true);
            QApplication::sendEvent(b_->Finde<QPushButton>("Command3"), &weiter);
            QVERIFY(b_->fenster->isVisible());
        });
    }

    void TabReachesEverythingThatCanBeUsed()
    {
        b_->Fragen(TippKarte("x"), [&] {
            b_->Taste(Qt::Key_Return);
            QStringList besucht;
            for (int i = 0; i < 20 && !besucht.contains(b_->FokusName()); ++i) {
                besucht << b_->FokusName();
                b_->Taste(Qt::Key_Tab);
            }
            besucht.sort();
            QStringList alle{"Antwort(0)", "Antwort(5)", "Ergebnis_F", "Command3",
                             "MFrage",     "Command1",   "Clöschen"};
            alle.sort();
            QCOMPARE(besucht, alle);
        });
    }

    // --- closing

    void ClosingBeforeAVerdictLeavesNothingBehind_data()
    {
        QTest::addColumn<int>("vorher");
        QTest::addColumn<bool>("taste");
        for (const int vorher : {-1, 0, 10, 11}) {
            QTest::addRow("after %d, by Escape", vorher) << vorher << true;
            QTest::addRow("after %d, by the window", vorher) << vorher << false;
        }
    }

    // Whatever the card before left.
    void ClosingBeforeAVerdictLeavesNothingBehind()
    {
        QFETCH(int, vorher);
        QFETCH(bool, taste);
        b_->meldungen.antworten = {Meldungen::Antwort::Ja};
        QCOMPARE(b_->Fragen(TippKarte("x"),
                            [&] {
                                if (vorher > 0)
                                    b_->Klick(vorher == 10 ? "Command1" : "Clöschen");
                                else
                                    b_->Antworten(vorher == -1 ? "x" : "y");
                            }),
                 Ergebnis(static_cast<AbfrageErgebnis>(vorher)));
        b_->ton.stillen = 0;
        const Ergebnis ausgang = b_->Fragen(TippKarte("x"), [&] {
            b_->Tippe("halb");
            if (taste)
                b_->Taste(Qt::Key_Escape);
            else
                b_->fenster->close();
            QVERIFY(!b_->fenster->isVisible());
        });
        QCOMPARE(ausgang, Nichts);
        QCOMPARE(b_->fenster->Urteil(), Nichts);
        QCOMPARE(b_->store.FachInfo[0].Anzahl, qint16(1));
        QCOMPARE(b_->store.Karten().Read().FachNr, 0.0);
        QCOMPARE(b_->ton.stillen, 1);
    }

    void ClosingAfterAVerdictKeepsIt()
    {
        QCOMPARE(b_->Fragen(TippKarte("x"),
                            [&] {
                                b_->Antworten("x");
                                b_->Taste(Qt::Key_Escape);
                            }),
                 Richtig);
        QCOMPARE(b_->ton.stillen, 0);
    }

    void GoOnIsOfferedOnlyAfterAVerdict()
    {
        b_->Fragen(TippKarte("x"), [&] {
            QVERIFY(!b_->Finde<QPushButton>("Command3")->isEnabled());
            QVERIFY(!b_->Finde<QPushButton>("Command3")->isVisible());
            b_->Antworten("y");
            QVERIFY(b_->Finde<QPushButton>("Command3")->isEnabled());
            QVERIFY(!b_->Finde<QPushButton>("Cpruefen")->isVisible());
            b_->Klick("Command3");
            QVERIFY(!b_->fenster->isVisible());
        });
    }

    // --- deleting and editing

    void TheLastCardIsNotDeleted()
    {
        b_->Oeffnen({TippKarte("x")});
        b_->Fragen([&] {
            b_->Klick("Clöschen");
            QVERIFY(b_->fenster->isVisible());
        });
        QCOMPARE(b_->meldungen.Texte(), QStringList("Die letzte Karte kann nicht gelöscht werden"));
        QCOMPARE(b_->store.Karten().RecordCount(), 1);
        QCOMPARE(b_->store.FachInfo[0].Anzahl, qint16(1));
    }

    void ADoneCardCountsWhenTheLastOneIsLookedFor()
    {
        b_->meldungen.antworten = {Meldungen::Antwort::Ja};
        b_->Oeffnen({TippKarte("x"), MakeCard(2, 6, 1)});
        QCOMPARE(b_->Fragen([&] { b_->Klick("Clöschen"); }), Geloescht);
    }

    void DeclinedDeletionChangesNothing()
    {
        b_->meldungen.antworten = {Meldungen::Antwort::Nein};
        QCOMPARE(b_->Fragen(TippKarte("x"),
                            [&] {
                                b_->Klick("Clöschen");
                                QVERIFY(b_->fenster->isVisible());
                            }),
                 Nichts);
        QCOMPARE(b_->meldungen.Texte(), QStringList("Diese Karte wirklich löschen"));
        QVERIFY(b_->meldungen.gezeigt[0].frage);
        QCOMPARE(b_->store.Karten().RecordCount(), 2);
        QCOMPARE(b_->store.FachInfo[0].Anzahl, qint16(1));
    }

    // The end of the session closes the query behind its question.
    void AQueryThatWasClosedMeanwhileDeletesNothing()
    {
        b_->meldungen.antworten = {Meldungen::Antwort::Ja};
        b_->meldungen.beiFrage = [&] { b_->fenster->close(); };
        b_->Fragen(TippKarte("x"), [&] { b_->Klick("Clöschen"); });
        QCOMPARE(b_->meldungen.Texte(), QStringList("Diese Karte wirklich löschen"));
        QCOMPARE(b_->store.Karten().RecordCount(), 2);
        QCOMPARE(b_->store.FachInfo[0].Anzahl, qint16(1));
    }

    void ADeletedCardIsGoneFromFileAndCounts()
    {
        b_->meldungen.antworten = {Meldungen::Antwort::Ja};
        QCOMPARE(b_->Fragen(TippKarte("x"),
                            [&] {
                                b_->Klick("Clöschen");
                                QVERIFY(!b_->fenster->isVisible());
                            }),
                 Geloescht);
        QCOMPARE(b_->store.FachInfo[0].Anzahl, qint16(0));
        QCOMPARE(b_->store.FachInfo[5].Anzahl, qint16(1));
        b_->store.CloseCardFile();
        const QList<CardRecord> karten = ReadCards(b_->kartei.filePath("a.pzb"));
        QCOMPARE(karten.size(), 1);
        QCOMPARE(karten[0].FrageNr, 90.0);
    }

    void AFailedDeletionIsReportedAndCountsStay()
    {
        b_->meldungen.antworten = {Meldungen::Antwort::Ja};
        QCOMPARE(b_->Fragen(TippKarte("x"),
                            [&] {
                                QVERIFY(QFile::remove(b_->kartei.filePath("a.pzb")));
                                b_->Klick("Clöschen");
                                QVERIFY(b_->fenster->isVisible());
                            }),
                 Nichts);
        QCOMPARE(b_->meldungen.Texte().size(), 2);
        QCOMPARE(b_->meldungen.Texte()[1],
                 "Fehler beim Löschen der Karte: Die Datei „" + b_->kartei.filePath("a.pzb") +
                     "“ wurde gelöscht, umbenannt oder ersetzt, während sie offen war.");
        QCOMPARE(b_->store.FachInfo[0].Anzahl, qint16(1));
    }

    void EditingLeavesTheVerdictBehind()
    {
        QCOMPARE(b_->Fragen(TippKarte("x"),
                            [&] {
                                b_->Antworten("x");
                                b_->Klick("Command1");
                                QVERIFY(!b_->fenster->isVisible());
                            }),
                 Bearbeiten);
    }

    // --- for everybody

    void EveryControlHasANameForAssistiveTechnology_data()
    {
        QTest::addColumn<bool>("ankreuzen");
        QTest::newRow("typed") << false;
        QTest::newRow("ticked") << true;
    }

    void EveryControlHasANameForAssistiveTechnology()
    {
        QFETCH(bool, ankreuzen);
        b_->Fragen(ankreuzen ? KreuzKarte("1") : TippKarte("x"), [&] {
            b_->Taste(Qt::Key_Return);
            for (QWidget *widget : b_->fenster->findChildren<QWidget *>()) {
                const bool eigen = !widget->objectName().isEmpty() && !widget->objectName().startsWith("qt_");
                if (!eigen || !widget->isVisible())
                    continue;
                const QString name = QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name);
                const auto *label = qobject_cast<const QLabel *>(widget);
                if (label) // what stands there is said
                    QVERIFY2(name.contains(label->text()), qPrintable(name));
                else
                    QVERIFY2(!name.isEmpty(), qPrintable(widget->objectName()));
            }
        });
    }

    void TheWindowFollowsTheDesktopIntoTheDark()
    {
        const QPalette vorher = QApplication::palette();
        b_->Fragen(TippKarte("x"), [&] {
            QPalette dunkel(QColor(43, 43, 46));
            dunkel.setColor(QPalette::Base, QColor(30, 30, 32));
            QApplication::setPalette(dunkel);
            QCoreApplication::processEvents();
            const auto *karte = b_->Finde<QWidget>("Karte");
            const QPoint ecke = karte->mapTo(b_->fenster.get(), QPoint(karte->width() / 2, 6));
            QCOMPARE(b_->fenster->grab().toImage().pixelColor(ecke), HausfarbenZu(dunkel).karte);
        });
        QApplication::setPalette(vorher);
    }
};

PAUKFIX_TEST(PFUseTest)
#include "PFUseTest.moc"
