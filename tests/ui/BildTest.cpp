// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Bild.h"

#include "BildBox.h"
#include "StoreTestSupport.h"

#include <QBuffer>
#include <QImage>
#include <QTest>

#include <sys/stat.h>

namespace {

const QColor Rot(200, 30, 30);

QImage Einfarbig(int breite, int hoehe)
{
    QImage bild(breite, hoehe, QImage::Format_RGB32);
    bild.fill(Rot);
    return bild;
}

// A JPEG of 40 x 20 pixels whose camera says that it was held upright (orientation 6: turn right).
QByteArray HochkantJpeg()
{
    QByteArray jpeg;
    QBuffer puffer(&jpeg);
    puffer.open(QIODevice::WriteOnly);
    Einfarbig(40, 20).save(&puffer, "JPEG");
    QByteArray exif("Exif\0\0II*\0\x08\0\0\0\x01\0\x12\x01\x03\0\x01\0\0\0\x06\0\0\0\0\0\0\0", 32);
    const auto laenge = static_cast<quint16>(exif.size() + 2);
    exif.prepend(static_cast<char>(laenge & 0xff)).prepend(static_cast<char>(laenge >> 8));
    return jpeg.insert(2, exif.prepend("\xff\xe1", 2));
}

} // namespace

class BildTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> kartei_, programm_;
    std::unique_ptr<TestMeldungen> meldungen_;

    void Schreiben(const QString &pfad, const QByteArray &inhalt)
    {
        QFile datei(pfad);
        QVERIFY(datei.open(QIODevice::WriteOnly));
        QCOMPARE(datei.write(inhalt), qint64(inhalt.size()));
    }

    QImage Laden(const QString &name)
    {
        return BildLaden(name, kartei_->path(), programm_->path(), *meldungen_);
    }

    void VerifyNumber(const QString &pfad, int nummer)
    {
        try {
            BildLesen(pfad);
        } catch (const StoreError &fehler) {
            QCOMPARE(fehler.Number(), nummer);
            QVERIFY(fehler.Text().contains(pfad));
            return;
        }
        QFAIL("no error");
    }

