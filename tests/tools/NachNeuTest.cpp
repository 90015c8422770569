// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "NachNeu.h"

#include "TestProgram.h"
#include "Werkstatt.h"

#include <QTest>

#include <limits>

using namespace paukfix;
using namespace Qt::StringLiterals;

class NachNeuTest : public QObject
{
    Q_OBJECT

private slots:
    void AllCardsAreNewInTheOrderOfTheirNumbers();
    void OnlyCompartmentAndPlaceChange();
    void AllOfAFullBoxAreNew();
    void AllOfAnEmptyBoxIsNothing();
    void AllWorksWhateverPlacesAreTaken();
    void DoneCardsGoBehindThoseInNeu();
    void EachDoneCardIsReachedOnce();
    void NoDoneCardsChangeNothing();
    void DoneCardsCloseUpAFullNeu();
    void DoneCardsWithoutRoomChangeNothing();
    void FullDiskTakesNothingOver();
    void UsualIndexIsBackAndTheCountersAreAnew();
};

namespace {

QStringList Places(Werkstatt &w)
{
    QStringList places;
    for (const CardRecord &card : w.Karten())
        places << u"%1:%2/%3"_s.arg(card.FrageNr).arg(card.FachNr).arg(card.FachLfdNr);
    return places;
}

} // namespace

void NachNeuTest::AllCardsAreNewInTheOrderOfTheirNumbers()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(9, 0, 1), MakeCard(2, 0, 3), MakeCard(5, 6, 1), MakeCard(1, 3, 2)});
    QCOMPARE(AlleNachNeu(w.bank), Ausgang::Gelungen);
    QCOMPARE(Places(w), (QStringList{"1:0/1", "2:0/2", "5:0/3", "9:0/4"}));
    QVERIFY(w.meldungen.gezeigt.isEmpty());
}

void NachNeuTest::OnlyCompartmentAndPlaceChange()
{
    Werkstatt w;
    CardRecord card = MakeCard(4, 3, 17);
    card.Antwort_ch_2 = true;
    card.PictureTop = 12.5;
    w.Oeffnen({card});
    QCOMPARE(AlleNachNeu(w.bank), Ausgang::Gelungen);
    card.FachNr = 0;
    card.FachLfdNr = 1;
    QCOMPARE(w.Karten(), QList{card});
}

void NachNeuTest::AllOfAFullBoxAreNew()
{
    Werkstatt w;
    QList<CardRecord> cards;
    for (int i = 1; i <= 32767; ++i) {
        CardRecord card;
        card.FrageNr = i;
        card.FachNr = i % 3 == 0 ? 6 : 0;
        card.FachLfdNr = 32768 - i;
        cards << card;
    }
    w.Oeffnen(cards);
    QCOMPARE(AlleNachNeu(w.bank), Ausgang::Gelungen);
    QCOMPARE(w.store.FachInfo[0].Anzahl, std::numeric_limits<qint16>::max());
    QCOMPARE(w.store.FachInfo[0].LfdMax, std::numeric_limits<qint16>::max());
    int place = 0;
    for (const CardRecord &card : w.Karten()) {
        ++place;
        QVERIFY(card.FachNr == 0 && card.FachLfdNr == place && card.FrageNr == place);
    }
    QCOMPARE(place, 32767);
}

void NachNeuTest::AllOfAnEmptyBoxIsNothing()
{
    Werkstatt w;
    w.Oeffnen({});
    QCOMPARE(AlleNachNeu(w.bank), Ausgang::Gelungen);
    QVERIFY(w.Karten().isEmpty());
}

void NachNeuTest::AllWorksWhateverPlacesAreTaken()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(-3, 0, 2), MakeCard(1, 0, -1), MakeCard(2, 0, 1), MakeCard(3, 0, 32767),
               MakeCard(4, 1, 1), MakeCard(5, 6, -32768)});
    QCOMPARE(AlleNachNeu(w.bank), Ausgang::Gelungen);
    QCOMPARE(Places(w), (QStringList{"-3:0/1", "1:0/2", "2:0/3", "3:0/4", "4:0/5", "5:0/6"}));
}

void NachNeuTest::DoneCardsGoBehindThoseInNeu()
{
    Werkstatt w;
    w.Oeffnen(
        {MakeCard(1, 0, 3), MakeCard(2, 6, 9), MakeCard(3, 6, 2), MakeCard(4, 2, 1), MakeCard(5, 0, 1)});
    QCOMPARE(ErledigteNachNeu(w.bank), std::optional(2));
    QCOMPARE(Places(w), (QStringList{"5:0/1", "1:0/3", "3:0/4", "2:0/5", "4:2/1"}));
}

