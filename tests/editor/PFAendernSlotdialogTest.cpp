// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Bildbuehne.h"
#include "TestProgram.h"

#include <QTest>

using namespace paukfix;
using namespace Qt::StringLiterals;

namespace {

bool Frei(QWidget &dialog, const char *name)
{
    return Hand(dialog).Finde(name)->isEnabled();
}

} // namespace

class PFAendernSlotdialogTest : public QObject
{
    Q_OBJECT

private slots:

    // --- The picture dialog

    void DialogShowsTheSlotsOfTheThreeMoments()
    {
        Bildbuehne b({Bildkarte(7, u"rot.bmp"_s, {}, u"blau.jpg"_s)});
        b.Zeigen();
        b.Dialog("MBilder", u"Bildbearbeiten"_s, [](QWidget &dialog) {
            QCOMPARE(dialog.windowTitle(), u"Bild bearbeiten"_s);
            QCOMPARE(Hand(dialog).Text("Fragenummer"), u"7"_s);
            QVERIFY(!Frei(dialog, "cmdÄndern") && !Frei(dialog, "cmdLöschen"));
            Hand(dialog).Klick("Option1");
            QCOMPARE(Hand(dialog).Text("Dateiname"), u"rot.bmp"_s);
            QVERIFY(Frei(dialog, "cmdÄndern") && Frei(dialog, "cmdLöschen"));
            Hand(dialog).Klick("Option3");
            QCOMPARE(Hand(dialog).Text("Dateiname"), u"blau.jpg"_s);
            Hand(dialog).Klick("Option2"); // is empty: the file dialog asks and is cancelled
            QCOMPARE(Hand(dialog).Text("Dateiname"), QString());
            QVERIFY(!Frei(dialog, "cmdÄndern"));
            Hand(dialog).Klick("cmdOK");
        });
        QCOMPARE(b.dialoge.gefragt.size(), 1);
        QCOMPARE(b.dialoge.gefragt[0].titel, u"Bilddatei öffnen"_s);
        QCOMPARE(b.dialoge.gefragt[0].filter, u"Bitmaps (*.bmp)|*.bmp|JPEG (*.jpg)|*.jpg"_s);
        QCOMPARE(b.dialoge.gefragt[0].verzeichnis, b.kartei.directory.path());
        QVERIFY(b.Meldungstexte().isEmpty());
    }

    void ChosenPictureIsShownInTheFormAndStoredWithTheCard()
    {
        Bildbuehne b(DreiKarten());
        b.Zeigen();
        b.dialoge.pfade = {b.Datei("rot.bmp"), b.Datei("blau.jpg")};
        b.Dialog("MBilder", u"Bildbearbeiten"_s, [](QWidget &dialog) {
            Hand(dialog).Klick("Option1");
            QCOMPARE(Hand(dialog).Text("Dateiname"), u"rot.bmp"_s);
            Hand(dialog).Klick("Option3");
            dialog.close();
        });
        QVERIFY(b.Farbe().blue() > 200); // slot 3 after slot 1
        b.Klick("CVor");
        const CardRecord card = b.kartei.Stored()[0];
        QCOMPARE(card.Picture_1_Name, u"rot.bmp"_s);
        QCOMPARE(card.Picture_2_Name, QString());
        QCOMPARE(card.Picture_3_Name, u"blau.jpg"_s);
        QCOMPARE(card.Pictureleft, BildlageVorgabe.links);
        QCOMPARE(card.Picturewidth, BildlageVorgabe.breite);
    }