private slots:

    void init()
    {
        kartei_ = std::make_unique<QTemporaryDir>();
        programm_ = std::make_unique<QTemporaryDir>();
        meldungen_ = std::make_unique<TestMeldungen>();
    }

    void APictureIsReadNoLargerThanItsPlace()
    {
        const QString pfad = kartei_->filePath("a.jpg");
        QVERIFY(Einfarbig(1920, 1200).save(pfad, "JPEG"));
        QCOMPARE(BildLesen(pfad, {960, 900}).size(), QSize(960, 600));
        QCOMPARE(BildLesen(pfad, {4000, 4000}).size(), QSize(1920, 1200));
        QCOMPARE(BildLesen(pfad).size(), QSize(1920, 1200));
    }

    void BmpAndJpegAreReadByContent_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("format");
        QTest::newRow("bmp") << "a.bmp" << QByteArray("BMP");
        QTest::newRow("jpg") << "a.jpg" << QByteArray("JPEG");
        QTest::newRow("capital ending") << "A.JPG" << QByteArray("JPEG");
        QTest::newRow("jpeg named bmp") << "a.bmp" << QByteArray("JPEG");
        QTest::newRow("umlauts and blanks") << "schöne Größe.jpg" << QByteArray("JPEG");
    }

    void BmpAndJpegAreReadByContent()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, format);
        QVERIFY(Einfarbig(12, 7).save(kartei_->filePath(name), format.constData()));
        const QImage bild = Laden(name);
        QCOMPARE(bild.size(), QSize(12, 7));
        QVERIFY(qAbs(bild.pixelColor(6, 3).red() - Rot.red()) < 8);
        QCOMPARE(meldungen_->Texte(), QStringList());
    }

    void TheCardFilesDirectoryComesBeforeTheProgramsOwn()
    {
        Einfarbig(2, 2).save(programm_->filePath("a.bmp"));
        QCOMPARE(Laden("a.bmp").size(), QSize(2, 2));
        Einfarbig(3, 3).save(kartei_->filePath("a.bmp"));
        QCOMPARE(Laden("a.bmp").size(), QSize(3, 3));
        QCOMPARE(meldungen_->Texte(), QStringList());
    }

    void AMissingPictureIsNamedAsItIsStored_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("bare") << "fehlt.jpg";
        QTest::newRow("directory") << "C:\\Bilder\\fehlt.jpg";
        QTest::newRow("no file part") << "Bilder\\";
    }

    void AMissingPictureIsNamedAsItIsStored()
    {
        QFETCH(QString, name);
        QVERIFY(Laden(name).isNull());
        QCOMPARE(meldungen_->Texte(), QStringList("Bilddatei nicht gefunden " + name));
    }

    void AStoredDirectoryIsNeverFollowed()
    {
        QVERIFY(QDir(kartei_->path()).mkdir("innen"));
        Einfarbig(3, 3).save(kartei_->filePath("innen/a.bmp"));
        QVERIFY(Laden("innen/a.bmp").isNull());
        QVERIFY(Laden(kartei_->filePath("innen/a.bmp")).isNull());
        Einfarbig(5, 5).save(kartei_->filePath("a.bmp"));
        QCOMPARE(Laden("..\\innen\\a.bmp").size(), QSize(5, 5));
        QCOMPARE(Laden("../innen/a.bmp").size(), QSize(5, 5));
    }

    void AMissingCardDirectoryStillLeadsToTheProgramsOwn()
    {
        Einfarbig(2, 2).save(programm_->filePath("a.bmp"));
        QCOMPARE(BildLaden("a.bmp", kartei_->filePath("weg"), programm_->path(), *meldungen_).size(),
                 QSize(2, 2));
    }

    void WhatIsNoPictureIsReportedWithTheErrorsText()
    {
        Einfarbig(4, 4).save(programm_->filePath("a.jpg"));
        Schreiben(kartei_->filePath("a.jpg"), "Das ist ein Text.");
        QVERIFY(Laden("a.jpg").isNull());
        QCOMPARE(meldungen_->Texte().size(), 1);
        QVERIFY2(meldungen_->Texte()[0].startsWith("Ungültiges Bild „"), qPrintable(meldungen_->Texte()[0]));
    }

    void EachFailureHasItsNumber()
    {
        VerifyNumber(kartei_->filePath("fehlt.jpg"), 53);
        VerifyNumber(kartei_->filePath("weg/fehlt.jpg"), 76);
        QDir(kartei_->path()).mkdir("ordner.jpg");
        VerifyNumber(kartei_->filePath("ordner.jpg"), 75);
        const QString rohr = kartei_->filePath("rohr.jpg");
        QCOMPARE(mkfifo(QFile::encodeName(rohr).constData(), 0600), 0);
        VerifyNumber(rohr, 75);
        Schreiben(kartei_->filePath("leer.jpg"), "");
        VerifyNumber(kartei_->filePath("leer.jpg"), 481);
        QVERIFY(Einfarbig(3, 3).save(kartei_->filePath("b.jpg"), "PNG"));
        VerifyNumber(kartei_->filePath("b.jpg"), 481);
    }

    void TruncatedAndLyingFilesAreNoPictures()
    {
        Schreiben(kartei_->filePath("kurz.jpg"), HochkantJpeg().left(60));
        VerifyNumber(kartei_->filePath("kurz.jpg"), 481);
        // A bitmap of a few bytes that claims 60,000 x 60,000 pixels.
        Einfarbig(1, 1).save(kartei_->filePath("bombe.bmp"));
        QFile datei(kartei_->filePath("bombe.bmp"));
        QVERIFY(datei.open(QIODevice::ReadOnly));
        QByteArray bombe = datei.readAll();
        bombe.replace(18, 8, QByteArray("\x60\xea\0\0\x60\xea\0\0", 8));
        Schreiben(kartei_->filePath("bombe2.bmp"), bombe);
        VerifyNumber(kartei_->filePath("bombe2.bmp"), 481);
        // The same with 10,000 x 10,000: within the limit of pixels, beyond that of memory.
        bombe.replace(18, 8, QByteArray("\x10\x27\0\0\x10\x27\0\0", 8));
        Schreiben(kartei_->filePath("bombe3.bmp"), bombe);
        VerifyNumber(kartei_->filePath("bombe3.bmp"), 481);
    }

    void APictureStoredFromTopToBottomIsBoundedToo()
    {
        // One bit a pixel, 12 pixels wide, 2.5 million rows that are told as negative.
        QByteArray lang = QByteArray::fromHex("424d6200000000003e00000000002800"
                                              "00000c00000010ffd8ff010001000000"
                                              "00000000000000000000020000000000"
                                              "000000000000ffffff00");
        lang.append(2'556'144 * 4, '\x55');
        Schreiben(kartei_->filePath("lang.bmp"), lang);
        const QImage bild = BildLesen(kartei_->filePath("lang.bmp"));
        QVERIFY2(bild.height() <= 4096 && bild.width() <= 4096, qPrintable(QString::number(bild.height())));
    }

    void ACamerasOrientationIsApplied()
    {
        Schreiben(kartei_->filePath("hoch.jpg"), HochkantJpeg());
        QCOMPARE(Laden("hoch.jpg").size(), QSize(20, 40));
    }

    void AHugePhotographIsReadSmaller()
    {
        QVERIFY(Einfarbig(9000, 600).save(kartei_->filePath("breit.jpg")));
        QCOMPARE(Laden("breit.jpg").size(), QSize(4096, 273));
    }

    void ABoxFitsThePictureAndKeepsItsProportions()
    {
        BildBox box(nullptr);
        box.resize(100, 100);
        box.SetBild(Einfarbig(200, 100));
        const QImage gemalt = box.grab().toImage();
        QCOMPARE(gemalt.pixelColor(50, 50), Rot);
        QVERIFY(gemalt.pixelColor(50, 10) != Rot);
        QVERIFY(gemalt.pixelColor(50, 90) != Rot);
    }
};

QTEST_MAIN(BildTest)
#include "BildTest.moc"
