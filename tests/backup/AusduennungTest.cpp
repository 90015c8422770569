// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Ausduennung.h"

#include "TestProgram.h"

#include <QTest>

#include <algorithm>

using namespace paukfix;

namespace {

constexpr qint64 VielPlatz = qint64{1} << 60;
const QDate Heute(2026, 11, 22); // a Sunday

Sicherung Eine(const QDateTime &zeit, qint64 groesse = 1000)
{
    return {zeit.toString(Qt::ISODate), zeit, groesse};
}

qint64 Summe(const Sicherungsliste &liste)
{
    qint64 summe = 0;
    for (const Sicherung &sicherung : liste)
        summe += sicherung.groesse;
    return summe;
}

// What is left of `liste`, the newest first.
Sicherungsliste Rest(const Sicherungsliste &liste, const QDate &heute, qint64 frei = VielPlatz)
{
    const Sicherungsliste gehen = Entbehrlich(liste, heute, Summe(liste), frei);
    Sicherungsliste rest;
    std::copy_if(liste.begin(), liste.end(), std::back_inserter(rest), [&](const Sicherung &eine) {
        return std::none_of(gehen.begin(), gehen.end(),
                            [&](const Sicherung &weg) { return weg.datei == eine.datei; });
    });
    return rest;
}

} // namespace

class AusduennungTest : public QObject
{
    Q_OBJECT

private slots:

    void TheLastTenStayHoweverCloseTheyAre()
    {
        Sicherungsliste liste;
        for (int minute = 0; minute < 25; ++minute)
            liste.prepend(Eine({Heute, {9, minute}}));
        const Sicherungsliste rest = Rest(liste, Heute);
        QCOMPARE(rest.size(), 10);
        QCOMPARE(rest.first().zeit.time(), QTime(9, 24));
        QCOMPARE(rest.last().zeit.time(), QTime(9, 15));
    }

    void OneADayStaysForTwoWeeksAndOneAWeekForHalfAYear()
    {
        Sicherungsliste liste; // three a day for a year
        for (int tag = 0; tag < 365; ++tag)
            for (const int stunde : {20, 12, 8})
                liste.append(Eine({Heute.addDays(-tag), {stunde, 0}}));
        const Sicherungsliste rest = Rest(liste, Heute);

        for (int tag = 0; tag < 14; ++tag)
            QVERIFY2(std::any_of(rest.begin(), rest.end(),
                                 [&](const Sicherung &eine) {
                                     return eine.zeit == QDateTime(Heute.addDays(-tag), {20, 0});
                                 }),
                     qPrintable(Heute.addDays(-tag).toString()));
        // A week's last one is that of its Sunday.
        for (int woche = 0; woche < 26; ++woche)
            QVERIFY(std::any_of(rest.begin(), rest.end(), [&](const Sicherung &eine) {
                return eine.zeit == QDateTime(Heute.addDays(-7 * woche), {20, 0});
            }));
        QCOMPARE(rest.last().zeit.date(), Heute.addDays(-7 * 25));
        // The ten last take the first three days and one of the fourth; the days end in the second week.
        QCOMPARE(rest.size(), 10 + 10 + 24);
    }

    void NothingIsLostByThinningAgainEachDay()
    {
        // Thinned day by day, a year's backups are the same as thinned at its end.
        Sicherungsliste taeglich;
        Sicherungsliste alle;
        for (int tag = 364; tag >= 0; --tag) {
            const Sicherung neue = Eine({Heute.addDays(-tag), {18, 0}});
            alle.prepend(neue);
            taeglich.prepend(neue);
            taeglich = Rest(taeglich, Heute.addDays(-tag));
        }
        const auto dateien = [](const Sicherungsliste &liste) {
            QStringList namen;
            for (const Sicherung &eine : liste)
                namen << eine.datei;
            return namen;
        };
        QCOMPARE(dateien(taeglich), dateien(Rest(alle, Heute)));
    }

    void ATenthOfTheFreeDiskIsTheMost()
    {
        Sicherungsliste liste;
        for (int tag = 0; tag < 10; ++tag)
            liste.append(Eine({Heute.addDays(-tag), {18, 0}}, 1'000'000));
        // 4 MB are a tenth of 40: what goes is free then.
        const Sicherungsliste rest = Rest(liste, Heute, 35'000'000);
        QCOMPARE(rest.size(), 4);
        QCOMPARE(rest.first().zeit.date(), Heute);
    }

    // Twelve of one minute, of which two go anyhow: with the room that they leave, the other ten may stay.
    void WhatGoesAnyhowMakesRoomFirst()
    {
        Sicherungsliste liste;
        for (int sekunde = 0; sekunde < 12; ++sekunde)
            liste.prepend(Eine({Heute, {9, 0, sekunde}}, 1'000'000));
        QCOMPARE(Rest(liste, Heute, 98'000'000).size(), 10);
        QCOMPARE(Rest(liste, Heute, 97'000'000).size(), 9);
    }

    void TheNewestStaysOnAFullDisk()
    {
        const Sicherungsliste liste{Eine({Heute, {18, 0}}), Eine({Heute.addDays(-1), {18, 0}})};
        const Sicherungsliste rest = Rest(liste, Heute, 0);
        QCOMPARE(rest.size(), 1);
        QCOMPARE(rest.first().zeit.date(), Heute);
    }

    void NoneGoesForTheSakeOfADiskThatNobodyKnows()
    {
        const Sicherungsliste liste{Eine({Heute, {18, 0}}), Eine({Heute.addDays(-1), {18, 0}})};
        QCOMPARE(Rest(liste, Heute, -1).size(), 2);
    }

    void TheBackupsOfOtherBoxesCountToo()
    {
        const Sicherungsliste liste{Eine({Heute, {18, 0}}), Eine({Heute.addDays(-1), {18, 0}})};
        QCOMPARE(Entbehrlich(liste, Heute, 1'000'000, 5'000'000).size(), 1);
        QCOMPARE(Entbehrlich(liste, Heute, 2000, 5'000'000).size(), 0);
    }

    void AClockThatWasAheadHidesNothing()
    {
        Sicherungsliste liste;
        for (int tag = 0; tag < 12; ++tag)
            liste.append(Eine({Heute.addDays(400 - tag), {18, 0}}));
        for (int tag = 0; tag < 5; ++tag)
            liste.append(Eine({Heute.addDays(-tag), {18, 0}}));
        const Sicherungsliste rest = Rest(liste, Heute);
        for (int tag = 0; tag < 5; ++tag)
            QVERIFY(std::any_of(rest.begin(), rest.end(), [&](const Sicherung &eine) {
                return eine.zeit.date() == Heute.addDays(-tag);
            }));
    }
};

PAUKFIX_CORE_TEST(AusduennungTest)
#include "AusduennungTest.moc"
