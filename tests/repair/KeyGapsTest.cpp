// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "KeyGaps.h"

#include "TestProgram.h"

using namespace paukfix;

// What the pages of an index deny.
class KeyGapsTest : public QObject
{
    Q_OBJECT

private slots:

    void TwoNeighboursDenyWhatIsBetweenThem()
    {
        KeyGaps gaps;
        gaps.AddPage({1, 2, 5, 9, 10});
        gaps.Finish();
        for (const double key : {3.0, 4.0, 6.0, 8.0})
            QVERIFY(gaps.Contains(key));
        for (const double key : {1.0, 2.0, 5.0, 9.0, 3.5})
            QVERIFY(!gaps.Contains(key));
    }

    void TheOutermostKeysOfAPageDenyNothing()
    {
        KeyGaps gaps;
        gaps.AddPage({1, 5, 6, 20});
        gaps.AddPage({30, 40});
        gaps.Finish();
        for (const double key : {3.0, 12.0, 35.0})
            QVERIFY(!gaps.Contains(key));
    }

    void APageOutOfOrderDeniesNothing()
    {
        KeyGaps gaps;
        gaps.AddPage({1, 2, 9, 8, 10});
        gaps.Finish();
        QVERIFY(!gaps.Contains(5));
    }
};

PAUKFIX_CORE_TEST(KeyGapsTest)
#include "KeyGapsTest.moc"
