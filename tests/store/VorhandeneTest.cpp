// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardAdd.h"
#include "CardFileSource.h"
#include "CardTransaction.h"
#include "CardValue.h"
#include "KarteiOeffner.h"
#include "StoreTestSupport.h"
#include "TestProgram.h"

#include <QTest>

#include <deque>

using namespace paukfix;
using namespace Qt::StringLiterals;

namespace {

// A box on disk, open in a store of its own.
struct Kasten
{
    explicit Kasten(const QList<CardRecord> &karten)
    {
        MakeCardFile(verzeichnis.filePath("box.pzb"), karten);
        clock.perSecond = 1;
        kartei.KarteiPfad = verzeichnis.path();
        QString name = "box.pzb";
        oeffner.OpenCardFile(name);
        QCOMPARE(name, "box.pzb");
    }

    AddedCards InEinemZug(const std::function<AddedCards()> &arbeit)
    {
        const Aenderung schritt(kartei, u"Zugang"_s);
        CardTransaction zug(kartei.Karten());
        AddedCards neue = arbeit();
        zug.Commit();
        return neue;
    }

    AddedCards Dazu(std::deque<SimpleCard> karten, Vorhandene vorhandene)
    {
        return InEinemZug([&] {
            return AddSimpleCards(
                kartei,
                [&](SimpleCard &karte) {
                    if (karten.empty())
                        return false;
                    karte = karten.front();
                    karten.pop_front();
                    return true;
                },
                vorhandene);
        });
    }

    AddedCards Dazu(CardSource &quelle, Vorhandene vorhandene)
    {
        return InEinemZug([&] { return CopyAllCards(kartei, quelle, {}, vorhandene); });
    }

    AddedCards Anhaengen(const QList<CardRecord> &karten, Vorhandene vorhandene)
    {
        const QString pfad = verzeichnis.filePath(u"quelle%1.pzb"_s.arg(++quellen));
        MakeCardFile(pfad, karten);
        CardFileSource quelle(pfad);
        return Dazu(quelle, vorhandene);
    }

    QList<CardRecord> Karten()
    {
        QList<CardRecord> karten;
        CardRecordset &alle = kartei.Karten();
        for (alle.MoveFirst(); !alle.AtEOF(); alle.MoveNext())
            karten << alle.Read();
        return karten;
    }

    // "Frage=Antwort" of each card, in the order of the box.
    QStringList Inhalt()
    {
        QStringList inhalt;
        for (const CardRecord &karte : Karten())
            inhalt << karte.Frage_Klartext + "=" + karte.Antwort_1_Klartext;
        return inhalt;
    }

    // The numbers of the box are those that a walk over the file finds.
    bool ZaehlerStimmen()
    {
        Faecher gezaehlt;
        const qint16 hoechste = gezaehlt.Zaehlen(kartei.Karten());
        bool gleich = hoechste == kartei.HighestCardNumber;
        for (std::size_t i = 0; i < Faecher::size(); ++i)
            gleich = gleich && gezaehlt[i].Anzahl == kartei.FachInfo[i].Anzahl &&
                     gezaehlt[i].LfdMax == kartei.FachInfo[i].LfdMax;
        return gleich;
    }

    QTemporaryDir verzeichnis;
    TestMeldungen meldungen;
    TestClock clock;
    CardStore kartei;
    KarteiOeffner oeffner{kartei, meldungen, clock};
    int quellen = 0; // made so far
};

// Cards from elsewhere, with the places that they had there.
class Vonwoanders final : public CardSource
{
public:
    explicit Vonwoanders(QList<CardRecord> karten) : karten_(std::move(karten)) {}

    int Count() const override { return static_cast<int>(karten_.size()); }

    bool Next() override { return ++stelle_ < karten_.size(); }

    void Read(int column, CopiedValue &value) override
    {
        const CardRecord &karte = karten_[stelle_];
        const CardColumn &spalte = CardColumns()[static_cast<std::size_t>(column)];
        value.kind = CopiedValue::Kind::Number;
        if (const auto *text = std::get_if<QString CardRecord::*>(&spalte.member)) {
            value.text = (karte.*(*text)).toStdString();
            value.kind = value.text.empty() ? CopiedValue::Kind::Null : CopiedValue::Kind::Text;
        } else if (const auto *tick = std::get_if<bool CardRecord::*>(&spalte.member)) {
            value.number = karte.*(*tick) ? -1 : 0;
        } else {
            value.number = karte.*std::get<double CardRecord::*>(spalte.member);
        }
    }

