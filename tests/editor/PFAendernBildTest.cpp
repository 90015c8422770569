// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "BildBox.h"
#include "EditorBuehne.h"
#include "Sizer.h"
#include "Twips.h"

#include <QImage>
#include <QMouseEvent>
#include <QTest>

namespace {

// A picture of one colour; `name` says the format.
void BildSchreiben(const QString &pfad, QSize groesse, const QColor &farbe)
{
    QImage bild(groesse, QImage::Format_RGB32);
    bild.fill(farbe);
    QVERIFY(bild.save(pfad));
}

CardRecord Bildkarte(int nummer, const QString &eins, const QString &zwei = {}, const QString &drei = {})
{
    CardRecord card = MakeCard(nummer, 0, nummer);
    card.Picture_1_Name = eins;
    card.Picture_2_Name = zwei;
    card.Picture_3_Name = drei;
    card.PictureTop = 1203;
    card.Pictureleft = 3007;
    card.Picturewidth = 3001;
    card.Pictureheight = 2003;
    return card;
}

// An editor whose card file has pictures beside it; the current directory is the card file's.
struct Bildbuehne : EditorBuehne
{
    explicit Bildbuehne(const QList<CardRecord> &cards) : EditorBuehne(cards)
    {
        BildSchreiben(Datei("rot.bmp"), {200, 150}, Qt::red);
        BildSchreiben(Datei("blau.jpg"), {80, 60}, Qt::blue);
        BildSchreiben(Datei("gross.bmp"), {900, 700}, Qt::green);
        BildSchreiben(Datei("hoch.bmp"), {100, 700}, Qt::green);
        QDir::setCurrent(kartei.directory.path());
    }

    ~Bildbuehne() { QDir::setCurrent(QDir::tempPath()); }

    QString Datei(const char *name) const { return kartei.directory.filePath(QString::fromUtf8(name)); }

    BildBox *Bild() { return Finde<BildBox>("Picture1"); }

    QColor Farbe() { return Bild()->Bild().pixelColor(5, 5); }

    void Ziehen(QWidget *griff, QPoint um)
    {
        const QPoint mitte = griff->rect().center();
        QTest::mousePress(griff, Qt::LeftButton, {}, mitte);
        // The handle goes along with the mouse, so each move is told from where it is.
        const QPoint start = griff->mapToParent(mitte);
        for (const QPoint &ort : {start + um / 2, start + um}) {
            QMouseEvent zug(QEvent::MouseMove, griff->mapFromParent(ort),
                            griff->parentWidget()->mapToGlobal(ort), Qt::NoButton, Qt::LeftButton,
                            Qt::NoModifier);
            QApplication::sendEvent(griff, &zug);
        }
        QTest::mouseRelease(griff, Qt::LeftButton, {}, griff->rect().center());
    }

    // Opens the picture or sound dialog and does this in it.
    void Dialog(const char *menue, const QString &name, std::function<void(QWidget &)> tun)
    {
        const int vorher = dialogeBenutzt;
        ImDialog(name, std::move(tun));
        Menue("MExtras", menue);
        QTRY_COMPARE(dialogeBenutzt, vorher + 1);
    }
};

void Klick(QWidget &dialog, const char *name)
{
    auto *widget = dialog.findChild<QWidget *>(QString::fromUtf8(name));
    QTest::mouseClick(widget, Qt::LeftButton, {}, QPoint(8, widget->height() / 2));
}

QString DialogText(QWidget &dialog, const char *name)
{
    return dynamic_cast<QLabel *>(dialog.findChild<QWidget *>(QString::fromUtf8(name)))->text();
}

bool Frei(QWidget &dialog, const char *name)
{
    return dialog.findChild<QWidget *>(QString::fromUtf8(name))->isEnabled();
}

} // namespace

class PFAendernBildTest : public QObject
{
    Q_OBJECT

private slots:

    void PictureIsShownAtItsPlaceWithItsHandle()
    {
        Bildbuehne b({Bildkarte(1, QStringLiteral("rot.bmp"))});
        b.Zeigen();
        QVERIFY(b.Bild()->isVisible());
        QCOMPARE(b.Farbe(), QColor(Qt::red));
        QCOMPARE(b.Bild()->geometry(), PixelVonTwips(3007, 1203, 3001, 2003));
        QVERIFY(b.Steuerung("Sizer")->isVisible());
        QCOMPARE(b.Steuerung("Sizer")->geometry().bottomRight(), b.Bild()->geometry().bottomRight());
    }

    void LastOfTheThreePicturesStaysVisible()
    {
        Bildbuehne b({Bildkarte(1, QStringLiteral("rot.bmp"), {}, QStringLiteral("blau.jpg"))});
        b.Zeigen();
        QVERIFY(b.Farbe().blue() > 200 && b.Farbe().red() < 60);
    }

    void PictureOfOneCardDoesNotStayForTheNext()
    {
        Bildbuehne b({Bildkarte(1, QStringLiteral("rot.bmp")), MakeCard(2, 0, 2)});
        b.Zeigen();
        b.Klick("CVor");
        QVERIFY(!b.Bild()->isVisible());
        QVERIFY(!b.Steuerung("Sizer")->isVisible());
        b.Tippen("MFrage", QStringLiteral("x"));
        b.Klick("CVor");
        QVERIFY(!b.Bild()->isVisible());
        QCOMPARE(b.Bild()->geometry(), PixelVonTwips(BildlageVorgabe.links, BildlageVorgabe.oben,
                                                     BildlageVorgabe.breite, BildlageVorgabe.hoehe));
        QCOMPARE(b.kartei.Stored()[1].Picture_1_Name, QString());
    }

    void PictureInTheProgramsDirectoryIsFoundToo()
    {
        Bildbuehne b({Bildkarte(1, QStringLiteral("eigen.bmp"))});
        BildSchreiben(b.programm.filePath(QStringLiteral("eigen.bmp")), {20, 20}, Qt::yellow);
        b.Zeigen();
        QCOMPARE(b.Farbe(), QColor(Qt::yellow));
    }

    void PictureJustBesideTheCardFileIsNotFoundFromElsewhereThoughTheDialogShowsIt()
    {
        Bildbuehne b({Bildkarte(1, QStringLiteral("rot.bmp"))});
        QDir::setCurrent(QDir::rootPath());
        b.Zeigen();
        QCOMPARE(b.Meldungstexte(), QStringList(QStringLiteral("Bilddatei nicht gefunden rot.bmp")));
        QVERIFY(!b.Bild()->isVisible());
        b.Dialog("MBilder", QStringLiteral("Bildbearbeiten"), [](QWidget &dialog) {
            Klick(dialog, "Option1");
            const auto *bild =
                dynamic_cast<QLabel *>(dialog.findChild<QWidget *>(QStringLiteral("Picture1")));
            QCOMPARE(bild->pixmap().size(), QSize(200, 150));
            dialog.close();
        });
    }

    void NamesWithADirectoryAreReducedAndShownAsStored()
    {
        Bildbuehne b({Bildkarte(1, QStringLiteral("C:\\Karten\\rot.bmp")),
                      Bildkarte(2, QStringLiteral("../../x/fehlt.bmp"))});
        b.Zeigen();
        QCOMPARE(b.Farbe(), QColor(Qt::red));
        b.Klick("CVor");
        QCOMPARE(b.Meldungstexte(),
                 QStringList(QStringLiteral("Bilddatei nicht gefunden ../../x/fehlt.bmp")));
    }

    void WrongAndTruncatedFilesGiveAMessageAndNothingElse()
    {
        Bildbuehne b({Bildkarte(1, QStringLiteral("text.bmp")), Bildkarte(2, QStringLiteral("kurz.bmp"))});
        QFile text(b.Datei("text.bmp"));
        QVERIFY(text.open(QIODevice::WriteOnly) && text.write("kein Bild") > 0);
        text.close();
        QFile kurz(b.Datei("kurz.bmp"));
        QVERIFY(QFile::copy(b.Datei("rot.bmp"), b.Datei("kurz.bmp")) && kurz.resize(40));
        b.Zeigen();
        b.Klick("CVor");
        const QStringList texte = b.Meldungstexte();
        QCOMPARE(texte.size(), 2);
        QVERIFY(texte[0].contains(QStringLiteral("weder BMP noch JPEG")));
        QVERIFY(!b.Bild()->isVisible());
        b.Tippen("MFrage", QStringLiteral("x"));
        b.Klick("Cadd");
        QCOMPARE(b.kartei.Stored()[1].Picture_1_Name, QStringLiteral("kurz.bmp"));
    }

