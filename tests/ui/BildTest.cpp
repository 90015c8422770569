// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Bild.h"

#include "BildBox.h"
#include "StoreTestSupport.h"
#include "TestProgram.h"

#include <QBuffer>
#include <QDataStream>
#include <QImage>
#include <QImageWriter>
#include <QTest>
#include <QtEndian>

#include <malloc.h>
#include <sys/stat.h>

using namespace paukfix;
using namespace Qt::StringLiterals;

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

QByteArray Jpeg(const QImage &bild, bool stufen = false)
{
    QBuffer puffer;
    puffer.open(QIODevice::WriteOnly);
    QImageWriter schreiber(&puffer, "JPEG");
    schreiber.setProgressiveScanWrite(stufen);
    schreiber.write(bild);
    return puffer.data();
}

QImage Verlauf()
{
    QImage bild(320, 240, QImage::Format_RGB32);
    for (int y = 0; y < bild.height(); ++y)
        for (int x = 0; x < bild.width(); ++x)
            bild.setPixelColor(x, y, QColor(x * 37 % 256, y * 91 % 256, x * y % 256));
    return bild;
}

// A JPEG with a small picture of its own inside, as cameras make them.
QByteArray JpegMitVorschau()
{
    QByteArray klein = "Exif\0\0" + Jpeg(Einfarbig(8, 8));
    const auto laenge = static_cast<quint16>(klein.size() + 2);
    klein.prepend(static_cast<char>(laenge & 0xff)).prepend(static_cast<char>(laenge >> 8));
    return Jpeg(Verlauf()).insert(2, klein.prepend("\xff\xe1", 2));
}

// What is new on the heap is not zero while this lives.
class SchmutzigerSpeicher
{
public:
    SchmutzigerSpeicher() { mallopt(M_PERTURB, 0x35); }

    ~SchmutzigerSpeicher() { mallopt(M_PERTURB, 0); }
    Q_DISABLE_COPY_MOVE(SchmutzigerSpeicher)
};

const QColor Gruen(30, 200, 30);

// A bitmap of 5 x 3 pixels, all red but the one at the top left, which is green.
struct Bmp
{
    quint16 bits = 24;
    quint32 kopf = 40;       // bytes of the header: 12 and 64 are OS/2's, 108 and 124 the later ones
    quint32 kompression = 0; // 1 and 2: RLE of 8 and 4 bits, 3: with masks
    bool vonOben = false;

    QByteArray Datei() const
    {
        const QByteArray tabelle = Tabelle();
        QByteArray datei;
        QDataStream strom(&datei, QIODevice::WriteOnly);
        strom.setByteOrder(QDataStream::LittleEndian);
        const QByteArray punkte = Punkte();
        const auto anfang = static_cast<quint32>(14 + kopf + static_cast<quint32>(tabelle.size()));
        strom.writeRawData("BM", 2);
        strom << anfang + static_cast<quint32>(punkte.size()) << quint32(0) << anfang << kopf;
        if (kopf == 12) {
            strom << quint16(Breite) << quint16(Hoehe) << quint16(1) << bits;
        } else if (kopf == 16) {
            strom << quint32(Breite) << quint32(Hoehe) << quint16(1) << bits;
        } else {
            strom << qint32(Breite) << qint32(vonOben ? -Hoehe : Hoehe) << quint16(1) << bits << kompression
                  << static_cast<quint32>(punkte.size()) << qint32(0) << qint32(0)
                  << quint32(bits <= 8 ? Farben().size() : 0) << quint32(0);
            QByteArray rest(static_cast<qsizetype>(kopf) - 40, 0);
            if (kopf >= 108 || (kopf > 40 && kopf < 64 && kompression == 3))
                rest.replace(0, 12, Masken());
            strom.writeRawData(rest.constData(), static_cast<int>(rest.size()));
        }
        return datei + tabelle + punkte;
    }

private:
    static constexpr int Breite = 5, Hoehe = 3;

