// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardEditorWerk.h"
#include "TestProgram.h"

#include <QTest>

using namespace paukfix;
using namespace Qt::StringLiterals;

class CardEditorStoreTest : public QObject
{
    Q_OBJECT

private slots:

    void FirstCardOfAFileGetsNumber1AndTheRecordsetStandsOnIt()
    {
        Werk w;
        w.form.Tippen(u"f"_s, u"a"_s);
        w.editor.cardDirty = true;
        QVERIFY(w.editor.StoreCard());
        QCOMPARE(w.store.HighestCardNumber, qint16(1));
        QCOMPARE(w.Nummer(), 1);
        QVERIFY(w.form.kopf.neu);
        QCOMPARE(w.form.kopf.FrageNr, u"2"_s);
        QVERIFY(w.form.blatt.Frage.isEmpty());
        QVERIFY(!w.editor.cardDirty);
        QCOMPARE(w.store.FachInfo[0].Anzahl, qint16(1));
        QCOMPARE(w.store.FachInfo[0].LfdMax, qint16(1));
    }

    void NewCardGoesToTheEndOfCompartment0WithTheNextNumber()
    {
        Werk w({MakeCard(7, 3, 4), MakeCard(4, 0, 9)});
        w.editor.CEOF();
        QCOMPARE(w.form.kopf.FrageNr, u"8"_s);
        w.form.Tippen(u"f"_s, u"a"_s);
        w.editor.cardDirty = true;
        QVERIFY(w.editor.StoreCard());
        QCOMPARE(w.store.FachInfo[0].Anzahl, qint16(2));
        const QList<CardRecord> cards = w.kartei.Stored();
        QCOMPARE(cards.size(), 3);
        QCOMPARE(cards[1].FrageNr, 8.0);
        QCOMPARE(cards[1].FachNr, 0.0);
        QCOMPARE(cards[1].FachLfdNr, 10.0);
        QCOMPARE(cards[1].Frage, u"f"_s);
        QCOMPARE(cards[1].Antwort_1_Klartext, u"a"_s);
        QCOMPARE(cards[1].Antworttyp, 1.0);
    }

    void ExistingCardKeepsNumberAndPlaceInTheBox()
    {
        Werk w(Drei());
        w.editor.CVor();
        w.Aendern(u"neu"_s);
        QVERIFY(w.editor.StoreCard());
        QVERIFY(!w.editor.cardDirty);
        QCOMPARE(w.form.kopf.FrageNr, u"2"_s);
        CardRecord expected = MakeCard(2, 0, 2);
        expected.Frage = expected.Frage_Klartext = u"neu"_s;
        expected.PictureTop = BildlageVorgabe.oben;
        expected.Pictureleft = BildlageVorgabe.links;
        expected.Picturewidth = BildlageVorgabe.breite;
        expected.Pictureheight = BildlageVorgabe.hoehe;
        QCOMPARE(w.kartei.Stored()[1], expected);
    }

    void WithoutAQuestionNothingIsStored()
    {
        Werk w;
        w.form.Tippen({}, u"a"_s);
        QVERIFY(!w.editor.StoreCard());
        QCOMPARE(w.kartei.messages.Texte(), QStringList(u"Keine Frage eingegeben"_s));
        QCOMPARE(w.form.fokus, u"MFrage"_s);
        QCOMPARE(w.editor.validationFailed, qint16(1));
        QCOMPARE(w.store.FehlerStatus, qint16(1));
        QCOMPARE(w.store.HighestCardNumber, qint16(0));
    }

    void WithoutAnAnswerNothingIsStored()
    {
        Werk w;
        w.form.Tippen(u"f"_s, {});
        QVERIFY(!w.editor.StoreCard());
        QCOMPARE(w.kartei.messages.Texte(), QStringList(u"Keine Antwort eingegeben"_s));
        QCOMPARE(w.form.fokus, u"Antwort(0)"_s);
    }

    void MissingQuestionIsSaidBeforeMissingAnswer()
    {
        Werk w;
        QVERIFY(!w.editor.StoreCard());
        QCOMPARE(w.kartei.messages.Texte(), QStringList(u"Keine Frage eingegeben"_s));
    }

    void TextInAHiddenBoxIsAnswerEnough()
    {
        Werk w;
        w.form.Tippen(u"f"_s, {});
        w.form.blatt.Antwort[2] = w.form.blatt.Antwort_Klartext[2] = u"drei"_s;
        QVERIFY(w.editor.StoreCard());
        QCOMPARE(w.kartei.Stored()[0].Antwort_3_Klartext, u"drei"_s);
    }

    void TickedEmptyAnswerIsRefusedAndTheLastOneGetsTheFocus()
    {
        Werk w;
        w.form.Tippen(u"f"_s, u"a"_s);
        w.form.blatt.art = Antwortart::Ankreuzen;
        w.form.blatt.Antwort_ch = {true, true, false, true, false};
        QVERIFY(!w.editor.StoreCard());
        QCOMPARE(w.kartei.messages.Texte(), QStringList(u"Leere Antwort angekreuzt"_s));
        QCOMPARE(w.form.fokus, u"Antwort(3)"_s);
    }

