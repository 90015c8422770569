// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Automatik.h"

#include "StoreTestSupport.h"
#include "TestProgram.h"

#include <QSignalSpy>
#include <QTest>
#include <QWidget>

// A clock that stands until it is set.
class StehendeUhr final : public Uhr
{
public:
    qint64 Sekunde() const override
    {
        ++gelesen;
        return sekunde;
    }

    QDateTime Jetzt() const override { return {}; }

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
        StehendeUhr uhr;
        Automatik automatik{uhr, belegung};
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
        b.uhr.Warten();
        b.uhr.Weiter();
        b.uhr.Weiter();
        QCOMPARE(b.faellig.size(), 0);
        b.uhr.Weiter();
        QCOMPARE(b.faellig.size(), 1);
        b.uhr.Weiter();
        b.uhr.Weiter();
        QCOMPARE(b.faellig.size(), 1);
        b.uhr.Weiter();
        QCOMPARE(b.faellig.size(), 2);
    }

    void ThePauseBeginsWhenNothingElseIsUnderWay()
    {
        Buehne b;
        b.automatik.MAutoschalter_Click();
        b.uhr.Weiter();
        b.uhr.Weiter();
        {
            const auto belegt = b.belegung.Belegen();
            for (int i = 0; i < 5; ++i)
                b.uhr.Weiter();
        }
        b.uhr.Weiter();
        b.uhr.Weiter();
        QCOMPARE(b.faellig.size(), 0);
        b.uhr.Weiter();
        QCOMPARE(b.faellig.size(), 1);
    }

    void WhatTheCardTakesIsNoPartOfThePause()
    {
        Buehne b;
        connect(&b.automatik, &Automatik::Faellig, this, [&] { b.uhr.sekunde += 60; });
        b.automatik.MAutoschalter_Click();
        for (int i = 0; i < 3; ++i)
            b.uhr.Weiter();
        QCOMPARE(b.faellig.size(), 1);
        b.uhr.Weiter();
        b.uhr.Weiter();
        QCOMPARE(b.faellig.size(), 1);
        b.uhr.Weiter();
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
        const qint64 gelesen = b.uhr.gelesen;
        Buehne andere; // while that one looks twice, the first would have, too
        andere.automatik.MAutoschalter_Click();
        andere.uhr.Warten();
        QCOMPARE(b.uhr.gelesen, gelesen);
        QCOMPARE(b.faellig.size(), 0);
    }
};

PAUKFIX_TEST(AutomatikTest)
#include "AutomatikTest.moc"