    // A file dialog may come to the directory of the box by another road.
    void PictureOfTheSameDirectoryThroughALinkIsTaken()
    {
        Bildbuehne b(DreiKarten());
        const QString link = b.programm.filePath(u"link"_s);
        QVERIFY(QFile::link(b.kartei.directory.path(), link));
        QVERIFY(QFile::exists(b.Datei("rot.bmp")));
        b.Zeigen();
        b.dialoge.pfade = {link + u"/rot.bmp"_s};
        b.Dialog("MBilder", u"Bildbearbeiten"_s, [](QWidget &dialog) {
            Hand(dialog).Klick("Option1");
            QCOMPARE(Hand(dialog).Text("Dateiname"), u"rot.bmp"_s);
            dialog.close();
        });
        QVERIFY2(b.Meldungstexte().isEmpty(), qPrintable(b.Meldungstexte().join(u'|')));
        b.Klick("CVor");
        QCOMPARE(b.kartei.Stored()[0].Picture_1_Name, u"rot.bmp"_s);
    }

    void PictureOfAnotherDirectoryIsRefusedAndTheSlotStays()
    {
        Bildbuehne b({Bildkarte(1, u"rot.bmp"_s)});
        BildSchreiben(b.programm.filePath(u"fremd.bmp"_s), {10, 10}, Qt::black);
        b.Zeigen();
        b.dialoge.pfade = {b.programm.filePath(u"fremd.bmp"_s)};
        b.Dialog("MBilder", u"Bildbearbeiten"_s, [](QWidget &dialog) {
            Hand(dialog).Klick("Option2");
            QCOMPARE(Hand(dialog).Text("Dateiname"), QString());
            Hand(dialog).Klick("Option1");
            QCOMPARE(Hand(dialog).Text("Dateiname"), u"rot.bmp"_s);
            dialog.close();
        });
        QCOMPARE(b.Meldungstexte(),
                 QStringList(u"Bitte nur Bilder aus dem gleichen Verzeichnis wie die Merkkasten (%1)"_s.arg(
                     b.kartei.directory.path())));
    }

    void RefusedOrCancelledChangeLeavesTheSlotsOldPicture_data()
    {
        QTest::addColumn<QString>("datei");
        QTest::newRow("another directory") << u"anderswo/fremd.bmp"_s;
        QTest::newRow("no picture") << u"text.bmp"_s;
        QTest::newRow("cancelled") << QString();
    }

    void RefusedOrCancelledChangeLeavesTheSlotsOldPicture()
    {
        QFETCH(QString, datei);
        Bildbuehne b({Bildkarte(1, u"rot.bmp"_s)});
        QFile text(b.Datei("text.bmp"));
        QVERIFY(text.open(QIODevice::WriteOnly) && text.write("kein Bild") > 0);
        text.close();
        b.Zeigen();
        b.dialoge.pfade = {datei.isEmpty() ? datei : b.Datei(qPrintable(datei))};
        b.Dialog("MBilder", u"Bildbearbeiten"_s, [](QWidget &dialog) {
            Hand(dialog).Klick("Option1");
            Hand(dialog).Klick("cmdÄndern");
            QCOMPARE(Hand(dialog).Text("Dateiname"), u"rot.bmp"_s);
            const auto *bild = Hand(dialog).Finde<QLabel>("Picture1");
            QCOMPARE(bild->pixmap().size(), QSize(200, 150));
            QVERIFY(Frei(dialog, "cmdÄndern") && Frei(dialog, "cmdLöschen"));
            dialog.close();
        });
        QCOMPARE(b.dialoge.gefragt.size(), 1);
        QCOMPARE(b.Meldungstexte().size(), datei.isEmpty() ? 0 : 1);
        QVERIFY(b.Bild()->isVisible());
        QCOMPARE(b.Farbe(), QColor(Qt::red));
        b.Tippe("MFrage", u"x"_s);
        b.Klick("Cadd");
        QCOMPARE(b.kartei.Stored()[0].Picture_1_Name, u"rot.bmp"_s);
    }

