// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "EditorBuehne.h"
#include "Gemaltes.h"
#include "TestProgram.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QTextEdit>
#include <QToolButton>

#include <algorithm>

using namespace paukfix;
using namespace Qt::StringLiterals;

// The icons above the form, what it says of the card's state and place, and the topics it offers.
class PFAendernLeisteTest : public QObject
{
    Q_OBJECT

private slots:

    void EveryIconSaysItsEntryAndKeyAndIsAsEnabled()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        const auto knoepfe = b.Finde("Symbolleiste")->findChildren<QToolButton *>();
        QCOMPARE(knoepfe.size(), 15);
        for (const QToolButton *knopf : knoepfe) {
            const QAction *eintrag = knopf->defaultAction();
            const QString text = QString(eintrag->text()).remove(u'&');
            QVERIFY2(knopf->toolTip().startsWith(text), qPrintable(knopf->toolTip()));
            if (!eintrag->shortcut().isEmpty())
                QVERIFY(knopf->toolTip().endsWith(
                    u'(' + eintrag->shortcut().toString(QKeySequence::NativeText) + u')'));
            QCOMPARE(knopf->accessibleName(), text);
            QVERIFY(knopf->isEnabled() && !knopf->icon().isNull());
        }
        b.Finde("MaskThema")->setFocus();
        for (const char *name : {"MFontFett", "MFontTief", "MSchriftart", "Textfarbe", "Standardschrift"})
            QVERIFY2(!b.Finde("Symbol"_L1 + QLatin1String(name))->isEnabled(), name);
        for (const char *name : {"MBilder", "MTon", "MSuchen", "MDrucken", "MKopieren", "MLöschen"})
            QVERIFY2(b.Finde(u"Symbol"_s + QString::fromUtf8(name))->isEnabled(), name);
    }

    // All of them on the screen, whatever the window's width; the state is never covered.
    void IconsAndStateFitEveryWidth()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        int zuletzt = 0;
        for (const int breite : {1000, 640, 500}) {
            b.fenster->resize(breite, 700);
            QWidget *leiste = b.Finde("Symbolleiste");
            QTRY_COMPARE(leiste->width(), b.fenster->width());
            QVERIFY(leiste->height() >= zuletzt || breite == 640);
            zuletzt = leiste->height();
            QList<QRect> plaetze{b.Finde("Speicherstand")->geometry()};
            for (const QToolButton *knopf : leiste->findChildren<QToolButton *>())
                plaetze << knopf->geometry();
            for (qsizetype i = 0; i < plaetze.size(); ++i) {
                QVERIFY(leiste->rect().contains(plaetze[i]));
                for (qsizetype j = 0; j < i; ++j)
                    QVERIFY(!plaetze[i].intersects(plaetze[j]));
            }
        }
    }

    void IconsFormatAndShowTheFormatAtTheCaret()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        b.Auswaehlen("MFrage", 0, 5);
        auto *fett = b.Finde<QToolButton>("SymbolMFontFett");
        QVERIFY(!fett->isChecked());
        b.Klick("SymbolMFontFett");
        QVERIFY(fett->isChecked() && b.Finde("MFrage")->hasFocus());
        QCOMPARE(b.Box("MFrage")->textCursor().charFormat().fontWeight(), int(QFont::Bold));
        b.Taste(Qt::Key_End);
        QVERIFY(!fett->isChecked());
        b.Taste(Qt::Key_Home);
        b.Taste(Qt::Key_Right);
        QVERIFY(fett->isChecked());
        b.Klick("SymbolMFonthoch");
        QVERIFY(b.Finde<QToolButton>("SymbolMFonthoch")->isChecked());
        QVERIFY(!b.Finde<QToolButton>("SymbolMFontNormal")->isChecked());
        b.Finde("Antwort(0)")->setFocus();
        QVERIFY(!fett->isChecked());
        QVERIFY(b.Finde<QToolButton>("SymbolMFontNormal")->isChecked());
    }

    // One stop of the Tab key; the arrow keys reach each icon that is enabled, and the text stays the one
    // that is formatted.
    void EveryIconIsReachedByKeyAndActsOnTheText()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        b.Auswaehlen("MFrage", 0, 5);
        b.Taste(Qt::Key_F6);
        QStringList besucht;
        for (QString hier = b.fenster->focusWidget()->objectName(); !besucht.contains(hier);
             hier = b.fenster->focusWidget()->objectName()) {
            besucht << hier;
            b.Taste(Qt::Key_Right);
        }
        QStringList alle;
        for (const QToolButton *knopf : b.Finde("Symbolleiste")->findChildren<QToolButton *>())
            alle << knopf->objectName();
        QCOMPARE(QSet<QString>(besucht.begin(), besucht.end()), QSet<QString>(alle.begin(), alle.end()));
        b.Taste(Qt::Key_Home);
        QCOMPARE(b.fenster->focusWidget(), b.Finde("SymbolMFontFett"));
        b.Taste(Qt::Key_Space);
        QCOMPARE(b.Box("MFrage")->textCursor().charFormat().fontWeight(), int(QFont::Bold));
        b.Taste(Qt::Key_Right);
        b.Taste(Qt::Key_Return);
        QVERIFY(b.Box("MFrage")->textCursor().charFormat().fontItalic());
        b.Taste(Qt::Key_Escape);
        QCOMPARE(b.fenster->focusWidget(), b.Finde("MFrage"));
    }

    // Whatever is enabled: a field without formats leaves the icons of the pictures and what follows.
    void TheTabKeyStopsOnceAtTheIcons()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        b.Finde("MaskThema")->setFocus();
        const QWidget *leiste = b.Finde("Symbolleiste");
        QList<QWidget *> besucht;
        for (QWidget *hier = b.fenster->focusWidget(); !besucht.contains(hier);
             hier = b.fenster->focusWidget()) {
            besucht << hier;
            if (auto *text = qobject_cast<QTextEdit *>(hier))
                text->setTabChangesFocus(true);
            b.Taste(Qt::Key_Tab);
        }
        QCOMPARE(std::ranges::count_if(besucht, [&](QWidget *w) { return leiste->isAncestorOf(w); }), 1);
    }

    void TheWayBackToTheStandardFontLeavesNothingOfAnother()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        b.Auswaehlen("MFrage", 0, 7);
        for (const Qt::Key taste : {Qt::Key_H, Qt::Key_U, Qt::Key_K})
            b.Taste(taste, Qt::ControlModifier);
        b.Taste(Qt::Key_M, Qt::ControlModifier);
        const QTextCharFormat format = b.Box("MFrage")->textCursor().charFormat();
        QCOMPARE(format.fontFamilies().toStringList(), QStringList(u"Liberation Sans"_s));
        QCOMPARE(format.fontPointSize(), 12.0);
        QVERIFY(!format.fontItalic() && !format.fontUnderline() && format.fontWeight() == QFont::Normal);
        QCOMPARE(format.baselineOffset(), 0.0);
    }

    void AColourOfTheMenuIsThatOfTheSelectedText()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        b.Auswaehlen("MFrage", 0, 5);
        auto *farben = b.Finde<QMenu>("Farbmenue");
        farben->actions().at(1)->trigger();
        QVERIFY(b.Box("MFrage")->RichText().contains(u"\\red192\\green28\\blue28"_s));
        farben->actions().at(0)->trigger();
        QVERIFY(!b.Box("MFrage")->RichText().contains(u"\\red192"_s));
    }

    void TheStateIsAlwaysSaid()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        QCOMPARE(b.Text("Speicherstand"), u"gespeichert"_s);
        b.Tippe("MFrage", u"x"_s);
        QCOMPARE(b.Text("Speicherstand"), u"geändert"_s);
        QVERIFY(b.Finde("Speicherstand")->isVisible());
        b.Taste(Qt::Key_I, Qt::ControlModifier);
        QCOMPARE(b.Text("Speicherstand"), u"gespeichert"_s);
        b.Ersetze("MFrage", {});
        b.Klick("Cadd"); // may not be stored
        QCOMPARE(b.Text("Speicherstand"), u"geändert"_s);
    }

    void TheCardsPlaceIsCounted()
    {
        EditorBuehne b({MakeCard(1, 0, 1), MakeCard(5, 2, 1), MakeCard(7, 0, 2)});
        b.Zeigen();
        const auto platz = [&] { return b.Text("Kartenplatz"); };
        QCOMPARE(platz(), u"Karte 1 von 3"_s);
        b.Klick("CVor");
        QCOMPARE(b.Text("MaskFrageNr"), u"7"_s);
        QCOMPARE(platz(), u"Karte 2 von 3"_s);
        b.Ersetze("MaskFrageNr", u"5"_s);
        b.Taste(Qt::Key_Return);
        QCOMPARE(platz(), u"Karte 3 von 3"_s);
        b.Klick("CZurück");
        QCOMPARE(platz(), u"Karte 2 von 3"_s);
        b.Klick("CEOF");
        QCOMPARE(platz(), u"neu, hinter der letzten"_s);
        b.Klick("CZurück");
        QCOMPARE(platz(), u"Karte 3 von 3"_s);
        b.kartei.messages.antworten = {Meldungen::Antwort::Ja};
        b.Finde<QAction>("MLöschen")->trigger();
        b.Klick("CZurück");
        QCOMPARE(platz(), u"Karte 2 von 2"_s);
    }

    void ALargeBoxFitsASmallWindowAndItsPlaceIsSaidInFewerWords()
    {
        QList<CardRecord> karten;
        for (int nummer = 1; nummer <= 1234; ++nummer)
            karten << MakeCard(nummer, 0, nummer);
        EditorBuehne b(karten);
        b.Zeigen();
        QVERIFY(Gemaltes(*b.fenster).contains("Karte 1 von 1234"));
        b.fenster->resize(640, 430);
        QTRY_COMPARE(b.fenster->size(), QSize(640, 430));
        const QStringList gemalt = Gemaltes(*b.fenster);
        const QWidget *platz = b.Finde("Kartenplatz");
        const bool ganz = platz->width() >= platz->fontMetrics().horizontalAdvance(u"Karte 1 von 1234"_s);
        QVERIFY2(gemalt.contains(ganz ? "Karte 1 von 1234" : "1/1234"), qPrintable(gemalt.join('|')));
        QCOMPARE(b.Text("Kartenplatz"), u"Karte 1 von 1234"_s); // for a screen reader
    }

    // The card behind it moves up to its place.
    void ADeletedCardsPlaceIsTakenByTheNext()
    {
        EditorBuehne b({MakeCard(1, 0, 1), MakeCard(5, 0, 2), MakeCard(7, 0, 3)});
        b.Zeigen();
        b.kartei.messages.antworten = {Meldungen::Antwort::Ja};
        b.Finde<QAction>("MLöschen")->trigger();
        QCOMPARE(b.Text("MaskFrageNr"), u"5"_s);
        QCOMPARE(b.Text("Kartenplatz"), u"Karte 1 von 2"_s);
    }

    void MarksCountTheCardsFilesAndOpenTheirDialogs()
    {
        CardRecord card = MakeCard(1, 0, 1);
        card.Picture_6_Name = u"a.wav"_s;
        card.Picture_8_Name = u"b.wav"_s;
        EditorBuehne b({card, MakeCard(2, 0, 2)});
        b.Zeigen();
        QCOMPARE(b.Text("Tonmarke"), u"2 Töne"_s);
        QVERIFY(!b.Finde("Bildmarke")->isVisible());
        {
            const Drehbuch buch(
                {Drehbuch::In(u"Soundbearbeiten"_s, [](QWidget &dialog) { dialog.close(); })});
            b.Klick("Tonmarke");
        }
        b.Klick("CVor");
        QVERIFY(!b.Finde("Tonmarke")->isVisible());
    }

    void EmptyLinesSayThatTheyAreAndRightOnesAreGreen()
    {
        EditorBuehne b({Tickkarte(1)});
        b.Zeigen();
        const auto leer = [&](int i) { return b.Finde(u"Antwort(%1)"_s.arg(i))->accessibleDescription(); };
        QCOMPARE(leer(2), QString());
        QCOMPARE(leer(3), u"leer"_s);
        b.Tippe(u"Antwort(3)"_s, u"x"_s);
        QCOMPARE(leer(3), QString());
        const auto grund = [&](int i) {
            return b.Finde(u"Antwort(%1)"_s.arg(i))->palette().color(QPalette::Base);
        };
        QVERIFY(grund(1) != grund(0));
        b.Klick("Check1(0)");
        QCOMPARE(grund(0), grund(1));
    }

    void TopicsOfTheBoxAreOfferedAndTakenAsAnEdit()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        b.Ersetze("MaskThema", u"neues Thema"_s);
        b.Klick("CVor");
        auto *zeile = b.Finde<QLineEdit>("MaskThema");
        b.Ersetze("MaskThema", u"NEUES"_s);
        QCOMPARE(zeile->completer()->completionCount(), 1);
        QTRY_VERIFY(zeile->completer()->popup()->isVisible());
        QTest::keyClick(zeile->completer()->popup(), Qt::Key_Down);
        QTest::keyClick(zeile->completer()->popup(), Qt::Key_Return);
        QCOMPARE(zeile->text(), u"neues Thema"_s);
        b.Klick("CVor");
        QCOMPARE(b.kartei.Stored()[1].Picture_9_Name, u"neues Thema"_s);
    }

    // The text is seen larger than it is stored, by one factor for all of it.
    void TextsAreSeenLargeAndStoredAsTheyAre()
    {
        CardRecord card = MakeCard(1, 0, 1);
        card.Frage = uR"({\rtf1{\fonttbl{\f0 Liberation Sans;}}\f0\fs20 klein \fs40 gross\par})"_s;
        EditorBuehne b({card, MakeCard(2, 0, 2)});
        b.konfig.schrift.FontSize = 10;
        b.Zeigen();
        b.Taste("MFrage", Qt::Key_End);
        b.Tippe(u"x"_s);
        b.Klick("CVor");
        const QString frage = b.kartei.Stored()[0].Frage;
        QVERIFY2(frage.contains(u"\\fs20 klein "_s) && frage.contains(u"\\fs40 grossx"_s), qPrintable(frage));
    }
};

PAUKFIX_TEST(PFAendernLeisteTest)
#include "PFAendernLeisteTest.moc"
