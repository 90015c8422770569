// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "EditorTestSupport.h"
#include "Kartensuche.h"
#include "RichText.h"
#include "TestProgram.h"

#include <QTest>
#include <QTextDocument>

using namespace paukfix;
using namespace Qt::StringLiterals;

namespace {

CardRecord Card(int number, const QString &question, const QString &answer = u"a"_s)
{
    CardRecord card = MakeCard(number, 0, number);
    card.Picture_9_Name = QString();
    card.Frage = card.Frage_Klartext = question;
    card.Antwort_1 = card.Antwort_1_Klartext = answer;
    return card;
}

// An open file standing on its first card, and a search state.
struct Suche
{
    explicit Suche(const QList<CardRecord> &cards) : kartei(cards) { kartei.store.Karten().MoveFirst(); }

    bool Finde(const char *begriff)
    {
        return KarteSuchen(kartei.store, hit, QString::fromUtf8(begriff)) == Suchergebnis::Gefunden;
    }

    int Nummer() { return kartei.store.Felder().FrageNr.Integer(); }

    TestKartei kartei;
    SearchHit hit;
};

} // namespace

class CardSearchTest : public QObject
{
    Q_OBJECT

private slots:

    void LowerCaseTermFindsCapitalsAndUmlauts()
    {
        Suche s({Card(1, u"nichts"_s), Card(2, u"Die ÜBUNG"_s)});
        QVERIFY(s.Finde("übung"));
        QCOMPARE(s.Nummer(), 2);
        QCOMPARE(s.hit.FrageNr, 2.0);
        QCOMPARE(s.hit.feld, qint16(2));
        QCOMPARE(s.hit.position, 5.0);
        QCOMPARE(s.hit.letzterSchluessel, 2e12 + 20'000'000 + 5e5);
    }

