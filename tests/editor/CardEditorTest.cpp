// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardEditor.h"

#include "EditorTestSupport.h"

#include <QTest>

namespace {

// A form that keeps what it is given, plain text as rich text.
class TestFormular final : public Kartenformular
{
public:
    Kartenblatt Inhalt() const override { return blatt; }

    void Zeigen(const Kartenblatt &neu, const Kartenkopf &neuerKopf) override
    {
        blatt = neu;
        blatt.Frage_Klartext = blatt.Frage;
        blatt.Antwort_Klartext = blatt.Antwort;
        kopf = neuerKopf;
        ++gezeigt;
    }

    void KopfZeigen(const Kartenkopf &neuerKopf) override { kopf = neuerKopf; }

    void FokusAufFrage() override { fokus = QStringLiteral("MFrage"); }

    void FokusAufAntwort(std::size_t box) override { fokus = QStringLiteral("Antwort(%1)").arg(box); }

    void Tippen(const QString &frage, const QString &antwort)
    {
        blatt.Frage = blatt.Frage_Klartext = frage;
        blatt.Antwort[0] = blatt.Antwort_Klartext[0] = antwort;
    }

    Kartenblatt blatt;
    Kartenkopf kopf;
    QString fokus;
    int gezeigt = 0;
};

struct Werk
{
    explicit Werk(const QList<CardRecord> &cards = {}) : kartei(cards) { editor.Load(); }

    void Aendern(const QString &frage)
    {
        form.blatt.Frage = form.blatt.Frage_Klartext = frage;
        editor.cardDirty = true;
    }

    int Nummer() { return kartei.store.Felder().FrageNr.Integer(); }

    TestKartei kartei;
    CardStore &store = kartei.store;
    TestFormular form;
    CardEditor editor{store, kartei.messages, form};
};

QList<CardRecord> Drei()
{
    return {MakeCard(1, 0, 1), MakeCard(2, 0, 2), MakeCard(3, 2, 1)};
}

} // namespace

class CardEditorTest : public QObject
{
    Q_OBJECT

private slots:

    void OpensOnTheFirstCardWhenThereIsNoCurrentOne()
    {
        Werk w(Drei());
        QCOMPARE(w.form.kopf.FrageNr, QStringLiteral("1"));
        QCOMPARE(w.form.kopf.FachNr, QStringLiteral("0"));
        QVERIFY(!w.form.kopf.neu);
        QCOMPARE(w.form.blatt.Frage, QStringLiteral("Frage 1"));
        QCOMPARE(w.form.blatt.Thema, QStringLiteral("Thema 1"));
    }

    void OpensOnTheCurrentCard()
    {
        Werk w(Drei());
        w.store.Karten().MoveLast();
        w.editor.Load();
        QCOMPARE(w.form.kopf.FrageNr, QStringLiteral("3"));
        QCOMPARE(w.form.kopf.FachNr, QStringLiteral("2"));
    }

    void OpensOnTheFirstCardFromThePlaceOfADeletedOne()
    {
        Werk w(Drei());
        w.store.Karten().MoveLast();
        w.store.Karten().Delete();
        w.editor.Load();
        QCOMPARE(w.form.kopf.FrageNr, QStringLiteral("1"));
        QVERIFY(w.kartei.messages.gezeigt.isEmpty());
    }

    void OpensInBoxOrderAfterAnotherIndex()
    {
        Werk w({MakeCard(1, 3, 1), MakeCard(2, 0, 1)});
        w.store.Karten().SetIndex(u"FrageNr");
        w.store.Karten().MoveLast();
        w.editor.Load();
        QCOMPARE(w.form.kopf.FrageNr, QStringLiteral("2"));
        w.editor.CVor();
        QCOMPARE(w.form.kopf.FrageNr, QStringLiteral("1"));
    }

    void OpensAnEmptyFileOnTheBlankNewCard()
    {
        Werk w;
        QVERIFY(w.form.kopf.neu);
        QCOMPARE(w.form.kopf.FrageNr, QStringLiteral("1"));
        QCOMPARE(w.form.kopf.FachNr, QStringLiteral("0"));
        QCOMPARE(w.form.blatt.art, Antwortart::Text);
        QVERIFY(w.kartei.messages.gezeigt.isEmpty());
    }

