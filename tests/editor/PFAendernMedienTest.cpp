// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Bildbuehne.h"
#include "Medienkopie.h"
#include "TestProgram.h"

#include <QClipboard>
#include <QDropEvent>
#include <QMimeData>
#include <QUrl>

using namespace paukfix;
using namespace Qt::StringLiterals;

namespace {

using Antwort = Meldungen::Antwort;

QByteArray Inhalt(const QString &pfad)
{
    QFile datei(pfad);
    return datei.open(QIODevice::ReadOnly) ? datei.readAll() : QByteArray();
}

// A file manager's drag, or what it puts into the clipboard.
std::unique_ptr<QMimeData> Dateien(const QStringList &pfade)
{
    auto mime = std::make_unique<QMimeData>();
    QList<QUrl> orte;
    for (const QString &pfad : pfade)
        orte << QUrl::fromLocalFile(pfad);
    mime->setUrls(orte);
    return mime;
}

bool Fallenlassen(QWidget *ziel, const QMimeData &mime)
{
    const QPoint ort = ziel->rect().center();
    QDragEnterEvent herein(ort, Qt::CopyAction | Qt::MoveAction, &mime, Qt::LeftButton, {});
    QApplication::sendEvent(ziel, &herein);
    if (!herein.isAccepted())
        return false;
    QDropEvent fallen(ort, Qt::CopyAction | Qt::MoveAction, &mime, Qt::LeftButton, {});
    QApplication::sendEvent(ziel, &fallen);
    return fallen.isAccepted() && fallen.dropAction() == Qt::CopyAction;
}

// An editor, and files in another directory.
struct Medienbuehne : Bildbuehne
{
    explicit Medienbuehne(const QList<CardRecord> &cards = DreiKarten()) : Bildbuehne(cards)
    {
        BildSchreiben(Fremd("foto.jpg"), {60, 40}, Qt::magenta);
        KlangSchreiben(Fremd("laut.wav"));
    }

    QString Fremd(const char *name) const { return anderswo.filePath(QString::fromUtf8(name)); }

    bool Liegt(const char *name) const { return QFile::exists(Datei(name)); }

    QTemporaryDir anderswo;
};

} // namespace

// Pictures and sounds that are dropped or pasted.
class PFAendernMedienTest : public QObject
{
    Q_OBJECT

private slots:

    void AFileDroppedOnTheCardIsOfferedCopiedAndNamed_data()
    {
        QTest::addColumn<QString>("ziel");
        for (const char *ziel : {"MFrage", "Antwort(0)", "MaskThema", "Formular"})
            QTest::newRow(ziel) << QString::fromUtf8(ziel);
    }

    void AFileDroppedOnTheCardIsOfferedCopiedAndNamed()
    {
        QFETCH(QString, ziel);
        Medienbuehne b;
        b.Zeigen();
        b.kartei.messages.antworten = {Antwort::Ja};
        auto *box = dynamic_cast<QTextEdit *>(b.Finde(ziel));
        const auto mime = Dateien({b.Fremd("foto.jpg")});
        QVERIFY(Fallenlassen(box ? box->viewport() : b.Finde(ziel), *mime));
        QVERIFY(b.kartei.messages.gezeigt.isEmpty()); // nothing is asked within the drop
        QTRY_COMPARE(b.kartei.messages.gezeigt.size(), 1);
        QCOMPARE(b.Meldungstexte(),
                 QStringList(u"„foto.jpg“ neben die Kartei kopieren und bei „Frage“ zeigen?"_s));
        QTRY_VERIFY(b.Bild()->isVisible());
        QCOMPARE(Inhalt(b.Datei("foto.jpg")), Inhalt(b.Fremd("foto.jpg")));
        QVERIFY(b.Bild()->isVisible());
        QCOMPARE(b.Text("Bildmarke"), u"1 Bild"_s);
        QCOMPARE(b.Text("Speicherstand"), u"geändert"_s);
        b.Klick("CVor");
        const CardRecord card = b.kartei.Stored()[0];
        QCOMPARE(card.Picture_1_Name, u"foto.jpg"_s);
        QCOMPARE(card.Frage_Klartext, u"Frage 1"_s);
        QCOMPARE(card.Picture_9_Name, u"Thema 1"_s);
    }