    void LetterCaseIsIgnoredInEveryScript_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("term");
        QTest::addColumn<double>("position");
        QTest::newRow("ascii") << u"Kein PLATZ"_s << u"platz"_s << 6.0;
        QTest::newRow("sharp s") << u"Der FUßBALL"_s << u"fußball"_s << 5.0;
        QTest::newRow("capital sharp s") << u"FUẞBALL"_s << u"fußball"_s << 1.0;
        QTest::newRow("k and s alone") << u"ein KSK hier"_s << u"ksk"_s << 5.0;
        QTest::newRow("long s, Kelvin sign") << u"Haſe 3 \u212A"_s << u"hase 3 k"_s << 1.0;
        QTest::newRow("cyrillic") << u"ДОБРЫЙ ДЕНЬ"_s << u"день"_s << 8.0;
        QTest::newRow("astral before") << u"😀 Wort"_s << u"wort"_s << 4.0;
        QTest::newRow("overlapping start") << u"anananas"_s << u"ananas"_s << 3.0;
        QTest::newRow("not there") << u"anana anan"_s << u"ananas"_s << 0.0;
    }

    void LetterCaseIsIgnoredInEveryScript()
    {
        QFETCH(QString, text);
        QFETCH(QString, term);
        QFETCH(double, position);
        Suche s({Card(1, text)});
        QCOMPARE(s.Finde(term.toUtf8().constData()), position > 0);
        QCOMPARE(s.hit.position, position);
    }

    void FieldsAreSearchedInTheirOrder()
    {
        CardRecord card = Card(1, u"x Wort"_s, u"xx Wort"_s);
        card.Picture_9_Name = u"Wort"_s;
        card.Antworttyp = 2;
        card.Antwort_2_Klartext = u"2 Wort"_s;
        card.Antwort_3_Klartext = u"33 Wort"_s;
        card.Antwort_4_Klartext = u"444 Wort"_s;
        card.Antwort_5_Klartext = u"55555 Wort"_s;
        Suche s({card});
        const QList<QPair<int, double>> expected{{1, 1}, {2, 3}, {7, 4}, {8, 3}, {9, 4}, {10, 5}, {11, 7}};
        for (const auto &[feld, position] : expected) {
            QVERIFY(s.Finde("wort"));
            QCOMPARE(int(s.hit.feld), feld);
            QCOMPARE(s.hit.position, position);
        }
        QVERIFY(!s.Finde("wort"));
        QCOMPARE(s.hit.feld, qint16(0));
    }

    void Answer5HasTheCodeOfAnswer4()
    {
        CardRecord card = Card(1, u"f"_s);
        card.Antworttyp = 2;
        card.Antwort_4_Klartext = u"..Wort"_s;
        card.Antwort_5_Klartext = u"..Wort"_s;
        Suche s({card});
        QVERIFY(s.Finde("wort"));
        QCOMPARE(s.hit.feld, qint16(10));
        // The same position in answer 5 gives the same key, which is not greater.
        QVERIFY(!s.Finde("wort"));
    }

    void TermTwiceInAQuestionIsFoundOnce()
    {
        Suche s({Card(1, u"Wort und Wort"_s, u"kein Wort"_s), Card(2, u"Wort"_s)});
        QVERIFY(s.Finde("wort"));
        QCOMPARE(s.hit.feld, qint16(2));
        QCOMPARE(s.hit.position, 1.0);
        QVERIFY(s.Finde("wort"));
        QCOMPARE(s.hit.feld, qint16(7));
        QVERIFY(s.Finde("wort"));
        QCOMPARE(s.Nummer(), 2);
    }

    void Answer3OfASimpleCardIsNotSearched()
    {
        CardRecord card = Card(1, u"f"_s);
        card.Antwort_3_Klartext = u"Wort"_s;
        Suche s({card});
        QVERIFY(!s.Finde("wort"));
    }

    void SearchFromTheLastCardWrapsAndEndsAtTheStartCard()
    {
        Suche s({Card(1, u"eins"_s), Card(2, u"zwei"_s), Card(3, u"drei"_s)});
        s.kartei.store.Karten().MoveLast();
        QVERIFY(s.Finde("eins"));
        QCOMPARE(s.Nummer(), 1);
        s.kartei.store.Karten().MoveLast();
        QVERIFY(!s.Finde("vier"));
        QCOMPARE(s.Nummer(), 3);
        QCOMPARE(s.hit.letzterSchluessel, 0.0);
    }

    void SearchFromBehindTheLastCardBeginsWithTheFirst()
    {
        Suche s({Card(1, u"Wort"_s), Card(2, u"Wort"_s)});
        s.hit.letzterSchluessel = 9e12;
        s.kartei.store.Karten().MoveLast();
        s.kartei.store.Karten().MoveNext();
        QVERIFY(s.Finde("wort"));
        QCOMPARE(s.Nummer(), 1);
        s.kartei.store.Karten().MoveLast();
        s.kartei.store.Karten().MoveNext();
        QVERIFY(!s.Finde("fehlt"));
        QVERIFY(s.kartei.store.Karten().AtEOF());
    }

    void SearchFromBeforeTheFirstCardBeginsWithTheFirst()
    {
        Suche s({Card(1, u"Wort"_s), Card(2, u"Wort"_s)});
        s.kartei.store.Karten().MovePrevious();
        QVERIFY(s.Finde("wort"));
        QCOMPARE(s.Nummer(), 1);
    }

    void NewTermSkipsLowerKeysUntilTheWalkWraps()
    {
        Suche s({Card(1, u"neu"_s), Card(2, u"mitte"_s), Card(3, u"alt"_s), Card(4, u"ende"_s)});
        QVERIFY(s.Finde("alt"));
        QCOMPARE(s.Nummer(), 3);
        s.kartei.store.Karten().MoveFirst();
        // Card 2 comes before the last hit in the order of keys: the walk passes it, wraps and ends at
        // card 1.
        QVERIFY(!s.Finde("mitte"));
        QCOMPARE(s.Nummer(), 1);
        QVERIFY(s.Finde("mitte"));
        QCOMPARE(s.Nummer(), 2);
    }

    void OnlyHitIsNotFoundASecondTimeButAThird()
    {
        Suche s({Card(1, u"eins"_s), Card(2, u"Wort"_s)});
        QVERIFY(s.Finde("wort"));
        QVERIFY(!s.Finde("wort"));
        QVERIFY(s.Finde("wort"));
    }

    void SingleCardIsSearched()
    {
        Suche s({Card(1, u"Wort"_s)});
        QVERIFY(s.Finde("wort"));
        QVERIFY(!s.Finde("fehlt"));
        QCOMPARE(s.Nummer(), 1);
    }

    void EmptyFileIsNotSearched()
    {
        Suche s({});
        s.hit.letzterSchluessel = 5;
        QCOMPARE(KarteSuchen(s.kartei.store, s.hit, u"x"_s), Suchergebnis::OhneKarten);
        QCOMPARE(s.hit.letzterSchluessel, 5.0);
    }

    void NullTextsAndForeignTypesHoldNoHit()
    {
        CardRecord card = Card(1, QString(), QString());
        Suche s({card, Card(2, u"Wort"_s)});
        s.kartei.store.CloseCardFile();
        {
            CardFile file(s.kartei.Path());
            file.Database().exec("UPDATE Lernkarten SET Frage_Klartext=NULL, Antworttyp='abc', "
                                 "Picture_9_Name=NULL WHERE FrageNr=1");
        }
        s.kartei.Open();
        s.kartei.store.Karten().MoveFirst();
        QVERIFY(s.Finde("wort"));
        QCOMPARE(s.Nummer(), 2);
    }

    void PositionsBehindLineBreaksLeadToTheSamePlaceInTheBox()
    {
        QTextDocument document;
        SetRichText(document, uR"({\rtf1 erste\par zweite\line dritte\par\par Wort hier})"_s);
        const QString text = PlainText(document);
        for (qsizetype at = 0; at < text.size(); ++at) {
            if (text[at] == u'\n')
                continue;
            const QChar there = document.characterAt(DokumentStelle(document, at));
            if (text[at] == u'\r')
                QVERIFY(there == QChar::ParagraphSeparator || there == QChar::LineSeparator);
            else
                QCOMPARE(there, text[at]);
        }
        const int wort = DokumentStelle(document, text.indexOf(u"Wort"_s));
        QCOMPARE(document.characterAt(wort), QChar(u'W'));
        QCOMPARE(DokumentStelle(document, 10'000), document.characterCount() - 1);
    }
};

PAUKFIX_CORE_TEST(CardSearchTest)
#include "CardSearchTest.moc"
