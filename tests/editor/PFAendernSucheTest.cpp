// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "EditorBuehne.h"
#include "MeldungenFenster.h"
#include "TestProgram.h"
#include "VollePlatte.h"

#include <QMessageBox>
#include <QTest>

namespace {

CardRecord Karte(int nummer, const QString &frage, const QString &antwort, const QString &thema)
{
    CardRecord card = MakeCard(nummer, 0, nummer);
    card.Frage = card.Frage_Klartext = frage;
    card.Antwort_1 = card.Antwort_1_Klartext = antwort;
    card.Picture_9_Name = thema;
    return card;
}

struct Suchbuehne : EditorBuehne
{
    using EditorBuehne::EditorBuehne;

    // Opens the dialog by its key, types the term and presses Enter.
    void Suche(const QString &begriff)
    {
        const int vorher = dialogeBenutzt;
        ImDialog(QStringLiteral("Suchen"), [begriff](QWidget &dialog) {
            auto *text = dialog.findChild<QWidget *>(QStringLiteral("suchtext"));
            // Replaces the last term, which is selected.
            for (const QChar zeichen : begriff)
                QTest::sendKeyEvent(QTest::Click, text, Qt::Key_unknown, zeichen, Qt::NoModifier);
            QTest::keyClick(text, Qt::Key_Return);
        });
        Taste(Qt::Key_F3);
        QTRY_COMPARE(dialogeBenutzt, vorher + 1);
        QVERIFY(QTest::qWaitForWindowActive(fenster.get()));
    }
};

} // namespace

class PFAendernSucheTest : public QObject
{
    Q_OBJECT

private slots:

    void initTestCase() { VollePlatte::Einbauen(); }

    void HitIsShownWithTheCaretOnIt()
    {
        Suchbuehne b({MakeCard(1, 0, 1), Karte(2, QStringLiteral("Wie heißt der Fluß?"),
                                               QStringLiteral("Die ELBE"), QStringLiteral("Erdkunde"))});
        b.Zeigen();
        b.Suche(QStringLiteral("fluß"));
        QCOMPARE(b.Text("MaskFrageNr"), QStringLiteral("2"));
        QVERIFY(b.Steuerung("MFrage")->hasFocus());
        QCOMPARE(b.Box("MFrage")->textCursor().position(), 14);
        QCOMPARE(b.Box("MFrage")->textCursor().selectedText(), QStringLiteral("Fluß"));
        b.Suche(QStringLiteral("elbe"));
        QVERIFY(b.Steuerung("Antwort(0)")->hasFocus());
        QCOMPARE(b.Box("Antwort(0)")->textCursor().position(), 4);
        QVERIFY(b.Meldungstexte().isEmpty());
    }

    void HitInTheTopicIsMarkedThere()
    {
        Suchbuehne b({MakeCard(1, 0, 1),
                      Karte(2, QStringLiteral("f"), QStringLiteral("a"), QStringLiteral("die Erdkunde"))});
        b.Zeigen();
        b.Suche(QStringLiteral("ERD"));
        auto *thema = b.Finde<QLineEdit>("MaskThema");
        QVERIFY(thema->hasFocus());
        QCOMPARE(thema->selectedText(), QStringLiteral("Erd"));
        QCOMPARE(thema->cursorPosition(), 4);
        // The menu acts on text boxes only, and none has the keyboard now.
        QVERIFY(!b.fenster->findChild<QMenu *>("MFont")->isEnabled());
        QVERIFY(!b.Eintrag("MFontFett")->isEnabled());
    }

    void HitBehindLineBreaksIsFoundInItsPlace()
    {
        CardRecord card = MakeCard(2, 0, 2);
        card.Antworttyp = 2;
        card.Antwort_4 = QStringLiteral(R"({\rtf1 eins\par zwei\line drei Nadel\par})");
        card.Antwort_4_Klartext = QStringLiteral("eins\r\nzwei\r\ndrei Nadel");
        Suchbuehne b({MakeCard(1, 0, 1), card});
        b.Zeigen();
        b.Suche(QStringLiteral("nadel"));
        QVERIFY(b.Steuerung("Antwort(3)")->hasFocus());
        QCOMPARE(b.Box("Antwort(3)")->textCursor().selectedText(), QStringLiteral("Nadel"));
        QCOMPARE(b.Box("Antwort(3)")->textCursor().position(), 15);
    }

