// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Prognose.h"

#include "TestProgram.h"

using namespace paukfix;

namespace {

const QDate Heute(2026, 11, 21);

} // namespace

// When a box will be done.
class PrognoseTest : public QObject
{
    Q_OBJECT

private slots:

    void StepsAreTheRightAnswersThatAreMissing()
    {
        QCOMPARE(OffeneSchritte({1, 1, 1, 1, 1, 1, 1}), 5 + 5 + 4 + 3 + 2 + 1);
        QCOMPARE(OffeneSchritte({0, 0, 0, 0, 0, 0, 9}), 0);
    }

    // Ten cards, two steps a day for a week: 50 - 14 = 36 steps, at two a day 18 days.
    void AnEvenPaceIsCarriedOn()
    {
        std::vector<Tagesstand> tage{{Heute.addDays(-7), 0, 0, {10}}};
        Kartenzahlen karten{10};
        for (int i = 6; i >= 0; --i) {
            karten[0] -= 1; // to compartment 2
            karten[3] += 1; // and on
            tage.push_back({Heute.addDays(-i), 2, 0, karten});
        }
        const Prognose prognose = Vorhersagen(tage, Heute);
        QCOMPARE(prognose.art, Prognose::Art::Am);
        QCOMPARE(OffeneSchritte(karten), 36);
        QCOMPARE(prognose.tag, Heute.addDays(18));
    }

    void PausesSlowThePaceDown()
    {
        const std::vector<Tagesstand> tage{{Heute.addDays(-10), 0, 0, {10}},
                                           {Heute.addDays(-9), 5, 0, {5, 0, 5}}};
        // 5 steps in 10 days, 45 to go.
        QCOMPARE(Vorhersagen(tage, Heute).tag, Heute.addDays(90));
    }

    void WhatWasLearnedLongAgoIsNoPace()
    {
        const std::vector<Tagesstand> tage{{Heute.addDays(-40), 0, 0, {10}},
                                           {Heute.addDays(-39), 5, 0, {5, 0, 5}}};
        QCOMPARE(Vorhersagen(tage, Heute).art, Prognose::Art::Unbekannt);
    }

    void OnTheFirstDayNothingIsKnown()
    {
        QCOMPARE(Vorhersagen({{Heute, 5, 0, {5, 0, 5}}}, Heute).art, Prognose::Art::Unbekannt);
    }

    void MoreWrongThanRightHasNoEnd()
    {
        const std::vector<Tagesstand> tage{{Heute.addDays(-1), 0, 0, {0, 0, 5}}, {Heute, 1, 3, {0, 3, 1, 1}}};
        QCOMPARE(Vorhersagen(tage, Heute).art, Prognose::Art::Unbekannt);
    }

    void NewCardsAreMoreWorkAndNoStepBack()
    {
        const std::vector<Tagesstand> tage{{Heute.addDays(-1), 0, 0, {2}}, {Heute, 1, 0, {51, 0, 1}}};
        QCOMPARE(Vorhersagen(tage, Heute).tag, Heute.addDays(51 * 5 + 4)); // one step a day
    }

    void CardsPutBackByAToolAreMoreWorkAndNoStepBack()
    {
        const std::vector<Tagesstand> tage{{Heute.addDays(-2), 0, 0, {0, 0, 0, 0, 0, 10}},
                                           {Heute.addDays(-1), 4, 0, {10}}, // and then all back to Neu
                                           {Heute, 4, 0, {6, 0, 4}}};
        // 46 steps to go, at four a day.
        QCOMPARE(Vorhersagen(tage, Heute).tag, Heute.addDays(12));
    }

    void DoneIsDone()
    {
        QCOMPARE(Vorhersagen({{Heute, 1, 0, {0, 0, 0, 0, 0, 0, 3}}}, Heute).art, Prognose::Art::Fertig);
        QCOMPARE(Vorhersagen({{Heute, 0, 0, {}}}, Heute).art, Prognose::Art::OhneKarten);
        QCOMPARE(Vorhersagen({}, Heute).art, Prognose::Art::OhneKarten);
    }

    void WhatTakesYearsIsNoDate()
    {
        const std::vector<Tagesstand> tage{{Heute.addDays(-1), 0, 0, {30000}}, {Heute, 1, 0, {29999, 0, 1}}};
        QCOMPARE(Vorhersagen(tage, Heute).art, Prognose::Art::Fern);
    }

    void ForecastsCrossALeapDay()
    {
        const QDate heute(2028, 2, 27);
        const std::vector<Tagesstand> tage{{heute.addDays(-1), 0, 0, {0, 0, 0, 0, 0, 4}},
                                           {heute, 1, 0, {0, 0, 0, 0, 0, 3, 1}}};
        QCOMPARE(Vorhersagen(tage, heute).tag, QDate(2028, 3, 1));
    }
};

PAUKFIX_APPLESS_TEST(PrognoseTest)
#include "PrognoseTest.moc"
