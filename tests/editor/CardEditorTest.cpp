// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardEditorWerk.h"
#include "TestProgram.h"

#include <QTest>

using namespace paukfix;
using namespace Qt::StringLiterals;

class CardEditorTest : public QObject
{
    Q_OBJECT

private slots:

    void OpensOnTheFirstCardWhenThereIsNoCurrentOne()
    {
        Werk w(Drei());
        QCOMPARE(w.form.kopf.FrageNr, u"1"_s);
        QCOMPARE(w.form.kopf.FachNr, u"0"_s);
        QVERIFY(!w.form.kopf.neu);
        QCOMPARE(w.form.blatt.Frage, u"Frage 1"_s);
        QCOMPARE(w.form.blatt.Thema, u"Thema 1"_s);
    }

    void OpensOnTheCurrentCard()
    {
        Werk w(Drei());
        w.store.Karten().MoveLast();
        w.editor.Load();
        QCOMPARE(w.form.kopf.FrageNr, u"3"_s);
        QCOMPARE(w.form.kopf.FachNr, u"2"_s);
    }

    void OpensOnTheFirstCardFromThePlaceOfADeletedOne()
    {
        Werk w(Drei());
        w.store.Karten().MoveLast();
        w.store.Karten().Delete();
        w.editor.Load();
        QCOMPARE(w.form.kopf.FrageNr, u"1"_s);
        QVERIFY(w.kartei.messages.gezeigt.isEmpty());
    }

    void WalksInTheOrderThatTheRecordsetHas()
    {
        Werk w({MakeCard(1, 3, 1), MakeCard(2, 0, 1), MakeCard(3, 1, 1)});
        w.store.Karten().SetIndex(u"FrageNr");
        w.store.Karten().MoveFirst();
        w.editor.Load();
        QCOMPARE(w.form.kopf.FrageNr, u"1"_s);
        w.editor.CVor();
        QCOMPARE(w.form.kopf.FrageNr, u"2"_s);
        // Neither a jump, nor storing, nor a copy changes it.
        w.editor.Springen(u"1"_s);
        w.Aendern(u"neu"_s);
        QVERIFY(w.editor.StoreCard());
        w.editor.Kopieren();
        QCOMPARE(w.form.kopf.FrageNr, u"4"_s);
        w.editor.CZurück();
        QCOMPARE(w.form.kopf.FrageNr, u"3"_s);
        // The box goes on in its own.
        w.editor.Geschlossen();
        QCOMPARE(w.store.Karten().Index(), u"BoxKey"_s);
    }

    void OpensAnEmptyFileOnTheBlankNewCard()
    {
        Werk w;
        QVERIFY(w.form.kopf.neu);
        QCOMPARE(w.form.kopf.FrageNr, u"1"_s);
        QCOMPARE(w.form.kopf.FachNr, u"0"_s);
        QCOMPARE(w.form.blatt.art, Antwortart::Text);
        QVERIFY(w.kartei.messages.gezeigt.isEmpty());
    }

    void NextCardFollowsTheBoxAndEndsInABlankNewCard()
    {
        Werk w(Drei());
        w.editor.CVor();
        w.editor.CVor();
        QCOMPARE(w.form.kopf.FrageNr, u"3"_s);
        w.editor.CVor();
        QVERIFY(w.form.kopf.neu);
        QCOMPARE(w.form.kopf.FrageNr, u"4"_s);
        const int gezeigt = w.form.gezeigt;
        w.editor.CVor();
        QCOMPARE(w.form.gezeigt, gezeigt);
        w.editor.CZurück();
        QCOMPARE(w.form.kopf.FrageNr, u"3"_s);
        QVERIFY(w.kartei.messages.gezeigt.isEmpty());
    }

    void PreviousCardEndsInABlankNewCardBeforeTheFirst()
    {
        Werk w(Drei());
        w.editor.CZurück();
        QVERIFY(w.form.kopf.neu);
        const int gezeigt = w.form.gezeigt;
        w.editor.CZurück();
        QCOMPARE(w.form.gezeigt, gezeigt);
        w.editor.CVor();
        QCOMPARE(w.form.kopf.FrageNr, u"1"_s);
        QVERIFY(w.kartei.messages.gezeigt.isEmpty());
    }