    void TermNotFoundIsSaidAndTheCardStays()
    {
        Suchbuehne b(DreiKarten());
        b.Zeigen();
        b.Klick("CVor");
        b.Suche(QStringLiteral("Kranich"));
        QCOMPARE(b.Meldungstexte(), QStringList(QStringLiteral("Kranich leider nicht gefunden")));
        QCOMPARE(b.Text("MaskFrageNr"), QStringLiteral("2"));
        QCOMPARE(b.suche.feld, qint16(0));
    }

    void TypingGoesOnAfterTheMessageThatNothingWasFound()
    {
        MeldungenFenster meldungen;
        Suchbuehne b(DreiKarten(), &meldungen);
        b.Zeigen();
        QString gesagt;
        QTimer uhr;
        connect(&uhr, &QTimer::timeout, this, [&] {
            if (auto *box = dynamic_cast<QMessageBox *>(QApplication::activeModalWidget())) {
                gesagt = box->text();
                QTest::keyClick(box, Qt::Key_Return);
            }
        });
        uhr.start(5);
        b.Suche(QStringLiteral("Kranich"));
        QCOMPARE(gesagt, QStringLiteral("Kranich leider nicht gefunden"));
        QCOMPARE(QApplication::focusWidget(), b.Steuerung("MFrage"));
    }

    void SearchFromTheBlankCardBehindTheLastBeginsWithTheFirst()
    {
        Suchbuehne b(DreiKarten());
        b.Zeigen();
        b.Klick("CEOF");
        b.Suche(QStringLiteral("Frage"));
        QCOMPARE(b.Text("MaskFrageNr"), QStringLiteral("1"));
    }

    void SearchWrapsFromTheLastCardToTheFirst()
    {
        Suchbuehne b(DreiKarten());
        b.Zeigen();
        b.Klick("CEOF");
        b.Klick("CZurück");
        b.Suche(QStringLiteral("Frage 1"));
        QCOMPARE(b.Text("MaskFrageNr"), QStringLiteral("1"));
    }

    void TermTwiceInOneQuestionIsFoundOnce()
    {
        const auto karte = [](int nummer, const QString &frage) {
            return Karte(nummer, frage, QStringLiteral("a"), QStringLiteral("t"));
        };
        Suchbuehne b({karte(1, QStringLiteral("Rose und rose")), karte(2, QStringLiteral("eine Rose"))});
        b.Zeigen();
        b.Suche(QStringLiteral("rose"));
        QCOMPARE(b.Text("MaskFrageNr"), QStringLiteral("1"));
        QCOMPARE(b.Box("MFrage")->textCursor().position(), 0);
        b.Suche(QStringLiteral("rose"));
        QCOMPARE(b.Text("MaskFrageNr"), QStringLiteral("2"));
        QCOMPARE(b.Box("MFrage")->textCursor().position(), 5);
        QCOMPARE(b.Meldungstexte(), QStringList());
    }

    void ThirdAnswerIsSearchedOnATickCardOnly_data()
    {
        QTest::addColumn<double>("typ");
        QTest::addColumn<bool>("gefunden");
        QTest::newRow("simple card") << 1.0 << false;
        QTest::newRow("tick card") << 2.0 << true;
    }

    void ThirdAnswerIsSearchedOnATickCardOnly()
    {
        QFETCH(double, typ);
        QFETCH(bool, gefunden);
        CardRecord card = MakeCard(2, 0, 2);
        card.Antworttyp = typ;
        card.Antwort_3 = card.Antwort_3_Klartext = QStringLiteral("Kranich");
        Suchbuehne b({MakeCard(1, 0, 1), card});
        b.Zeigen();
        b.Suche(QStringLiteral("Kranich"));
        QCOMPARE(b.Text("MaskFrageNr"), gefunden ? QStringLiteral("2") : QStringLiteral("1"));
        QCOMPARE(b.Steuerung("Antwort(2)")->hasFocus(), gefunden);
        QCOMPARE(b.Meldungstexte(),
                 gefunden ? QStringList() : QStringList(QStringLiteral("Kranich leider nicht gefunden")));
    }