    // --- Moving and sizing

    void DraggedPictureIsStoredWhereItWasPut()
    {
        Bildbuehne b({Bildkarte(1, QStringLiteral("rot.bmp"))});
        b.Zeigen();
        const QRect vorher = b.Bild()->geometry();
        b.Ziehen(b.Bild(), {40, 30});
        QCOMPARE(b.Bild()->geometry(), vorher.translated(40, 30));
        QVERIFY(b.Steuerung("Sizer")->isVisible());
        QCOMPARE(b.Steuerung("Sizer")->geometry().bottomRight(), b.Bild()->geometry().bottomRight());
        b.Klick("CVor");
        const CardRecord card = b.kartei.Stored()[0];
        QCOMPARE(card.Pictureleft, double(TwipsVonPixel(vorher.left() + 40)));
        QCOMPARE(card.PictureTop, double(TwipsVonPixel(vorher.top() + 30)));
        QCOMPARE(card.Picturewidth, 3001.0); // as it was
        QCOMPARE(card.Pictureheight, 2003.0);
    }

    void HandleIsHiddenWhileThePictureIsHeld()
    {
        Bildbuehne b({Bildkarte(1, QStringLiteral("rot.bmp"))});
        b.Zeigen();
        QTest::mousePress(b.Bild(), Qt::LeftButton);
        QVERIFY(!b.Steuerung("Sizer")->isVisible());
        QTest::mouseRelease(b.Bild(), Qt::LeftButton);
        QVERIFY(b.Steuerung("Sizer")->isVisible());
    }

    void PressOnThePictureIsAChangeButMovesNothing()
    {
        Bildbuehne b({Bildkarte(1, QStringLiteral("rot.bmp"))});
        b.Zeigen();
        b.Ersetzen("MFrage", {});
        b.Klick("Picture1");
        b.Klick("CVor"); // has to store, and may not
        QCOMPARE(b.Meldungstexte(), QStringList(QStringLiteral("Keine Frage eingegeben")));
        b.Tippen("MFrage", QStringLiteral("f"));
        b.Klick("CVor");
        const CardRecord card = b.kartei.Stored()[0];
        QCOMPARE(card.Pictureleft, 3007.0);
        QCOMPARE(card.PictureTop, 1203.0);
    }

    void PressOnPictureOrHandleAloneStoresTheCard_data()
    {
        QTest::addColumn<QString>("was");
        QTest::newRow("picture") << QStringLiteral("Picture1");
        QTest::newRow("handle") << QStringLiteral("Sizer");
    }

    void PressOnPictureOrHandleAloneStoresTheCard()
    {
        QFETCH(QString, was);
        CardRecord card = Bildkarte(1, QStringLiteral("rot.bmp"));
        card.Frage_Klartext = QStringLiteral("steht anders im Klartext");
        Bildbuehne b({card});
        b.Zeigen();
        b.Klick(qPrintable(was));
        b.Klick("CVor");
        // Storing writes the plain text anew: that is how it is seen.
        QCOMPARE(b.kartei.Stored()[0].Frage_Klartext, QStringLiteral("Frage 1"));
    }