    void MovingOnStoresAChangedCardFirst()
    {
        Werk w(Drei());
        w.Aendern(u"neu"_s);
        w.editor.CVor();
        QCOMPARE(w.form.kopf.FrageNr, u"2"_s);
        QCOMPARE(w.kartei.Stored()[0].Frage, u"neu"_s);
    }

    void MovingOnStaysOnACardThatMayNotBeStored()
    {
        Werk w(Drei());
        const auto stays = [&](auto &&command) {
            w.kartei.messages.gezeigt.clear();
            w.Aendern({});
            command();
            QCOMPARE(w.kartei.messages.Texte(), QStringList(u"Keine Frage eingegeben"_s));
            QCOMPARE(w.Nummer(), 1);
            QVERIFY(w.editor.cardDirty);
            QVERIFY(!w.form.kopf.neu);
        };
        stays([&] { w.editor.CVor(); });
        stays([&] { w.editor.CZurück(); });
        stays([&] { w.editor.CEOF(); });
        stays([&] { w.editor.Springen(u"3"_s); });
        stays([&] { w.editor.Kopieren(); });
        stays([&] { QVERIFY(!w.editor.StoreIfDirty()); });
        QCOMPARE(w.kartei.Stored()[0].Frage, u"Frage 1"_s);
    }

    void EndButtonGoesBehindTheLastCard()
    {
        Werk w(Drei());
        w.editor.CEOF();
        QVERIFY(w.form.kopf.neu);
        QVERIFY(w.store.Karten().AtEOF());
        w.editor.CEOF();
        QVERIFY(w.form.kopf.neu);
        QVERIFY(w.kartei.messages.gezeigt.isEmpty());
    }

    void RunShowsEveryCardAndStopsAtTheEndWithoutAnError()
    {
        Werk w(Drei());
        QVERIFY(w.editor.Laufschritt(CardEditor::Richtung::Vor));
        QVERIFY(w.editor.Laufschritt(CardEditor::Richtung::Vor));
        QCOMPARE(w.form.kopf.FrageNr, u"3"_s);
        QVERIFY(!w.editor.Laufschritt(CardEditor::Richtung::Vor));
        QVERIFY(w.form.kopf.neu);
        QVERIFY(!w.editor.Laufschritt(CardEditor::Richtung::Vor));
        QVERIFY(w.editor.Laufschritt(CardEditor::Richtung::Zurueck));
        QCOMPARE(w.form.kopf.FrageNr, u"3"_s);
        QVERIFY(w.editor.Laufschritt(CardEditor::Richtung::Zurueck));
        QVERIFY(w.editor.Laufschritt(CardEditor::Richtung::Zurueck));
        QVERIFY(!w.editor.Laufschritt(CardEditor::Richtung::Zurueck));
        QVERIFY(w.form.kopf.neu);
        QVERIFY(w.kartei.messages.gezeigt.isEmpty());
    }

    void JumpFindsTheCardAndGoesOnInBoxOrder()
    {
        Werk w({MakeCard(1, 3, 1), MakeCard(2, 0, 1), MakeCard(3, 1, 1)});
        w.editor.Springen(u" 3 "_s);
        QCOMPARE(w.form.kopf.FrageNr, u"3"_s);
        QCOMPARE(w.store.Karten().Index(), u"BoxKey"_s);
        w.editor.CVor();
        QCOMPARE(w.form.kopf.FrageNr, u"1"_s);
        QVERIFY(w.kartei.messages.gezeigt.isEmpty());
    }

    void JumpBeyondTheLastNumberSaysSoAndTakesTheNearestBelow()
    {
        Werk w(Drei());
        w.editor.Springen(u"99"_s);
        QCOMPARE(w.kartei.messages.Texte(), QStringList(u"Karte nicht gefunden: 99"_s));
        QCOMPARE(w.form.kopf.FrageNr, u"3"_s);
    }

