// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "EditorBuehne.h"
#include "TestProgram.h"

#include <QCheckBox>
#include <QTest>

using namespace paukfix;
using namespace Qt::StringLiterals;

namespace {

// A road that leads away from the shown card.
using Weg = std::function<void(EditorBuehne &)>;

} // namespace

Q_DECLARE_METATYPE(Weg)

class PFAendernWegeTest : public QObject
{
    Q_OBJECT

private:
    static void AlleWege()
    {
        QTest::addColumn<Weg>("weg");
        QTest::addColumn<bool>("schliesst");
        for (const char *knopf : {"CVor", "CZurück", "CVVor", "CZZurück", "CEOF"})
            QTest::newRow(knopf) << Weg([knopf](EditorBuehne &b) { b.Klick(knopf); }) << false;
        QTest::newRow("key forward") << Weg([](EditorBuehne &b) {
            b.Taste(Qt::Key_Less, Qt::ControlModifier | Qt::ShiftModifier);
        }) << false;
        QTest::newRow("key back") << Weg([](EditorBuehne &b) { b.Taste(Qt::Key_Less, Qt::ControlModifier); })
                                  << false;
        QTest::newRow("jump") << Weg([](EditorBuehne &b) {
            b.Ersetze("MaskFrageNr", u"3"_s);
            b.Taste(Qt::Key_Return);
        }) << false;
        QTest::newRow("copy") << Weg([](EditorBuehne &b) { b.Menue("MExtras", "MKopieren"); }) << false;
        QTest::newRow("Cback") << Weg([](EditorBuehne &b) { b.Klick("Cback"); }) << true;
        QTest::newRow("window") << Weg([](EditorBuehne &b) { b.fenster->close(); }) << true;
    }

private slots:

    void EveryRoadStoresAChangedCardFirst_data() { AlleWege(); }

    void EveryRoadStoresAChangedCardFirst()
    {
        QFETCH(Weg, weg);
        QFETCH(bool, schliesst);
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        b.Klick("CVor");
        b.Ersetze("MFrage", u"neu"_s);
        weg(b);
        QCOMPARE(b.fenster->isVisible(), !schliesst);
        const QList<CardRecord> cards = b.kartei.Stored();
        QCOMPARE(cards[0], MakeCard(1, 0, 1));
        QCOMPARE(cards[1].FrageNr, 2.0);
        QCOMPARE(cards[1].Frage_Klartext, u"neu"_s);
        QCOMPARE(cards.last(), MakeCard(3, 2, 1));
    }

    void EveryRoadStaysOnACardThatMayNotBeStored_data() { AlleWege(); }

    void EveryRoadStaysOnACardThatMayNotBeStored()
    {
        QFETCH(Weg, weg);
        QFETCH(bool, schliesst);
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        b.Klick("CVor");
        b.Ersetze("MFrage", {});
        b.Tippe("Antwort(0)", u"neue "_s);
        weg(b);
        QVERIFY(b.fenster->isVisible());
        const QStringList texte = b.Meldungstexte();
        QCOMPARE(texte.size(), schliesst ? 2 : 1); // who would close is asked whether to discard
        QCOMPARE(texte[0], u"Keine Frage eingegeben"_s);
        QVERIFY(b.Finde("MFrage")->hasFocus());
        QCOMPARE(b.Text("Antwort(0)"), u"neue Antwort 2"_s);
        QCOMPARE(int(b.kartei.store.Felder().FrageNr.Integer()), 2);
        QVERIFY(!b.Neu());
        QCOMPARE(b.kartei.Stored(), DreiKarten());
    }

