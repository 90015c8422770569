// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "EditorBuehne.h"
#include "TestProgram.h"

#include <QTest>

using namespace paukfix;
using namespace Qt::StringLiterals;

namespace {

// The key left of "Y" on a German keyboard, as the window system delivers it there.
void TasteLinksVonY(QWidget *ziel, Qt::KeyboardModifiers umschalter)
{
    const bool gross = umschalter.testFlag(Qt::ShiftModifier);
    QKeyEvent taste(QEvent::KeyPress, gross ? Qt::Key_Greater : Qt::Key_Less, umschalter, 94, 0, 0,
                    gross ? u">"_s : u"<"_s);
    QApplication::sendEvent(ziel, &taste);
}

} // namespace

class PFAendernBlaetternTest : public QObject
{
    Q_OBJECT

private slots:

    void NextAndPreviousGoThroughTheBoxToBlankNewCards()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        b.Klick("CVor");
        b.Klick("CVor");
        QCOMPARE(b.Text("MaskFrageNr"), u"3"_s);
        QCOMPARE(b.Text("MaskFachNr"), u"2"_s);
        b.Klick("CVor");
        QVERIFY(b.Neu());
        QCOMPARE(b.Text("MaskFrageNr"), u"4"_s);
        QCOMPARE(b.Text("MFrage"), QString());
        b.Klick("CVor");
        QVERIFY(b.Neu());
        b.Klick("CZurück");
        QCOMPARE(b.Text("MaskFrageNr"), u"3"_s);
        for (int i = 0; i < 3; ++i)
            b.Klick("CZurück");
        QVERIFY(b.Neu());
        b.Klick("CZurück");
        QVERIFY(b.Neu());
        QVERIFY(b.Meldungstexte().isEmpty());
    }

    void KeyLeftOfYGoesBackAndWithShiftOn_data()
    {
        QTest::addColumn<QString>("feld");
        for (const char *feld : {"MFrage", "Antwort(0)", "MaskThema", "MaskFrageNr", "Cadd", "Antwort_T"})
            QTest::newRow(feld) << QString::fromUtf8(feld);
    }

    void KeyLeftOfYGoesBackAndWithShiftOn()
    {
        QFETCH(QString, feld);
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        QWidget *ziel = b.Finde(qPrintable(feld));
        ziel->setFocus();
        TasteLinksVonY(ziel, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(b.Text("MaskFrageNr"), u"2"_s);
        QCOMPARE(b.Text("MFrage"), u"Frage 2"_s);
        TasteLinksVonY(ziel, Qt::ControlModifier);
        QCOMPARE(b.Text("MaskFrageNr"), u"1"_s);
    }

    // As on a British keyboard, where "\\" and "|" are there.
    void KeyLeftOfYIsKnownByItsPlaceWhateverItsSigns()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        const auto taste = [&](Qt::Key key, Qt::KeyboardModifiers umschalter) {
            QKeyEvent druck(QEvent::KeyPress, key, umschalter, 94, 0, 0);
            QApplication::sendEvent(b.Finde("MFrage"), &druck);
        };
        taste(Qt::Key_Bar, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(b.Text("MaskFrageNr"), u"2"_s);
        taste(Qt::Key_Backslash, Qt::ControlModifier);
        QCOMPARE(b.Text("MaskFrageNr"), u"1"_s);
        QCOMPARE(b.Text("MFrage"), u"Frage 1"_s);
    }

    void SignsGoBackAndOnWhereTheyAreOnOtherKeys()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        constexpr quint32 Punkt = 60;
        constexpr quint32 Komma = 59;
        const auto taste = [&](Qt::Key key, quint32 ort) {
            QKeyEvent druck(QEvent::KeyPress, key, Qt::ControlModifier | Qt::ShiftModifier, ort, 0, 0);
            QApplication::sendEvent(b.Finde("MFrage"), &druck);
        };
        taste(Qt::Key_Greater, Punkt);
        QCOMPARE(b.Text("MaskFrageNr"), u"2"_s);
        taste(Qt::Key_Less, Komma);
        QCOMPARE(b.Text("MaskFrageNr"), u"1"_s);
        // Without Ctrl they are text.
        b.Tippe("MFrage", u"<>"_s);
        QCOMPARE(b.Text("MFrage"), u"<>Frage 1"_s);
    }

    void ShortcutsWithoutAPlaceMeanTheGermanKey()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        b.Taste(Qt::Key_Less, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(b.Text("MaskFrageNr"), u"2"_s);
        b.Taste(Qt::Key_Less, Qt::ControlModifier);
        QCOMPARE(b.Text("MaskFrageNr"), u"1"_s);
        b.Taste(Qt::Key_Greater, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(b.Text("MaskFrageNr"), u"2"_s);
    }

    void EndButtonOpensABlankCardBehindTheLast()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        b.Klick("CEOF");
        QVERIFY(b.Neu());
        QCOMPARE(b.Text("MaskFrageNr"), u"4"_s);
        b.Klick("CZurück");
        QCOMPARE(b.Text("MaskFrageNr"), u"3"_s);
    }

    // --- Jump, copy, delete

    void TypedNumberAndEnterJumpAndNextGoesOnInTheBox()
    {
        EditorBuehne b({MakeCard(1, 3, 1), MakeCard(2, 0, 1), MakeCard(3, 1, 1)});
        b.Zeigen();
        b.Ersetze("MaskFrageNr", u"3"_s);
        b.Taste(Qt::Key_Return);
        QCOMPARE(b.Text("MFrage"), u"Frage 3"_s);
        b.Klick("CVor");
        QCOMPARE(b.Text("MFrage"), u"Frage 1"_s);
    }

    void JumpBeyondTheLastSaysSoAndShowsTheNearestBelow()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        b.Ersetze("MaskFrageNr", u"77"_s);
        b.Taste(Qt::Key_Enter);
        QCOMPARE(b.Meldungstexte(), QStringList(u"Karte nicht gefunden: 77"_s));
        QCOMPARE(b.Text("MaskFrageNr"), u"3"_s);
    }

    void JumpFromATypedNewCardStoresItFirst()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        b.Klick("CEOF");
        b.Tippe("MFrage", u"f"_s);
        b.Tippe("Antwort(0)", u"a"_s);
        b.Ersetze("MaskFrageNr", u"2"_s);
        b.Taste(Qt::Key_Return);
        QCOMPARE(b.Text("MFrage"), u"Frage 2"_s);
        QCOMPARE(b.kartei.Stored().size(), 4);
    }

    void CopyIsAddedAndShown()
    {
        EditorBuehne b({Tickkarte(1)});
        b.Zeigen();
        b.Menue("MExtras", "MKopieren");
        QCOMPARE(b.Meldungstexte(), QStringList(u"Karte kopiert nach: 2"_s));
        QCOMPARE(b.Text("MaskFrageNr"), u"2"_s);
        QVERIFY(!b.Neu());
        QCOMPARE(b.Text("Antwort(4)"), u"fünf"_s);
        const QList<CardRecord> cards = b.kartei.Stored();
        QCOMPARE(cards.size(), 2);
        QVERIFY(cards[1].Antwort_ch_2 && cards[1].Antwort_ch_5 && !cards[1].Antwort_ch_1);
    }

    // Storing the rest of the card, and copying it, must not cost what the form cannot show.
    void TextThatIsTooLongForTheFormStaysAsItIs()
    {
        CardRecord lang = MakeCard(1, 0, 1);
        lang.Frage = u"{\\rtf1\\fs3276 "_s + u"\\line "_s.repeated(5'000) + u'}';
        EditorBuehne b({lang});
        b.Zeigen();
        QVERIFY(b.Text("MFrage").endsWith(u"[…]"_s));
        QCOMPARE(
            b.Finde("MFrage")->toolTip(),
            QString("Dieser Text ist zu lang, um ihn ganz zu zeigen. Er bleibt in der Kartei, wie er ist."));
        b.Ersetze("MFrage", u"weg"_s);
        b.Auswaehlen("MFrage", 0, 2);
        b.Taste(Qt::Key_F, Qt::ControlModifier);
        b.Ersetze("MaskThema", u"anderes"_s);
        b.Ersetze("Antwort(0)", u"kurz"_s);
        b.Klick("Cadd");
        b.Menue("MExtras", "MKopieren");
        QCOMPARE(b.Meldungstexte(), QStringList(u"Karte kopiert nach: 2"_s));
        b.Klick("CEOF");
        b.Tippe("MFrage", u"frei"_s);
        QCOMPARE(b.Text("MFrage"), u"frei"_s);
        const QList<CardRecord> cards = b.kartei.Stored();
        QCOMPARE(cards.size(), 2);
        for (const CardRecord &card : cards) {
            QCOMPARE(card.Frage, lang.Frage);
            QCOMPARE(card.Frage_Klartext, lang.Frage_Klartext);
            QCOMPARE(card.Picture_9_Name, u"anderes"_s);
            QCOMPARE(card.Antwort_1_Klartext, u"kurz"_s);
        }
    }

    void DeleteAsksAndShowsTheNextCard()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        b.kartei.messages.antworten = {Meldungen::Antwort::Nein, Meldungen::Antwort::Ja};
        b.Menue("MExtras", "MLöschen");
        QCOMPARE(b.Text("MaskFrageNr"), u"1"_s);
        b.Menue("MExtras", "MLöschen");
        QCOMPARE(b.Meldungstexte(), QStringList(2, u"Diese Karte wirklich löschen"_s));
        QCOMPARE(b.Text("MaskFrageNr"), u"2"_s);
        QCOMPARE(b.kartei.store.FachInfo[0].Anzahl, qint16(1));
        QCOMPARE(b.kartei.Stored().size(), 2);
    }

    void DeleteIsRefusedOnANewCardAndOnTheLastOne()
    {
        EditorBuehne b({MakeCard(1, 2, 1), MakeCard(2, 6, 1)});
        b.Zeigen();
        b.Menue("MExtras", "MLöschen");
        b.Klick("CEOF");
        b.Menue("MExtras", "MLöschen");
        QCOMPARE(b.Meldungstexte(), (QStringList{u"Die letzte Karte kann nicht gelöscht werden"_s,
                                                 u"Eine neue Karte kann nicht gelöscht werden"_s}));
    }

    void NumbersGoOnAfterADelete()
    {
        QList<CardRecord> cards;
        for (int i = 1; i <= 10; ++i)
            cards << MakeCard(i, 0, i);
        EditorBuehne b(cards);
        b.Zeigen();
        b.Ersetze("MaskFrageNr", u"5"_s);
        b.Taste(Qt::Key_Return);
        b.kartei.messages.antworten = {Meldungen::Antwort::Ja};
        b.Menue("MExtras", "MLöschen");
        QCOMPARE(b.Text("MaskFrageNr"), u"6"_s);
        b.Klick("CEOF");
        QCOMPARE(b.Text("MaskFrageNr"), u"11"_s);
        b.Tippe("MFrage", u"f"_s);
        b.Tippe("Antwort(0)", u"a"_s);
        b.Klick("Cadd");
        const QList<CardRecord> stored = b.kartei.Stored();
        QCOMPARE(stored.size(), 10);
        QCOMPARE(stored.last().FrageNr, 11.0);
    }
};

PAUKFIX_TEST(PFAendernBlaetternTest)
#include "PFAendernBlaetternTest.moc"