    void PictureStaysWithinTheFormsMargins()
    {
        Bildbuehne b({Bildkarte(1, QStringLiteral("rot.bmp"))});
        b.Zeigen();
        QWidget *form = b.Steuerung("Formular");
        const QSize bild = b.Bild()->size();
        const auto geht = [&](const QPoint &ort) {
            b.Bild()->move(200, 100);
            b.Ziehen(b.Bild(), ort - b.Bild()->pos());
            return b.Bild()->pos() == ort;
        };
        QVERIFY(geht({11, 11}));
        QVERIFY(!geht({10, 11}));
        QVERIFY(!geht({11, 10}));
        const int rechts = form->width() - bild.width() - 20;
        const int unten = form->height() - bild.height() - 40;
        QVERIFY(geht({rechts - 1, unten - 1}));
        QVERIFY(!geht({rechts, unten - 1}));
        QVERIFY(!geht({rechts - 1, unten}));
    }

    void HandleSizesThePicture()
    {
        Bildbuehne b({Bildkarte(1, QStringLiteral("rot.bmp"))});
        b.Zeigen();
        const QRect vorher = b.Bild()->geometry();
        b.Ziehen(b.Steuerung("Sizer"), {50, 20});
        QCOMPARE(b.Bild()->geometry(), QRect(vorher.topLeft(), vorher.size() + QSize(50, 20)));
        QCOMPARE(b.Steuerung("Sizer")->geometry().bottomRight(), b.Bild()->geometry().bottomRight());
        // Beyond the margin it does not go, nor to nothing.
        const QRect gross = b.Bild()->geometry();
        b.Ziehen(b.Steuerung("Sizer"), {5000, 5000});
        b.Ziehen(b.Steuerung("Sizer"), {-2 * gross.width(), 0});
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
        Bildbuehne b({Bildkarte(1, QStringLiteral("rot.bmp"))});
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
        Bildbuehne b({Bildkarte(1, QStringLiteral("rot.bmp"))});
        b.Zeigen();
        QStringList folge;
        for (int i = 0; i < 4; ++i) {
            folge << b.fenster->focusWidget()->objectName();
            b.Taste(Qt::Key_Tab);
        }
        QCOMPARE(folge.join(u' '), QStringLiteral("MFrage Picture1 Antwort_T Antwort(0)"));
    }

    void PictureStoredOutsideTheWindowIsShownWithinAndKeptAsStored()
    {
        CardRecord card = Bildkarte(1, QStringLiteral("rot.bmp"));
        card.Pictureleft = 30000;
        card.PictureTop = 25000;
        Bildbuehne b({card});
        b.Zeigen();
        QVERIFY(b.Steuerung("Formular")->rect().contains(b.Bild()->geometry()));
        b.Tippen("MFrage", QStringLiteral("x"));
        b.Klick("Cadd");
        QCOMPARE(b.kartei.Stored()[0].Pictureleft, 30000.0);
        QCOMPARE(b.kartei.Stored()[0].PictureTop, 25000.0);
    }

    void ShowingAndStoringAHundredTimesLeavesThePictureWhereItWas()
    {
        Bildbuehne b({Bildkarte(1, QStringLiteral("rot.bmp")), MakeCard(2, 0, 2)});
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
        CardRecord card = Bildkarte(1, QStringLiteral("rot.bmp"));
        card.Pictureleft = BildlageVorgabe.links;
        card.PictureTop = BildlageVorgabe.oben;
        Bildbuehne b({card, MakeCard(2, 0, 2)});
        b.Zeigen();
        const QWidget *text = b.Box("MFrage")->viewport();
        QVERIFY(text->mapTo(b.Steuerung("Formular"), text->rect().topRight()).x() < b.Bild()->x());
        b.Klick("CVor");
        QVERIFY(text->mapTo(b.Steuerung("Formular"), text->rect().topRight()).x() >
                b.Bild()->geometry().right());
    }

    // --- The picture dialog