    void WithoutAYesNothingIsCopiedNorChanged()
    {
        Medienbuehne b;
        b.Zeigen();
        b.kartei.messages.antworten = {Antwort::Nein};
        QVERIFY(Fallenlassen(b.Finde("Formular"), *Dateien({b.Fremd("foto.jpg")})));
        QTRY_COMPARE(b.kartei.messages.gezeigt.size(), 1);
        QVERIFY(!b.Liegt("foto.jpg") && !b.Bild()->isVisible());
        QCOMPARE(b.Text("Speicherstand"), u"gespeichert"_s);
    }

    void ANameThatIsTakenIsNumberedAndTheOtherFileStays()
    {
        Medienbuehne b;
        BildSchreiben(b.Fremd("rot.bmp"), {60, 40}, Qt::green);
        BildSchreiben(b.Datei("rot-2.bmp"), {60, 40}, Qt::cyan);
        const QByteArray vorher = Inhalt(b.Datei("rot.bmp"));
        b.Zeigen();
        b.kartei.messages.antworten = {Antwort::Ja};
        QVERIFY(Fallenlassen(b.Finde("Formular"), *Dateien({b.Fremd("rot.bmp")})));
        QTRY_VERIFY(b.Liegt("rot-3.bmp"));
        QCOMPARE(
            b.Meldungstexte(),
            QStringList(u"„rot.bmp“ als „rot-3.bmp“ neben die Kartei kopieren und bei „Frage“ zeigen?"_s));
        QCOMPARE(Inhalt(b.Datei("rot.bmp")), vorher);
        QTRY_COMPARE(b.Farbe(), QColor(Qt::green));
    }

    void AFileBesideTheCardFileIsTakenAsItIs()
    {
        Medienbuehne b;
        b.Zeigen();
        QVERIFY(Fallenlassen(b.Finde("Formular"), *Dateien({b.Datei("rot.bmp")})));
        QTRY_COMPARE(b.Farbe(), QColor(Qt::red));
        QVERIFY(b.Meldungstexte().isEmpty() && !b.Liegt("rot-2.bmp"));
    }

    void AFullDiskIsToldAndLeavesNothing()
    {
        Medienbuehne b;
        b.Zeigen();
        b.kartei.messages.antworten = {Antwort::Ja};
        const QStringList vorher = QDir(b.kartei.directory.path()).entryList(QDir::AllEntries | QDir::Hidden);
        {
            const FullDisk voll(50);
            QVERIFY(Fallenlassen(b.Finde("Formular"), *Dateien({b.Fremd("foto.jpg")})));
            QTRY_COMPARE(b.kartei.messages.gezeigt.size(), 2);
        }
        const QString text = b.Meldungstexte()[1];
        QVERIFY2(text.startsWith(u"Fehler beim Kopieren: "_s) && IsGermanMessage(text), qPrintable(text));
        QCOMPARE(QDir(b.kartei.directory.path()).entryList(QDir::AllEntries | QDir::Hidden), vorher);
        QVERIFY(!b.Bild()->isVisible());
        QCOMPARE(b.Text("Speicherstand"), u"gespeichert"_s);
    }

    void ASoundGoesToTheFirstMomentWithoutOne()
    {
        CardRecord card = MakeCard(1, 0, 1);
        card.Picture_6_Name = u"a.wav"_s;
        Medienbuehne b({card, MakeCard(2, 0, 2)});
        b.Zeigen();
        b.kartei.messages.antworten = {Antwort::Ja};
        QVERIFY(Fallenlassen(b.Box("MFrage")->viewport(), *Dateien({b.Fremd("laut.wav")})));
        QTRY_COMPARE(b.Text("Tonmarke"), u"2 Töne"_s);
        b.Klick("CVor");
        QCOMPARE(b.kartei.Stored()[0].Picture_7_Name, u"laut.wav"_s);
    }

