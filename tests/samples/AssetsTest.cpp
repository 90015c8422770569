// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "RichText.h"
#include "TestPlaces.h"
#include "TestProgram.h"

#include <QDir>
#include <QImageReader>
#include <QProcess>
#include <QTemporaryDir>
#include <QTextDocument>
#include <QtEndian>
#include <QtTest>

using namespace paukfix;
using namespace Qt::StringLiterals;

// The files that are shipped beside the program, as the build makes them.
class AssetsTest : public QObject
{
    Q_OBJECT

private:
    static QByteArray Bytes(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    static QImage Picture(const QString &path, const char *format)
    {
        QImageReader reader(path);
        if (reader.format() != format)
            return {};
        return reader.read();
    }

    // The samples of a 16-bit PCM wave file of 44,100 Hz; empty when it is something else.
    static QList<qint16> Samples(const QString &path, int *channels)
    {
        const QByteArray wave = Bytes(path);
        const char *data = wave.constData();
        constexpr qsizetype Header = 44;
        if (wave.size() < Header || !wave.startsWith("RIFF") || wave.mid(8, 8) != "WAVEfmt " ||
            qFromLittleEndian<quint32>(data + 4) != quint32(wave.size() - 8) ||
            qFromLittleEndian<quint16>(data + 20) != 1 || qFromLittleEndian<quint32>(data + 24) != 44100 ||
            qFromLittleEndian<quint16>(data + 34) != 16 ||
            qFromLittleEndian<quint32>(data + 40) != quint32(wave.size() - Header))
            return {};
        *channels = qFromLittleEndian<quint16>(data + 22);
        QList<qint16> samples;
        for (qsizetype i = Header; i + 1 < wave.size(); i += 2)
            samples << qFromLittleEndian<qint16>(data + i);
        return samples;
    }

    static int Loudest(const QList<qint16> &samples)
    {
        int loudest = 0;
        for (const qint16 sample : samples)
            loudest = std::max(loudest, std::abs(int(sample)));
        return loudest;
    }

    // Runs the drawing tool on `svg` and returns what it complains about.
    static QString Draw(const QByteArray &svg, const QString &variant)
    {
        const QTemporaryDir dir;
        QFile drawing(dir.filePath("d.svg"));
        if (!drawing.open(QIODevice::WriteOnly))
            return drawing.errorString();
        drawing.write(svg);
        drawing.close();
        QProcess tool;
        tool.start(BuildFile("tools/mkassets"), {SourceFile("assets/palette.md"), drawing.fileName(),
                                                 dir.filePath("d.png"), variant + ":16"});
        tool.waitForFinished(-1);
        const bool made = QFile::exists(dir.filePath("d.png"));
        const QString said = QString::fromUtf8(tool.readAllStandardError());
        return made == said.isEmpty() ? said : u"made %1, said %2"_s.arg(made).arg(said);
    }

private slots:

    void IconHoldsAllSizesAndQtReadsEach_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("wrong") << "face01.ico";
        QTest::newRow("right") << "face03.ico";
        QTest::newRow("program") << "paukfix.ico";
    }

    void IconHoldsAllSizesAndQtReadsEach()
    {
        QFETCH(QString, name);
        QImageReader reader(ProgramDir() + "/" + name);
        QCOMPARE(reader.format(), QByteArray("ico"));
        QList<int> sizes;
        for (int i = 0; i < reader.imageCount(); ++i) {
            QVERIFY(reader.jumpToImage(i));
            const QImage image = reader.read();
            QVERIFY2(!image.isNull(), qPrintable(reader.errorString()));
            QCOMPARE(image.width(), image.height());
            QVERIFY(image.hasAlphaChannel());
            QCOMPARE(image.pixelColor(0, 0).alpha(), 0);                                    // round corners
            QCOMPARE(image.pixelColor(image.width() / 2, image.height() / 2).alpha(), 255); // a body
            sizes << image.width();
        }
        QCOMPARE(sizes, (QList<int>{16, 24, 32, 48, 64, 128, 256}));
        const QIcon icon(ProgramDir() + "/" + name);
        QCOMPARE(icon.availableSizes().size(), 7);
    }

    void RightAndWrongFaceDifferInShapeNotOnlyInColour()
    {
        const auto face = [](const char *name) {
            QImageReader reader((ProgramDir() + "/%1").arg(QLatin1String(name)));
            reader.jumpToImage(0);
            return reader.read().convertToFormat(QImage::Format_Grayscale8);
        };
        const QImage wrong = face("face01.ico");
        const QImage right = face("face03.ico");
        int different = 0;
        for (int y = 0; y < wrong.height(); ++y)
            for (int x = 0; x < wrong.width(); ++x)
                different += std::abs(qGray(wrong.pixel(x, y)) - qGray(right.pixel(x, y))) > 60;
        QVERIFY(different >= 20); // of 256 pixels
    }