    void NextOnTheBlankCardBehindTheLastDoesNothing()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        b.Klick("CEOF");
        b.Tippe("MFrage", u"f"_s);
        b.Tippe("Antwort(0)", u"a"_s);
        b.Klick("CVor");
        b.Taste(Qt::Key_Less, Qt::ControlModifier | Qt::ShiftModifier);
        QVERIFY(b.Neu());
        QCOMPARE(b.Text("MFrage"), u"f"_s);
        QCOMPARE(b.Text("Antwort(0)"), u"a"_s);
        QCOMPARE(b.kartei.store.HighestCardNumber, qint16(3));
    }

    void BackFromATypedNewCardStoresItAndShowsTheLast()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        b.Klick("CEOF");
        b.Tippe("MFrage", u"f"_s);
        b.Klick("CZurück");
        QCOMPARE(b.Meldungstexte(), QStringList(u"Keine Antwort eingegeben"_s));
        QVERIFY(b.Neu());
        QCOMPARE(b.Text("MFrage"), u"f"_s);
        b.Tippe("Antwort(0)", u"a"_s);
        b.Klick("CZurück");
        QVERIFY(!b.Neu());
        QCOMPARE(b.Text("MaskFrageNr"), u"3"_s);
        // It is the last of its compartment, and so before the one that is shown.
        b.Klick("CZurück");
        QCOMPARE(b.Text("MaskFrageNr"), u"4"_s);
        QCOMPARE(b.Text("MFrage"), u"f"_s);
        QCOMPARE(b.kartei.Stored().size(), 4);
    }

    void NothingOfOneCardLeaksIntoTheNext()
    {
        CardRecord voll = Tickkarte(1);
        voll.Picture_6_Name = u"a.wav"_s;
        voll.Picture_8_Name = u"b.wav"_s;
        CardRecord leer = MakeCard(2, 0, 2);
        leer.Picture_9_Name = QString();
        EditorBuehne b({voll, leer});
        b.Zeigen();
        b.Klick("CVor");
        b.Klick("Antwort_K"); // so that ticks would be written
        b.Klick("CEOF");
        b.Tippe("MFrage", u"f"_s);
        b.Tippe("Antwort(0)", u"a"_s);
        b.Klick("Antwort_K");
        b.Klick("Cadd");
        QVERIFY(b.Meldungstexte().isEmpty());
        const QList<CardRecord> cards = b.kartei.Stored();
        QCOMPARE(cards.size(), 3);
        for (const CardRecord &card : {cards[1], cards[2]}) {
            QCOMPARE(card.Antworttyp, 2.0);
            QVERIFY(!card.Antwort_ch_1 && !card.Antwort_ch_2 && !card.Antwort_ch_3 && !card.Antwort_ch_4 &&
                    !card.Antwort_ch_5);
            QCOMPARE(card.Antwort_2_Klartext, QString());
            QCOMPARE(card.Picture_6_Name, QString());
            QCOMPARE(card.Picture_8_Name, QString());
            QCOMPARE(card.Picture_9_Name, QString());
        }
    }

    void EmptiedTopicKeepsTheOneOfTheRecord()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        b.Ersetze("MFrage", u"neu"_s);
        b.Ersetze("MaskThema", {});
        b.Klick("Cadd");
        const CardRecord card = b.kartei.Stored()[0];
        QCOMPARE(card.Frage_Klartext, u"neu"_s);
        QCOMPARE(card.Picture_9_Name, u"Thema 1"_s);
    }

    void TicksSetByMouseAreShownAgainAndCanBeTakenAway()
    {
        CardRecord card = Tickkarte(1);
        card.Antworttyp = 1;
        card.Antwort_ch_2 = card.Antwort_ch_5 = false;
        EditorBuehne b({card, MakeCard(2, 0, 2)});
        b.Zeigen();
        b.Klick("Antwort_K");
        b.Klick("Check1(1)");
        b.Klick("Check1(4)");
        b.Klick("CVor");
        b.Klick("CZurück");
        for (int i = 0; i < 5; ++i)
            QCOMPARE(b.Finde<QCheckBox>(qPrintable(u"Check1(%1)"_s.arg(i)))->isChecked(), i == 1 || i == 4);
        b.Klick("Check1(4)");
        b.Klick("CVor");
        const CardRecord stored = b.kartei.Stored()[0];
        QCOMPARE(stored.Antworttyp, 2.0);
        QVERIFY(!stored.Antwort_ch_1 && stored.Antwort_ch_2 && !stored.Antwort_ch_3 && !stored.Antwort_ch_4 &&
                !stored.Antwort_ch_5);
    }

    void KeyboardStaysInTheAnswersWhenTheNextCardHasJustOne_data()
    {
        QTest::addColumn<QString>("feld");
        for (const char *feld : {"Antwort(3)", "Check1(0)", "Check1(4)"})
            QTest::newRow(feld) << QString::fromUtf8(feld);
    }

    void KeyboardStaysInTheAnswersWhenTheNextCardHasJustOne()
    {
        QFETCH(QString, feld);
        EditorBuehne b({Tickkarte(1), MakeCard(2, 0, 2)});
        b.Zeigen();
        b.Finde(qPrintable(feld))->setFocus();
        b.Taste(Qt::Key_Less, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(b.Text("MaskFrageNr"), u"2"_s);
        QCOMPARE(b.fenster->focusWidget()->objectName(), u"Antwort(0)"_s);
    }
};

PAUKFIX_TEST(PFAendernWegeTest)
#include "PFAendernWegeTest.moc"
