// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Bildbuehne.h"
#include "TestProgram.h"
#include "Twips.h"

#include <QBuffer>
#include <QDir>
#include <QTest>

using namespace paukfix;
using namespace Qt::StringLiterals;

class PFAendernBildTest : public QObject
{
    Q_OBJECT

private slots:

    void PictureIsShownAtItsPlaceWithItsHandle()
    {
        Bildbuehne b({Bildkarte(1, u"rot.bmp"_s)});
        b.Zeigen();
        QVERIFY(b.Bild()->isVisible());
        QCOMPARE(b.Farbe(), QColor(Qt::red));
        QCOMPARE(b.Bild()->geometry(), PixelVonTwips(3007, 1203, 3001, 2003));
        QVERIFY(b.Finde("Sizer")->isVisible());
        QCOMPARE(b.Finde("Sizer")->geometry().bottomRight(), b.Bild()->geometry().bottomRight());
    }

    void LastOfTheThreePicturesStaysVisible()
    {
        Bildbuehne b({Bildkarte(1, u"rot.bmp"_s, {}, u"blau.jpg"_s)});
        b.Zeigen();
        QVERIFY(b.Farbe().blue() > 200 && b.Farbe().red() < 60);
    }

    void PictureOfOneCardDoesNotStayForTheNext()
    {
        Bildbuehne b({Bildkarte(1, u"rot.bmp"_s), MakeCard(2, 0, 2)});
        b.Zeigen();
        b.Klick("CVor");
        QVERIFY(!b.Bild()->isVisible());
        QVERIFY(!b.Finde("Sizer")->isVisible());
        b.Tippe("MFrage", u"x"_s);
        b.Klick("CVor");
        QVERIFY(!b.Bild()->isVisible());
        QCOMPARE(b.Bild()->geometry(), PixelVonTwips(BildlageVorgabe.links, BildlageVorgabe.oben,
                                                     BildlageVorgabe.breite, BildlageVorgabe.hoehe));
        QCOMPARE(b.kartei.Stored()[1].Picture_1_Name, QString());
    }

    void PictureInTheProgramsDirectoryIsFoundToo()
    {
        Bildbuehne b({Bildkarte(1, u"eigen.bmp"_s)});
        BildSchreiben(b.programm.filePath(u"eigen.bmp"_s), {20, 20}, Qt::yellow);
        b.Zeigen();
        QCOMPARE(b.Farbe(), QColor(Qt::yellow));
    }

    void PictureJustBesideTheCardFileIsNotFoundFromElsewhereThoughTheDialogShowsIt()
    {
        Bildbuehne b({Bildkarte(1, u"rot.bmp"_s)}, QDir::rootPath());
        b.Zeigen();
        QCOMPARE(b.Meldungstexte(), QStringList(u"Bilddatei nicht gefunden rot.bmp"_s));
        QVERIFY(!b.Bild()->isVisible());
        b.Dialog("MBilder", u"Bildbearbeiten"_s, [](QWidget &dialog) {
            Hand(dialog).Klick("Option1");
            const auto *bild = Hand(dialog).Finde<QLabel>("Picture1");
            QCOMPARE(bild->pixmap().size(), QSize(200, 150));
            dialog.close();
        });
    }

    void NamesWithADirectoryAreReducedAndShownAsStored()
    {
        Bildbuehne b({Bildkarte(1, u"C:\\Karten\\rot.bmp"_s), Bildkarte(2, u"../../x/fehlt.bmp"_s)});
        b.Zeigen();
        QCOMPARE(b.Farbe(), QColor(Qt::red));
        b.Klick("CVor");
        QCOMPARE(b.Meldungstexte(), QStringList(u"Bilddatei nicht gefunden ../../x/fehlt.bmp"_s));
    }