    void SearchFromTheLastCardEndsWhenItComesRoundToIt()
    {
        Suchbuehne b(DreiKarten());
        b.Zeigen();
        b.Klick("CEOF");
        b.Klick("CZurück");
        b.Suche(QStringLiteral("Frage 3"));
        QCOMPARE(b.Text("MaskFrageNr"), QStringLiteral("3"));
        QCOMPARE(b.Meldungstexte(), QStringList());
        // The next search passes the first two cards and stops at the third, without its hit.
        b.Suche(QStringLiteral("Frage 3"));
        QCOMPARE(b.Meldungstexte(), QStringList(QStringLiteral("Frage 3 leider nicht gefunden")));
        QCOMPARE(b.Text("MaskFrageNr"), QStringLiteral("3"));
        QVERIFY(!b.Neu());
    }

    void LowerCaseFindsCapitalsAndUmlauts()
    {
        Suchbuehne b({MakeCard(1, 0, 1), Karte(2, QStringLiteral("WAS IST EINE ÜBUNG?"), QStringLiteral("a"),
                                               QStringLiteral("t"))});
        b.Zeigen();
        b.Suche(QStringLiteral("übung"));
        QCOMPARE(b.Text("MaskFrageNr"), QStringLiteral("2"));
        QCOMPARE(b.Box("MFrage")->textCursor().selectedText(), QStringLiteral("ÜBUNG"));
    }

    void RepeatedSearchGoesOnToTheNextHit()
    {
        Suchbuehne b(DreiKarten());
        b.Zeigen();
        b.Suche(QStringLiteral("frage"));
        QCOMPARE(b.Text("MaskFrageNr"), QStringLiteral("1"));
        b.Suche(QStringLiteral("frage"));
        QCOMPARE(b.Text("MaskFrageNr"), QStringLiteral("2"));
        b.Suche(QStringLiteral("frage"));
        QCOMPARE(b.Text("MaskFrageNr"), QStringLiteral("3"));
    }

    void DialogKeepsItsTermForTheProgramsRun()
    {
        Suchbuehne b(DreiKarten());
        b.Zeigen();
        b.ImDialog(QStringLiteral("Suchen"), [](QWidget &dialog) {
            QCOMPARE(dialog.windowTitle(), QStringLiteral("Suchen"));
            QTest::keyClicks(dialog.findChild<QWidget *>(QStringLiteral("suchtext")), QStringLiteral("Rest"));
            QTest::mouseClick(dialog.findChild<QWidget *>(QStringLiteral("CAbbruch")), Qt::LeftButton);
        });
        b.Menue("MExtras", "MSuchen");
        QCOMPARE(b.suche.letzterBegriff, QStringLiteral("Rest"));
        b.Klick("Cback");
        b.Zeigen();
        b.ImDialog(QStringLiteral("Suchen"), [](QWidget &dialog) {
            auto *text = dynamic_cast<QLineEdit *>(dialog.findChild<QWidget *>(QStringLiteral("suchtext")));
            QCOMPARE(text->text(), QStringLiteral("Rest"));
            // An empty term searches nothing, and the dialog stays.
            text->clear();
            QTest::mouseClick(dialog.findChild<QWidget *>(QStringLiteral("COK")), Qt::LeftButton);
            QVERIFY(dialog.isVisible());
            QTest::keyClick(text, Qt::Key_Escape);
        });
        b.Menue("MExtras", "MSuchen");
        QCOMPARE(b.dialogeBenutzt, 2);
        QVERIFY(b.Meldungstexte().isEmpty());
        QCOMPARE(b.suche.letzterBegriff, QString());
    }

