// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Sitzungsfolge.h"
#include "TestProgram.h"

using namespace paukfix;

namespace {

const QDate Gestern(2026, 11, 20);
const QDate Heute(2026, 11, 21);
const Kartenzahlen Karten{5, 0, 2};

} // namespace

// A session's tally, turned into answers a day.
class MitschriftTest : public QObject
{
    Q_OBJECT

private slots:

    void WhatATallyHasGrownByBelongsToTheDay()
    {
        Mitschrift m;
        m.Sehen(Gestern, 2, 1, Karten);
        QCOMPARE(m.Abholen(), (Tagesaenderungen{{Gestern, {2, 1, Karten}}}));
        m.Sehen(Heute, 5, 1, Karten);
        QCOMPARE(m.Abholen(), (Tagesaenderungen{{Heute, {3, 0, Karten}}}));
    }

    void NothingNewIsNothing()
    {
        Mitschrift m;
        m.Sehen(Heute, 2, 1, Karten);
        m.Abholen();
        m.Sehen(Heute, 2, 1, Karten);
        QVERIFY(m.Abholen().empty());
    }

    void ABoxThatIsOpenedIsSeenWithoutAnAnswer()
    {
        Mitschrift m;
        m.Sehen(Heute, 0, 0, Karten);
        QCOMPARE(m.Abholen(), (Tagesaenderungen{{Heute, {0, 0, Karten}}}));
    }

    // An answer that changes no count, as a wrong one in compartment 1, still tells the cards: the day may
    // not be known yet.
    void AnAnswerComesWithTheCards()
    {
        Mitschrift m;
        m.Sehen(Heute, 0, 0, Karten);
        m.Abholen();
        m.Sehen(Heute, 0, 1, Karten);
        QCOMPARE(m.Abholen(), (Tagesaenderungen{{Heute, {0, 1, Karten}}}));
    }

    void AnAnswerTakenBackIsTakenFromItsDay()
    {
        Mitschrift m;
        m.Sehen(Heute, 3, 1, Karten);
        m.Abholen();
        m.Sehen(Heute, 2, 1, {6, 0, 1});
        QCOMPARE(m.Abholen(), (Tagesaenderungen{{Heute, {-1, 0, Kartenzahlen{6, 0, 1}}}}));
    }

    void AnAnswerTakenBackAfterMidnightIsTakenFromYesterday()
    {
        Mitschrift m;
        m.Sehen(Gestern, 3, 2, Karten);
        m.Sehen(Heute, 4, 2, Karten);
        m.Abholen();
        m.Sehen(Heute, 1, 1, {7});
        QCOMPARE(m.Abholen(), (Tagesaenderungen{{Gestern, {-2, -1, {}}}, {Heute, {-1, 0, Kartenzahlen{7}}}}));
        // And given again, it is today's.
        m.Sehen(Heute, 2, 1, Karten);
        QCOMPARE(m.Abholen(), (Tagesaenderungen{{Heute, {1, 0, Karten}}}));
    }

    void NoMoreIsTakenBackThanWasGiven()
    {
        Mitschrift m;
        m.Sehen(Heute, 1, 0, Karten);
        m.Abholen();
        m.Sehen(Heute, -5, 0, Karten);
        QCOMPARE(m.Abholen()[Heute].richtig, -1);
    }

    void WithAClockThatWasSetBackTheLatestAnswersAreTakenBackFirst()
    {
        Mitschrift m;
        m.Sehen(Heute, 2, 0, Karten);
        m.Sehen(Gestern, 3, 0, Karten);
        m.Abholen();
        m.Sehen(Gestern, 1, 0, Karten);
        const Tagesaenderungen neu = m.Abholen();
        QCOMPARE(neu.at(Gestern).richtig, -1);
        QCOMPARE(neu.at(Heute).richtig, -1);
    }
};

PAUKFIX_APPLESS_TEST(MitschriftTest)
#include "MitschriftTest.moc"
