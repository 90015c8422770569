// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Kartenbild.h"

#include "BildBox.h"
#include "Flaeche.h"
#include "RichTextBox.h"
#include "StoreTestSupport.h"
#include "TestProgram.h"

#include <QMouseEvent>
#include <QTest>
#include <QVBoxLayout>

using namespace paukfix;
using namespace Qt::StringLiterals;

namespace {

// A card of 600 x 400 pixels whose question stands 20 pixels from three of its edges, 200 high.
struct Karte
{
    explicit Karte(const Kartenbild::Grenzen &grenzen = {{6, 6, 6, 6}}) : bild(&flaeche, frage, grenzen)
    {
        flaeche.resize(600, 400);
        frage->setGeometry(20, 20, 560, 200);
        flaeche.show();
        QImage rot(80, 60, QImage::Format_RGB32);
        rot.fill(Qt::red);
        if (!rot.save(ordner.filePath(u"rot.bmp"_s)))
            qFatal("no picture");
    }

    bool Zeigen(const char *name)
    {
        return bild.Zeigen(QString::fromUtf8(name), ordner.path(), ordner.path(), meldungen);
    }

    // Presses on the picture's middle, drags and lets go.
    void Ziehen(QPoint um)
    {
        BildBox *box = bild.Box();
        const QPoint mitte = box->rect().center();
        QTest::mousePress(box, Qt::LeftButton, {}, mitte);
        const QPoint ort = box->mapToParent(mitte) + um;
        QMouseEvent zug(QEvent::MouseMove, box->mapFromParent(ort), flaeche.mapToGlobal(ort), Qt::NoButton,
                        Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(box, &zug);
        QTest::mouseRelease(box, Qt::LeftButton, {}, mitte);
    }

    // How much room the question's text leaves at its sides, without the box's own margins.
    QMargins Rand()
    {
        const QRect text = frage->viewport()->geometry();
        return {text.left(), 0, frage->width() - 1 - text.right(), 0};
    }

    QTemporaryDir ordner;
    TestMeldungen meldungen;
    Flaeche flaeche{nullptr};
    RichTextBox *frage = new RichTextBox(&flaeche);
    Kartenbild bild;
};

} // namespace

class KartenbildTest : public QObject
{
    Q_OBJECT

private slots:

    void ThePictureStandsWhereTheCardSays()
    {
        Karte k;
        k.bild.SetPlatz({300, 30, 150, 120});
        QVERIFY(k.bild.Box()->isHidden());
        QVERIFY(k.Zeigen("rot.bmp"));
        QVERIFY(!k.bild.Box()->isHidden());
        QCOMPARE(k.bild.Box()->geometry(), QRect(300, 30, 150, 120));
        QCOMPARE(k.bild.Box()->Bild().pixelColor(5, 5), QColor(Qt::red));
    }

    void WithoutAPlaceItLiesOverTheRightOfTheQuestion()
    {
        Karte k;
        QVERIFY(k.Zeigen("rot.bmp"));
        const QRect frage = k.frage->geometry();
        QCOMPARE(k.bild.Box()->geometry().right(), frage.right());
        QCOMPARE(k.bild.Box()->y(), frage.y());
        QCOMPARE(k.bild.Box()->height(), frage.height());
        QCOMPARE(k.bild.Box()->width(), frage.width() * 2 / 5 + 1);
    }

    // The picture is 4 by 3, its room 224 by 200.
    void BesideTheTextItStandsAtTheEdgeInTheMiddleOfItsHeight()
    {
        Karte k({.abstand = {6, 6, 6, 6}, .nebenText = true});
        QVERIFY(k.Zeigen("rot.bmp"));
        const QRect frage = k.frage->geometry(), bild = k.bild.Box()->geometry();
        QCOMPARE(bild.right(), frage.right());
        QVERIFY(bild.height() < frage.height() * 9 / 10);
        QVERIFY(std::abs(bild.center().y() - frage.center().y()) <= 1);
    }

    void TheQuestionMayStandDeeperOnTheCard()
    {
        Karte k;
        auto *feld = new QWidget(&k.flaeche);
        feld->setGeometry(15, 40, 570, 210);
        k.frage->setParent(feld);
        k.frage->setGeometry(5, 5, 560, 200);
        QVERIFY(k.Zeigen("rot.bmp"));
        QCOMPARE(k.bild.Box()->geometry().topRight(), QPoint(15 + 5 + 559, 40 + 5));
    }

    void ItStaysWithinTheEdges_data()
    {
        QTest::addColumn<QRect>("platz");
        QTest::addColumn<QRect>("gezeigt");
        QTest::newRow("left and above") << QRect(-50, -9, 100, 80) << QRect(10, 20, 100, 80);
        QTest::newRow("right and below") << QRect(590, 390, 100, 80) << QRect(470, 280, 100, 80);
        QTest::newRow("too large") << QRect(0, 0, 900, 900) << QRect(10, 20, 560, 340);
        QTest::newRow("on the edges") << QRect(10, 20, 560, 340) << QRect(10, 20, 560, 340);
    }

