// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Bildbuehne.h"
#include "TestProgram.h"

#include <QScreen>

using namespace paukfix;
using namespace Qt::StringLiterals;

namespace {

void TextSchreiben(const QString &pfad)
{
    QFile datei(pfad);
    QVERIFY(datei.open(QIODevice::WriteOnly) && datei.write("kein Klang, nur Text") > 0);
}

} // namespace

class SlotdialogTest : public QObject
{
    Q_OBJECT

private slots:

    void FileThatIsNoSoundIsRefusedAndTheSlotStays_data()
    {
        QTest::addColumn<QString>("vorher");
        QTest::newRow("empty slot") << QString();
        QTest::newRow("slot with a sound") << u"gut.wav"_s;
    }

    void FileThatIsNoSoundIsRefusedAndTheSlotStays()
    {
        QFETCH(QString, vorher);
        CardRecord card = MakeCard(1, 0, 1);
        card.Picture_6_Name = vorher;
        Bildbuehne b({card});
        KlangSchreiben(b.Datei("gut.wav"));
        TextSchreiben(b.Datei("text.wav"));
        b.Zeigen();
        b.dialoge.pfade = {b.Datei("text.wav")};
        b.Dialog("MTon", u"Soundbearbeiten"_s, [&](QWidget &dialog) {
            Hand(dialog).Klick("Option1");
            if (!vorher.isEmpty())
                Hand(dialog).Klick("cmdÄndern");
            QCOMPARE(Hand(dialog).Text("Dateiname"), vorher);
            QCOMPARE(Hand(dialog).Finde("cmdÄndern")->isEnabled(), !vorher.isEmpty());
            dialog.close();
        });
        QCOMPARE(b.dialoge.gefragt.size(), 1);
        QCOMPARE(b.Meldungstexte(),
                 QStringList(u"Fehler beim Soundöffnen: Keine WAV-Datei: „%1“"_s.arg(b.Datei("text.wav"))));
        QVERIFY(!b.ton.gespielt.contains(b.Datei("text.wav")));
        b.Tippe("MFrage", u"x"_s);
        b.Klick("Cadd");
        QCOMPARE(b.kartei.Stored()[0].Picture_6_Name, vorher);
    }

    void FormAndDialogsFindNamesOfAnotherCase()
    {
        CardRecord card = Bildkarte(1, u"ROT.bmp"_s);
        card.Picture_6_Name = u"Gut.WAV"_s;
        Bildbuehne b({card});
        KlangSchreiben(b.Datei("gut.wav"));
        b.Zeigen();
        QCOMPARE(b.Farbe(), QColor(Qt::red));
        b.Dialog("MBilder", u"Bildbearbeiten"_s, [&](QWidget &dialog) {
            Hand(dialog).Klick("Option1");
            QVERIFY(!Hand(dialog).Finde<QLabel>("Picture1")->pixmap().isNull());
            dialog.close();
        });
        b.Dialog("MTon", u"Soundbearbeiten"_s, [&](QWidget &dialog) {
            Hand(dialog).Klick("Option1");
            dialog.close();
        });
        QVERIFY(b.ton.gespielt.contains(b.Datei("gut.wav")));
        QCOMPARE(b.Meldungstexte(), QStringList());
    }

    void SlotWhoseFileIsNoSoundSaysSo()
    {
        CardRecord card = MakeCard(1, 0, 1);
        card.Picture_7_Name = u"text.wav"_s;
        Bildbuehne b({card});
        TextSchreiben(b.Datei("text.wav"));
        b.Zeigen();
        b.Dialog("MTon", u"Soundbearbeiten"_s, [&](QWidget &dialog) {
            Hand(dialog).Klick("Option2");
            QCOMPARE(Hand(dialog).Text("Dateiname"), u"text.wav"_s);
            dialog.close();
        });
        QCOMPARE(b.Meldungstexte(),
                 QStringList(u"Fehler beim Soundöffnen: Keine WAV-Datei: „%1“"_s.arg(b.Datei("text.wav"))));
    }

    void EachMomentShowsItsFile_data()
    {
        QTest::addColumn<bool>("bild");
        QTest::newRow("pictures") << true;
        QTest::newRow("sounds") << false;
    }