    // Its buttons are for a slot that names a file; the option itself asks again.
    void EmptySlotAsksAgainWhenItsOptionIsChosenAgain()
    {
        Bildbuehne b(DreiKarten());
        b.Zeigen();
        b.dialoge.pfade = {QString(), QString(), b.Datei("rot.bmp")};
        b.Dialog("MBilder", u"Bildbearbeiten"_s, [&](QWidget &dialog) {
            Hand(dialog).Klick("Option2"); // cancelled
            QVERIFY(!Frei(dialog, "cmdÄndern") && !Frei(dialog, "cmdLöschen"));
            Hand(dialog).Klick("cmdÄndern");
            QCOMPARE(b.dialoge.gefragt.size(), 1);
            Hand(dialog).Klick("Option2");
            QCOMPARE(b.dialoge.gefragt.size(), 2);
            QTest::keyClick(Hand(dialog).Finde("Option2"), Qt::Key_Space);
            QCOMPARE(Hand(dialog).Text("Dateiname"), u"rot.bmp"_s);
            QVERIFY(Frei(dialog, "cmdÄndern") && Frei(dialog, "cmdLöschen"));
            Hand(dialog).Klick("cmdLöschen");
            b.dialoge.pfade = {b.Datei("blau.jpg")};
            Hand(dialog).Klick("Option2"); // is empty again
            QCOMPARE(Hand(dialog).Text("Dateiname"), u"blau.jpg"_s);
            dialog.close();
        });
        b.Klick("CVor");
        QCOMPARE(b.kartei.Stored()[0].Picture_2_Name, u"blau.jpg"_s);
    }