    void DialogShowsTheSlotsOfTheThreeMoments()
    {
        Bildbuehne b({Bildkarte(7, QStringLiteral("rot.bmp"), {}, QStringLiteral("blau.jpg"))});
        b.Zeigen();
        b.Dialog("MBilder", QStringLiteral("Bildbearbeiten"), [](QWidget &dialog) {
            QCOMPARE(dialog.windowTitle(), QStringLiteral("Bild bearbeiten"));
            QCOMPARE(DialogText(dialog, "Fragenummer"), QStringLiteral("7"));
            QVERIFY(!Frei(dialog, "cmdÄndern") && !Frei(dialog, "cmdLöschen"));
            Klick(dialog, "Option1");
            QCOMPARE(DialogText(dialog, "Dateiname"), QStringLiteral("rot.bmp"));
            QVERIFY(Frei(dialog, "cmdÄndern") && Frei(dialog, "cmdLöschen"));
            Klick(dialog, "Option3");
            QCOMPARE(DialogText(dialog, "Dateiname"), QStringLiteral("blau.jpg"));
            Klick(dialog, "Option2"); // is empty: the file dialog asks and is cancelled
            QCOMPARE(DialogText(dialog, "Dateiname"), QString());
            QVERIFY(!Frei(dialog, "cmdÄndern"));
            Klick(dialog, "cmdOK");
        });
        QCOMPARE(b.dialoge.gefragt.size(), 1);
        QCOMPARE(b.dialoge.gefragt[0].titel, QStringLiteral("Bilddatei öffnen"));
        QCOMPARE(b.dialoge.gefragt[0].filter, QStringLiteral("Bitmaps (*.bmp)|*.bmp|JPEG (*.jpg)|*.jpg"));
        QCOMPARE(b.dialoge.gefragt[0].verzeichnis, b.kartei.directory.path());
        QVERIFY(b.Meldungstexte().isEmpty());
    }

    void ChosenPictureIsShownInTheFormAndStoredWithTheCard()
    {
        Bildbuehne b(DreiKarten());
        b.Zeigen();
        b.dialoge.pfade = {b.Datei("rot.bmp"), b.Datei("blau.jpg")};
        b.Dialog("MBilder", QStringLiteral("Bildbearbeiten"), [](QWidget &dialog) {
            Klick(dialog, "Option1");
            QCOMPARE(DialogText(dialog, "Dateiname"), QStringLiteral("rot.bmp"));
            Klick(dialog, "Option3");
            dialog.close();
        });
        QVERIFY(b.Farbe().blue() > 200); // slot 3 after slot 1
        b.Klick("CVor");
        const CardRecord card = b.kartei.Stored()[0];
        QCOMPARE(card.Picture_1_Name, QStringLiteral("rot.bmp"));
        QCOMPARE(card.Picture_2_Name, QString());
        QCOMPARE(card.Picture_3_Name, QStringLiteral("blau.jpg"));
        QCOMPARE(card.Pictureleft, BildlageVorgabe.links);
        QCOMPARE(card.Picturewidth, BildlageVorgabe.breite);
    }

    void PictureOfAnotherDirectoryIsRefusedAndTheSlotStays()
    {
        Bildbuehne b({Bildkarte(1, QStringLiteral("rot.bmp"))});
        BildSchreiben(b.programm.filePath(QStringLiteral("fremd.bmp")), {10, 10}, Qt::black);
        b.Zeigen();
        b.dialoge.pfade = {b.programm.filePath(QStringLiteral("fremd.bmp"))};
        b.Dialog("MBilder", QStringLiteral("Bildbearbeiten"), [](QWidget &dialog) {
            Klick(dialog, "Option2");
            QCOMPARE(DialogText(dialog, "Dateiname"), QString());
            Klick(dialog, "Option1");
            QCOMPARE(DialogText(dialog, "Dateiname"), QStringLiteral("rot.bmp"));
            dialog.close();
        });
        QCOMPARE(b.Meldungstexte(),
                 QStringList(
                     QStringLiteral("Bitte nur Bilder aus dem gleichen Verzeichnis wie die Merkkasten (%1)")
                         .arg(b.kartei.directory.path())));
    }

    void RefusedOrCancelledChangeLeavesTheSlotsOldPicture_data()
    {
        QTest::addColumn<QString>("datei");
        QTest::newRow("another directory") << QStringLiteral("anderswo/fremd.bmp");
        QTest::newRow("no picture") << QStringLiteral("text.bmp");
        QTest::newRow("cancelled") << QString();
    }

