// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "AbfrageTestSupport.h"
#include "TestProgram.h"

#include <QGuiApplication>
#include <QScreen>

using namespace paukfix;

// Where the query stands, on two screens: 1024 by 600 pixels, and 1200 by 900 to the right of it. Windows of
// this platform have a frame of two pixels at the left and the top.
class PFUseLageTest : public QObject
{
    Q_OBJECT

private:
    static QRect Gezeigt(
        const Fensterlage &lage, Fensterlage *danach = nullptr,
        const std::function<void(AbfrageBuehne &)> &lernen = [](AbfrageBuehne &) {})
    {
        AbfrageBuehne b;
        b.konfig.Abfrage = lage;
        QRect gezeigt;
        b.Fragen(TippKarte("x"), [&] {
            gezeigt = b.fenster->geometry();
            lernen(b);
        });
        b.fenster->Abschliessen();
        if (danach)
            *danach = b.konfig.Abfrage;
        return gezeigt;
    }

private slots:

    void AStoredPlaceIsTaken_data()
    {
        QTest::addColumn<QRect>("platz");
        QTest::newRow("this screen") << QRect(33, 41, 900, 550);
        QTest::newRow("the other") << QRect(1100, 41, 1100, 850);
        QTest::newRow("both") << QRect(800, 20, 900, 570);
    }

    void AStoredPlaceIsTaken()
    {
        QFETCH(QRect, platz);
        Fensterlage danach;
        const Fensterlage vorher{platz.topLeft(), platz.size(), false};
        QCOMPARE(Gezeigt(vorher, &danach), platz);
        QVERIFY(danach == vorher);
    }

    void APlaceThatIsNoMoreIsMovedIntoAScreen_data()
    {
        QTest::addColumn<QRect>("platz");
        QTest::addColumn<QRect>("gezeigt");
        QTest::newRow("no screen") << QRect(5000, 100, 900, 550) << QRect(124, 50, 900, 550);
        QTest::newRow("far away") << QRect(-32767, 20, 900, 550) << QRect(2, 20, 900, 550);
        QTest::newRow("below the edge") << QRect(50, 300, 900, 550) << QRect(50, 50, 900, 550);
        QTest::newRow("over the right edge") << QRect(2000, 100, 900, 550) << QRect(1324, 100, 900, 550);
        QTest::newRow("too large") << QRect(0, 0, 32767, 32767) << QRect(1024, 2, 1200, 900);
    }

    void APlaceThatIsNoMoreIsMovedIntoAScreen()
    {
        QFETCH(QRect, platz);
        QFETCH(QRect, gezeigt);
        QCOMPARE(Gezeigt({platz.topLeft(), platz.size(), false}), gezeigt);
    }

    void APlaceThatIsNoMoreMayComeBack()
    {
        Fensterlage danach;
        const Fensterlage vorher{QPoint(5000, 100), QSize(900, 550), false};
        Gezeigt(vorher, &danach);
        QVERIFY(danach == vorher);
    }

    void ASizeThatIsTooSmallShowsTheCardAllTheSame()
    {
        const QRect gezeigt = Gezeigt({QPoint(10, 10), QSize(1, 1), false});
        QCOMPARE(gezeigt.topLeft(), QPoint(10, 10));
        QVERIFY(gezeigt.height() > 200 && gezeigt.width() > 200);
    }

    void WhatTheLearnerMovesIsRemembered()
    {
        Fensterlage danach;
        Gezeigt({}, &danach, [](AbfrageBuehne &b) {
            b.fenster->windowHandle()->setPosition(77, 31);
            QTRY_COMPARE(b.fenster->geometry().topLeft(), QPoint(77, 31));
        });
        QVERIFY((danach == Fensterlage{QPoint(77, 31), {}, false}));
        Gezeigt(danach, &danach, [](AbfrageBuehne &b) {
            b.fenster->windowHandle()->setGeometry(78, 32, 990, 560);
            QTRY_COMPARE(b.fenster->geometry(), QRect(78, 32, 990, 560));
        });
        QVERIFY((danach == Fensterlage{QPoint(78, 32), QSize(990, 560), false}));
    }

    void WhatTheProgramDoesIsNot()
    {
        Fensterlage danach;
        Gezeigt({}, &danach, [](AbfrageBuehne &b) { b.fenster->setGeometry(5, 5, 1000, 580); });
        QVERIFY(danach == Fensterlage());
    }

    void AMaximisedQueryComesBackMaximisedAndKeepsItsPlace()
    {
        const Fensterlage vorher{QPoint(33, 41), QSize(900, 550), false};
        Fensterlage danach;
        Gezeigt(vorher, &danach, [](AbfrageBuehne &b) {
            b.fenster->windowHandle()->showMaximized();
            QTRY_VERIFY(b.fenster->isMaximized());
        });
        QVERIFY((danach == Fensterlage{vorher.platz, vorher.groesse, true}));
        bool maximiert = false;
        Gezeigt(danach, &danach, [&](AbfrageBuehne &b) { maximiert = b.fenster->isMaximized(); });
        QVERIFY(maximiert);
        QVERIFY((danach == Fensterlage{vorher.platz, vorher.groesse, true}));
        Gezeigt(danach, &danach, [](AbfrageBuehne &b) {
            b.fenster->windowHandle()->showNormal();
            QTRY_VERIFY(!b.fenster->isMaximized());
        });
        QVERIFY(!danach.maximiert);
    }
};

static int AufZweiSchirmen(int argc, char *argv[])
{
    const QTemporaryDir ordner;
    QFile schirme(ordner.filePath("schirme.json"));
    if (!schirme.open(QIODevice::WriteOnly))
        return 1;
    schirme.write(R"({"screens": [{"name": "klein", "x": 0, "y": 0, "width": 1024, "height": 600,
                      "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1},
                      {"name": "gross", "x": 1024, "y": 0, "width": 1200, "height": 900,
                      "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})");
    schirme.close();
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + schirme.fileName().toLocal8Bit());
    QApplication programm(argc, argv);
    PFUseLageTest test;
    return QTest::qExec(&test, argc, argv);
}

PAUKFIX_REGISTER_TEST(PFUseLageTest, &AufZweiSchirmen)
#include "PFUseLageTest.moc"
