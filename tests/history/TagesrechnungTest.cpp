// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Tagesrechnung.h"

#include "TestProgram.h"

using namespace paukfix;

namespace {

Tagesstand Gelernt(const QDate &tag)
{
    return {tag, 1, 0, {}};
}

} // namespace

// Days of the calendar.
class TagesrechnungTest : public QObject
{
    Q_OBJECT

private slots:

    void DaysInARowEndToday()
    {
        const QDate heute(2028, 3, 2); // behind a leap day
        std::vector<Tagesstand> tage;
        for (int i = 4; i >= 0; --i)
            tage.push_back(Gelernt(heute.addDays(-i)));
        QCOMPARE(TageInFolge(tage, heute), 5);
        tage.erase(tage.begin() + 2); // the leap day
        QCOMPARE(TageInFolge(tage, heute), 2);
    }

    void ADayThatIsNotOverDoesNotEndThem()
    {
        const QDate heute(2026, 11, 21);
        const std::vector tage{Gelernt(heute.addDays(-2)), Gelernt(heute.addDays(-1))};
        QCOMPARE(TageInFolge(tage, heute), 2);
        QCOMPARE(TageInFolge(tage, heute.addDays(1)), 0);
    }

    void ABoxThatWasOnlyOpenedWasNotLearned()
    {
        const QDate heute(2026, 11, 21);
        QCOMPARE(TageInFolge({Gelernt(heute.addDays(-1)), Tagesstand{.tag = heute}}, heute), 1);
        QCOMPARE(TageInFolge({Tagesstand{.tag = heute}}, heute), 0);
        QCOMPARE(TageInFolge({}, heute), 0);
    }

    void PeriodsEndToday()
    {
        const QDate heute(2026, 3, 5);
        QCOMPARE(Beginn(Zeitraum::Tage30, {}, heute), QDate(2026, 2, 4));
        QCOMPARE(Beginn(Zeitraum::Wochen12, {}, heute), QDate(2025, 12, 12));
        QCOMPARE(Beginn(Zeitraum::Alles, {Gelernt({2024, 2, 29})}, heute), QDate(2024, 2, 29));
        QCOMPARE(Beginn(Zeitraum::Alles, {Gelernt(heute)}, heute), QDate(2026, 2, 27));
    }

    void GapsKeepTheCardsOfTheDayBefore()
    {
        const QDate montag(2026, 11, 16);
        const std::vector<Tagesstand> tage{{montag, 1, 2, {9}}, {montag.addDays(3), 3, 4, {5, 4}}};
        const auto alle = Lueckenlos(tage, montag.addDays(-1), montag.addDays(4));
        QCOMPARE(alle.size(), 6U);
        QVERIFY(!alle[0]);
        QCOMPARE(*alle[1], tage[0]);
        QCOMPARE(*alle[2], (Tagesstand{montag.addDays(1), 0, 0, {9}}));
        QCOMPARE(*alle[4], tage[1]);
        QCOMPARE(*alle[5], (Tagesstand{montag.addDays(4), 0, 0, {5, 4}}));
    }

    void DaysBeforeAPeriodGiveItItsFirstCards()
    {
        const QDate montag(2026, 11, 16);
        const auto alle = Lueckenlos({{montag, 1, 2, {9}}}, montag.addDays(10), montag.addDays(11));
        QCOMPARE(*alle[0], (Tagesstand{montag.addDays(10), 0, 0, {9}}));
    }

    // In Germany a day of March has 23 hours and one of October 25.
    void DaysOfOtherLengthsAreDays()
    {
        qputenv("TZ", "Europe/Berlin");
        tzset();
        for (const QDate &umstellung : {QDate(2027, 3, 28), QDate(2027, 10, 31)}) {
            const QDate vorher = umstellung.addDays(-1);
            const QDate nachher = umstellung.addDays(1);
            QCOMPARE(Lueckenlos({Gelernt(vorher)}, vorher, nachher).size(), 3U);
            QCOMPARE(TageInFolge({Gelernt(vorher), Gelernt(umstellung), Gelernt(nachher)}, nachher), 3);
        }
    }

    void WhatAWrongClockHasLeftIsLeftOut()
    {
        const QDate heute(2026, 11, 21);
        const std::vector tage{Gelernt({1970, 1, 1}), Gelernt(heute), Gelernt({2031, 1, 1})};
        QCOMPARE(Glaubhaft(tage, heute), std::vector{Gelernt(heute)});
    }
};

PAUKFIX_APPLESS_TEST(TagesrechnungTest)
#include "TagesrechnungTest.moc"