    void TickCardWithoutAnyTickIsStored()
    {
        Werk w;
        w.form.Tippen(u"f"_s, u"a"_s);
        w.form.blatt.art = Antwortart::Ankreuzen;
        QVERIFY(w.editor.StoreCard());
        QCOMPARE(w.kartei.Stored()[0].Antworttyp, 2.0);
    }

    void TicksOfAHiddenTypeAreNoMistake()
    {
        Werk w;
        w.form.Tippen(u"f"_s, u"a"_s);
        w.form.blatt.Antwort_ch[4] = true;
        QVERIFY(w.editor.StoreCard());
        QVERIFY(!w.kartei.Stored()[0].Antwort_ch_5);
    }

    void StoringWithTheTextTypeLeavesTheTicksOfTheRecord()
    {
        CardRecord card = MakeCard(1, 0, 1);
        card.Antworttyp = 2;
        card.Antwort_2 = card.Antwort_2_Klartext = u"zwei"_s;
        card.Antwort_ch_2 = true;
        Werk w({card});
        QCOMPARE(w.form.blatt.art, Antwortart::Ankreuzen);
        QVERIFY(w.form.blatt.Antwort_ch[1]);
        w.form.blatt.art = Antwortart::Text;
        w.form.blatt.Antwort_ch = {};
        QVERIFY(w.editor.StoreCard());
        const CardRecord stored = w.kartei.Stored()[0];
        QCOMPARE(stored.Antworttyp, 1.0);
        QVERIFY(stored.Antwort_ch_2);
    }

    void CardThatSaysNoTypeKeepsNone()
    {
        CardRecord card = MakeCard(1, 0, 1);
        card.Antworttyp = 0;
        Werk w({card});
        QCOMPARE(w.form.blatt.art, Antwortart::Keine);
        QVERIFY(w.editor.StoreCard());
        QCOMPARE(w.kartei.Stored()[0].Antworttyp, 0.0);
    }

    void TicksOfACardWaitWhateverItsType_data()
    {
        QTest::addColumn<double>("typ");
        QTest::newRow("no type") << 0.0;
        QTest::newRow("text") << 1.0;
        QTest::newRow("ticking") << 2.0;
    }

    void TicksOfACardWaitWhateverItsType()
    {
        QFETCH(double, typ);
        CardRecord card = MakeCard(1, 0, 1);
        card.Antworttyp = typ;
        card.Antwort_ch_1 = true;
        Werk w({card});
        QVERIFY(w.form.blatt.Antwort_ch[0]);
        w.Aendern(u"neu"_s);
        QVERIFY(w.editor.StoreCard());
        QVERIFY(w.kartei.Stored()[0].Antwort_ch_1);
    }

    void EmptiedPlainAnswerNameAndTopicKeepTheRecordsValue()
    {
        CardRecord card = MakeCard(1, 0, 1);
        card.Antwort_2 = card.Antwort_2_Klartext = u"zwei"_s;
        card.Picture_1_Name = u"bild.bmp"_s;
        card.Picture_7_Name = u"ton.wav"_s;
        Werk w({card});
        QCOMPARE(w.form.blatt.pictureNames[0], u"bild.bmp"_s);
        QCOMPARE(w.form.blatt.pictureNames[6], u"ton.wav"_s);
        w.form.blatt.Antwort[1] = w.form.blatt.Antwort_Klartext[1] = QString();
        w.form.blatt.pictureNames = {};
        w.form.blatt.Thema.clear();
        QVERIFY(w.editor.StoreCard());
        const CardRecord stored = w.kartei.Stored()[0];
        QCOMPARE(stored.Antwort_2, QString());
        QCOMPARE(stored.Antwort_2_Klartext, u"zwei"_s);
        QCOMPARE(stored.Picture_1_Name, u"bild.bmp"_s);
        QCOMPARE(stored.Picture_7_Name, u"ton.wav"_s);
        QCOMPARE(stored.Picture_9_Name, card.Picture_9_Name);
    }

    void GeometryIsWrittenBackAsItWas()
    {
        CardRecord card = MakeCard(1, 0, 1);
        card.PictureTop = 1237;
        card.Pictureleft = 301;
        card.Pictureheight = 1999;
        card.Picturewidth = 2222;
        Werk w({card});
        for (int i = 0; i < 100; ++i) {
            QVERIFY(w.editor.StoreCard());
            w.editor.AktuelleZeigen();
        }
        QCOMPARE(w.kartei.Stored()[0], card);
    }

    void MeasureBeyond16BitsDoesNotKeepACardFromBeingStored()
    {
        Werk w(Drei());
        w.form.blatt.lage = {40000, -1e9, 3000, 3000};
        QVERIFY(w.editor.StoreCard());
        QCOMPARE(w.kartei.Stored()[0].Pictureleft, 32767.0);
    }