    void FileThatIsNoPictureGivesAMessageAndNothingElse_data()
    {
        QTest::addColumn<QByteArray>("inhalt");
        const auto geschrieben = [](const char *format) {
            QImage bild(200, 150, QImage::Format_RGB32);
            bild.fill(Qt::red);
            QBuffer puffer;
            puffer.open(QIODevice::WriteOnly);
            bild.save(&puffer, format);
            return puffer.data();
        };
        const QByteArray bmp = geschrieben("BMP");
        QTest::newRow("a text") << QByteArray("kein Bild");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("another format") << geschrieben("PNG");
        QTest::newRow("truncated bitmap") << bmp.left(40);
        QTest::newRow("truncated JPEG") << geschrieben("JPEG").left(60);
        QTest::newRow("half a bitmap") << bmp.left(bmp.size() / 2);
        QTest::newRow("half a JPEG") << geschrieben("JPEG").chopped(100);
        // A few bytes that claim 60,000 x 60,000 and 10,000 x 10,000 pixels.
        QTest::newRow("bomb")
            << QByteArray(bmp.left(80)).replace(18, 8, QByteArray("\x60\xea\0\0\x60\xea\0\0", 8));
        QTest::newRow("smaller bomb")
            << QByteArray(bmp.left(80)).replace(18, 8, QByteArray("\x10\x27\0\0\x10\x27\0\0", 8));
    }

    void FileThatIsNoPictureGivesAMessageAndNothingElse()
    {
        QFETCH(QByteArray, inhalt);
        Bildbuehne b(
            {Bildkarte(1, u"rot.bmp"_s), Bildkarte(2, u"falsch.bmp"_s), Bildkarte(3, u"blau.jpg"_s)});
        QFile falsch(b.Datei("falsch.bmp"));
        QVERIFY(falsch.open(QIODevice::WriteOnly) && falsch.write(inhalt) == inhalt.size());
        falsch.close();
        b.Zeigen();
        b.Klick("CVor");
        const QStringList texte = b.Meldungstexte();
        QCOMPARE(texte.size(), 1);
        QVERIFY2(texte[0].startsWith(u"Ungültiges Bild"_s) && IsGermanMessage(texte[0]),
                 qPrintable(texte[0]));
        QVERIFY(!b.Bild()->isVisible() && !b.Finde("Sizer")->isVisible());
        b.Tippe("MFrage", u"x"_s);
        b.Klick("CVor");
        QCOMPARE(b.Text("MaskFrageNr"), u"3"_s);
        QVERIFY(b.Bild()->isVisible() && b.Farbe().blue() > 200);
        QCOMPARE(b.Meldungstexte(), QStringList());
        const CardRecord card = b.kartei.Stored()[1];
        QCOMPARE(card.Frage_Klartext, u"xFrage 2"_s);
        QCOMPARE(card.Picture_1_Name, u"falsch.bmp"_s);
        QCOMPARE(card.Pictureleft, 3007.0);
    }

    void PictureIsToldByItsContentNotItsName()
    {
        Bildbuehne b({Bildkarte(1, u"jpeg.bmp"_s), Bildkarte(2, u"bitmap.jpg"_s)});
        QVERIFY(QFile::copy(b.Datei("blau.jpg"), b.Datei("jpeg.bmp")));
        QVERIFY(QFile::copy(b.Datei("rot.bmp"), b.Datei("bitmap.jpg")));
        b.Zeigen();
        QVERIFY(b.Bild()->isVisible() && b.Farbe().blue() > 200);
        b.Klick("CVor");
        QCOMPARE(b.Farbe(), QColor(Qt::red));
        QCOMPARE(b.Meldungstexte(), QStringList());
    }