    void RefusedOrCancelledChangeLeavesTheSlotsOldPicture()
    {
        QFETCH(QString, datei);
        Bildbuehne b({Bildkarte(1, QStringLiteral("rot.bmp"))});
        QFile text(b.Datei("text.bmp"));
        QVERIFY(text.open(QIODevice::WriteOnly) && text.write("kein Bild") > 0);
        text.close();
        b.Zeigen();
        b.dialoge.pfade = {datei.isEmpty() ? datei : b.Datei(qPrintable(datei))};
        b.Dialog("MBilder", QStringLiteral("Bildbearbeiten"), [](QWidget &dialog) {
            Klick(dialog, "Option1");
            Klick(dialog, "cmdÄndern");
            QCOMPARE(DialogText(dialog, "Dateiname"), QStringLiteral("rot.bmp"));
            const auto *bild =
                dynamic_cast<QLabel *>(dialog.findChild<QWidget *>(QStringLiteral("Picture1")));
            QCOMPARE(bild->pixmap().size(), QSize(200, 150));
            QVERIFY(Frei(dialog, "cmdÄndern") && Frei(dialog, "cmdLöschen"));
            dialog.close();
        });
        QCOMPARE(b.dialoge.gefragt.size(), 1);
        QCOMPARE(b.Meldungstexte().size(), datei.isEmpty() ? 0 : 1);
        QVERIFY(b.Bild()->isVisible());
        QCOMPARE(b.Farbe(), QColor(Qt::red));
        b.Tippen("MFrage", QStringLiteral("x"));
        b.Klick("Cadd");
        QCOMPARE(b.kartei.Stored()[0].Picture_1_Name, QStringLiteral("rot.bmp"));
    }

    void TooLargePictureIsCutAndSaidForEachSide()
    {
        Bildbuehne b(DreiKarten());
        b.Zeigen();
        b.dialoge.pfade = {b.Datei("gross.bmp"), b.Datei("hoch.bmp")};
        b.Dialog("MBilder", QStringLiteral("Bildbearbeiten"), [&](QWidget &dialog) {
            const auto *bild =
                dynamic_cast<QLabel *>(dialog.findChild<QWidget *>(QStringLiteral("Picture1")));
            Klick(dialog, "Option1");
            QCOMPARE(bild->pixmap().size(), bild->size());
            const QString text = QStringLiteral("Das Bild ist zu groß, Ränder werden abgeschnitten");
            QCOMPARE(b.Meldungstexte(), (QStringList{text, text}));
            Klick(dialog, "Option2");
            QCOMPARE(bild->pixmap().size(), QSize(100, bild->height()));
            QCOMPARE(b.Meldungstexte(), QStringList(text));
            dialog.close();
        });
    }

    void FileThatIsNoPictureIsRefusedAndTheSlotStays()
    {
        Bildbuehne b(DreiKarten());
        QFile text(b.Datei("text.bmp"));
        QVERIFY(text.open(QIODevice::WriteOnly) && text.write("kein Bild") > 0);
        text.close();
        b.Zeigen();
        b.dialoge.pfade = {b.Datei("text.bmp")};
        b.Dialog("MBilder", QStringLiteral("Bildbearbeiten"), [&](QWidget &dialog) {
            Klick(dialog, "Option1");
            QCOMPARE(DialogText(dialog, "Dateiname"), QString());
            QVERIFY(!Frei(dialog, "cmdLöschen"));
            dialog.close();
        });
        const QStringList texte = b.Meldungstexte();
        QCOMPARE(texte.size(), 1);
        QVERIFY(texte[0].startsWith(QStringLiteral("Fehler beim Bildöffnen: ")));
        b.Klick("CVor");
        QCOMPARE(b.kartei.Stored()[0].Picture_1_Name, QString());
    }