    void WhatIsNoPictureIsToldAndNotCopied()
    {
        Medienbuehne b;
        QFile falsch(b.Fremd("falsch.jpg"));
        QVERIFY(falsch.open(QIODevice::WriteOnly) && falsch.write("kein Bild") > 0);
        falsch.close();
        b.Zeigen();
        QVERIFY(Fallenlassen(b.Finde("Formular"), *Dateien({b.Fremd("falsch.jpg")})));
        QTRY_COMPARE(b.kartei.messages.gezeigt.size(), 1);
        QVERIFY(b.Meldungstexte()[0].startsWith(u"Fehler beim Bildöffnen: "_s));
        QVERIFY(!b.Liegt("falsch.jpg"));
    }

    void APastedPictureBecomesAFile()
    {
        Medienbuehne b;
        b.Zeigen();
        QImage bild(30, 20, QImage::Format_RGB32);
        bild.fill(Qt::blue);
        QApplication::clipboard()->setImage(bild);
        b.kartei.messages.antworten = {Antwort::Ja};
        b.Taste("MFrage", Qt::Key_V, Qt::ControlModifier);
        QTRY_VERIFY(b.Liegt("Bild.jpg"));
        QTRY_VERIFY(b.Farbe().blue() > 200);
        QCOMPARE(b.Text("MFrage"), u"Frage 1"_s);
    }