    void CardIsStoredWhereItIsShownWhateverMovedTheRecordset()
    {
        Werk w(Drei());
        w.editor.CVor();
        w.Aendern(u"neu"_s);
        w.store.Karten().MoveLast();
        QVERIFY(w.editor.StoreCard());
        QCOMPARE(w.Nummer(), 2);
        QCOMPARE(w.store.Karten().Index(), u"BoxKey"_s);
        const QList<CardRecord> cards = w.kartei.Stored();
        QCOMPARE(cards[1].Frage, u"neu"_s);
        QCOMPARE(cards[2].Frage, u"Frage 3"_s);
    }

    void CardThatIsGoneCannotBeStored()
    {
        Werk w(Drei());
        w.Aendern(u"neu"_s);
        w.store.Karten().Delete();
        QVERIFY(!w.editor.StoreCard());
        QCOMPARE(
            w.kartei.messages.Texte(),
            QStringList(u"Fehler beim Speichern der Karte: Die Karte Nr. 1 ist nicht mehr in der Kartei."_s));
        QVERIFY(w.editor.cardDirty);
    }

    void TooLongTopicIsRefusedAndTheFormKeepsWhatWasTyped()
    {
        Werk w(Drei());
        w.editor.CEOF();
        w.form.Tippen(u"f"_s, u"a"_s);
        w.form.blatt.Thema = QString(251, u'x');
        w.editor.cardDirty = true;
        QVERIFY(!w.editor.StoreCard());
        QVERIFY(w.kartei.messages.Texte().constFirst().contains(u"250"_s));
        QCOMPARE(w.form.blatt.Frage, u"f"_s);
        QVERIFY(w.form.kopf.neu);
        QVERIFY(w.editor.cardDirty);
        QCOMPARE(w.store.FachInfo[0].Anzahl, qint16(2));
        // The number is gone, the card is not.
        QCOMPARE(w.form.kopf.FrageNr, u"5"_s);
        w.form.blatt.Thema = QString(250, u'x');
        QVERIFY(w.editor.StoreCard());
        QCOMPARE(w.store.FachInfo[0].Anzahl, qint16(3));
        QCOMPARE(w.kartei.Stored()[2].FrageNr, 5.0);
    }

    void FullDiskKeepsTheCardInTheFormUntilThereIsRoomAgain()
    {
        Werk w(Drei());
        w.Aendern(QString(500'000, u'x'));
        {
            const FullDisk full(100'000);
            QVERIFY(!w.editor.StoreCard());
        }
        QCOMPARE(w.kartei.messages.gezeigt.size(), 1);
        QVERIFY(w.editor.cardDirty);
        QCOMPARE(w.form.blatt.Frage.size(), 500'000);
        QVERIFY(w.editor.StoreCard());
        QVERIFY(!w.editor.cardDirty);
        QCOMPARE(w.kartei.Stored()[0].Frage.size(), 500'000);
    }

    void FileThatWasTakenAwayIsSaidAndTheFormKeepsWhatWasTyped()
    {
        Werk w(Drei());
        w.Aendern(u"neu"_s);
        QFile::remove(w.kartei.Path());
        QVERIFY(!w.editor.StoreCard());
        QVERIFY(w.editor.cardDirty);
        QCOMPARE(w.form.blatt.Frage, u"neu"_s);
        QCOMPARE(w.kartei.messages.gezeigt.size(), 1);
    }

    void AfterCardNumber32767NoCardIsAdded()
    {
        Werk w({MakeCard(32767, 0, 1)});
        w.editor.CEOF();
        w.form.Tippen(u"f"_s, u"a"_s);
        w.editor.cardDirty = true;
        QVERIFY(!w.editor.StoreCard());
        QCOMPARE(
            w.kartei.messages.Texte(),
            QStringList("Fehler beim Speichern der Karte: Überlauf: Die Kartennummern sind aufgebraucht, "
                        "32767 ist vergeben."));
        QCOMPARE(w.store.HighestCardNumber, qint16(32767));
        QCOMPARE(w.store.FachInfo[0].Anzahl, qint16(1));
        QCOMPARE(w.form.blatt.Frage, u"f"_s);
    }

    void FullCompartmentCounterLosesANumberButNoCard()
    {
        Werk w({MakeCard(1, 0, 32767)});
        w.editor.CEOF();
        w.form.Tippen(u"f"_s, u"a"_s);
        w.editor.cardDirty = true;
        QVERIFY(!w.editor.StoreCard());
        QVERIFY(w.kartei.messages.Texte().constFirst().contains(u"Überlauf"_s));
        QCOMPARE(w.store.FachInfo[0].LfdMax, qint16(32767));
        QCOMPARE(w.kartei.Stored().size(), 1);
    }

    void CheckThatPassesClearsTheErrorState()
    {
        Werk w(Drei());
        w.Aendern({});
        QVERIFY(!w.editor.StoreCard());
        w.Aendern(u"neu"_s);
        QVERIFY(w.editor.StoreCard());
        QCOMPARE(w.store.FehlerStatus, qint16(0));
        QCOMPARE(w.editor.validationFailed, qint16(0));
    }
};

PAUKFIX_CORE_TEST(CardEditorStoreTest)
#include "CardEditorStoreTest.moc"