    void ClearedSlotKeepsItsNameInTheRecord()
    {
        Bildbuehne b({Bildkarte(1, QStringLiteral("rot.bmp"))});
        b.Zeigen();
        b.Dialog("MBilder", QStringLiteral("Bildbearbeiten"), [](QWidget &dialog) {
            Klick(dialog, "Option1");
            Klick(dialog, "cmdLöschen");
            QCOMPARE(DialogText(dialog, "Dateiname"), QString());
            QVERIFY(!Frei(dialog, "cmdLöschen") && !Frei(dialog, "cmdÄndern"));
            dialog.close();
        });
        QVERIFY(!b.Bild()->isVisible());
        b.Ersetzen("MFrage", QStringLiteral("neu"));
        b.Klick("Cadd");
        const CardRecord card = b.kartei.Stored()[0];
        QCOMPARE(card.Frage_Klartext, QStringLiteral("neu"));
        QCOMPARE(card.Picture_1_Name, QStringLiteral("rot.bmp"));
    }

    void ChangeAsksForAnotherFile()
    {
        Bildbuehne b({Bildkarte(1, QStringLiteral("rot.bmp"))});
        b.Zeigen();
        b.dialoge.pfade = {b.Datei("blau.jpg")};
        b.Dialog("MBilder", QStringLiteral("Bildbearbeiten"), [](QWidget &dialog) {
            Klick(dialog, "Option1");
            Klick(dialog, "cmdÄndern");
            QCOMPARE(DialogText(dialog, "Dateiname"), QStringLiteral("blau.jpg"));
            dialog.close();
        });
        b.Klick("CVor");
        QCOMPARE(b.kartei.Stored()[0].Picture_1_Name, QStringLiteral("blau.jpg"));
    }

    void MissingFileOfASlotCanBeReplaced()
    {
        Bildbuehne b({Bildkarte(1, QStringLiteral("fehlt.bmp"))});
        b.Zeigen();
        b.Meldungstexte();
        b.Dialog("MBilder", QStringLiteral("Bildbearbeiten"), [&](QWidget &dialog) {
            Klick(dialog, "Option1");
            QVERIFY(b.Meldungstexte().value(0).startsWith(QStringLiteral("Fehler beim Bildöffnen: ")));
            QCOMPARE(DialogText(dialog, "Dateiname"), QStringLiteral("fehlt.bmp"));
            QVERIFY(Frei(dialog, "cmdÄndern"));
            dialog.close();
        });
    }

    // --- The sound dialog

    void SoundsUseSlots6To8AndAreHeardOnce()
    {
        CardRecord card = MakeCard(3, 0, 1);
        card.Picture_2_Name = QStringLiteral("rot.bmp");
        card.Picture_6_Name = QStringLiteral("C:\\x\\a.wav");
        Bildbuehne b({card});
        for (const char *name : {"a.wav", "b.wav"}) {
            QFile datei(b.Datei(name));
            QVERIFY(datei.open(QIODevice::WriteOnly));
        }
        b.Zeigen();
        b.dialoge.pfade = {b.Datei("b.wav")};
        b.Dialog("MTon", QStringLiteral("Soundbearbeiten"), [&](QWidget &dialog) {
            QCOMPARE(dialog.windowTitle(), QStringLiteral("Sound bearbeiten"));
            QCOMPARE(DialogText(dialog, "Fragenummer"), QStringLiteral("3"));
            Klick(dialog, "Option1");
            QCOMPARE(DialogText(dialog, "Dateiname"), QStringLiteral("C:\\x\\a.wav"));
            QCOMPARE(b.gespielt, QStringList(b.Datei("a.wav")));
            Klick(dialog, "Option2");
            QCOMPARE(DialogText(dialog, "Dateiname"), QStringLiteral("b.wav"));
            QCOMPARE(b.gespielt, (QStringList{b.Datei("a.wav"), b.Datei("b.wav")}));
            Klick(dialog, "cmdOK");
        });
        QCOMPARE(b.gespielt.last(), QString()); // silent again
        QCOMPARE(b.dialoge.gefragt[0].titel, QStringLiteral("Sounddatei öffnen"));
        QCOMPARE(b.dialoge.gefragt[0].filter, QStringLiteral("Audiodateien (*.wav)|*.wav"));
        b.Klick("CVor");
        const CardRecord stored = b.kartei.Stored()[0];
        QCOMPARE(stored.Picture_7_Name, QStringLiteral("b.wav"));
        QCOMPARE(stored.Picture_2_Name, QStringLiteral("rot.bmp"));
    }