    void JumpIntoAGapTakesTheNextNumberAbove()
    {
        Werk w({MakeCard(1, 0, 1), MakeCard(5, 0, 2), MakeCard(9, 0, 3)});
        w.editor.Springen(u"3"_s);
        QCOMPARE(w.kartei.messages.Texte(), QStringList(u"Karte nicht gefunden: 3"_s));
        QCOMPARE(w.form.kopf.FrageNr, u"5"_s);
    }

    void JumpToWhatIsNoNumberStaysOnTheCard()
    {
        Werk w(Drei());
        w.editor.CVor();
        for (const auto &text : {u"abc"_s, QString(), u"nan"_s}) {
            w.editor.Springen(text);
            QCOMPARE(w.kartei.messages.Texte().constLast(), u"Karte nicht gefunden: "_s + text);
            QCOMPARE(w.form.kopf.FrageNr, u"2"_s);
        }
        QCOMPARE(w.store.Karten().Index(), u"BoxKey"_s);
    }

    void JumpWorksFromTheBlankNewCard()
    {
        Werk w(Drei());
        w.editor.CEOF();
        w.editor.Springen(u"2"_s);
        QCOMPARE(w.form.kopf.FrageNr, u"2"_s);
        QVERIFY(!w.form.kopf.neu);
    }

    void JumpInAnEmptyFileShowsTheBlankNewCard()
    {
        Werk w;
        w.editor.Springen(u"1"_s);
        QVERIFY(w.form.kopf.neu);
        QVERIFY(w.kartei.messages.gezeigt.isEmpty());
    }

    void JumpStoresAChangedCardFirst()
    {
        Werk w(Drei());
        w.Aendern(u"neu"_s);
        w.editor.Springen(u"3"_s);
        QCOMPARE(w.form.kopf.FrageNr, u"3"_s);
        QCOMPARE(w.kartei.Stored()[0].Frage, u"neu"_s);
    }

    void CopyBecomesANewCardAndIsShown()
    {
        CardRecord card = MakeCard(4, 3, 2);
        card.Picture_1_Name = u"bild.bmp"_s;
        card.Antworttyp = 2;
        card.Antwort_ch_1 = true;
        Werk w({card});
        w.editor.Kopieren();
        QCOMPARE(w.kartei.messages.Texte(), QStringList(u"Karte kopiert nach: 5"_s));
        QCOMPARE(w.form.kopf.FrageNr, u"5"_s);
        QCOMPARE(w.form.kopf.FachNr, u"0"_s);
        QVERIFY(!w.form.kopf.neu);
        const QList<CardRecord> cards = w.kartei.Stored();
        QCOMPARE(cards.size(), 2);
        QCOMPARE(cards[0].Frage, card.Frage);
        QCOMPARE(cards[0].Picture_1_Name, card.Picture_1_Name);
        QVERIFY(cards[0].Antwort_ch_1);
        QCOMPARE(cards[0].FachLfdNr, 1.0);
        QCOMPARE(cards[1], card);
    }

    void CopyStoresTheChangedCardFirstAndCopiesTheChange()
    {
        Werk w(Drei());
        w.Aendern(u"neu"_s);
        w.editor.Kopieren();
        const QList<CardRecord> cards = w.kartei.Stored();
        QCOMPARE(cards[0].Frage, u"neu"_s);
        QCOMPARE(cards[2].FrageNr, 4.0);
        QCOMPARE(cards[2].Frage, u"neu"_s);
    }

    void CopyOfAFreshlyTypedCardStoresItTwice()
    {
        Werk w;
        w.form.Tippen(u"f"_s, u"a"_s);
        w.editor.cardDirty = true;
        w.editor.Kopieren();
        QCOMPARE(w.kartei.messages.Texte(), QStringList(u"Karte kopiert nach: 2"_s));
        QCOMPARE(w.form.kopf.FrageNr, u"2"_s);
        QCOMPARE(w.kartei.Stored().size(), 2);
    }

    void BlankCardIsNotCopied()
    {
        Werk w(Drei());
        w.editor.CEOF();
        w.editor.Kopieren();
        QCOMPARE(w.kartei.messages.Texte(), QStringList(u"Keine Frage eingegeben"_s));
        QCOMPARE(w.store.FachInfo[0].Anzahl, qint16(2));
    }