    void TooLargePictureIsCutAndSaidForEachSide()
    {
        Bildbuehne b(DreiKarten());
        b.Zeigen();
        b.dialoge.pfade = {b.Datei("gross.bmp"), b.Datei("hoch.bmp")};
        b.Dialog("MBilder", u"Bildbearbeiten"_s, [&](QWidget &dialog) {
            const auto *bild = Hand(dialog).Finde<QLabel>("Picture1");
            Hand(dialog).Klick("Option1");
            QCOMPARE(bild->pixmap().size(), QSize(800, 600));
            const QString text = u"Das Bild ist zu groß, Ränder werden abgeschnitten"_s;
            QCOMPARE(b.Meldungstexte(), (QStringList{text, text}));
            Hand(dialog).Klick("Option2");
            QCOMPARE(bild->pixmap().size(), QSize(100, 600));
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
        b.Dialog("MBilder", u"Bildbearbeiten"_s, [&](QWidget &dialog) {
            Hand(dialog).Klick("Option1");
            QCOMPARE(Hand(dialog).Text("Dateiname"), QString());
            QVERIFY(!Frei(dialog, "cmdLöschen"));
            dialog.close();
        });
        QCOMPARE(b.Meldungstexte(),
                 QStringList(u"Fehler beim Bildöffnen: Ungültiges Bild „%1“: weder BMP noch JPEG."_s.arg(
                     b.Datei("text.bmp"))));
        b.Klick("CVor");
        QCOMPARE(b.kartei.Stored()[0].Picture_1_Name, QString());
    }

    void ClearedSlotKeepsItsNameInTheRecord()
    {
        Bildbuehne b({Bildkarte(1, u"rot.bmp"_s)});
        b.Zeigen();
        b.Dialog("MBilder", u"Bildbearbeiten"_s, [](QWidget &dialog) {
            Hand(dialog).Klick("Option1");
            Hand(dialog).Klick("cmdLöschen");
            QCOMPARE(Hand(dialog).Text("Dateiname"), QString());
            QVERIFY(!Frei(dialog, "cmdLöschen") && !Frei(dialog, "cmdÄndern"));
            dialog.close();
        });
        QVERIFY(!b.Bild()->isVisible());
        b.Ersetze("MFrage", u"neu"_s);
        b.Klick("Cadd");
        const CardRecord card = b.kartei.Stored()[0];
        QCOMPARE(card.Frage_Klartext, u"neu"_s);
        QCOMPARE(card.Picture_1_Name, u"rot.bmp"_s);
    }

    void ChangeAsksForAnotherFile()
    {
        Bildbuehne b({Bildkarte(1, u"rot.bmp"_s)});
        b.Zeigen();
        b.dialoge.pfade = {b.Datei("blau.jpg")};
        b.Dialog("MBilder", u"Bildbearbeiten"_s, [](QWidget &dialog) {
            Hand(dialog).Klick("Option1");
            Hand(dialog).Klick("cmdÄndern");
            QCOMPARE(Hand(dialog).Text("Dateiname"), u"blau.jpg"_s);
            dialog.close();
        });
        b.Klick("CVor");
        QCOMPARE(b.kartei.Stored()[0].Picture_1_Name, u"blau.jpg"_s);
    }

    void MissingFileOfASlotCanBeReplaced()
    {
        Bildbuehne b({Bildkarte(1, u"fehlt.bmp"_s)});
        b.Zeigen();
        b.Meldungstexte();
        b.dialoge.pfade = {b.Datei("rot.bmp")};
        b.Dialog("MBilder", u"Bildbearbeiten"_s, [&](QWidget &dialog) {
            Hand(dialog).Klick("Option1");
            QCOMPARE(b.Meldungstexte(),
                     QStringList(
                         u"Fehler beim Bildöffnen: Datei nicht gefunden: „%1“"_s.arg(b.Datei("fehlt.bmp"))));
            QCOMPARE(Hand(dialog).Text("Dateiname"), u"fehlt.bmp"_s);
            Hand(dialog).Klick("cmdÄndern");
            QCOMPARE(Hand(dialog).Text("Dateiname"), u"rot.bmp"_s);
            dialog.close();
        });
        QCOMPARE(b.Farbe(), QColor(Qt::red));
    }

    // --- The sound dialog

    void SoundsUseSlots6To8AndAreHeardOnce()
    {
        CardRecord card = MakeCard(3, 0, 1);
        card.Picture_2_Name = u"rot.bmp"_s;
        card.Picture_6_Name = u"C:\\x\\a.wav"_s;
        Bildbuehne b({card});
        KlangSchreiben(b.Datei("a.wav"));
        KlangSchreiben(b.Datei("b.wav"));
        b.Zeigen();
        b.dialoge.pfade = {b.Datei("b.wav")};
        b.Dialog("MTon", u"Soundbearbeiten"_s, [&](QWidget &dialog) {
            QCOMPARE(dialog.windowTitle(), u"Sound bearbeiten"_s);
            QCOMPARE(Hand(dialog).Text("Fragenummer"), u"3"_s);
            Hand(dialog).Klick("Option1");
            QCOMPARE(Hand(dialog).Text("Dateiname"), u"C:\\x\\a.wav"_s);
            QCOMPARE(b.ton.gespielt, QStringList(b.Datei("a.wav")));
            Hand(dialog).Klick("Option2");
            QCOMPARE(Hand(dialog).Text("Dateiname"), u"b.wav"_s);
            QCOMPARE(b.ton.gespielt, (QStringList{b.Datei("a.wav"), b.Datei("b.wav")}));
            QCOMPARE(b.ton.stillen, 0);
            Hand(dialog).Klick("cmdOK");
        });
        QCOMPARE(b.ton.gespielt.size(), 2);
        QCOMPARE(b.ton.stillen, 1);
        QCOMPARE(b.dialoge.gefragt[0].titel, u"Sounddatei öffnen"_s);
        QCOMPARE(b.dialoge.gefragt[0].filter, u"Audiodateien (*.wav)|*.wav"_s);
        b.Klick("CVor");
        const CardRecord stored = b.kartei.Stored()[0];
        QCOMPARE(stored.Picture_7_Name, u"b.wav"_s);
        QCOMPARE(stored.Picture_2_Name, u"rot.bmp"_s);
    }

    void SoundWithTheAnswerIsSlot7AndNeverThePictureOfSlot2()
    {
        Bildbuehne b(DreiKarten());
        KlangSchreiben(b.Datei("a.wav"));
        b.Zeigen();
        b.dialoge.pfade = {b.Datei("a.wav")};
        b.Dialog("MTon", u"Soundbearbeiten"_s, [](QWidget &dialog) {
            Hand(dialog).Klick("Option2");
            dialog.close();
        });
        // The picture dialog's "Antwort" is another slot: it finds none and asks.
        b.Dialog("MBilder", u"Bildbearbeiten"_s, [](QWidget &dialog) {
            Hand(dialog).Klick("Option2");
            QCOMPARE(Hand(dialog).Text("Dateiname"), QString());
            dialog.close();
        });
        QCOMPARE(b.dialoge.gefragt.size(), 2);
        b.Klick("CVor");
        const CardRecord stored = b.kartei.Stored()[0];
        QCOMPARE(stored.Picture_7_Name, u"a.wav"_s);
        QCOMPARE(stored.Picture_2_Name, QString());
        QCOMPARE(stored.Picture_9_Name, u"Thema 1"_s);
    }

    void SoundOfAnotherDirectoryIsRefused()
    {
        Bildbuehne b(DreiKarten());
        b.Zeigen();
        b.dialoge.pfade = {b.programm.filePath(u"x.wav"_s)};
        b.Dialog("MTon", u"Soundbearbeiten"_s, [](QWidget &dialog) {
            Hand(dialog).Klick("Option3");
            QCOMPARE(Hand(dialog).Text("Dateiname"), QString());
            dialog.close();
        });
        QCOMPARE(b.Meldungstexte(),
                 QStringList(u"Bitte nur Dateien aus dem gleichen Verzeichnis wie die Merkkasten (%1)"_s.arg(
                     b.kartei.directory.path())));
        b.Klick("CVor");
        QCOMPARE(b.kartei.Stored()[0].Picture_8_Name, QString());
    }

    void MissingSoundIsSaidAndNotPlayed()
    {
        CardRecord card = MakeCard(1, 0, 1);
        card.Picture_8_Name = u"weg.wav"_s;
        Bildbuehne b({card});
        b.Zeigen();
        b.Dialog("MTon", u"Soundbearbeiten"_s, [&](QWidget &dialog) {
            Hand(dialog).Klick("Option3");
            QCOMPARE(b.Meldungstexte(),
                     QStringList(
                         u"Fehler beim Soundöffnen: Datei nicht gefunden: „%1“"_s.arg(b.Datei("weg.wav"))));
            QVERIFY(b.ton.gespielt.isEmpty());
            dialog.close();
        });
    }

    void EmptiedSoundKeepsItsNameInTheRecord()
    {
        CardRecord card = MakeCard(1, 0, 1);
        card.Picture_6_Name = u"a.wav"_s;
        Bildbuehne b({card});
        b.Zeigen();
        b.Dialog("MTon", u"Soundbearbeiten"_s, [](QWidget &dialog) {
            Hand(dialog).Klick("Option1");
            Hand(dialog).Klick("cmdLöschen");
            dialog.close();
        });
        b.Klick("CVor");
        QCOMPARE(b.kartei.Stored()[0].Picture_6_Name, u"a.wav"_s);
    }

    void EscapeClosesTheDialogs()
    {
        Bildbuehne b(DreiKarten());
        b.Zeigen();
        b.Dialog("MBilder", u"Bildbearbeiten"_s,
                 [](QWidget &dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
        b.Dialog("MTon", u"Soundbearbeiten"_s,
                 [](QWidget &dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
        QVERIFY(b.fenster->close());
        QCOMPARE(b.kartei.Stored()[0], MakeCard(1, 0, 1));
    }
};

PAUKFIX_TEST(PFAendernSlotdialogTest)
#include "PFAendernSlotdialogTest.moc"