    void IntroPicturesAreLargeAndAllDifferent()
    {
        QSet<QByteArray> seen;
        for (int i = 5; i <= 11; ++i) {
            const QString path = (ProgramDir() + "/lbox%1.jpg").arg(i, 2, 10, '0'_L1);
            QCOMPARE(Picture(path, "jpeg").size(), QSize(1920, 1200));
            QVERIFY(QFileInfo(path).size() < 400'000);
            seen.insert(Bytes(path));
        }
        QCOMPARE(seen.size(), 7);
    }

    void ThemeHasTheIconInEverySize()
    {
        for (const int size : {16, 22, 24, 32, 48, 64, 128, 256, 512})
            QCOMPARE(Picture(BuildFile("icons/hicolor/%1x%1/apps/paukfix.png").arg(size), "png").size(),
                     QSize(size, size));
        QCOMPARE(Picture(BuildFile("icons/hicolor/scalable/apps/paukfix.svg"), "svg").size(),
                 QSize(512, 512));
    }

    void ApplauseIsShortUnclippedAndFadesOut()
    {
        int channels = 0;
        const QList<qint16> samples = Samples(ProgramDir() + "/Applause.wav", &channels);
        QCOMPARE(channels, 2);
        const double seconds = double(samples.size()) / channels / 44100;
        QVERIFY(seconds > 1 && seconds < 3);
        QVERIFY(Loudest(samples) > 16000);
        QVERIFY(Loudest(samples) < 32000);
        QVERIFY(Loudest(samples.last(4410)) < 400);
        QVERIFY(std::abs(int(samples.last())) < 2);
    }

    void SampleMediaCanBeReadAndAreNotEmpty()
    {
        const QDir dir(BuildFile("samples"));
        const QStringList pictures = dir.entryList({"*.jpg", "*.bmp"}, QDir::Files);
        const QStringList sounds = dir.entryList({"*.wav"}, QDir::Files);
        QVERIFY(pictures.size() >= 20);
        QVERIFY(sounds.size() >= 5);
        for (const QString &picture : pictures) {
            const QImage image = Picture(dir.filePath(picture), picture.endsWith("jpg") ? "jpeg" : "bmp");
            QVERIFY2(image.width() >= 400 && image.height() >= 300, qPrintable(picture));
        }
        for (const QString &sound : sounds) {
            int channels = 0;
            const QList<qint16> samples = Samples(dir.filePath(sound), &channels);
            QVERIFY2(channels == 1 && samples.size() > 44100 && samples.size() < 6 * 44100,
                     qPrintable(sound));
            QVERIFY2(Loudest(samples) > 5000 && Loudest(samples) < 32000, qPrintable(sound));
        }
    }

    void AboutTextReadsAsRichText()
    {
        const QByteArray rtf = Bytes(ProgramDir() + "/ueber.rtf");
        QVERIFY(rtf.startsWith("{\\rtf1"));
        QTextDocument document;
        SetRichTextBytes(document, rtf);
        const QString text = PlainText(document);
        QVERIFY(text.startsWith("Paukfix\r\n"));
        QVERIFY(text.contains("MIT-Lizenz"));
        QVERIFY(text.contains("Fächer"));
        QVERIFY(!text.contains(u'\\'));
        QVERIFY(!text.contains(QChar::ReplacementCharacter));
    }

    void ColourOutsideThePaletteIsRefusedWithItsLine()
    {
        const QByteArray head = "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 9 9\">\n";
        QCOMPARE(Draw(head + "<rect width=\"9\" height=\"9\" fill=\"#2F6B7E\"/></svg>", QString()),
                 QString());
        QVERIFY(Draw(head + "<rect width=\"9\" height=\"9\" fill=\"#123456\"/></svg>", QString())
                    .contains("d.svg:2: #123456 is not in the palette"));
        QVERIFY(Draw(head + "<rect width=\"9\" height=\"9\" style=\"stroke:red\"/></svg>", QString())
                    .contains("red is not in the palette"));
    }

    void VariantThatNothingBelongsToIsRefused()
    {
        QVERIFY(Draw("<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 9 9\"/>", "07")
                    .contains("nothing in it belongs to \"07\""));
    }
};

PAUKFIX_TEST(AssetsTest)
#include "AssetsTest.moc"