    void NewCardIsNotDeleted()
    {
        Werk w(Drei());
        w.editor.CEOF();
        w.editor.Loeschen();
        QCOMPARE(w.kartei.messages.Texte(), QStringList(u"Eine neue Karte kann nicht gelöscht werden"_s));
    }

    void LastCardOfCompartments0To5IsNotDeletedThoughOthersAreDone()
    {
        Werk w({MakeCard(1, 2, 1), MakeCard(2, 6, 1), MakeCard(3, 6, 2)});
        w.editor.Loeschen();
        w.editor.CVor();
        w.editor.Loeschen();
        QCOMPARE(w.kartei.messages.Texte(), QStringList(2, u"Die letzte Karte kann nicht gelöscht werden"_s));
        QCOMPARE(w.kartei.Stored().size(), 3);
    }

    void DoneCardsAloneMayBeDeletedToTheLast()
    {
        Werk w({MakeCard(1, 6, 1), MakeCard(2, 6, 2)});
        w.kartei.messages.antworten = {Meldungen::Antwort::Ja, Meldungen::Antwort::Ja};
        w.editor.Loeschen();
        QCOMPARE(w.form.kopf.FrageNr, u"2"_s);
        w.editor.Loeschen();
        QVERIFY(w.form.kopf.neu);
        QCOMPARE(w.form.kopf.FrageNr, u"3"_s);
        QCOMPARE(w.store.FachInfo[6].Anzahl, qint16(0));
        QVERIFY(w.kartei.Stored().isEmpty());
    }

    void DeletedCardIsGoneAndTheNextOneIsShown()
    {
        Werk w(Drei());
        w.Aendern(u"verworfen"_s);
        w.kartei.messages.antworten = {Meldungen::Antwort::Ja};
        w.editor.Loeschen();
        QCOMPARE(w.kartei.messages.Texte(), QStringList(u"Diese Karte wirklich löschen"_s));
        QCOMPARE(w.kartei.messages.vorgaben, QList{Meldungen::Antwort::Nein});
        QVERIFY(!w.editor.cardDirty);
        QCOMPARE(w.form.kopf.FrageNr, u"2"_s);
        QCOMPARE(w.store.FachInfo[0].Anzahl, qint16(1));
        QCOMPARE(w.store.HighestCardNumber, qint16(3));
        QCOMPARE(w.kartei.Stored().size(), 2);
    }

    void DeletingTheLastInOrderShowsTheBlankNewCard()
    {
        Werk w(Drei());
        w.editor.CEOF();
        w.editor.CZurück();
        w.kartei.messages.antworten = {Meldungen::Antwort::Ja};
        w.editor.Loeschen();
        QVERIFY(w.form.kopf.neu);
        QCOMPARE(w.form.kopf.FrageNr, u"4"_s);
    }

    void DeclinedDeleteChangesNothing()
    {
        Werk w(Drei());
        w.editor.Loeschen();
        QCOMPARE(w.form.kopf.FrageNr, u"1"_s);
        QCOMPARE(w.store.FachInfo[0].Anzahl, qint16(2));
    }

    void NumbersAreNotReusedAfterADelete()
    {
        QList<CardRecord> cards;
        for (int i = 1; i <= 10; ++i)
            cards << MakeCard(i, 0, i);
        Werk w(cards);
        w.editor.Springen(u"5"_s);
        w.kartei.messages.antworten = {Meldungen::Antwort::Ja};
        w.editor.Loeschen();
        w.editor.CEOF();
        QCOMPARE(w.form.kopf.FrageNr, u"11"_s);
    }

    void LeavingStoresAChangedCard()
    {
        Werk w(Drei());
        w.Aendern(u"neu"_s);
        QVERIFY(w.editor.Verlassen());
        QCOMPARE(w.kartei.Stored()[0].Frage, u"neu"_s);
    }