    void FirstCardOfAFileGetsNumber1AndTheRecordsetStandsOnIt()
    {
        Werk w;
        w.form.Tippen(QStringLiteral("f"), QStringLiteral("a"));
        w.editor.cardDirty = true;
        QVERIFY(w.editor.StoreCard());
        QCOMPARE(w.store.HighestCardNumber, qint16(1));
        QCOMPARE(w.Nummer(), 1);
        QVERIFY(w.form.kopf.neu);
        QCOMPARE(w.form.kopf.FrageNr, QStringLiteral("2"));
        QVERIFY(w.form.blatt.Frage.isEmpty());
        QVERIFY(!w.editor.cardDirty);
        QCOMPARE(w.store.FachInfo[0].Anzahl, qint16(1));
        QCOMPARE(w.store.FachInfo[0].LfdMax, qint16(1));
    }

    void NewCardGoesToTheEndOfCompartment0WithTheNextNumber()
    {
        Werk w({MakeCard(7, 3, 4), MakeCard(4, 0, 9)});
        w.editor.CEOF();
        QCOMPARE(w.form.kopf.FrageNr, QStringLiteral("8"));
        w.form.Tippen(QStringLiteral("f"), QStringLiteral("a"));
        w.editor.cardDirty = true;
        QVERIFY(w.editor.StoreCard());
        QCOMPARE(w.store.FachInfo[0].Anzahl, qint16(2));
        const QList<CardRecord> cards = w.kartei.Stored();
        QCOMPARE(cards.size(), 3);
        QCOMPARE(cards[1].FrageNr, 8.0);
        QCOMPARE(cards[1].FachNr, 0.0);
        QCOMPARE(cards[1].FachLfdNr, 10.0);
        QCOMPARE(cards[1].Frage, QStringLiteral("f"));
        QCOMPARE(cards[1].Antwort_1_Klartext, QStringLiteral("a"));
        QCOMPARE(cards[1].Antworttyp, 1.0);
    }

    void ExistingCardKeepsNumberAndPlaceInTheBox()
    {
        Werk w(Drei());
        w.editor.CVor();
        w.Aendern(QStringLiteral("neu"));
        QVERIFY(w.editor.StoreCard());
        QVERIFY(!w.editor.cardDirty);
        QCOMPARE(w.form.kopf.FrageNr, QStringLiteral("2"));
        CardRecord expected = MakeCard(2, 0, 2);
        expected.Frage = expected.Frage_Klartext = QStringLiteral("neu");
        expected.PictureTop = BildlageVorgabe.oben;
        expected.Pictureleft = BildlageVorgabe.links;
        expected.Picturewidth = BildlageVorgabe.breite;
        expected.Pictureheight = BildlageVorgabe.hoehe;
        QCOMPARE(w.kartei.Stored()[1], expected);
    }

    void WithoutAQuestionNothingIsStored()
    {
        Werk w;
        w.form.Tippen({}, QStringLiteral("a"));
        QVERIFY(!w.editor.StoreCard());
        QCOMPARE(w.kartei.messages.Texte(), QStringList(QStringLiteral("Keine Frage eingegeben")));
        QCOMPARE(w.form.fokus, QStringLiteral("MFrage"));
        QCOMPARE(w.editor.validationFailed, qint16(1));
        QCOMPARE(w.store.FehlerStatus, qint16(1));
        QCOMPARE(w.store.HighestCardNumber, qint16(0));
    }

    void WithoutAnAnswerNothingIsStored()
    {
        Werk w;
        w.form.Tippen(QStringLiteral("f"), {});
        QVERIFY(!w.editor.StoreCard());
        QCOMPARE(w.kartei.messages.Texte(), QStringList(QStringLiteral("Keine Antwort eingegeben")));
        QCOMPARE(w.form.fokus, QStringLiteral("Antwort(0)"));
    }

    void MissingQuestionIsSaidBeforeMissingAnswer()
    {
        Werk w;
        QVERIFY(!w.editor.StoreCard());
        QCOMPARE(w.kartei.messages.Texte(), QStringList(QStringLiteral("Keine Frage eingegeben")));
    }

