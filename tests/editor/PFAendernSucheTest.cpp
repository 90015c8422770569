// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "EditorBuehne.h"
#include "MeldungenFenster.h"
#include "TestProgram.h"
#include "VollePlatte.h"

#include <QMessageBox>
#include <QTest>

using namespace paukfix;
using namespace Qt::StringLiterals;

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
        const Drehbuch buch({Drehbuch::In(u"Suchen"_s, [this, &begriff](QWidget &) {
            Tippe(begriff); // replaces the last term, which is selected
            Taste(Qt::Key_Return);
        })});
        Taste(Qt::Key_F3);
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
        Suchbuehne b({MakeCard(1, 0, 1), Karte(2, u"Wie heißt der Fluß?"_s, u"Die ELBE"_s, u"Erdkunde"_s)});
        b.Zeigen();
        b.Suche(u"fluß"_s);
        QCOMPARE(b.Text("MaskFrageNr"), u"2"_s);
        QVERIFY(b.Finde("MFrage")->hasFocus());
        QCOMPARE(b.Box("MFrage")->textCursor().position(), 14);
        QCOMPARE(b.Box("MFrage")->textCursor().selectedText(), u"Fluß"_s);
        b.Suche(u"elbe"_s);
        QVERIFY(b.Finde("Antwort(0)")->hasFocus());
        QCOMPARE(b.Box("Antwort(0)")->textCursor().position(), 4);
        QVERIFY(b.Meldungstexte().isEmpty());
    }

    void HitInTheTopicIsMarkedThere()
    {
        Suchbuehne b({MakeCard(1, 0, 1), Karte(2, u"f"_s, u"a"_s, u"die Erdkunde"_s)});
        b.Zeigen();
        b.Suche(u"ERD"_s);
        auto *thema = b.Finde<QLineEdit>("MaskThema");
        QVERIFY(thema->hasFocus());
        QCOMPARE(thema->selectedText(), u"Erd"_s);
        QCOMPARE(thema->cursorPosition(), 4);
        // The menu acts on text boxes only, and none has the keyboard now.
        QVERIFY(!b.Finde<QMenu>("MFont")->isEnabled());
        QVERIFY(!b.Finde<QAction>("MFontFett")->isEnabled());
    }

    void HitBehindLineBreaksIsFoundInItsPlace()
    {
        CardRecord card = MakeCard(2, 0, 2);
        card.Antworttyp = 2;
        card.Antwort_4 = uR"({\rtf1 eins\par zwei\line drei Nadel\par})"_s;
        card.Antwort_4_Klartext = u"eins\r\nzwei\r\ndrei Nadel"_s;
        Suchbuehne b({MakeCard(1, 0, 1), card});
        b.Zeigen();
        b.Suche(u"nadel"_s);
        QVERIFY(b.Finde("Antwort(3)")->hasFocus());
        QCOMPARE(b.Box("Antwort(3)")->textCursor().selectedText(), u"Nadel"_s);
        QCOMPARE(b.Box("Antwort(3)")->textCursor().position(), 15);
    }

    void TermNotFoundIsSaidAndTheCardStays()
    {
        Suchbuehne b(DreiKarten());
        b.Zeigen();
        b.Klick("CVor");
        b.Suche(u"Kranich"_s);
        QCOMPARE(b.Meldungstexte(), QStringList(u"Kranich leider nicht gefunden"_s));
        QCOMPARE(b.Text("MaskFrageNr"), u"2"_s);
        QCOMPARE(b.suche.feld, qint16(0));
    }

    void TypingGoesOnAfterTheMessageThatNothingWasFound()
    {
        MeldungenFenster meldungen;
        Suchbuehne b(DreiKarten(), &meldungen);
        b.Zeigen();
        QString gesagt;
        const Drehbuch buch({Drehbuch::In<QMessageBox>([&](QMessageBox &box) {
            gesagt = box.text();
            Hand(box).Taste(Qt::Key_Return);
        })});
        b.Suche(u"Kranich"_s);
        QCOMPARE(gesagt, u"Kranich leider nicht gefunden"_s);
        QCOMPARE(QApplication::focusWidget(), b.Finde("MFrage"));
    }

    void SearchFromTheBlankCardBehindTheLastBeginsWithTheFirst()
    {
        Suchbuehne b(DreiKarten());
        b.Zeigen();
        b.Klick("CEOF");
        b.Suche(u"Frage"_s);
        QCOMPARE(b.Text("MaskFrageNr"), u"1"_s);
    }

    void SearchWrapsFromTheLastCardToTheFirst()
    {
        Suchbuehne b(DreiKarten());
        b.Zeigen();
        b.Klick("CEOF");
        b.Klick("CZurück");
        b.Suche(u"Frage 1"_s);
        QCOMPARE(b.Text("MaskFrageNr"), u"1"_s);
    }

    void TermTwiceInOneQuestionIsFoundOnce()
    {
        const auto karte = [](int nummer, const QString &frage) {
            return Karte(nummer, frage, u"a"_s, u"t"_s);
        };
        Suchbuehne b({karte(1, u"Rose und rose"_s), karte(2, u"eine Rose"_s)});
        b.Zeigen();
        b.Suche(u"rose"_s);
        QCOMPARE(b.Text("MaskFrageNr"), u"1"_s);
        QCOMPARE(b.Box("MFrage")->textCursor().position(), 0);
        b.Suche(u"rose"_s);
        QCOMPARE(b.Text("MaskFrageNr"), u"2"_s);
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
        card.Antwort_3 = card.Antwort_3_Klartext = u"Kranich"_s;
        Suchbuehne b({MakeCard(1, 0, 1), card});
        b.Zeigen();
        b.Suche(u"Kranich"_s);
        QCOMPARE(b.Text("MaskFrageNr"), gefunden ? u"2"_s : u"1"_s);
        QCOMPARE(b.Finde("Antwort(2)")->hasFocus(), gefunden);
        QCOMPARE(b.Meldungstexte(),
                 gefunden ? QStringList() : QStringList(u"Kranich leider nicht gefunden"_s));
    }

    void SearchFromTheLastCardEndsWhenItComesRoundToIt()
    {
        Suchbuehne b(DreiKarten());
        b.Zeigen();
        b.Klick("CEOF");
        b.Klick("CZurück");
        b.Suche(u"Frage 3"_s);
        QCOMPARE(b.Text("MaskFrageNr"), u"3"_s);
        QCOMPARE(b.Meldungstexte(), QStringList());
        // The next search passes the first two cards and stops at the third, without its hit.
        b.Suche(u"Frage 3"_s);
        QCOMPARE(b.Meldungstexte(), QStringList(u"Frage 3 leider nicht gefunden"_s));
        QCOMPARE(b.Text("MaskFrageNr"), u"3"_s);
        QVERIFY(!b.Neu());
    }

    void LowerCaseFindsCapitalsAndUmlauts()
    {
        Suchbuehne b({MakeCard(1, 0, 1), Karte(2, u"WAS IST EINE ÜBUNG?"_s, u"a"_s, u"t"_s)});
        b.Zeigen();
        b.Suche(u"übung"_s);
        QCOMPARE(b.Text("MaskFrageNr"), u"2"_s);
        QCOMPARE(b.Box("MFrage")->textCursor().selectedText(), u"ÜBUNG"_s);
    }

    void RepeatedSearchGoesOnToTheNextHit()
    {
        Suchbuehne b(DreiKarten());
        b.Zeigen();
        b.Suche(u"frage"_s);
        QCOMPARE(b.Text("MaskFrageNr"), u"1"_s);
        b.Suche(u"frage"_s);
        QCOMPARE(b.Text("MaskFrageNr"), u"2"_s);
        b.Suche(u"frage"_s);
        QCOMPARE(b.Text("MaskFrageNr"), u"3"_s);
    }

    void DialogKeepsItsTermForTheProgramsRun()
    {
        Suchbuehne b(DreiKarten());
        b.Zeigen();
        const Drehbuch abbruch({Drehbuch::In(u"Suchen"_s, [](QWidget &dialog) {
            QCOMPARE(dialog.windowTitle(), u"Suchen"_s);
            Hand(dialog).Tippe("suchtext", u"Rest"_s);
            Hand(dialog).Klick("CAbbruch");
        })});
        b.Menue("MExtras", "MSuchen");
        QCOMPARE(b.suche.letzterBegriff, u"Rest"_s);
        b.Klick("Cback");
        b.Zeigen();
        const Drehbuch leer({Drehbuch::In(u"Suchen"_s, [](QWidget &dialog) {
            auto *text = Hand(dialog).Finde<QLineEdit>("suchtext");
            QCOMPARE(text->text(), u"Rest"_s);
            // An empty term searches nothing, and the dialog stays.
            text->clear();
            Hand(dialog).Klick("COK");
            QVERIFY(dialog.isVisible());
            QTest::keyClick(text, Qt::Key_Escape);
        })});
        b.Menue("MExtras", "MSuchen");
        QVERIFY(leer.Fertig());
        QVERIFY(b.Meldungstexte().isEmpty());
        QCOMPARE(b.suche.letzterBegriff, QString());
    }

    void UndoAndRedoWorkInTheSearchBox()
    {
        Suchbuehne b(DreiKarten());
        b.suche.letzterBegriff = u"Rest"_s;
        b.Zeigen();
        const Drehbuch buch({Drehbuch::In(u"Suchen"_s, [](QWidget &dialog) {
            auto *text = Hand(dialog).Finde<QLineEdit>("suchtext");
            QTest::keyClick(text, Qt::Key_End);
            QTest::keyClicks(text, u"xyz"_s);
            QTest::keyClick(text, Qt::Key_Z, Qt::ControlModifier);
            QCOMPARE(text->text(), u"Rest"_s);
            QTest::keyClick(text, Qt::Key_Y, Qt::ControlModifier);
            QCOMPARE(text->text(), u"Restxyz"_s);
            QTest::keyClick(text, Qt::Key_Escape);
        })});
        b.Taste(Qt::Key_F3);
        QVERIFY(buch.Fertig());
    }

    void DiskThatFailsWhileSearchingIsSaid()
    {
        // More pages than those that stay in use while a card is shown.
        QList<CardRecord> karten;
        for (int nummer = 1; nummer <= 100; ++nummer)
            karten << Karte(nummer, QString(400, u'r'), QString(), QString());
        karten.back().Frage_Klartext = u"Gesucht"_s;
        Suchbuehne b(karten);
        b.Zeigen();
        b.kartei.store.Karten().Beside(
            [](SQLite::Database &database) { sqlite3_db_release_memory(database.getHandle()); });
        VollePlatte::Setzen(VollePlatte::Zustand::Kaputt);
        b.Suche(u"Gesucht"_s);
        VollePlatte::Setzen(VollePlatte::Zustand::Gesund);
        QCOMPARE(b.Meldungstexte(),
                 QStringList(
                     u"Fehler beim Suchen: Ein-/Ausgabefehler bei der Datei „%1“."_s.arg(b.kartei.Path())));
        // The next search finds it.
        b.kartei.messages.gezeigt.clear();
        b.Suche(u"Gesucht"_s);
        QCOMPARE(b.Meldungstexte(), QStringList());
        QCOMPARE(b.Text("MaskFrageNr"), u"100"_s);
    }

    void EmptyFileIsSaid()
    {
        Suchbuehne b(QList<CardRecord>{});
        b.Zeigen();
        const Drehbuch buch({Drehbuch::In(u"Suchen"_s, [&b](QWidget &dialog) {
            auto *text = Hand(dialog).Finde("suchtext");
            QTest::keyClicks(text, u"x"_s);
            QTest::keyClick(text, Qt::Key_Enter);
            QCOMPARE(b.Meldungstexte(), QStringList(u"Diese Datei ist leer"_s));
            dialog.close();
        })});
        b.Menue("MExtras", "MSuchen");
        QVERIFY(b.Neu());
    }

    void ChangedCardIsStoredBeforeTheSearch()
    {
        Suchbuehne b(DreiKarten());
        b.Zeigen();
        b.Ersetze("MFrage", u"ganz neu"_s);
        b.Suche(u"ganz neu"_s);
        QCOMPARE(b.Text("MaskFrageNr"), u"1"_s);
        QCOMPARE(b.Box("MFrage")->textCursor().selectedText(), u"ganz neu"_s);
    }

    void CardThatMayNotBeStoredKeepsTheSearchAway()
    {
        Suchbuehne b(DreiKarten());
        b.Zeigen();
        b.Ersetze("MFrage", {});
        b.Taste(Qt::Key_F3);
        QCOMPARE(b.Meldungstexte(), QStringList(u"Keine Frage eingegeben"_s));
        QVERIFY(!QApplication::activeModalWidget());
    }
};

PAUKFIX_TEST(PFAendernSucheTest)
#include "PFAendernSucheTest.moc"