    void EachMomentShowsItsFile()
    {
        QFETCH(bool, bild);
        CardRecord card = Bildkarte(1, u"rot.bmp"_s);
        card.Picture_8_Name = u"C:\\x\\a.wav"_s;
        Bildbuehne b({card});
        KlangSchreiben(b.Datei("b.wav"));
        b.Zeigen();
        b.dialoge.pfade = {b.Datei(bild ? "blau.jpg" : "b.wav")};
        b.Dialog(bild ? "MBilder" : "MTon", bild ? u"Bildbearbeiten"_s : u"Soundbearbeiten"_s,
                 [&](QWidget &dialog) {
                     const QString keine = u"keine Datei"_s;
                     QStringList namen{bild ? u"rot.bmp"_s : keine, keine, bild ? keine : u"C:\\x\\a.wav"_s};
                     const auto gezeigt = [&] {
                         return QStringList{Hand(dialog).Text("Belegung1"), Hand(dialog).Text("Belegung2"),
                                            Hand(dialog).Text("Belegung3")};
                     };
                     QCOMPARE(gezeigt(), namen);
                     QVERIFY(b.dialoge.gefragt.isEmpty());
                     QCOMPARE(Hand(dialog).Finde("Belegung2")->accessibleName(), u"Antwort: keine Datei"_s);
                     const auto *option = Hand(dialog).Finde("Option2");
                     QCOMPARE(option->accessibleDescription(), keine);
                     Hand(dialog).Klick("Option2");
                     namen[1] = bild ? u"blau.jpg"_s : u"b.wav"_s;
                     QCOMPARE(gezeigt(), namen);
                     QCOMPARE(option->accessibleDescription(), namen[1]);
                     Hand(dialog).Klick("cmdLöschen");
                     namen[1] = keine;
                     QCOMPARE(gezeigt(), namen);
                     dialog.close();
                 });
    }

    void TheFileDialogBeginsWithAllPicturesAndThenJpeg()
    {
        Bildbuehne b(DreiKarten());
        b.Zeigen();
        b.Dialog("MBilder", u"Bildbearbeiten"_s, [&](QWidget &dialog) {
            Hand(dialog).Klick("Option1");
            dialog.close();
        });
        QCOMPARE(Dateitypen(b.dialoge.gefragt.at(0)),
                 (QStringList{u"JPEG und Bitmaps (*.jpg *.bmp)"_s, u"JPEG (*.jpg)"_s, u"Bitmaps (*.bmp)"_s}));
    }

    void ALongNameDoesNotWidenTheDialog()
    {
        CardRecord card = MakeCard(1, 0, 1);
        card.Picture_6_Name = QString(150, u'm') + u".wav"_s;
        Bildbuehne b({card});
        b.Zeigen();
        b.Dialog("MTon", u"Soundbearbeiten"_s, [&](QWidget &dialog) {
            dialog.resize(500, 400);
            Hand(dialog).Klick("Option1");
            QVERIFY2(dialog.width() == 500, qPrintable(QString::number(dialog.width())));
            QVERIFY(dialog.minimumSizeHint().width() < 500);
            dialog.close();
        });
    }

    // It is seen in the slot's size, and the dialog stays within the screen.
    void ThePreviewShowsUsualPicturesWhole()
    {
        Bildbuehne b(DreiKarten());
        const QSize schirm = b.fenster->screen()->availableGeometry().size();
        BildSchreiben(b.Datei("foto.bmp"), {400, 590}, Qt::green);
        b.Zeigen();
        b.dialoge.pfade = {b.Datei("foto.bmp")};
        b.Dialog("MBilder", u"Bildbearbeiten"_s, [&](QWidget &dialog) {
            const QLabel *bild = Hand(dialog).Finde<QLabel>("Picture1");
            Hand(dialog).Klick("Option1");
            QVERIFY(b.Meldungstexte().isEmpty());
            QCOMPARE(bild->pixmap().size(), QSize(400, 590));
            QVERIFY(dialog.width() <= schirm.width() && dialog.height() <= schirm.height());
            dialog.close();
        });
    }
};

PAUKFIX_TEST(SlotdialogTest)
#include "SlotdialogTest.moc"