    void ItStaysWithinTheEdges()
    {
        QFETCH(QRect, platz);
        QFETCH(QRect, gezeigt);
        Karte k({{10, 20, 30, 40}});
        k.bild.SetPlatz(platz);
        QVERIFY(k.Zeigen("rot.bmp"));
        QCOMPARE(k.bild.Box()->geometry(), gezeigt);
    }

    void WhereThereIsNoRoomItKeepsItsSmallestSize()
    {
        Karte k({{6, 6, 6, 6}, {24, 24}});
        k.flaeche.resize(20, 20);
        QCOMPARE(k.bild.Innerhalb({300, 300, 100, 100}), QRect(6, 6, 24, 24));
    }

    void WhatTheCardSaysIsKeptWhereTheCardIsTooSmallForAWhile()
    {
        Karte k;
        k.bild.SetPlatz({400, 30, 150, 120});
        QVERIFY(k.Zeigen("rot.bmp"));
        k.flaeche.resize(300, 400);
        k.bild.Platzieren();
        QCOMPARE(k.bild.Box()->geometry(), QRect(144, 30, 150, 120));
        k.flaeche.resize(600, 400);
        k.bild.Platzieren();
        QCOMPARE(k.bild.Box()->geometry(), QRect(400, 30, 150, 120));
    }

    void DraggedItStopsAtTheEdgesAndThatIsItsPlace()
    {
        Karte k;
        k.bild.SetPlatz({300, 30, 150, 120});
        QVERIFY(k.Zeigen("rot.bmp"));
        k.Ziehen({-100, 1000});
        QCOMPARE(k.bild.Box()->geometry(), QRect(200, 274, 150, 120));
        k.bild.Platzieren();
        QCOMPARE(k.bild.Box()->geometry(), QRect(200, 274, 150, 120));
    }

    void TheTextMakesRoomBesideThePicture()
    {
        Karte k;
        k.bild.SetPlatz({380, 30, 150, 120});
        const QMargins ohne = k.Rand();
        QVERIFY(k.Zeigen("rot.bmp"));
        const QMargins mit = k.Rand();
        QCOMPARE(mit.left(), ohne.left());
        QVERIFY2(mit.right() >= 580 - 380 + 10, qPrintable(QString::number(mit.right())));
        k.Ziehen({-350, 0});
        QVERIFY(k.Rand().left() >= 180 - 20 + 10);
        QCOMPARE(k.Rand().right(), ohne.right());
        k.bild.Verbergen();
        QVERIFY(k.bild.Box()->isHidden());
        QCOMPARE(k.Rand(), ohne);
    }

    // Where it would leave too little on both sides it stands at an edge, and the text has the rest.
    void APictureInTheMiddleGivesWayToTheText()
    {
        Karte karte({.abstand = {}, .nebenText = true});
        karte.bild.SetPlatz({200, 60, 200, 100});
        QVERIFY(karte.Zeigen("rot.bmp"));
        QCOMPARE(karte.bild.Box()->geometry(), QRect(380, 60, 200, 100));
        QVERIFY(karte.Rand().right() >= 200 + 10);
    }

    void TheTextKeepsTheRoomForAPictureThatComesLater()
    {
        Karte k;
        const QMargins ohne = k.Rand();
        k.bild.SetPlatz({380, 30, 150, 120});
        QCOMPARE(k.Rand(), ohne);
        k.bild.SetFreihalten(true);
        QVERIFY(k.bild.Box()->isHidden());
        const QMargins frei = k.Rand();
        QVERIFY(frei.right() > ohne.right());
        QVERIFY(k.Zeigen("rot.bmp"));
        QCOMPARE(k.Rand(), frei);
        k.bild.Verbergen();
        QCOMPARE(k.Rand(), frei);
        k.bild.SetFreihalten(false);
        QCOMPARE(k.Rand(), ohne);
    }

    void AFileThatCannotBeShownIsToldAndChangesNothing()
    {
        Karte k;
        QVERIFY(!k.Zeigen("fehlt.bmp"));
        QVERIFY(k.bild.Box()->isHidden());
        QVERIFY(k.Zeigen("rot.bmp"));
        k.meldungen.gezeigt.clear();
        QVERIFY(!k.Zeigen("fehlt.bmp"));
        QCOMPARE(k.meldungen.Texte(), QStringList(u"Bilddatei nicht gefunden fehlt.bmp"_s));
        QVERIFY(!k.Zeigen(""));
        QCOMPARE(k.meldungen.Texte().size(), 1);
        QVERIFY(!k.bild.Box()->isHidden());
        QCOMPARE(k.bild.Box()->Bild().pixelColor(5, 5), QColor(Qt::red));
    }
};

PAUKFIX_TEST(KartenbildTest)
#include "KartenbildTest.moc"