    void KeyboardLeavesThePictureWithIt()
    {
        Bildbuehne b({Bildkarte(1, u"rot.bmp"_s), MakeCard(2, 0, 2)});
        b.Zeigen();
        b.Bild()->setFocus();
        b.Taste(Qt::Key_Less, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(b.Text("MaskFrageNr"), u"2"_s);
        QVERIFY(b.Finde("MFrage")->hasFocus());
        b.Taste(Qt::Key_Right); // would have been a change of the answer's type
        QVERIFY(b.fenster->close());
        QCOMPARE(b.kartei.Stored()[1], MakeCard(2, 0, 2));
    }

    // --- Moving and sizing

    void DraggedPictureIsStoredWhereItWasPut()
    {
        Bildbuehne b({Bildkarte(1, u"rot.bmp"_s)});
        b.Zeigen();
        const QRect vorher = b.Bild()->geometry();
        b.Ziehen(b.Bild(), {40, 30});
        QCOMPARE(b.Bild()->geometry(), vorher.translated(40, 30));
        QVERIFY(b.Finde("Sizer")->isVisible());
        QCOMPARE(b.Finde("Sizer")->geometry().bottomRight(), b.Bild()->geometry().bottomRight());
        b.Klick("CVor");
        const CardRecord card = b.kartei.Stored()[0];
        QCOMPARE(card.Pictureleft, double(TwipsVonPixel(vorher.left() + 40)));
        QCOMPARE(card.PictureTop, double(TwipsVonPixel(vorher.top() + 30)));
        QCOMPARE(card.Picturewidth, 3001.0); // as it was
        QCOMPARE(card.Pictureheight, 2003.0);
    }

    void HandleIsHiddenWhileThePictureIsHeld()
    {
        Bildbuehne b({Bildkarte(1, u"rot.bmp"_s)});
        b.Zeigen();
        QTest::mousePress(b.Bild(), Qt::LeftButton);
        QVERIFY(!b.Finde("Sizer")->isVisible());
        QTest::mouseRelease(b.Bild(), Qt::LeftButton);
        QVERIFY(b.Finde("Sizer")->isVisible());
    }

    void PressOnThePictureIsAChangeButMovesNothing()
    {
        Bildbuehne b({Bildkarte(1, u"rot.bmp"_s)});
        b.Zeigen();
        b.Ersetze("MFrage", {});
        b.Klick("Picture1");
        b.Klick("CVor"); // has to store, and may not
        QCOMPARE(b.Meldungstexte(), QStringList(u"Keine Frage eingegeben"_s));
        b.Tippe("MFrage", u"f"_s);
        b.Klick("CVor");
        const CardRecord card = b.kartei.Stored()[0];
        QCOMPARE(card.Pictureleft, 3007.0);
        QCOMPARE(card.PictureTop, 1203.0);
    }

    void PressOnPictureOrHandleAloneStoresTheCard_data()
    {
        QTest::addColumn<QString>("was");
        QTest::newRow("picture") << u"Picture1"_s;
        QTest::newRow("handle") << u"Sizer"_s;
    }

    void PressOnPictureOrHandleAloneStoresTheCard()
    {
        QFETCH(QString, was);
        CardRecord card = Bildkarte(1, u"rot.bmp"_s);
        card.Antworttyp = 1.25;
        Bildbuehne b({card});
        b.Zeigen();
        b.Klick(qPrintable(was));
        b.Klick("CVor");
        // Storing writes the type anew: that is how it is seen.
        QCOMPARE(b.kartei.Stored()[0].Antworttyp, 1.0);
    }

    void PictureStaysWithinTheFormsMargins()
    {
        Bildbuehne b({Bildkarte(1, u"rot.bmp"_s)});
        b.Zeigen();
        QWidget *form = b.Finde("Formular");
        const QSize bild = b.Bild()->size();
        const auto geht = [&](const QPoint &ort) {
            b.Bild()->move(200, 100);
            const QPoint mitte = b.Bild()->rect().center();
            QTest::mousePress(b.Bild(), Qt::LeftButton, {}, mitte);
            const QPoint wohin = form->mapToGlobal(ort + mitte);
            QMouseEvent zug(QEvent::MouseMove, b.Bild()->mapFromGlobal(wohin), wohin, Qt::NoButton,
                            Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(b.Bild(), &zug);
            const bool dort = b.Bild()->pos() == ort;
            QTest::mouseRelease(b.Bild(), Qt::LeftButton, {}, mitte);
            return dort;
        };
        QVERIFY(geht({11, 11}));
        QVERIFY(!geht({10, 11}));
        QVERIFY(!geht({11, 10}));
        const int rechts = form->width() - bild.width() - 20;
        const int unten = form->height() - bild.height() - 40;
        QVERIFY(geht({rechts - 1, unten - 1}));
        QVERIFY(!geht({rechts, unten - 1}));
        QVERIFY(!geht({rechts - 1, unten}));
        // Nor does the card say more than what is shown.
        const QPoint wo = b.Bild()->pos();
        b.Klick("CVor");
        const CardRecord card = b.kartei.Stored()[0];
        QCOMPARE(card.PictureTop, double(TwipsVonPixel(wo.y())));
        QCOMPARE(card.Pictureleft, double(TwipsVonPixel(wo.x())));
    }

    void HandleSizesThePicture()
    {
        Bildbuehne b({Bildkarte(1, u"rot.bmp"_s)});
        b.Zeigen();
        const QRect vorher = b.Bild()->geometry();
        b.Ziehen(b.Finde("Sizer"), {50, 20});
        QCOMPARE(b.Bild()->geometry(), QRect(vorher.topLeft(), vorher.size() + QSize(50, 20)));
        QCOMPARE(b.Finde("Sizer")->geometry().bottomRight(), b.Bild()->geometry().bottomRight());
        // Beyond the margin it does not go, nor to nothing.
        const QRect gross = b.Bild()->geometry();
        b.Ziehen(b.Finde("Sizer"), {5000, 5000});
        QCOMPARE(b.Bild()->geometry(), gross);
        b.Ziehen(b.Finde("Sizer"), {-2 * gross.width(), 0});
        QVERIFY(b.Bild()->width() >= 24);
        const QSize groesse = b.Bild()->size();
        b.Klick("CVor");
        const CardRecord card = b.kartei.Stored()[0];
        QCOMPARE(card.Pictureleft, 3007.0);
        QCOMPARE(card.PictureTop, 1203.0);
        QCOMPARE(card.Picturewidth, double(TwipsVonPixel(groesse.width())));
        QCOMPARE(card.Pictureheight, double(TwipsVonPixel(groesse.height())));
    }

    void ArrowKeysMoveAndSizeThePicture()
    {
        Bildbuehne b({Bildkarte(1, u"rot.bmp"_s)});
        b.Zeigen();
        const QRect vorher = b.Bild()->geometry();
        b.Bild()->setFocus();
        b.Taste(Qt::Key_Right);
        b.Taste(Qt::Key_Down);
        b.Taste(Qt::Key_Down);
        QCOMPARE(b.Bild()->geometry(), vorher.translated(10, 20));
        b.Taste(Qt::Key_Left, Qt::ShiftModifier);
        b.Taste(Qt::Key_Up, Qt::ShiftModifier);
        QCOMPARE(b.Bild()->size(), vorher.size() - QSize(10, 10));
        b.Klick("CVor");
        QCOMPARE(b.kartei.Stored()[0].Pictureleft, double(TwipsVonPixel(vorher.left() + 10)));
    }

    void TabGoesFromTheQuestionToItsPictureAndOn()
    {
        Bildbuehne b({Bildkarte(1, u"rot.bmp"_s)});
        b.Zeigen();
        QStringList folge;
        for (int i = 0; i < 4; ++i) {
            folge << b.fenster->focusWidget()->objectName();
            b.Taste(Qt::Key_Tab);
        }
        QCOMPARE(folge.join(u' '), u"MFrage Picture1 Antwort(0) Antwort_T"_s);
    }

    void PictureStoredOutsideTheWindowIsShownWithinAndKeptAsStored()
    {
        CardRecord card = Bildkarte(1, u"rot.bmp"_s);
        card.Pictureleft = 30000;
        card.PictureTop = 25000;
        Bildbuehne b({card});
        b.Zeigen();
        QVERIFY(b.Finde("Formular")->rect().contains(b.Bild()->geometry()));
        b.Tippe("MFrage", u"x"_s);
        b.Klick("Cadd");
        QCOMPARE(b.kartei.Stored()[0].Pictureleft, 30000.0);
        QCOMPARE(b.kartei.Stored()[0].PictureTop, 25000.0);
    }

    void ShowingAndStoringAHundredTimesLeavesThePictureWhereItWas()
    {
        Bildbuehne b({Bildkarte(1, u"rot.bmp"_s), MakeCard(2, 0, 2)});
        b.Zeigen();
        for (int i = 0; i < 100; ++i) {
            b.Klick("Cadd");
            b.Klick("CVor");
            b.Klick("CZurück");
        }
        const CardRecord card = b.kartei.Stored()[0];
        QCOMPARE(card.Pictureleft, 3007.0);
        QCOMPARE(card.PictureTop, 1203.0);
        QCOMPARE(card.Picturewidth, 3001.0);
        QCOMPARE(card.Pictureheight, 2003.0);
    }

    void QuestionMakesRoomBesideThePicture()
    {
        CardRecord card = Bildkarte(1, u"rot.bmp"_s);
        card.Pictureleft = BildlageVorgabe.links;
        card.PictureTop = BildlageVorgabe.oben;
        Bildbuehne b({card, MakeCard(2, 0, 2)});
        b.Zeigen();
        const QWidget *text = b.Box("MFrage")->viewport();
        QVERIFY(text->mapTo(b.Finde("Formular"), text->rect().topRight()).x() < b.Bild()->x());
        b.Klick("CVor");
        QVERIFY(text->mapTo(b.Finde("Formular"), text->rect().topRight()).x() > b.Bild()->geometry().right());
    }
};

PAUKFIX_TEST(PFAendernBildTest)
#include "PFAendernBildTest.moc"
