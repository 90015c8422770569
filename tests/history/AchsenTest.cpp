// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Achsen.h"

#include "TestProgram.h"

using namespace paukfix;

// The scales of the pictures.
class AchsenTest : public QObject
{
    Q_OBJECT

private slots:

    void ValuesFitAndStepsAreRound_data()
    {
        QTest::addColumn<int>("oben");
        QTest::addColumn<int>("unten");
        QTest::addColumn<int>("schritt");
        QTest::newRow("a few answers") << 4 << 1 << 1;
        QTest::newRow("an evening") << 29 << 9 << 10;
        QTest::newRow("a box") << 87 << 0 << 20;
        QTest::newRow("a big box") << 32767 << 0 << 10000;
        QTest::newRow("only wrong ones") << 0 << 3 << 1;
    }

    void ValuesFitAndStepsAreRound()
    {
        QFETCH(int, oben);
        QFETCH(int, unten);
        const Wertachse achse = Wertachse::Fuer(oben, unten, 5);
        QTEST(achse.schritt, "schritt");
        QVERIFY(achse.oben >= oben && achse.unten >= unten);
        QVERIFY(achse.oben % achse.schritt == 0 && achse.unten % achse.schritt == 0);
        const QRectF feld(10, 20, 100, 200);
        QCOMPARE(achse.Y(achse.oben, feld), 20.0);
        QCOMPARE(achse.Y(-achse.unten, feld), 220.0);
    }

    void LittleRoomStillHasSteps() { QCOMPARE(Wertachse::Fuer(30, 9, 0).schritt, 50); }

    void NamesOfDaysDoNotTouch()
    {
        const QRectF feld(0, 0, 300, 100);
        for (const int tage : {7, 30, 84, 366, 4000}) {
            const Zeitachse achse{tage};
            const std::vector<int> marken = achse.Marken(60, feld);
            QVERIFY(!marken.empty());
            for (std::size_t i = 1; i < marken.size(); ++i)
                QVERIFY(achse.X(marken[i], feld) - achse.X(marken[i - 1], feld) >= 60);
            QVERIFY(achse.X(tage - 1, feld) - achse.X(marken.back(), feld) >= 60);
        }
    }

    void ADayIsFoundUnderTheMouse()
    {
        const QRectF feld(50, 0, 300, 100);
        const Zeitachse achse{30};
        QCOMPARE(achse.Tag(50, feld), 0);
        QCOMPARE(achse.Tag(349, feld), 29);
        QCOMPARE(achse.Tag(49, feld), -1);
        QCOMPARE(achse.Tag(351, feld), -1);
    }

    void BarsAreNeitherHairsNorMany()
    {
        QCOMPARE(Zeitachse{30}.TageJeBalken(), 1);
        QCOMPARE(Zeitachse{84}.TageJeBalken(), 1);
        QCOMPARE(Zeitachse{366}.TageJeBalken(), 7);
        QCOMPARE(Zeitachse{3660}.TageJeBalken(), 28);
    }
};

PAUKFIX_APPLESS_TEST(AchsenTest)
#include "AchsenTest.moc"
