// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "EditorTestSupport.h"
#include "Kartensuche.h"
#include "RichText.h"
#include "TestProgram.h"

#include <QTest>
#include <QTextDocument>

namespace {

CardRecord Card(int number, const QString &question, const QString &answer = QStringLiteral("a"))
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
        Suche s({Card(1, QStringLiteral("nichts")), Card(2, QStringLiteral("Die ÜBUNG"))});
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
        QTest::newRow("ascii") << QStringLiteral("Kein PLATZ") << QStringLiteral("platz") << 6.0;
        QTest::newRow("sharp s") << QStringLiteral("Der FUßBALL") << QStringLiteral("fußball") << 5.0;
        QTest::newRow("capital sharp s") << QStringLiteral("FUẞBALL") << QStringLiteral("fußball") << 1.0;
        QTest::newRow("k and s alone") << QStringLiteral("ein KSK hier") << QStringLiteral("ksk") << 5.0;
        QTest::newRow("long s, Kelvin sign")
            << QStringLiteral("Haſe 3 \u212A") << QStringLiteral("hase 3 k") << 1.0;
        QTest::newRow("cyrillic") << QStringLiteral("ДОБРЫЙ ДЕНЬ") << QStringLiteral("день") << 8.0;
        QTest::newRow("astral before") << QStringLiteral("😀 Wort") << QStringLiteral("wort") << 4.0;
        QTest::newRow("overlapping start") << QStringLiteral("anananas") << QStringLiteral("ananas") << 3.0;
        QTest::newRow("not there") << QStringLiteral("anana anan") << QStringLiteral("ananas") << 0.0;
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
        CardRecord card = Card(1, QStringLiteral("x Wort"), QStringLiteral("xx Wort"));
        card.Picture_9_Name = QStringLiteral("Wort");
        card.Antworttyp = 2;
        card.Antwort_2_Klartext = QStringLiteral("2 Wort");
        card.Antwort_3_Klartext = QStringLiteral("33 Wort");
        card.Antwort_4_Klartext = QStringLiteral("444 Wort");
        card.Antwort_5_Klartext = QStringLiteral("55555 Wort");
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
        CardRecord card = Card(1, QStringLiteral("f"));
        card.Antworttyp = 2;
        card.Antwort_4_Klartext = QStringLiteral("..Wort");
        card.Antwort_5_Klartext = QStringLiteral("..Wort");
        Suche s({card});
        QVERIFY(s.Finde("wort"));
        QCOMPARE(s.hit.feld, qint16(10));
        // The same position in answer 5 gives the same key, which is not greater.
        QVERIFY(!s.Finde("wort"));
    }

    void TermTwiceInAQuestionIsFoundOnce()
    {
        Suche s({Card(1, QStringLiteral("Wort und Wort"), QStringLiteral("kein Wort")),
                 Card(2, QStringLiteral("Wort"))});
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
        CardRecord card = Card(1, QStringLiteral("f"));
        card.Antwort_3_Klartext = QStringLiteral("Wort");
        Suche s({card});
        QVERIFY(!s.Finde("wort"));
    }

    void SearchFromTheLastCardWrapsAndEndsAtTheStartCard()
    {
        Suche s({Card(1, QStringLiteral("eins")), Card(2, QStringLiteral("zwei")),
                 Card(3, QStringLiteral("drei"))});
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
        Suche s({Card(1, QStringLiteral("Wort")), Card(2, QStringLiteral("Wort"))});
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
        Suche s({Card(1, QStringLiteral("Wort")), Card(2, QStringLiteral("Wort"))});
        s.kartei.store.Karten().MovePrevious();
        QVERIFY(s.Finde("wort"));
        QCOMPARE(s.Nummer(), 1);
    }

    void NewTermSkipsLowerKeysUntilTheWalkWraps()
    {
        Suche s({Card(1, QStringLiteral("neu")), Card(2, QStringLiteral("mitte")),
                 Card(3, QStringLiteral("alt")), Card(4, QStringLiteral("ende"))});
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
        Suche s({Card(1, QStringLiteral("eins")), Card(2, QStringLiteral("Wort"))});
        QVERIFY(s.Finde("wort"));
        QVERIFY(!s.Finde("wort"));
        QVERIFY(s.Finde("wort"));
    }

    void SingleCardIsSearched()
    {
        Suche s({Card(1, QStringLiteral("Wort"))});
        QVERIFY(s.Finde("wort"));
        QVERIFY(!s.Finde("fehlt"));
        QCOMPARE(s.Nummer(), 1);
    }

    void EmptyFileIsNotSearched()
    {
        Suche s({});
        s.hit.letzterSchluessel = 5;
        QCOMPARE(KarteSuchen(s.kartei.store, s.hit, QStringLiteral("x")), Suchergebnis::OhneKarten);
        QCOMPARE(s.hit.letzterSchluessel, 5.0);
    }

    void NullTextsAndForeignTypesHoldNoHit()
    {
        CardRecord card = Card(1, QString(), QString());
        Suche s({card, Card(2, QStringLiteral("Wort"))});
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
        SetRichText(document, QStringLiteral(R"({\rtf1 erste\par zweite\line dritte\par\par Wort hier})"));
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
        const int wort = DokumentStelle(document, text.indexOf(QStringLiteral("Wort")));
        QCOMPARE(document.characterAt(wort), QChar(u'W'));
        QCOMPARE(DokumentStelle(document, 10'000), document.characterCount() - 1);
    }
};

PAUKFIX_CORE_TEST(CardSearchTest)
#include "CardSearchTest.moc"
