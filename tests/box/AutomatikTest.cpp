// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Automatik.h"

#include "StoreTestSupport.h"
#include "TestProgram.h"

#include <QSignalSpy>
#include <QTest>
#include <QWidget>

using namespace paukfix;

// A clock that stands until it is set.
class StehendeUhr final : public Clock
{
public:
    qint64 Second() const override
    {
        ++gelesen;
        return sekunde;
    }

    QDateTime Now() const override { return {}; }

    // Lets a second begin, and the automatic mode look at the clock.
    void Weiter()
    {
        ++sekunde;
        Warten();
    }

    // Until the clock has been looked at twice more: once for what came before, once for what comes now.
    void Warten() const
    {
        const qint64 vorher = gelesen;
        QTRY_VERIFY(gelesen >= vorher + 4);
    }

    mutable qint64 gelesen = 0;
    qint64 sekunde = 100;
};

class AutomatikTest : public QObject
{
    Q_OBJECT

    struct Buehne
    {
        QWidget fenster;
        Belegung belegung{fenster};
        StehendeUhr clock;
        Automatik automatik{clock, belegung};
        QSignalSpy faellig{&automatik, &Automatik::Faellig};
        QSignalSpy umgeschaltet{&automatik, &Automatik::Umgeschaltet};
    };

private slots:

    void ACardIsDueAfterThreeChangesOfTheSecond()
    {
        Buehne b;
        b.automatik.MAutoschalter_Click();
        QCOMPARE(b.umgeschaltet.size(), 1);
        QCOMPARE(b.umgeschaltet[0][0].toBool(), true);
        b.clock.Warten();
        b.clock.Weiter();
        b.clock.Weiter();
        QCOMPARE(b.faellig.size(), 0);
        b.clock.Weiter();
        QCOMPARE(b.faellig.size(), 1);
        b.clock.Weiter();
        b.clock.Weiter();
        QCOMPARE(b.faellig.size(), 1);
        b.clock.Weiter();
        QCOMPARE(b.faellig.size(), 2);
    }

    void ThePauseBeginsWhenNothingElseIsUnderWay()
    {
        Buehne b;
        b.automatik.MAutoschalter_Click();
        b.clock.Weiter();
        b.clock.Weiter();
        {
            const auto belegt = b.belegung.Belegen();
            for (int i = 0; i < 5; ++i)
                b.clock.Weiter();
        }
        b.clock.Weiter();
        b.clock.Weiter();
        QCOMPARE(b.faellig.size(), 0);
        b.clock.Weiter();
        QCOMPARE(b.faellig.size(), 1);
    }

    void WhatTheCardTakesIsNoPartOfThePause()
    {
        Buehne b;
        connect(&b.automatik, &Automatik::Faellig, this, [&] { b.clock.sekunde += 60; });
        b.automatik.MAutoschalter_Click();
        for (int i = 0; i < 3; ++i)
            b.clock.Weiter();
        QCOMPARE(b.faellig.size(), 1);
        b.clock.Weiter();
        b.clock.Weiter();
        QCOMPARE(b.faellig.size(), 1);
        b.clock.Weiter();
        QCOMPARE(b.faellig.size(), 2);
    }

    void SwitchedOffItLooksAtNoClock()
    {
        Buehne b;
        b.automatik.MAutoschalter_Click();
        b.automatik.MAutoschalter_Click();
        QCOMPARE(b.umgeschaltet.last()[0].toBool(), false);
        b.automatik.MAutoschalter_Click();
        b.automatik.AutomatikAus();
        QCOMPARE(b.umgeschaltet.last()[0].toBool(), false);
        const qint64 gelesen = b.clock.gelesen;
        Buehne andere; // while that one looks twice, the first would have, too
        andere.automatik.MAutoschalter_Click();
        andere.clock.Warten();
        QCOMPARE(b.clock.gelesen, gelesen);
        QCOMPARE(b.faellig.size(), 0);
    }
};

PAUKFIX_TEST(AutomatikTest)
#include "AutomatikTest.moc"