    QList<QColor> Farben() const
    {
        QList<QColor> farben{Rot, Gruen};
        while (kopf <= 16 && farben.size() < 1 << bits)
            farben << Qt::black;
        return farben;
    }

    static QByteArray Zahl(quint32 zahl, int bytes)
    {
        QByteArray klein(bytes, 0);
        for (int i = 0; i < bytes; ++i)
            klein[i] = static_cast<char>(zahl >> 8 * i & 0xff);
        return klein;
    }

    QByteArray Masken() const
    {
        if (bits == 16)
            return Zahl(0xf800, 4) + Zahl(0x07e0, 4) + Zahl(0x001f, 4);
        return Zahl(0xff0000, 4) + Zahl(0xff00, 4) + Zahl(0xff, 4);
    }

    QByteArray Tabelle() const
    {
        if (bits > 8)
            return kompression == 3 && kopf == 40 ? Masken() : QByteArray();
        QByteArray tabelle;
        for (const QColor &farbe : Farben())
            tabelle += Zahl(farbe.rgb() & 0xffffff, kopf == 12 ? 3 : 4);
        return tabelle;
    }

    QByteArray Zeile(bool oberste) const
    {
        QByteArray zeile;
        if (kompression == 1)
            return oberste ? QByteArray("\1\1\4\0\0\1", 6) : QByteArray("\5\0\0\0", 4);
        if (kompression == 2)
            return oberste ? QByteArray("\1\x10\4\0\0\1", 6) : QByteArray("\5\0\0\0", 4);
        if (bits <= 8) {
            zeile = QByteArray((Breite * bits + 7) / 8, 0);
            zeile[0] = static_cast<char>(oberste ? 1 << (8 - bits) : 0);
        }
        for (int x = 0; bits > 8 && x < Breite; ++x) {
            const QColor farbe = oberste && x == 0 ? Gruen : Rot;
            const auto gruenBits = kompression == 3 ? 6 : 5;
            const auto kurz = static_cast<quint32>(farbe.red() >> 3 << (5 + gruenBits) |
                                                   farbe.green() >> (8 - gruenBits) << 5 | farbe.blue() >> 3);
            zeile += Zahl(bits == 16 ? kurz : farbe.rgb() & 0xffffff, bits / 8);
        }
        return zeile.leftJustified((zeile.size() + 3) / 4 * 4, 0);
    }

    QByteArray Punkte() const
    {
        const QByteArray unten = Zeile(false) + Zeile(false);
        return vonOben ? Zeile(true) + unten : unten + Zeile(true);
    }
};