    void TextInAHiddenBoxIsAnswerEnough()
    {
        Werk w;
        w.form.Tippen(QStringLiteral("f"), {});
        w.form.blatt.Antwort[2] = w.form.blatt.Antwort_Klartext[2] = QStringLiteral("drei");
        QVERIFY(w.editor.StoreCard());
        QCOMPARE(w.kartei.Stored()[0].Antwort_3_Klartext, QStringLiteral("drei"));
    }

    void TickedEmptyAnswerIsRefusedAndTheLastOneGetsTheFocus()
    {
        Werk w;
        w.form.Tippen(QStringLiteral("f"), QStringLiteral("a"));
        w.form.blatt.art = Antwortart::Ankreuzen;
        w.form.blatt.Antwort_ch = {true, true, false, true, false};
        QVERIFY(!w.editor.StoreCard());
        QCOMPARE(w.kartei.messages.Texte(), QStringList(QStringLiteral("Leere Antwort angekreuzt")));
        QCOMPARE(w.form.fokus, QStringLiteral("Antwort(3)"));
    }

    void TickCardWithoutAnyTickIsStored()
    {
        Werk w;
        w.form.Tippen(QStringLiteral("f"), QStringLiteral("a"));
        w.form.blatt.art = Antwortart::Ankreuzen;
        QVERIFY(w.editor.StoreCard());
        QCOMPARE(w.kartei.Stored()[0].Antworttyp, 2.0);
    }

    void TicksOfAHiddenTypeAreNoMistake()
    {
        Werk w;
        w.form.Tippen(QStringLiteral("f"), QStringLiteral("a"));
        w.form.blatt.Antwort_ch[4] = true;
        QVERIFY(w.editor.StoreCard());
        QVERIFY(!w.kartei.Stored()[0].Antwort_ch_5);
    }