void NachNeuTest::EachDoneCardIsReachedOnce()
{
    Werkstatt w;
    QList<CardRecord> cards;
    for (int i = 1; i <= 3000; ++i)
        cards << MakeCard(i, i % 2 == 0 ? 6 : i % 6, i);
    w.Oeffnen(cards);
    QCOMPARE(ErledigteNachNeu(w.bank), std::optional(1500));
    QCOMPARE(w.store.FachInfo[6].Anzahl, qint16(0));
    int before = 0;
    int moved = 0;
    for (const CardRecord &card : w.Karten()) {
        if (static_cast<int>(card.FrageNr) % 2 != 0)
            continue;
        QVERIFY(card.FachNr == 0 && card.FrageNr > before);
        before = static_cast<int>(card.FrageNr);
        ++moved;
    }
    QCOMPARE(moved, 1500);
}

void NachNeuTest::NoDoneCardsChangeNothing()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 0, 3), MakeCard(4, 2, 1)});
    QCOMPARE(ErledigteNachNeu(w.bank), std::optional(0));
    QCOMPARE(Places(w), (QStringList{"1:0/3", "4:2/1"}));
}

void NachNeuTest::DoneCardsCloseUpAFullNeu()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 0, 5), MakeCard(2, 0, 32766), MakeCard(3, 6, 1), MakeCard(4, 6, 2)});
    QCOMPARE(ErledigteNachNeu(w.bank), std::optional(2));
    QCOMPARE(Places(w), (QStringList{"1:0/1", "2:0/2", "3:0/3", "4:0/4"}));
}

void NachNeuTest::DoneCardsWithoutRoomChangeNothing()
{
    Werkstatt w;
    QList<CardRecord> cards;
    for (int i = 1; i <= 32767; ++i) {
        CardRecord card;
        card.FrageNr = i;
        card.FachLfdNr = i;
        cards << card;
    }
    cards << MakeCard(-1, 6, 1);
    w.Oeffnen(cards);
    QCOMPARE(ErledigteNachNeu(w.bank), std::nullopt);
    QCOMPARE(w.meldungen.Texte(), QStringList{"Leider ist folgender Fehler Aufgetreten: Überlauf: Ein Fach "
                                              "fasst nicht mehr als 32767 Karten. "
                                              "Es wurde nichts übernommen."});
    QCOMPARE(w.store.FachInfo[6].Anzahl, qint16(1));
}

void NachNeuTest::FullDiskTakesNothingOver()
{
    Werkstatt w;
    QList<CardRecord> cards;
    for (int i = 1; i <= 3000; ++i)
        cards << MakeCard(i, 0, i);
    w.Oeffnen(cards);
    const QStringList before = Places(w);
    w.store.Karten().Past([](SQLite::Database &database) {
        // Records grow while their cards step aside.
        database.exec("PRAGMA max_page_count=" + database.execAndGet("PRAGMA page_count").getString());
    });
    QCOMPARE(AlleNachNeu(w.bank), Ausgang::Gescheitert);
    QVERIFY(MeldetFehler(w.meldungen));
    QCOMPARE(w.meldungen.Texte(),
             QStringList("Leider ist folgender Fehler Aufgetreten: Der Datenträger ist voll; in „" +
                         w.Pfad("offen.pzb") + "“ wurde nichts gespeichert. Es wurde nichts übernommen."));
    QVERIFY(w.store.IsOpen());
    QCOMPARE(Places(w), before);
}

void NachNeuTest::UsualIndexIsBackAndTheCountersAreAnew()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 3, 1), MakeCard(2, 6, 1)});
    for (int i = 0; i < 4; ++i)
        w.store.sitzung.Zaehlen(true);
    QCOMPARE(AlleNachNeu(w.bank), Ausgang::Gelungen);
    QCOMPARE(w.store.Karten().Index(), "BoxKey");
    QCOMPARE(w.store.sitzung.RichtigZaehler(), qint16(0));
    QCOMPARE(w.store.FachInfo[0].Anzahl, qint16(2));
    QCOMPARE(w.store.FachInfo[0].LfdMax, qint16(2));
    QCOMPARE(w.store.FachInfo[3].Anzahl, qint16(0));
    QCOMPARE(w.store.CurrentFileName, "offen.pzb");
}

PAUKFIX_CORE_TEST(NachNeuTest)
#include "NachNeuTest.moc"
