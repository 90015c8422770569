// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Anhaengen.h"
#include "AsciiTausch.h"
#include "NachNeu.h"
#include "NeueKartei.h"
#include "TestProgram.h"
#include "TextHelpers.h"
#include "Werkstatt.h"

#include <QRandomGenerator>
#include <QTest>

using namespace paukfix;
using namespace Qt::StringLiterals;

// Random boxes through the tools and back.
class RundreiseTest : public QObject
{
    Q_OBJECT

private slots:
    void ExportAndImportGiveBackTheSameCards();
    void CharactersThatAreNoTextComeThrough();
    void ToolsAgreeWithAModelOfTheBox();

private:
    static int Runden(int lang) { return qEnvironmentVariableIsSet("PAUKFIX_SHORT_TESTS") ? lang / 5 : lang; }

    QRandomGenerator random_{20260101};

    QString Text()
    {
        static const QStringList pieces{
            "Haus", " ",    "\r\n", "\t", ";",  "#",  "Größe",  "€",          "„“",         "\"", "'",
            "мышь", "日本", "\n",   "",   "ÃŸ", "Ã¤", "\u0081", "\U0001F600", "{\\rtf1 x}", "%1", "\u00A0"};
        QString text;
        for (quint32 i = random_.bounded(6u); i > 0; --i)
            text += pieces[random_.bounded(pieces.size())];
        return text;
    }

    QList<CardRecord> Box(int most)
    {
        QList<CardRecord> cards;
        const int count = random_.bounded(most + 1);
        const bool plain = random_.bounded(2) == 0; // only ASCII
        for (int i = 1; i <= count; ++i) {
            CardRecord card = MakeCard(i * 3, random_.bounded(7), i * 2);
            card.Antworttyp = random_.bounded(4) == 0 ? 2 : 1;
            if (!plain) {
                card.Frage_Klartext = Text();
                card.Antwort_1_Klartext = Text();
                card.Picture_9_Name = Text();
            }
            cards << card;
        }
        return cards;
    }
};

void RundreiseTest::ExportAndImportGiveBackTheSameCards()
{
    for (int round = 0; round < Runden(60); ++round) {
        Werkstatt w;
        w.Oeffnen(Box(60));
        const QChar separator = u"\t;#"_s[random_.bounded(3)];
        QStringList expected{"Frage|Antwort|Thema"};
        for (CardRecord &card : w.Karten())
            if (card.Antworttyp == 1)
                expected << CleanFieldText(card.Frage_Klartext, separator) + "|" +
                                CleanFieldText(card.Antwort_1_Klartext, separator) + "|" +
                                CleanFieldText(card.Picture_9_Name, separator);
        QCOMPARE(AsciiExportieren(w.bank, w.Pfad("a.txt"), separator), Ausgang::Gelungen);
        w.Oeffnen({}, "leer.pzb");
        QCOMPARE(AsciiImportieren(w.bank, w.Pfad("a.txt"), separator), Ausgang::Gelungen);
        QStringList found;
        for (const CardRecord &card : w.Karten())
            found << card.Frage + "|" + card.Antwort_1_Klartext + "|" + card.Picture_9_Name;
        QCOMPARE(found, expected);
        QVERIFY(w.ZaehlerStimmen());
    }
}

// U+FEFF at the start is a character, half a character is shown as such, and null is none.
void RundreiseTest::CharactersThatAreNoTextComeThrough()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 0, 1)});
    CardRecordset &karten = w.store.Karten();
    karten.MoveFirst();
    karten.Edit();
    w.store.Felder().Frage_Klartext.Set(u"\uFEFFä"_s);
    w.store.Felder().Antwort_Klartext[0].Set(QString("b") + QChar(0) + "c");
    w.store.Felder().Picture_name[8].Set(QString("d") + QChar(0xD83D));
    karten.Update();
    QCOMPARE(w.Karten()[0].Frage_Klartext, u"\uFEFFä"_s);
    QCOMPARE(w.Karten()[0].Picture_9_Name, u"d\uFFFD"_s);
    QCOMPARE(AsciiExportieren(w.bank, w.Pfad("a.txt"), u';'), Ausgang::Gelungen);
    w.Oeffnen({}, "leer.pzb");
    QCOMPARE(AsciiImportieren(w.bank, w.Pfad("a.txt"), u';'), Ausgang::Gelungen);
    const CardRecord karte = w.Karten().value(1);
    QCOMPARE(karte.Frage_Klartext, u"\uFEFFä"_s);
    QCOMPARE(karte.Antwort_1_Klartext, "bc");
    QCOMPARE(karte.Picture_9_Name, u"d\uFFFD"_s);
    QCOMPARE(w.meldungen.Texte(), QStringList());
}