    void LeavingAnUnstorableCardAsksWithNoAsDefault()
    {
        Werk w(Drei());
        w.Aendern({});
        QVERIFY(!w.editor.Verlassen());
        QCOMPARE(w.kartei.messages.gezeigt.size(), 2);
        QVERIFY(w.kartei.messages.gezeigt[1].frage);
        QCOMPARE(w.kartei.messages.vorgaben, QList{Meldungen::Antwort::Nein});
        QVERIFY(w.editor.cardDirty);
        w.kartei.messages.antworten = {Meldungen::Antwort::Ja};
        QVERIFY(w.editor.Verlassen());
        QCOMPARE(w.kartei.Stored()[0].Frage, u"Frage 1"_s);
    }

    void EndOfTheSessionStoresWhatCanBeStored_data()
    {
        QTest::addColumn<bool>("darfFragen");
        QTest::newRow("may ask") << true;
        QTest::newRow("may not ask") << false;
    }

    void EndOfTheSessionStoresWhatCanBeStored()
    {
        QFETCH(bool, darfFragen);
        Werk w(Drei());
        w.Aendern(u"neu"_s);
        QVERIFY(w.editor.SitzungEndet(darfFragen));
        QVERIFY(w.kartei.messages.gezeigt.isEmpty());
        QVERIFY(!w.editor.cardDirty);
        QCOMPARE(w.kartei.Stored()[0].Frage, u"neu"_s);
    }

    void EndOfTheSessionIsCancelledUnlessTheWriterDiscards()
    {
        Werk w(Drei());
        w.Aendern({});
        QVERIFY(!w.editor.SitzungEndet(true));
        QVERIFY(w.editor.cardDirty);
        w.kartei.messages.antworten = {Meldungen::Antwort::Ja};
        QVERIFY(w.editor.SitzungEndet(true));
        QVERIFY(!w.editor.cardDirty);
        QCOMPARE(w.kartei.messages.vorgaben, QList<Meldungen::Antwort>(2, Meldungen::Antwort::Nein));
        QCOMPARE(w.kartei.Stored()[0].Frage, u"Frage 1"_s);
    }

    void EndOfTheSessionThatMayNotAskIsCancelledForAnUnfinishedCard()
    {
        Werk w(Drei());
        w.Aendern({});
        QVERIFY(!w.editor.SitzungEndet(false));
        QVERIFY(w.kartei.messages.gezeigt.isEmpty());
        QVERIFY(w.editor.cardDirty);
        QCOMPARE(w.kartei.Stored()[0].Frage, u"Frage 1"_s);
    }

    void EndOfTheSessionThatMayNotAskIsCancelledWhereStoringFails()
    {
        Werk w(Drei());
        w.Aendern(u"neu"_s);
        QFile::remove(w.kartei.Path());
        QVERIFY(!w.editor.SitzungEndet(false));
        QVERIFY(w.editor.cardDirty);
        QCOMPARE(w.form.blatt.Frage, u"neu"_s);
    }

    void EndOfTheSessionStoresNothingThatIsNotChanged()
    {
        Werk w(Drei());
        w.form.blatt.Frage = u"nicht getippt"_s;
        QVERIFY(w.editor.SitzungEndet(true));
        QVERIFY(w.editor.SitzungEndet(false));
        w.form.blatt.Frage_Klartext.clear(); // not fit to be stored, and not changed
        QVERIFY(w.editor.SitzungEndet(true));
        QVERIFY(w.editor.SitzungEndet(false));
        QVERIFY(w.kartei.messages.gezeigt.isEmpty());
        QCOMPARE(w.kartei.Stored()[0].Frage, u"Frage 1"_s);
    }

    void FailedCheckDoesNotOutliveTheEditor()
    {
        Werk w(Drei());
        w.Aendern({});
        QVERIFY(!w.editor.StoreCard());
        QCOMPARE(w.store.FehlerStatus, qint16(1));
        w.editor.Geschlossen();
        QCOMPARE(w.store.FehlerStatus, qint16(0));
        w.store.CloseCardFile();
        w.editor.Geschlossen();
        QCOMPARE(w.store.FehlerStatus, qint16(1));
    }
};

PAUKFIX_CORE_TEST(CardEditorTest)
#include "CardEditorTest.moc"