bool Gleicht(const QColor &eine, const QColor &andere)
{
    return qAbs(eine.red() - andere.red()) < 12 && qAbs(eine.green() - andere.green()) < 12 &&
           qAbs(eine.blue() - andere.blue()) < 12;
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

    void VerifyError(const QString &pfad, int nummer, const char *text)
    {
        try {
            BildLesen(pfad);
        } catch (const StoreError &fehler) {
            QCOMPARE(fehler.Number(), nummer);
            QCOMPARE(fehler.Text(), QString(text).arg(pfad));
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

    void BitmapsOfEveryKindAreRead_data()
    {
        QTest::addColumn<QByteArray>("datei");
        for (const quint16 bits :
             {quint16(1), quint16(4), quint16(8), quint16(16), quint16(24), quint16(32)}) {
            QTest::addRow("%d bits", bits) << Bmp{bits}.Datei();
            QTest::addRow("%d bits, top-down", bits) << Bmp{bits, 40, 0, true}.Datei();
            QTest::addRow("%d bits, OS/2 2", bits) << Bmp{bits, 64}.Datei();
            QTest::addRow("%d bits, version 2", bits) << Bmp{bits, 52}.Datei();
            QTest::addRow("%d bits, version 3", bits) << Bmp{bits, 56}.Datei();
            QTest::addRow("%d bits, version 4", bits) << Bmp{bits, 108}.Datei();
            QTest::addRow("%d bits, version 5", bits) << Bmp{bits, 124}.Datei();
        }
        for (const quint16 bits : {quint16(1), quint16(4), quint16(8), quint16(24)})
            QTest::addRow("%d bits, OS/2 1", bits) << Bmp{bits, 12}.Datei();
        for (const quint16 bits : {quint16(1), quint16(4), quint16(8), quint16(24)})
            QTest::addRow("%d bits, OS/2 2 short", bits) << Bmp{bits, 16}.Datei();
        QTest::newRow("RLE 8") << Bmp{8, 40, 1}.Datei();
        QTest::newRow("RLE 4") << Bmp{4, 40, 2}.Datei();
        for (const quint16 bits : {quint16(16), quint16(32)}) {
            QTest::addRow("%d bits, masks", bits) << Bmp{bits, 40, 3}.Datei();
            QTest::addRow("%d bits, masks, version 2", bits) << Bmp{bits, 52, 3}.Datei();
            QTest::addRow("%d bits, masks, version 3", bits) << Bmp{bits, 56, 3}.Datei();
            QTest::addRow("%d bits, masks, version 5", bits) << Bmp{bits, 124, 3}.Datei();
        }
    }

    void BitmapsOfEveryKindAreRead()
    {
        QFETCH(QByteArray, datei);
        Schreiben(kartei_->filePath("a.bmp"), datei);
        const QImage bild = Laden("a.bmp");
        QCOMPARE(meldungen_->Texte(), QStringList());
        QCOMPARE(bild.size(), QSize(5, 3));
        for (int y = 0; y < 3; ++y) {
            for (int x = 0; x < 5; ++x) {
                QVERIFY2(Gleicht(bild.pixelColor(x, y), x == 0 && y == 0 ? Gruen : Rot),
                         qPrintable(u"%1,%2: %3"_s.arg(x).arg(y).arg(bild.pixelColor(x, y).name())));
                QCOMPARE(bild.pixelColor(x, y).alpha(), 255);
            }
        }
    }

    void AnUnknownKindOfBitmapIsToldAsSuch()
    {
        Schreiben(kartei_->filePath("a.bmp"), Bmp{24, 44}.Datei());
        VerifyError(kartei_->filePath("a.bmp"), Fehler::UngueltigesBild,
                    "Ungültiges Bild „%1“: diese Art von BMP ist nicht bekannt.");
    }

    void JpegsOfEveryKindAreRead_data()
    {
        QTest::addColumn<QByteArray>("datei");
        QTest::addColumn<QColor>("farbe");
        QImage grau(8, 8, QImage::Format_Grayscale8);
        grau.fill(QColor(90, 90, 90));
        QTest::newRow("baseline") << Jpeg(Einfarbig(8, 8)) << Rot;
        QTest::newRow("progressive") << Jpeg(Einfarbig(8, 8), true) << Rot;
        QTest::newRow("grey") << Jpeg(grau) << QColor(90, 90, 90);
        QTest::newRow("CMYK")
            << QByteArray::fromBase64(
                   "/9j/7gAOQWRvYmUAZAAAAAAC/9sAQwADAgIDAgIDAwMDBAMDBAUIBQUEBAUKBwcGCAwKDAwLCgsLDQ4SEA0O"
                   "EQ4LCxAWEBETFBUVFQwPFxgWFBgSFBUU/9sAQwEDBAQFBAUJBQUJFA0LDRQUFBQUFBQUFBQUFBQUFBQUFBQU"
                   "FBQUFBQUFBQUFBQUFBQUFBQUFBQUFBQUFBQUFBQUFBQU/8AAFAgACAAIBAERAAIRAQMRAQQRAP/EABUAAQEA"
                   "AAAAAAAAAAAAAAAAAAcI/8QAFBABAAAAAAAAAAAAAAAAAAAAAP/EABUBAQEAAAAAAAAAAAAAAAAAAAcJ/8QA"
                   "FBEBAAAAAAAAAAAAAAAAAAAAAP/aAA4EAQACEQMRBAAAPwBAMabiwH//2Q==")
            << Rot;
    }

    void JpegsOfEveryKindAreRead()
    {
        QFETCH(QByteArray, datei);
        QFETCH(QColor, farbe);
        Schreiben(kartei_->filePath("a.jpg"), datei);
        const QImage bild = Laden("a.jpg");
        QCOMPARE(meldungen_->Texte(), QStringList());
        QCOMPARE(bild.size(), QSize(8, 8));
        QVERIFY2(Gleicht(bild.pixelColor(4, 4), farbe), qPrintable(bild.pixelColor(4, 4).name()));
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
        QCOMPARE(meldungen_->Texte(),
                 QStringList("Ungültiges Bild „" + kartei_->filePath("a.jpg") + "“: weder BMP noch JPEG."));
    }

    void EachFailureHasItsNumberAndText()
    {
        VerifyError(kartei_->filePath("fehlt.jpg"), 53, "Datei nicht gefunden: „%1“");
        VerifyError(kartei_->filePath("weg/fehlt.jpg"), 76, "Pfad nicht gefunden: „%1“");
        QDir(kartei_->path()).mkdir("ordner.jpg");
        VerifyError(kartei_->filePath("ordner.jpg"), 75, "Die Datei „%1“ kann nicht gelesen werden.");
        const QString rohr = kartei_->filePath("rohr.jpg");
        QCOMPARE(mkfifo(QFile::encodeName(rohr).constData(), 0600), 0);
        VerifyError(rohr, 75, "Die Datei „%1“ kann nicht gelesen werden.");
        Schreiben(kartei_->filePath("leer.jpg"), "");
        VerifyError(kartei_->filePath("leer.jpg"), 481, "Ungültiges Bild „%1“: weder BMP noch JPEG.");
        QVERIFY(Einfarbig(3, 3).save(kartei_->filePath("b.jpg"), "PNG"));
        VerifyError(kartei_->filePath("b.jpg"), 481, "Ungültiges Bild „%1“: weder BMP noch JPEG.");
    }

    void TruncatedAndLyingFilesAreNoPictures()
    {
        Schreiben(kartei_->filePath("kurz.jpg"), HochkantJpeg().left(60));
        VerifyError(kartei_->filePath("kurz.jpg"), 481, "Ungültiges Bild „%1“: die Datei ist unvollständig.");
        // A bitmap of a few bytes that claims 60,000 x 60,000 pixels.
        Einfarbig(1, 1).save(kartei_->filePath("bombe.bmp"));
        QFile datei(kartei_->filePath("bombe.bmp"));
        QVERIFY(datei.open(QIODevice::ReadOnly));
        QByteArray bombe = datei.readAll();
        bombe.replace(18, 8, QByteArray("\x60\xea\0\0\x60\xea\0\0", 8));
        Schreiben(kartei_->filePath("bombe2.bmp"), bombe);
        VerifyError(kartei_->filePath("bombe2.bmp"), 481,
                    "Ungültiges Bild „%1“: die Datei ist unvollständig.");
        // The same with 10,000 x 10,000: within the limit of pixels, beyond that of memory.
        bombe.replace(18, 8, QByteArray("\x10\x27\0\0\x10\x27\0\0", 8));
        Schreiben(kartei_->filePath("bombe3.bmp"), bombe);
        VerifyError(kartei_->filePath("bombe3.bmp"), 481,
                    "Ungültiges Bild „%1“: die Datei ist unvollständig.");
    }

    void PicturesThatAreTooLargeAreNotBegun()
    {
        const char *zuGross = "Ungültiges Bild „%1“: es ist zu groß.";
        const QString datei = kartei_->filePath("lang.jpg");
        Schreiben(datei, HochkantJpeg());
        QVERIFY(QFile::resize(datei, 128'000'001));
        VerifyError(datei, 481, zuGross);
        // 20,000 x 20,000 pixels, as the frame's header claims.
        QByteArray jpeg = Jpeg(Verlauf());
        const qsizetype rahmen = jpeg.indexOf("\xff\xc0");
        QVERIFY(rahmen > 0);
        Schreiben(kartei_->filePath("weit.jpg"), jpeg.replace(rahmen + 5, 4, "\x4e\x20\x4e\x20"));
        VerifyError(kartei_->filePath("weit.jpg"), 481, zuGross);
        // A few runs and the mark at their end, for 10,000 x 5,000 pixels.
        Schreiben(kartei_->filePath("weit.bmp"),
                  Bmp{8, 40, 1}.Datei().replace(18, 8, QByteArray("\x10\x27\0\0\x88\x13\0\0", 8)));
        VerifyError(kartei_->filePath("weit.bmp"), 481, zuGross);
    }

    void WholeFilesWithoutAPictureInThemAreDamaged()
    {
        const char *beschaedigt = "Ungültiges Bild „%1“: die Datei ist beschädigt oder zu groß.";
        Schreiben(kartei_->filePath("nichts.jpg"), "\xff\xd8\xff\xd9");
        VerifyError(kartei_->filePath("nichts.jpg"), 481, beschaedigt);
        Schreiben(kartei_->filePath("fremd.bmp"), Bmp{24, 40, 77}.Datei());
        VerifyError(kartei_->filePath("fremd.bmp"), 481, beschaedigt);
    }

    void APictureCutOffIsRefusedWithAMessage_data()
    {
        QTest::addColumn<QByteArray>("datei");
        for (const Bmp &bmp : {Bmp{1}, Bmp{4}, Bmp{8}, Bmp{16}, Bmp{24}, Bmp{32}, Bmp{24, 40, 0, true},
                               Bmp{8, 12}, Bmp{24, 12}, Bmp{24, 64}, Bmp{24, 124}, Bmp{16, 40, 3},
                               Bmp{32, 40, 3}, Bmp{32, 124, 3}, Bmp{8, 40, 1}, Bmp{4, 40, 2}}) {
            const QByteArray ganz = bmp.Datei();
            const auto kopf = static_cast<int>(bmp.kopf);
            QTest::addRow("%d bits, header %d, compression %d: last row", bmp.bits, kopf,
                          static_cast<int>(bmp.kompression))
                << ganz.chopped(4);
            QTest::addRow("%d bits, header %d, compression %d: all rows", bmp.bits, kopf,
                          static_cast<int>(bmp.kompression))
                << ganz.left(static_cast<qsizetype>(qFromLittleEndian<quint32>(ganz.constData() + 10)));
        }
        const QByteArray baseline = Jpeg(Verlauf());
        const QByteArray stufen = Jpeg(Verlauf(), true);
        for (const int prozent : {5, 30, 60, 90, 99}) {
            QTest::addRow("baseline, %d %%", prozent) << baseline.left(baseline.size() * prozent / 100);
            QTest::addRow("progressive, %d %%", prozent) << stufen.left(stufen.size() * prozent / 100);
        }
        QTest::newRow("the end's mark") << baseline.chopped(1);
        QTest::newRow("zeros instead of the rest")
            << baseline.left(baseline.size() / 2) + QByteArray(baseline.size() / 2, 0);
        QTest::newRow("with a small picture inside") << JpegMitVorschau().chopped(baseline.size() / 2);
    }

    void APictureCutOffIsRefusedWithAMessage()
    {
        QFETCH(QByteArray, datei);
        Schreiben(kartei_->filePath("a.bmp"), datei);
        QVERIFY(Laden("a.bmp").isNull());
        QCOMPARE(meldungen_->Texte().size(), 1);
        QVERIFY2(meldungen_->Texte()[0].startsWith("Ungültiges Bild „"), qPrintable(meldungen_->Texte()[0]));
    }

    void ASloppyFileThatIsWholeIsShown_data()
    {
        QTest::addColumn<QByteArray>("datei");
        const QByteArray bmp = Bmp{24}.Datei();
        QTest::newRow("bmp") << bmp;
        QTest::newRow("bmp with bytes behind it") << bmp + "mehr";
        QTest::newRow("bmp without the last padding") << bmp.chopped(1);
        QTest::newRow("bmp whose size is told too large")
            << QByteArray(bmp).replace(2, 4, "\xff\xff\xff\x7f");
        QTest::newRow("bmp whose data's size is told too large")
            << QByteArray(bmp).replace(34, 4, "\xff\xff\xff\x7f");
        QTest::newRow("bmp that tells no sizes")
            << QByteArray(bmp).replace(2, 4, QByteArray(4, 0)).replace(34, 4, QByteArray(4, 0));
        QTest::newRow("bmp that tells no place of the pixels")
            << QByteArray(bmp).replace(10, 4, QByteArray(4, 0));
        QTest::newRow("bmp with a gap before the pixels")
            << QByteArray(bmp).insert(54, 40, 'x').replace(10, 1, QByteArray(1, 94));
        QTest::newRow("runs without a mark at their end") << Bmp{8, 40, 1}.Datei().chopped(2);
        QTest::newRow("jpeg with bytes behind it") << Jpeg(Einfarbig(5, 3)) + QByteArray(1000, 'x');
        QTest::newRow("jpeg with bytes between its parts")
            << Jpeg(Einfarbig(5, 3)).insert(2, "\xff\xff\xff", 3);
    }

    void ASloppyFileThatIsWholeIsShown()
    {
        QFETCH(QByteArray, datei);
        const SchmutzigerSpeicher schmutzig;
        Schreiben(kartei_->filePath("a.bmp"), datei);
        const QImage bild = Laden("a.bmp");
        QCOMPARE(meldungen_->Texte(), QStringList());
        QCOMPARE(bild.size(), QSize(5, 3));
        for (int y = 0; y < 3; ++y)
            QVERIFY2(Gleicht(bild.pixelColor(4, y), Rot), qPrintable(bild.pixelColor(4, y).name()));
    }

    void AJpegWithASmallPictureInsideIsShown()
    {
        Schreiben(kartei_->filePath("a.jpg"), JpegMitVorschau());
        QCOMPARE(Laden("a.jpg").size(), QSize(320, 240));
        QCOMPARE(meldungen_->Texte(), QStringList());
    }

    // Runs may jump over pixels and end before the last row.
    void PixelsThatRunsLeaveOutHaveTheFirstColour_data()
    {
        QTest::addColumn<QByteArray>("datei");
        const QByteArray acht = Bmp{8, 40, 1}.Datei();
        const QByteArray vier = Bmp{4, 40, 2}.Datei();
        // Colour 1 at the bottom left; a jump to the last row but one; the end.
        const QByteArray spruenge8("\1\1\0\2\3\1\1\1\0\1", 10);
        const QByteArray spruenge4("\1\x10\0\2\3\1\1\x10\0\1", 10);
        QTest::newRow("RLE 8") << acht.left(14 + 40 + 8) + spruenge8;
        QTest::newRow("RLE 4") << vier.left(14 + 40 + 8) + spruenge4;
    }

    void PixelsThatRunsLeaveOutHaveTheFirstColour()
    {
        QFETCH(QByteArray, datei);
        const SchmutzigerSpeicher schmutzig;
        Schreiben(kartei_->filePath("a.bmp"), datei);
        const QImage bild = Laden("a.bmp");
        QCOMPARE(bild.size(), QSize(5, 3));
        for (int y = 0; y < 3; ++y) {
            for (int x = 0; x < 5; ++x) {
                const bool gesetzt = (x == 0 && y == 2) || (x == 4 && y == 1);
                QVERIFY2(Gleicht(bild.pixelColor(x, y), gesetzt ? Gruen : Rot),
                         qPrintable(u"%1,%2"_s.arg(x).arg(y)));
            }
        }
    }

    void APictureStoredFromTopToBottomIsBoundedToo()
    {
        // One bit a pixel, 12 pixels wide, 2.5 million rows that are told as negative.
        QByteArray lang = QByteArray::fromHex("424d6200000000003e00000000002800"
                                              "00000c00000010ffd8ff010001000000"
                                              "00000000000000000000020000000000"
                                              "000000000000ffffff00");
        lang.append(2'556'145 * 4, '\x55');
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

PAUKFIX_TEST(BildTest)
#include "BildTest.moc"