    void StoringWithTheTextTypeLeavesTheTicksOfTheRecord()
    {
        CardRecord card = MakeCard(1, 0, 1);
        card.Antworttyp = 2;
        card.Antwort_2 = card.Antwort_2_Klartext = QStringLiteral("zwei");
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

    void TicksAreReadForACardToBeTickedOnly_data()
    {
        QTest::addColumn<double>("typ");
        QTest::addColumn<bool>("gelesen");
        QTest::newRow("no type") << 0.0 << false;
        QTest::newRow("text") << 1.0 << false;
        QTest::newRow("ticking") << 2.0 << true;
    }

    void TicksAreReadForACardToBeTickedOnly()
    {
        QFETCH(double, typ);
        QFETCH(bool, gelesen);
        CardRecord card = MakeCard(1, 0, 1);
        card.Antworttyp = typ;
        card.Antwort_ch_1 = true;
        Werk w({card});
        QCOMPARE(w.form.blatt.Antwort_ch[0], gelesen);
        w.Aendern(QStringLiteral("neu"));
        QVERIFY(w.editor.StoreCard());
        QVERIFY(w.kartei.Stored()[0].Antwort_ch_1);
    }

    void EmptiedPlainAnswerNameAndTopicKeepTheRecordsValue()
    {
        CardRecord card = MakeCard(1, 0, 1);
        card.Antwort_2 = card.Antwort_2_Klartext = QStringLiteral("zwei");
        card.Picture_1_Name = QStringLiteral("bild.bmp");
        card.Picture_7_Name = QStringLiteral("ton.wav");
        Werk w({card});
        QCOMPARE(w.form.blatt.pictureNames[0], QStringLiteral("bild.bmp"));
        QCOMPARE(w.form.blatt.pictureNames[6], QStringLiteral("ton.wav"));
        w.form.blatt.Antwort[1] = w.form.blatt.Antwort_Klartext[1] = QString();
        w.form.blatt.pictureNames = {};
        w.form.blatt.Thema.clear();
        QVERIFY(w.editor.StoreCard());
        const CardRecord stored = w.kartei.Stored()[0];
        QCOMPARE(stored.Antwort_2, QString());
        QCOMPARE(stored.Antwort_2_Klartext, QStringLiteral("zwei"));
        QCOMPARE(stored.Picture_1_Name, QStringLiteral("bild.bmp"));
        QCOMPARE(stored.Picture_7_Name, QStringLiteral("ton.wav"));
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

    void NextCardFollowsTheBoxAndEndsInABlankNewCard()
    {
        Werk w(Drei());
        w.editor.CVor();
        w.editor.CVor();
        QCOMPARE(w.form.kopf.FrageNr, QStringLiteral("3"));
        w.editor.CVor();
        QVERIFY(w.form.kopf.neu);
        QCOMPARE(w.form.kopf.FrageNr, QStringLiteral("4"));
        const int gezeigt = w.form.gezeigt;
        w.editor.CVor();
        QCOMPARE(w.form.gezeigt, gezeigt);
        w.editor.CZurück();
        QCOMPARE(w.form.kopf.FrageNr, QStringLiteral("3"));
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
        QCOMPARE(w.form.kopf.FrageNr, QStringLiteral("1"));
        QVERIFY(w.kartei.messages.gezeigt.isEmpty());
    }

    void MovingOnStoresAChangedCardFirst()
    {
        Werk w(Drei());
        w.Aendern(QStringLiteral("neu"));
        w.editor.CVor();
        QCOMPARE(w.form.kopf.FrageNr, QStringLiteral("2"));
        QCOMPARE(w.kartei.Stored()[0].Frage, QStringLiteral("neu"));
    }

    void MovingOnStaysOnACardThatMayNotBeStored()
    {
        Werk w(Drei());
        const auto stays = [&](auto &&command) {
            w.kartei.messages.gezeigt.clear();
            w.Aendern({});
            command();
            QCOMPARE(w.kartei.messages.Texte(), QStringList(QStringLiteral("Keine Frage eingegeben")));
            QCOMPARE(w.Nummer(), 1);
            QVERIFY(w.editor.cardDirty);
            QVERIFY(!w.form.kopf.neu);
        };
        stays([&] { w.editor.CVor(); });
        stays([&] { w.editor.CZurück(); });
        stays([&] { w.editor.CEOF(); });
        stays([&] { w.editor.Springen(QStringLiteral("3")); });
        stays([&] { w.editor.Kopieren(); });
        stays([&] { QVERIFY(!w.editor.StoreIfDirty()); });
        QCOMPARE(w.kartei.Stored()[0].Frage, QStringLiteral("Frage 1"));
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
        QCOMPARE(w.form.kopf.FrageNr, QStringLiteral("3"));
        QVERIFY(!w.editor.Laufschritt(CardEditor::Richtung::Vor));
        QVERIFY(w.form.kopf.neu);
        QVERIFY(!w.editor.Laufschritt(CardEditor::Richtung::Vor));
        QVERIFY(w.editor.Laufschritt(CardEditor::Richtung::Zurück));
        QCOMPARE(w.form.kopf.FrageNr, QStringLiteral("3"));
        QVERIFY(w.editor.Laufschritt(CardEditor::Richtung::Zurück));
        QVERIFY(w.editor.Laufschritt(CardEditor::Richtung::Zurück));
        QVERIFY(!w.editor.Laufschritt(CardEditor::Richtung::Zurück));
        QVERIFY(w.form.kopf.neu);
        QVERIFY(w.kartei.messages.gezeigt.isEmpty());
    }

    void JumpFindsTheCardAndGoesOnInBoxOrder()
    {
        Werk w({MakeCard(1, 3, 1), MakeCard(2, 0, 1), MakeCard(3, 1, 1)});
        w.editor.Springen(QStringLiteral(" 3 "));
        QCOMPARE(w.form.kopf.FrageNr, QStringLiteral("3"));
        QCOMPARE(w.store.Karten().Index(), QStringLiteral("BoxKey"));
        w.editor.CVor();
        QCOMPARE(w.form.kopf.FrageNr, QStringLiteral("1"));
        QVERIFY(w.kartei.messages.gezeigt.isEmpty());
    }

    void JumpBeyondTheLastNumberSaysSoAndTakesTheNearestBelow()
    {
        Werk w(Drei());
        w.editor.Springen(QStringLiteral("99"));
        QCOMPARE(w.kartei.messages.Texte(), QStringList(QStringLiteral("Karte nicht gefunden: 99")));
        QCOMPARE(w.form.kopf.FrageNr, QStringLiteral("3"));
    }

    void JumpIntoAGapTakesTheNextNumberAbove()
    {
        Werk w({MakeCard(1, 0, 1), MakeCard(5, 0, 2), MakeCard(9, 0, 3)});
        w.editor.Springen(QStringLiteral("3"));
        QCOMPARE(w.kartei.messages.Texte(), QStringList(QStringLiteral("Karte nicht gefunden: 3")));
        QCOMPARE(w.form.kopf.FrageNr, QStringLiteral("5"));
    }

    void JumpToWhatIsNoNumberStaysOnTheCard()
    {
        Werk w(Drei());
        w.editor.CVor();
        for (const auto &text : {QStringLiteral("abc"), QString(), QStringLiteral("nan")}) {
            w.editor.Springen(text);
            QCOMPARE(w.kartei.messages.Texte().constLast(), QStringLiteral("Karte nicht gefunden: ") + text);
            QCOMPARE(w.form.kopf.FrageNr, QStringLiteral("2"));
        }
        QCOMPARE(w.store.Karten().Index(), QStringLiteral("BoxKey"));
    }

    void JumpWorksFromTheBlankNewCard()
    {
        Werk w(Drei());
        w.editor.CEOF();
        w.editor.Springen(QStringLiteral("2"));
        QCOMPARE(w.form.kopf.FrageNr, QStringLiteral("2"));
        QVERIFY(!w.form.kopf.neu);
    }

    void JumpInAnEmptyFileShowsTheBlankNewCard()
    {
        Werk w;
        w.editor.Springen(QStringLiteral("1"));
        QVERIFY(w.form.kopf.neu);
        QVERIFY(w.kartei.messages.gezeigt.isEmpty());
    }

    void JumpStoresAChangedCardFirst()
    {
        Werk w(Drei());
        w.Aendern(QStringLiteral("neu"));
        w.editor.Springen(QStringLiteral("3"));
        QCOMPARE(w.form.kopf.FrageNr, QStringLiteral("3"));
        QCOMPARE(w.kartei.Stored()[0].Frage, QStringLiteral("neu"));
    }

    void CopyBecomesANewCardAndIsShown()
    {
        CardRecord card = MakeCard(4, 3, 2);
        card.Picture_1_Name = QStringLiteral("bild.bmp");
        card.Antworttyp = 2;
        card.Antwort_ch_1 = true;
        Werk w({card});
        w.editor.Kopieren();
        QCOMPARE(w.kartei.messages.Texte(), QStringList(QStringLiteral("Karte kopiert nach: 5")));
        QCOMPARE(w.form.kopf.FrageNr, QStringLiteral("5"));
        QCOMPARE(w.form.kopf.FachNr, QStringLiteral("0"));
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
        w.Aendern(QStringLiteral("neu"));
        w.editor.Kopieren();
        const QList<CardRecord> cards = w.kartei.Stored();
        QCOMPARE(cards[0].Frage, QStringLiteral("neu"));
        QCOMPARE(cards[2].FrageNr, 4.0);
        QCOMPARE(cards[2].Frage, QStringLiteral("neu"));
    }

    void CopyOfAFreshlyTypedCardStoresItTwice()
    {
        Werk w;
        w.form.Tippen(QStringLiteral("f"), QStringLiteral("a"));
        w.editor.cardDirty = true;
        w.editor.Kopieren();
        QCOMPARE(w.kartei.messages.Texte(), QStringList(QStringLiteral("Karte kopiert nach: 2")));
        QCOMPARE(w.form.kopf.FrageNr, QStringLiteral("2"));
        QCOMPARE(w.kartei.Stored().size(), 2);
    }

    void BlankCardIsNotCopied()
    {
        Werk w(Drei());
        w.editor.CEOF();
        w.editor.Kopieren();
        QCOMPARE(w.kartei.messages.Texte(), QStringList(QStringLiteral("Keine Frage eingegeben")));
        QCOMPARE(w.store.FachInfo[0].Anzahl, qint16(2));
    }

    void NewCardIsNotDeleted()
    {
        Werk w(Drei());
        w.editor.CEOF();
        w.editor.Löschen();
        QCOMPARE(w.kartei.messages.Texte(),
                 QStringList(QStringLiteral("Eine neue Karte kann nicht gelöscht werden")));
    }

    void LastCardOfCompartments0To5IsNotDeletedThoughOthersAreDone()
    {
        Werk w({MakeCard(1, 2, 1), MakeCard(2, 6, 1), MakeCard(3, 6, 2)});
        w.editor.Löschen();
        w.editor.CVor();
        w.editor.Löschen();
        QCOMPARE(w.kartei.messages.Texte(),
                 QStringList(2, QStringLiteral("Die letzte Karte kann nicht gelöscht werden")));
        QCOMPARE(w.kartei.Stored().size(), 3);
    }

    void DoneCardsAloneMayBeDeletedToTheLast()
    {
        Werk w({MakeCard(1, 6, 1), MakeCard(2, 6, 2)});
        w.kartei.messages.antworten = {Meldungen::Antwort::Ja, Meldungen::Antwort::Ja};
        w.editor.Löschen();
        QCOMPARE(w.form.kopf.FrageNr, QStringLiteral("2"));
        w.editor.Löschen();
        QVERIFY(w.form.kopf.neu);
        QCOMPARE(w.form.kopf.FrageNr, QStringLiteral("3"));
        QCOMPARE(w.store.FachInfo[6].Anzahl, qint16(0));
        QVERIFY(w.kartei.Stored().isEmpty());
    }

    void DeletedCardIsGoneAndTheNextOneIsShown()
    {
        Werk w(Drei());
        w.Aendern(QStringLiteral("verworfen"));
        w.kartei.messages.antworten = {Meldungen::Antwort::Ja};
        w.editor.Löschen();
        QCOMPARE(w.kartei.messages.Texte(), QStringList(QStringLiteral("Diese Karte wirklich löschen")));
        QCOMPARE(w.kartei.messages.vorgaben, QList{Meldungen::Antwort::Nein});
        QVERIFY(!w.editor.cardDirty);
        QCOMPARE(w.form.kopf.FrageNr, QStringLiteral("2"));
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
        w.editor.Löschen();
        QVERIFY(w.form.kopf.neu);
        QCOMPARE(w.form.kopf.FrageNr, QStringLiteral("4"));
    }

    void DeclinedDeleteChangesNothing()
    {
        Werk w(Drei());
        w.editor.Löschen();
        QCOMPARE(w.form.kopf.FrageNr, QStringLiteral("1"));
        QCOMPARE(w.store.FachInfo[0].Anzahl, qint16(2));
    }

    void NumbersAreNotReusedAfterADelete()
    {
        QList<CardRecord> cards;
        for (int i = 1; i <= 10; ++i)
            cards << MakeCard(i, 0, i);
        Werk w(cards);
        w.editor.Springen(QStringLiteral("5"));
        w.kartei.messages.antworten = {Meldungen::Antwort::Ja};
        w.editor.Löschen();
        w.editor.CEOF();
        QCOMPARE(w.form.kopf.FrageNr, QStringLiteral("11"));
    }

    void CardIsStoredWhereItIsShownWhateverMovedTheRecordset()
    {
        Werk w(Drei());
        w.editor.CVor();
        w.Aendern(QStringLiteral("neu"));
        w.store.Karten().MoveLast();
        QVERIFY(w.editor.StoreCard());
        QCOMPARE(w.Nummer(), 2);
        QCOMPARE(w.store.Karten().Index(), QStringLiteral("BoxKey"));
        const QList<CardRecord> cards = w.kartei.Stored();
        QCOMPARE(cards[1].Frage, QStringLiteral("neu"));
        QCOMPARE(cards[2].Frage, QStringLiteral("Frage 3"));
    }

    void CardThatIsGoneCannotBeStored()
    {
        Werk w(Drei());
        w.Aendern(QStringLiteral("neu"));
        w.store.Karten().Delete();
        QVERIFY(!w.editor.StoreCard());
        QCOMPARE(w.kartei.messages.Texte(),
                 QStringList(QStringLiteral(
                     "Fehler beim Speichern der Karte: Die Karte Nr. 1 ist nicht mehr in der Kartei.")));
        QVERIFY(w.editor.cardDirty);
    }

    void TooLongTopicIsRefusedAndTheFormKeepsWhatWasTyped()
    {
        Werk w(Drei());
        w.editor.CEOF();
        w.form.Tippen(QStringLiteral("f"), QStringLiteral("a"));
        w.form.blatt.Thema = QString(251, u'x');
        w.editor.cardDirty = true;
        QVERIFY(!w.editor.StoreCard());
        QVERIFY(w.kartei.messages.Texte().constFirst().contains(QStringLiteral("250")));
        QCOMPARE(w.form.blatt.Frage, QStringLiteral("f"));
        QVERIFY(w.form.kopf.neu);
        QVERIFY(w.editor.cardDirty);
        QCOMPARE(w.store.FachInfo[0].Anzahl, qint16(2));
        // The number is gone, the card is not.
        QCOMPARE(w.form.kopf.FrageNr, QStringLiteral("5"));
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
        w.Aendern(QStringLiteral("neu"));
        QFile::remove(w.kartei.Path());
        QVERIFY(!w.editor.StoreCard());
        QVERIFY(w.editor.cardDirty);
        QCOMPARE(w.form.blatt.Frage, QStringLiteral("neu"));
        QCOMPARE(w.kartei.messages.gezeigt.size(), 1);
    }

    void AfterCardNumber32767NoCardIsAdded()
    {
        Werk w({MakeCard(32767, 0, 1)});
        w.editor.CEOF();
        w.form.Tippen(QStringLiteral("f"), QStringLiteral("a"));
        w.editor.cardDirty = true;
        QVERIFY(!w.editor.StoreCard());
        QVERIFY(w.kartei.messages.Texte().constFirst().contains(QStringLiteral("Überlauf")));
        QCOMPARE(w.store.HighestCardNumber, qint16(32767));
        QCOMPARE(w.store.FachInfo[0].Anzahl, qint16(1));
        QCOMPARE(w.form.blatt.Frage, QStringLiteral("f"));
    }

    void FullCompartmentCounterLosesANumberButNoCard()
    {
        Werk w({MakeCard(1, 0, 32767)});
        w.editor.CEOF();
        w.form.Tippen(QStringLiteral("f"), QStringLiteral("a"));
        w.editor.cardDirty = true;
        QVERIFY(!w.editor.StoreCard());
        QVERIFY(w.kartei.messages.Texte().constFirst().contains(QStringLiteral("Überlauf")));
        QCOMPARE(w.store.FachInfo[0].LfdMax, qint16(32767));
        QCOMPARE(w.kartei.Stored().size(), 1);
    }

    void LeavingStoresAChangedCard()
    {
        Werk w(Drei());
        w.Aendern(QStringLiteral("neu"));
        QVERIFY(w.editor.Verlassen());
        QCOMPARE(w.kartei.Stored()[0].Frage, QStringLiteral("neu"));
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
        QCOMPARE(w.kartei.Stored()[0].Frage, QStringLiteral("Frage 1"));
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
        w.Aendern(QStringLiteral("neu"));
        QVERIFY(w.editor.SitzungEndet(darfFragen));
        QVERIFY(w.kartei.messages.gezeigt.isEmpty());
        QVERIFY(!w.editor.cardDirty);
        QCOMPARE(w.kartei.Stored()[0].Frage, QStringLiteral("neu"));
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
        QCOMPARE(w.kartei.messages.vorgaben, QList(2, Meldungen::Antwort::Nein));
        QCOMPARE(w.kartei.Stored()[0].Frage, QStringLiteral("Frage 1"));
    }

    void EndOfTheSessionThatMayNotAskDiscardsWithoutAWord()
    {
        Werk w(Drei());
        w.Aendern({});
        QVERIFY(w.editor.SitzungEndet(false));
        QVERIFY(w.kartei.messages.gezeigt.isEmpty());
        QCOMPARE(w.kartei.Stored()[0].Frage, QStringLiteral("Frage 1"));
    }

    void EndOfTheSessionStoresNothingThatIsNotChanged()
    {
        Werk w(Drei());
        w.form.blatt.Frage = QStringLiteral("nicht getippt");
        QVERIFY(w.editor.SitzungEndet(true));
        QVERIFY(w.editor.SitzungEndet(false));
        QCOMPARE(w.kartei.Stored()[0].Frage, QStringLiteral("Frage 1"));
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

    void CheckThatPassesClearsTheErrorState()
    {
        Werk w(Drei());
        w.Aendern({});
        QVERIFY(!w.editor.StoreCard());
        w.Aendern(QStringLiteral("neu"));
        QVERIFY(w.editor.StoreCard());
        QCOMPARE(w.store.FehlerStatus, qint16(0));
        QCOMPARE(w.editor.validationFailed, qint16(0));
    }
};

QTEST_GUILESS_MAIN(CardEditorTest)
#include "CardEditorTest.moc"