    void SoundWithTheAnswerIsSlot7AndNeverThePictureOfSlot2()
    {
        Bildbuehne b(DreiKarten());
        QFile datei(b.Datei("a.wav"));
        QVERIFY(datei.open(QIODevice::WriteOnly));
        b.Zeigen();
        b.dialoge.pfade = {b.Datei("a.wav")};
        b.Dialog("MTon", QStringLiteral("Soundbearbeiten"), [](QWidget &dialog) {
            Klick(dialog, "Option2");
            dialog.close();
        });
        // The picture dialog's "Antwort" is another slot: it finds none and asks.
        b.Dialog("MBilder", QStringLiteral("Bildbearbeiten"), [](QWidget &dialog) {
            Klick(dialog, "Option2");
            QCOMPARE(DialogText(dialog, "Dateiname"), QString());
            dialog.close();
        });
        QCOMPARE(b.dialoge.gefragt.size(), 2);
        b.Klick("CVor");
        const CardRecord stored = b.kartei.Stored()[0];
        QCOMPARE(stored.Picture_7_Name, QStringLiteral("a.wav"));
        QCOMPARE(stored.Picture_2_Name, QString());
        QCOMPARE(stored.Picture_9_Name, QStringLiteral("Thema 1"));
    }

    void SoundOfAnotherDirectoryIsRefused()
    {
        Bildbuehne b(DreiKarten());
        b.Zeigen();
        b.dialoge.pfade = {b.programm.filePath(QStringLiteral("x.wav"))};
        b.Dialog("MTon", QStringLiteral("Soundbearbeiten"), [](QWidget &dialog) {
            Klick(dialog, "Option3");
            QCOMPARE(DialogText(dialog, "Dateiname"), QString());
            dialog.close();
        });
        QCOMPARE(b.Meldungstexte(),
                 QStringList(
                     QStringLiteral("Bitte nur Dateien aus dem gleichen Verzeichnis wie die Merkkasten (%1)")
                         .arg(b.kartei.directory.path())));
        b.Klick("CVor");
        QCOMPARE(b.kartei.Stored()[0].Picture_8_Name, QString());
    }

    void MissingSoundIsSaidAndNotPlayed()
    {
        CardRecord card = MakeCard(1, 0, 1);
        card.Picture_8_Name = QStringLiteral("weg.wav");
        Bildbuehne b({card});
        b.Zeigen();
        b.Dialog("MTon", QStringLiteral("Soundbearbeiten"), [&](QWidget &dialog) {
            Klick(dialog, "Option3");
            QVERIFY(b.Meldungstexte().value(0).startsWith(QStringLiteral("Fehler beim Soundöffnen: ")));
            QVERIFY(b.gespielt.isEmpty());
            dialog.close();
        });
    }

    void EmptiedSoundKeepsItsNameInTheRecord()
    {
        CardRecord card = MakeCard(1, 0, 1);
        card.Picture_6_Name = QStringLiteral("a.wav");
        Bildbuehne b({card});
        b.Zeigen();
        b.Dialog("MTon", QStringLiteral("Soundbearbeiten"), [](QWidget &dialog) {
            Klick(dialog, "Option1");
            Klick(dialog, "cmdLöschen");
            dialog.close();
        });
        b.Klick("CVor");
        QCOMPARE(b.kartei.Stored()[0].Picture_6_Name, QStringLiteral("a.wav"));
    }

    void EscapeClosesTheDialogs()
    {
        Bildbuehne b(DreiKarten());
        b.Zeigen();
        b.Dialog("MBilder", QStringLiteral("Bildbearbeiten"),
                 [](QWidget &dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
        b.Dialog("MTon", QStringLiteral("Soundbearbeiten"),
                 [](QWidget &dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
        QVERIFY(b.fenster->close());
        QCOMPARE(b.kartei.Stored()[0], MakeCard(1, 0, 1));
    }
};

QTEST_MAIN(PFAendernBildTest)
#include "PFAendernBildTest.moc"