    void PastedTextIsTextAlsoWithAPictureOfIt()
    {
        Medienbuehne b;
        b.Zeigen();
        auto *mime = new QMimeData;
        mime->setText(u"Wort "_s);
        mime->setImageData(QImage(30, 20, QImage::Format_RGB32));
        QApplication::clipboard()->setMimeData(mime);
        b.Taste("MFrage", Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(b.Text("MFrage"), u"Wort Frage 1"_s);
        QVERIFY(b.Meldungstexte().isEmpty());
    }

    void AFileDroppedOnASlotIsThatSlots()
    {
        Medienbuehne b;
        b.Zeigen();
        b.Dialog("MBilder", u"Bildbearbeiten"_s, [&](QWidget &dialog) {
            QWidget *karte = Hand(dialog).Finde("Option2")->parentWidget();
            QVERIFY(!Fallenlassen(karte, *Dateien({b.Fremd("laut.wav")})));
            b.kartei.messages.antworten = {Antwort::Ja};
            QVERIFY(Fallenlassen(karte, *Dateien({b.Fremd("foto.jpg")})));
            QTRY_COMPARE(Hand(dialog).Text("Belegung2"), u"foto.jpg"_s);
            QCOMPARE(Hand(dialog).Text("Dateiname"), u"foto.jpg"_s);
            QVERIFY(Hand(dialog).Finde<QRadioButton>("Option2")->isChecked());
            dialog.close();
        });
        QCOMPARE(b.Meldungstexte(),
                 QStringList(u"„foto.jpg“ neben die Kartei kopieren und bei „Antwort“ zeigen?"_s));
        b.Klick("CVor");
        QCOMPARE(b.kartei.Stored()[0].Picture_2_Name, u"foto.jpg"_s);
    }

    void AFileIsPastedIntoTheChosenSlot()
    {
        Medienbuehne b;
        b.Zeigen();
        QApplication::clipboard()->setMimeData(Dateien({b.Fremd("laut.wav")}).release());
        b.Dialog("MTon", u"Soundbearbeiten"_s, [&](QWidget &dialog) {
            Hand(dialog).Klick("Option3"); // asks for a file; cancelled
            b.kartei.messages.antworten = {Antwort::Ja};
            QTest::keyClick(&dialog, Qt::Key_V, Qt::ControlModifier);
            QCOMPARE(Hand(dialog).Text("Belegung3"), u"laut.wav"_s);
            QCOMPARE(Hand(dialog).Text("Dauer3"), u"0:01"_s);
            b.ton.gespielt.clear();
            Hand(dialog).Klick("Abspielen3");
            QCOMPARE(b.ton.gespielt, QStringList(b.Datei("laut.wav")));
            dialog.close();
        });
    }

    void ThreePicturesAreEnough()
    {
        Medienbuehne b({Bildkarte(1, u"rot.bmp"_s, u"rot.bmp"_s, u"rot.bmp"_s)});
        b.Zeigen();
        QVERIFY(Fallenlassen(b.Finde("Formular"), *Dateien({b.Fremd("foto.jpg")})));
        QTRY_COMPARE(b.kartei.messages.gezeigt.size(), 1);
        QVERIFY(b.Meldungstexte()[0].startsWith(u"Die Karte hat schon drei Bilder."_s));
        QVERIFY(!b.Liegt("foto.jpg"));
    }

    // --- The picture on the form

    void APictureNeverLiesOnText_data()
    {
        QTest::addColumn<QSize>("fenster");
        QTest::addColumn<int>("art");
        for (const QSize &groesse : {QSize(1000, 760), QSize(911, 512), QSize(640, 430)})
            for (const int art : {1, 2})
                QTest::addRow("%dx%d, type %d", groesse.width(), groesse.height(), art) << groesse << art;
    }

    void APictureNeverLiesOnText()
    {
        QFETCH(QSize, fenster);
        QFETCH(int, art);
        for (const QRect &platz : {QRect(6000, 600, 4500, 3375), QRect(9000, 1350, 3600, 2700),
                                   QRect(300, 300, 12000, 9000), QRect(2000, 7000, 5000, 3000)}) {
            CardRecord card = Bildkarte(1, u"rot.bmp"_s);
            card.Pictureleft = platz.x();
            card.PictureTop = platz.y();
            card.Picturewidth = platz.width();
            card.Pictureheight = platz.height();
            card.Antworttyp = art;
            Medienbuehne b({card});
            b.Zeigen();
            b.fenster->resize(fenster);
            QTRY_COMPARE(b.fenster->size(), fenster);
            QWidget *form = b.Finde("Formular");
            const auto beruehrt = [&](const QWidget *teil) {
                return teil->isVisible() &&
                       QRect(teil->mapTo(form, QPoint()), teil->size()).intersects(b.Bild()->geometry());
            };
            QVERIFY(b.Bild()->isVisible() && form->rect().contains(b.Bild()->geometry()));
            for (const char *name : {"MFrage", "Antwort(0)", "Antwort(1)"})
                QVERIFY2(!beruehrt(b.Box(name)->viewport()), name);
            for (const char *name : {"MaskFrageNr", "MaskThema", "Frame2", "Cadd", "CVor", "Check1(0)"})
                QVERIFY2(!beruehrt(b.Finde(name)), name);
            b.Tippe("MFrage", u"x"_s);
            b.Taste(Qt::Key_I, Qt::ControlModifier);
            QCOMPARE(b.kartei.Stored()[0].Pictureleft, double(platz.x()));
        }
    }

    void AllAnswersAreReachedInASmallWindow()
    {
        Medienbuehne b({Tickkarte(1)});
        b.Zeigen();
        b.fenster->resize(640, 430);
        QTRY_COMPARE(b.fenster->size(), QSize(640, 430));
        b.Finde("Antwort(0)")->setFocus();
        for (int i = 0; i < 9; ++i)
            b.Taste(Qt::Key_Tab);
        const QWidget *letztes = b.Finde("Check1(4)");
        QVERIFY(letztes->hasFocus());
        QVERIFY(letztes->visibleRegion().boundingRect().height() >= letztes->height() - 1);
    }
};

PAUKFIX_TEST(PFAendernMedienTest)
#include "PFAendernMedienTest.moc"