    CardPlace Place() const override
    {
        const CardRecord &karte = karten_[stelle_];
        return {.fach = static_cast<int>(karte.FachNr),
                .frageNr = static_cast<int>(karte.FrageNr),
                .lfdNr = static_cast<int>(karte.FachLfdNr)};
    }

private:
    QList<CardRecord> karten_;
    qsizetype stelle_ = -1;
};

CardRecord Karte(int nummer, int fach, const QString &frage, const QString &antwort)
{
    CardRecord karte = MakeCard(nummer, fach, nummer);
    karte.Frage = karte.Frage_Klartext = frage;
    karte.Antwort_1 = karte.Antwort_1_Klartext = antwort;
    return karte;
}

CardRecord Ankreuzkarte(int nummer, const QString &frage, bool zweiteRichtig)
{
    CardRecord karte = Karte(nummer, 0, frage, "rot");
    karte.Antworttyp = 2;
    karte.Antwort_2 = karte.Antwort_2_Klartext = "blau";
    karte.Antwort_ch_1 = true;
    karte.Antwort_ch_2 = zweiteRichtig;
    return karte;
}

} // namespace

// What becomes of new cards that the box has already.
class VorhandeneTest : public QObject
{
    Q_OBJECT

private slots:

    void KnownCardsAreLeftOut()
    {
        Kasten k({Karte(1, 3, "Haus", "house"), Karte(2, 0, "Größe", "the  size")});
        const AddedCards neue = k.Dazu({{"Haus", "house", "Thema"},
                                        {"Haus", "home", ""},
                                        {" Gro\u0308ße ", "the\r\nsize", ""},
                                        {"haus", "house", ""},
                                        {"Baum", "tree", ""},
                                        {"Baum", "tree", ""}},
                                       Vorhandene::Auslassen);
        QCOMPARE(neue.count, 3);
        QCOMPARE(neue.leftOut, 3);
        QCOMPARE(neue.renewed, 0);
        QCOMPARE(k.Inhalt(),
                 (QStringList{"Größe=the  size", "Haus=home", "haus=house", "Baum=tree", "Haus=house"}));
        QVERIFY(k.ZaehlerStimmen());
    }

    void AllAreAddedWhereNobodyLooks()
    {
        Kasten k({Karte(1, 3, "Haus", "house")});
        const AddedCards neue = k.Dazu({{"Haus", "house", ""}}, Vorhandene::Uebernehmen);
        QCOMPARE(neue.count, 1);
        QCOMPARE(neue.leftOut, 0);
        QCOMPARE(k.Inhalt(), (QStringList{"Haus=house", "Haus=house"}));
    }

    void AnotherAnswerIsRenewedWhereTheCardLies()
    {
        Kasten k({Karte(1, 3, "Haus", "hause"), Karte(2, 4, "Baum", "tree")});
        const CardRecord vorher = k.Karten()[0];
        const AddedCards neue =
            k.Dazu({{"Haus", "house", "Neues Thema"}, {"Baum", "tree", ""}, {"Hund", "dog", ""}},
                   Vorhandene::Erneuern);
        QCOMPARE(neue.count, 1);
        QCOMPARE(neue.leftOut, 1);
        QCOMPARE(neue.renewed, 1);
        CardRecord erwartet = vorher;
        erwartet.Antwort_1 = erwartet.Antwort_1_Klartext = "house";
        QCOMPARE(k.Karten()[1], erwartet); // number, compartment, topic stay
        QVERIFY(k.ZaehlerStimmen());

        QCOMPARE(k.kartei.schritte.Zurueckzunehmen(), u"Zugang"_s);
        k.kartei.schritte.Zuruecknehmen();
        QCOMPARE(k.Karten()[0], vorher);
        QCOMPARE(k.Karten().size(), 2);
    }

    void TwoAnswersToOneQuestionStayTwoCards()
    {
        Kasten k({Karte(1, 3, "bank", "Bank"), Karte(2, 3, "ring", "Ring"), Karte(3, 3, "ring", "Kreis")});
        const AddedCards neue = k.Dazu({{"bank", "Bank", ""},
                                        {"bank", "Ufer", ""},
                                        {"ring", "klingeln", ""},
                                        {"neu", "new", ""},
                                        {"neu", "fresh", ""}},
                                       Vorhandene::Erneuern);
        QCOMPARE(neue.renewed, 0);
        QCOMPARE(neue.leftOut, 1);
        QCOMPARE(k.Inhalt(), (QStringList{"bank=Ufer", "ring=klingeln", "neu=new", "neu=fresh", "bank=Bank",
                                          "ring=Ring", "ring=Kreis"}));
    }

    void CopiedCardsAreRecognisedByTheirWords()
    {
        CardRecord bunt = Karte(1, 2, "Haus", "house");
        bunt.Frage = R"({\rtf1 {\b Haus}\par})";
        CardRecord nurFormatiert = Karte(2, 2, "Baum", "tree");
        nurFormatiert.Frage_Klartext.clear();
        Kasten k({bunt, nurFormatiert});
        const AddedCards neue =
            k.Anhaengen({Karte(7, 5, "Haus", "house"), nurFormatiert}, Vorhandene::Auslassen);
        QCOMPARE(neue.leftOut, 2);
        QCOMPARE(neue.count, 0);
    }