void RundreiseTest::ToolsAgreeWithAModelOfTheBox()
{
    for (int round = 0; round < Runden(15); ++round) {
        Werkstatt w;
        w.Oeffnen(Box(40));
        QList<CardRecord> model = w.Karten();
        int file = 0;
        for (int step = 0; step < 8; ++step) {
            int highest = 0;
            int lfdMax = 0;
            for (const CardRecord &card : model) {
                highest = std::max(highest, static_cast<int>(card.FrageNr));
                if (card.FachNr == 0)
                    lfdMax = std::max(lfdMax, static_cast<int>(card.FachLfdNr));
            }
            const auto neu = [&](CardRecord card) {
                card.FrageNr = ++highest;
                card.FachNr = 0;
                card.FachLfdNr = ++lfdMax;
                model << card;
            };
            switch (random_.bounded(5)) {
            case 0: {
                QCOMPARE(AlleNachNeu(w.bank), Ausgang::Gelungen);
                std::sort(model.begin(), model.end(),
                          [](const CardRecord &a, const CardRecord &b) { return a.FrageNr < b.FrageNr; });
                int place = 0;
                for (CardRecord &card : model) {
                    card.FachNr = 0;
                    card.FachLfdNr = ++place;
                }
                break;
            }
            case 1:
                QVERIFY(ErledigteNachNeu(w.bank));
                for (CardRecord &card : model)
                    if (card.FachNr == 6) {
                        card.FachNr = 0;
                        card.FachLfdNr = ++lfdMax;
                    }
                break;
            case 2: {
                const QString source = w.Pfad(u"quelle%1.pzb"_s.arg(step));
                MakeCardFile(source, Box(10));
                for (const CardRecord &card : ReadCards(source))
                    neu(card);
                QCOMPARE(KarteiAnhaengen(w.bank, source), Ausgang::Gelungen);
                break;
            }
            case 3:
                QCOMPARE(KarteiSpiegeln(w.bank, w.Pfad(u"neu%1.pzb"_s.arg(++file))), Ausgang::Gelungen);
                for (CardRecord &card : model)
                    if (card.Antworttyp == 1) {
                        std::swap(card.Frage, card.Antwort_1);
                        std::swap(card.Frage_Klartext, card.Antwort_1_Klartext);
                    }
                break;
            default: {
                QStringList topics = Themen(w.store.Karten(), w.store.Felder().Picture_name[8]);
                topics.removeIf([&](const QString &) { return random_.bounded(3) == 0; });
                QCOMPARE(ThemenAusfiltern(w.bank, w.Pfad(u"neu%1.pzb"_s.arg(++file)), topics),
                         Ausgang::Gelungen);
                model.removeIf([&](const CardRecord &card) {
                    return !topics.contains(ThemaSchluessel(card.Picture_9_Name));
                });
            }
            }
            std::sort(model.begin(), model.end(), [](const CardRecord &a, const CardRecord &b) {
                return std::pair(a.FachNr, a.FachLfdNr) < std::pair(b.FachNr, b.FachLfdNr);
            });
            QCOMPARE(w.Karten(), model);
            QVERIFY(w.ZaehlerStimmen());
            QVERIFY(w.meldungen.gezeigt.isEmpty());
        }
    }
}

PAUKFIX_CORE_TEST(RundreiseTest)
#include "RundreiseTest.moc"
