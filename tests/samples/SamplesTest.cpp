// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "KarteiOeffner.h"
#include "Kartentext.h"
#include "RichText.h"
#include "StoreTestSupport.h"
#include "TestPlaces.h"
#include "TestProgram.h"
#include "TextHelpers.h"

#include <QSet>
#include <QTextDocument>
#include <QtTest>

#include <array>

using namespace paukfix;
using namespace Qt::StringLiterals;

// The built sample boxes: they open, hold the cards of their texts, and are boxes one can learn with.
class SamplesTest : public QObject
{
    Q_OBJECT

private:
    static QString BoxPath(const QString &box) { return BuildFile("samples/%1.pzb").arg(box); }

    static void Boxes()
    {
        QTest::addColumn<QString>("box");
        QTest::addColumn<int>("atLeast");
        QTest::newRow("Englisch") << "Englisch" << 60;
        QTest::newRow("Allgemeinwissen") << "Allgemeinwissen" << 45;
        QTest::newRow("Natur") << "Natur" << 15;
        QTest::newRow("Musik") << "Musik" << 15;
    }

    static QString Plain(const QString &rtf)
    {
        QTextDocument document;
        SetRichText(document, rtf);
        return PlainText(document);
    }

private slots:

    void BoxOpensInTheStoreWithItsCompartmentsCounted_data() { Boxes(); }

    void BoxOpensInTheStoreWithItsCompartmentsCounted()
    {
        QFETCH(QString, box);
        QFETCH(int, atLeast);
        const QTemporaryDir dir;
        QString name = box + ".pzb";
        QVERIFY(QFile::copy(BoxPath(box), dir.filePath(name)));
        TestMeldungen meldungen;
        TestClock clock;
        CardStore store;
        KarteiOeffner oeffner(store, meldungen, clock);
        store.KarteiPfad = dir.path();
        oeffner.OpenCardFile(name);
        QCOMPARE(meldungen.Texte(), QStringList());
        QVERIFY(store.IsOpen());
        QCOMPARE(store.Karten().RecordCount(), int(store.HighestCardNumber));
        QVERIFY(store.HighestCardNumber >= atLeast);
        for (const Fach &fach : store.FachInfo) {
            QVERIFY(fach.Anzahl > 0); // every compartment has something to show
            QCOMPARE(fach.LfdMax, fach.Anzahl);
        }
    }

    void BoxHoldsTheCardsOfItsText_data() { Boxes(); }

    void BoxHoldsTheCardsOfItsText()
    {
        QFETCH(QString, box);
        std::vector<CardRecord> written = ReadKartentext(SourceFile("samples/%1.txt").arg(box));
        std::stable_sort(written.begin(), written.end(),
                         [](const CardRecord &a, const CardRecord &b) { return a.FachNr < b.FachNr; });
        const QList<CardRecord> cards = ReadCards(BoxPath(box));
        QCOMPARE(std::size_t(cards.size()), written.size());
        for (std::size_t i = 0; i < written.size(); ++i)
            QVERIFY2(cards[qsizetype(i)] == written[i], qPrintable(written[i].Frage_Klartext));
    }

    void PlainTextIsTheTextOfTheRtf_data() { Boxes(); }

    void PlainTextIsTheTextOfTheRtf()
    {
        QFETCH(QString, box);
        for (const CardRecord &card : ReadCards(BoxPath(box))) {
            QCOMPARE(Plain(card.Frage), card.Frage_Klartext);
            QCOMPARE(Plain(card.Antwort_1), card.Antwort_1_Klartext);
            QCOMPARE(Plain(card.Antwort_2), card.Antwort_2_Klartext);
            QCOMPARE(Plain(card.Antwort_3), card.Antwort_3_Klartext);
            QCOMPARE(Plain(card.Antwort_4), card.Antwort_4_Klartext);
            QCOMPARE(Plain(card.Antwort_5), card.Antwort_5_Klartext);
        }
    }

    void EveryTypedAnswerCanBeTyped_data() { Boxes(); }

    // What is compared is one line without blanks around it, of characters that a keyboard has.
    void EveryTypedAnswerCanBeTyped()
    {
        QFETCH(QString, box);
        for (const CardRecord &card : ReadCards(BoxPath(box))) {
            if (card.Antworttyp != 1)
                continue;
            const QString text = ZeilenumbruchEntfernen(card.Antwort_1_Klartext);
            const qsizetype hint = text.indexOf("Hinweis:"_L1);
            const QString answer = hint < 0 ? text : Trimmed(text.left(hint));
            QVERIFY(!answer.isEmpty());
            QCOMPARE(Trimmed(answer), answer);
            for (const QChar c : answer)
                QVERIFY2(c.unicode() < 0x80 || u"äöüÄÖÜß"_s.contains(c), qPrintable(answer));
        }
    }

    void NamedMediaLieBesideTheBox_data() { Boxes(); }

    void NamedMediaLieBesideTheBox()
    {
        QFETCH(QString, box);
        for (const CardRecord &card : ReadCards(BoxPath(box)))
            for (const QString &medium : MediaOf(card))
                QVERIFY2(QFileInfo(BuildFile("samples/" + medium)).size() > 0, qPrintable(medium));
    }

    void KnowledgeBoxHasManyTickCardsAndSomeWithoutARightAnswer()
    {
        int ticked = 0, several = 0, none = 0;
        for (const CardRecord &card : ReadCards(BoxPath("Allgemeinwissen"))) {
            if (card.Antworttyp != 2)
                continue;
            ++ticked;
            const int right = card.Antwort_ch_1 + card.Antwort_ch_2 + card.Antwort_ch_3 + card.Antwort_ch_4 +
                              card.Antwort_ch_5;
            several += right > 1;
            none += right == 0;
        }
        QVERIFY(ticked >= 30);
        QVERIFY(several >= 20);
        QVERIFY(none >= 2);
    }

    void NatureBoxShowsPicturesAndPlaysSounds()
    {
        int pictures = 0, sounds = 0, solutions = 0;
        for (const CardRecord &card : ReadCards(BoxPath("Natur"))) {
            pictures += !card.Picture_1_Name.isEmpty();
            solutions += !card.Picture_2_Name.isEmpty();
            sounds += !card.Picture_6_Name.isEmpty();
            // No place of its own: it stands where it has most room.
            QVERIFY(qFuzzyIsNull(card.Picturewidth) && qFuzzyIsNull(card.Pictureheight));
        }
        QVERIFY(pictures >= 20);
        QVERIFY(solutions >= 5);
        QVERIFY(sounds >= 5);
    }

    void VocabularyBoxHasTopics()
    {
        QSet<QString> topics;
        for (const CardRecord &card : ReadCards(BoxPath("Englisch")))
            topics.insert(card.Picture_9_Name);
        QVERIFY(topics.size() >= 4);
        QVERIFY(!topics.contains(QString()));
    }
};

PAUKFIX_TEST(SamplesTest)
#include "SamplesTest.moc"
