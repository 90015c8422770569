// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Kartentext.h"

#include "TestProgram.h"

#include <QTemporaryDir>
#include <QtTest>

using namespace paukfix;

// The readable form of card files: what it makes of a card, and that a mistake is named with its line.
class KartentextTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir dir_;

    std::vector<CardRecord> Read(const QByteArray &text)
    {
        QFile file(dir_.filePath("karten.txt"));
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
            throw std::runtime_error("cannot write the cards");
        file.close();
        return ReadKartentext(file.fileName());
    }

private slots:

    void TypedCardHoldsTopicCompartmentAndMedia()
    {
        const auto cards =
            Read("Thema: Tiere\nBildplatz: 10 20 30 40\n\n"
                 "Frage: Wer ruft?\nAntwort: Uhu\nFach: 3\nBild: uhu.jpg\nTon: uhu.wav\n"
                 "Bild Antwort: a.bmp\nBild falsch: f.bmp\nTon Antwort: a.wav\nTon falsch: f.wav\n");
        QCOMPARE(cards.size(), std::size_t{1});
        const CardRecord &card = cards[0];
        QCOMPARE(card.FrageNr, 1.0);
        QCOMPARE(card.FachNr, 3.0);
        QCOMPARE(card.FachLfdNr, 1.0);
        QCOMPARE(card.Antworttyp, 1.0);
        QCOMPARE(card.Frage_Klartext, QString("Wer ruft?"));
        QCOMPARE(card.Antwort_1_Klartext, QString("Uhu"));
        QCOMPARE(card.Picture_9_Name, QString("Tiere"));
        QCOMPARE(card.Picture_1_Name, QString("uhu.jpg"));
        QCOMPARE(card.Picture_2_Name, QString("a.bmp"));
        QCOMPARE(card.Picture_3_Name, QString("f.bmp"));
        QCOMPARE(card.Picture_6_Name, QString("uhu.wav"));
        QCOMPARE(card.Picture_7_Name, QString("a.wav"));
        QCOMPARE(card.Picture_8_Name, QString("f.wav"));
        QCOMPARE(card.Pictureleft, 10.0);
        QCOMPARE(card.PictureTop, 20.0);
        QCOMPARE(card.Picturewidth, 30.0);
        QCOMPARE(card.Pictureheight, 40.0);
    }

    void TickCardHoldsItsAnswersAndTicks()
    {
        const auto cards = Read("Frage: Was?\n+ ja\n- nein\n+ auch\n");
        QCOMPARE(cards[0].Antworttyp, 2.0);
        QCOMPARE(cards[0].Antwort_2_Klartext, QString("nein"));
        QVERIFY(cards[0].Antwort_ch_1 && !cards[0].Antwort_ch_2 && cards[0].Antwort_ch_3);
        QVERIFY(!cards[0].Antwort_ch_4 && cards[0].Antwort_4.isEmpty());
    }

    void CardsAreNumberedInTheFileAndInEachCompartment()
    {
        const auto cards =
            Read("Frage: a\nAntwort: 1\n\nFrage: b\nAntwort: 2\nFach: 6\n\nFrage: c\nAntwort: 3\n");
        QCOMPARE(cards[2].FrageNr, 3.0);
        QCOMPARE(cards[1].FachLfdNr, 1.0);
        QCOMPARE(cards[2].FachLfdNr, 2.0);
    }

    void MarksBecomeRtfAndLinesCrLf()
    {
        const auto cards = Read("Frage: **fett** und *kursiv* \\* {\\\\}\n  zweite – Zeile\nAntwort: x\n");
        QCOMPARE(cards[0].Frage_Klartext, QString("fett und kursiv * {\\}\r\nzweite – Zeile"));
        QCOMPARE(cards[0].Frage,
                 QString("{\\rtf1\\ansi\\ansicpg1252\\deff0\\uc1\\pard \\b fett\\b0  und \\i kursiv\\i0  * "
                         "\\{\\\\\\}\\par\r\nzweite \\u8211? Zeile\\par\r\n}\r\n"));
    }

    void MistakeIsNamedWithItsLine_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("message");
        QTest::newRow("unknown key") << QByteArray("Frage: a\nAntwrot: b\n") << ":2: unknown key \"Antwrot\"";
        QTest::newRow("no key") << QByteArray("Frage: a\nAntwort\n") << ":2: neither";
        QTest::newRow("key twice") << QByteArray("Frage: a\nFrage: b\n") << ":2: \"Frage\" stands here twice";
        QTest::newRow("no answer") << QByteArray("\nFrage: a\n\n") << ":2: a card without an answer";
        QTest::newRow("no question") << QByteArray("Antwort: a\n") << ":1: an empty text";
        QTest::newRow("media alone") << QByteArray("Bild: a.jpg\n\n") << ":2: a card without a question";
        QTest::newRow("typed and ticked")
            << QByteArray("Frage: a\n+ b\nAntwort: c\n") << ":1: a card is typed or ticked";
        QTest::newRow("six answers") << QByteArray("Frage: a\n+ 1\n- 2\n- 3\n- 4\n- 5\n- 6\n")
                                     << ":1: too many answers";
        QTest::newRow("compartment 7")
            << QByteArray("Frage: a\nAntwort: b\nFach: 7\n") << ":3: no compartment";
        QTest::newRow("open mark") << QByteArray("Frage: **a\nAntwort: b\n") << ":1: a * or ** is not closed";
        QTest::newRow("blank at the end")
            << QByteArray("Frage: a \nAntwort: b\n") << ":1: a blank at the end";
        QTest::newRow("asked twice") << QByteArray("Frage: a\nAntwort: b\n\nFrage: a\nAntwort: c\n")
                                     << ":4: this question";
        QTest::newRow("directory") << QByteArray("Frage: a\nAntwort: b\nBild: x/y.jpg\n")
                                   << ":3: \"x/y.jpg\" is not";
        QTest::newRow("other picture")
            << QByteArray("Frage: a\nAntwort: b\nBild: y.png\n") << ":3: \"y.png\" is not";
        QTest::newRow("place of three") << QByteArray("Bildplatz: 1 2 3\n") << ":1: a place is";
        QTest::newRow("only a hint") << QByteArray("Frage: a\nAntwort: Hinweis: b\n")
                                     << ":1: an answer of nothing";
        QTest::newRow("not UTF-8") << QByteArray("Frage: \xE4\nAntwort: b\n") << ":0: the text is not UTF-8";
        QTest::newRow("no text to go on") << QByteArray("Fach: 1\n  weiter\n") << ":2: no text to go on with";
        QTest::newRow("nothing") << QByteArray("# leer\n") << ":2: no cards";
    }

    void MistakeIsNamedWithItsLine()
    {
        QFETCH(QByteArray, text);
        QFETCH(QString, message);
        try {
            Read(text);
        } catch (const std::exception &error) {
            const QString what = QString::fromUtf8(error.what());
            QVERIFY2(what.contains(QString("karten.txt") + message), qPrintable(what));
            return;
        }
        QFAIL("the mistake was taken");
    }
};

PAUKFIX_CORE_TEST(KartentextTest)
#include "KartentextTest.moc"