    void TicksBelongToTheAnswer()
    {
        Kasten k({Ankreuzkarte(1, "Farben", false)});
        QCOMPARE(k.Anhaengen({Ankreuzkarte(1, "Farben", false)}, Vorhandene::Erneuern).leftOut, 1);
        CardRecord andere = Ankreuzkarte(1, "Farben", true);
        andere.Antwort_3 = andere.Antwort_3_Klartext = "grün";
        QCOMPARE(k.Anhaengen({andere}, Vorhandene::Erneuern).renewed, 1);
        const CardRecord karte = k.Karten().value(0);
        QVERIFY(karte.Antwort_ch_2);
        QCOMPARE(karte.Antwort_3, "grün");
        // A card with a typed answer is another card.
        QCOMPARE(k.Anhaengen({Karte(1, 0, "Farben", "rot")}, Vorhandene::Erneuern).count, 1);
    }

    void AnotherPictureMakesAnotherQuestion()
    {
        CardRecord hund = Karte(1, 1, "Was ist das?", "Hund");
        hund.Picture_1_Name = "hund.jpg";
        hund.Picture_2_Name = "richtig.jpg";
        CardRecord nurBild = Karte(2, 1, "", "Hund");
        nurBild.Picture_1_Name = "hund.jpg";
        Kasten k({hund, nurBild});
        CardRecord katze = Karte(1, 0, "Was ist das?", "Katze");
        katze.Picture_1_Name = "katze.jpg";
        CardRecord nurKatze = Karte(3, 0, "", "Katze");
        nurKatze.Picture_1_Name = "katze.jpg";
        AddedCards neue = k.Anhaengen({katze, nurKatze, nurBild}, Vorhandene::Erneuern);
        QCOMPARE(neue.count, 2);
        QCOMPARE(neue.leftOut, 1);
        hund.Antwort_1 = hund.Antwort_1_Klartext = "der Hund";
        hund.Picture_2_Name.clear();
        hund.Picture_3_Name = "falsch.jpg";
        neue = k.Anhaengen({hund}, Vorhandene::Erneuern);
        QCOMPARE(neue.renewed, 1);
        k.kartei.Karten().SetIndex(u"FrageNr");
        k.kartei.Karten().MoveFirst();
        const CardRecord karte = k.kartei.Karten().Read();
        QCOMPARE(karte.Antwort_1_Klartext, "der Hund");
        QCOMPARE(karte.Picture_2_Name, "richtig.jpg"); // what the new one does not have stays
        QCOMPARE(karte.Picture_3_Name, "falsch.jpg");
    }

    void AnEmptyBoxGetsCardsWhereTheyWere()
    {
        const QList<CardRecord> karten{MakeCard(9, 0, -4), MakeCard(4, 3, 7), MakeCard(5, 3, 12),
                                       MakeCard(2, 6, 1)};
        Kasten k({});
        Vonwoanders quelle(karten);
        QCOMPARE(k.Dazu(quelle, Vorhandene::Auslassen).count, 4);
        QCOMPARE(k.Karten(), karten);
        QCOMPARE(k.kartei.HighestCardNumber, qint16(9));
        QVERIFY(k.ZaehlerStimmen());
    }

    void ABoxWithCardsGivesThemNewNumbersInTheirCompartments()
    {
        Kasten k({MakeCard(3, 3, 5)});
        Vonwoanders quelle({MakeCard(9, 0, 4), MakeCard(3, 3, 5)});
        QCOMPARE(k.Dazu(quelle, Vorhandene::Uebernehmen).count, 2);
        const QList<CardRecord> karten = k.Karten();
        QCOMPARE(karten[0].FrageNr, 4);
        QCOMPARE(karten[0].FachLfdNr, 1);
        QCOMPARE(karten[2].FrageNr, 5);
        QCOMPARE(karten[2].FachNr, 3);
        QCOMPARE(karten[2].FachLfdNr, 6);
        QVERIFY(k.ZaehlerStimmen());
    }

    void NumbersThatComeTwiceAreGivenAnew()
    {
        Kasten k({});
        Vonwoanders quelle({MakeCard(2, 3, 5), MakeCard(2, 3, 6), MakeCard(3, 3, 5)});
        QCOMPARE(k.Dazu(quelle, Vorhandene::Uebernehmen).count, 3);
        QCOMPARE(k.Karten().size(), 3);
        QVERIFY(k.ZaehlerStimmen());
    }
};

PAUKFIX_CORE_TEST(VorhandeneTest)
#include "VorhandeneTest.moc"