    void UndoAndRedoWorkInTheSearchBox()
    {
        Suchbuehne b(DreiKarten());
        b.suche.letzterBegriff = QStringLiteral("Rest");
        b.Zeigen();
        b.ImDialog(QStringLiteral("Suchen"), [](QWidget &dialog) {
            auto *text = dynamic_cast<QLineEdit *>(dialog.findChild<QWidget *>(QStringLiteral("suchtext")));
            QTest::keyClick(text, Qt::Key_End);
            QTest::keyClicks(text, QStringLiteral("xyz"));
            QTest::keyClick(text, Qt::Key_Z, Qt::ControlModifier);
            QCOMPARE(text->text(), QStringLiteral("Rest"));
            QTest::keyClick(text, Qt::Key_Y, Qt::ControlModifier);
            QCOMPARE(text->text(), QStringLiteral("Restxyz"));
            QTest::keyClick(text, Qt::Key_Escape);
        });
        b.Taste(Qt::Key_F3);
        QCOMPARE(b.dialogeBenutzt, 1);
    }

    void DiskThatFailsWhileSearchingIsSaid()
    {
        // More pages than those that stay in use while a card is shown.
        QList<CardRecord> karten;
        for (int nummer = 1; nummer <= 100; ++nummer)
            karten << Karte(nummer, QString(400, u'r'), QString(), QString());
        karten.back().Frage_Klartext = QStringLiteral("Gesucht");
        Suchbuehne b(karten);
        b.Zeigen();
        b.kartei.store.Karten().Beside(
            [](SQLite::Database &database) { sqlite3_db_release_memory(database.getHandle()); });
        VollePlatte::Setzen(VollePlatte::Zustand::Kaputt);
        b.Suche(QStringLiteral("Gesucht"));
        VollePlatte::Setzen(VollePlatte::Zustand::Gesund);
        QCOMPARE(b.Meldungstexte(),
                 QStringList(QStringLiteral("Fehler beim Suchen: Ein-/Ausgabefehler bei der Datei „%1“.")
                                 .arg(b.kartei.Path())));
        // The next search finds it.
        b.kartei.messages.gezeigt.clear();
        b.Suche(QStringLiteral("Gesucht"));
        QCOMPARE(b.Meldungstexte(), QStringList());
        QCOMPARE(b.Text("MaskFrageNr"), QStringLiteral("100"));
    }

    void EmptyFileIsSaid()
    {
        Suchbuehne b(QList<CardRecord>{});
        b.Zeigen();
        b.ImDialog(QStringLiteral("Suchen"), [&b](QWidget &dialog) {
            auto *text = dialog.findChild<QWidget *>(QStringLiteral("suchtext"));
            QTest::keyClicks(text, QStringLiteral("x"));
            QTest::keyClick(text, Qt::Key_Enter);
            QCOMPARE(b.Meldungstexte(), QStringList(QStringLiteral("Diese Datei ist leer")));
            dialog.close();
        });
        b.Menue("MExtras", "MSuchen");
        QVERIFY(b.Neu());
    }

    void ChangedCardIsStoredBeforeTheSearch()
    {
        Suchbuehne b(DreiKarten());
        b.Zeigen();
        b.Ersetzen("MFrage", QStringLiteral("ganz neu"));
        b.Suche(QStringLiteral("ganz neu"));
        QCOMPARE(b.Text("MaskFrageNr"), QStringLiteral("1"));
        QCOMPARE(b.Box("MFrage")->textCursor().selectedText(), QStringLiteral("ganz neu"));
    }

    void CardThatMayNotBeStoredKeepsTheSearchAway()
    {
        Suchbuehne b(DreiKarten());
        b.Zeigen();
        b.Ersetzen("MFrage", {});
        b.Taste(Qt::Key_F3);
        QCOMPARE(b.Meldungstexte(), QStringList(QStringLiteral("Keine Frage eingegeben")));
        QVERIFY(!QApplication::activeModalWidget());
    }
};

PAUKFIX_TEST(PFAendernSucheTest)
#include "PFAendernSucheTest.moc"
