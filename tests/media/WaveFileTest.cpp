// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "WaveFile.h"

#include "TestProgram.h"
#include "WaveBuilder.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <random>

using namespace paukfix;

class WaveFileTest : public QObject
{
    Q_OBJECT

private:
    static std::optional<Wave> Decode(const QByteArray &file)
    {
        return DecodeWave(std::vector<Uint8>(file.begin(), file.end()));
    }

    // Null where the file is no wave.
    static QByteArray Samples(const QByteArray &file)
    {
        const std::optional<Wave> wave = Decode(file);
        return wave ? QByteArray(reinterpret_cast<const char *>(wave->samples.get()),
                                 static_cast<qsizetype>(wave->length))
                    : QByteArray();
    }

private slots:
    void CarelessHeaderStillPlays_data();
    void CarelessHeaderStillPlays();
    void CutAdpcmPlaysAsFarAsItGoes_data();
    void CutAdpcmPlaysAsFarAsItGoes();
    void NoWaveIsRefused_data();
    void NoWaveIsRefused();
    void HugeFileIsReadUpToTheLimit();
    void DamagedWaveNeverCrashes();
};

void WaveFileTest::CarelessHeaderStillPlays_data()
{
    QTest::addColumn<QByteArray>("file");
    const QByteArray data = Bytes(Melody(500));
    const QByteArray format = FormatChunk({});
    const QByteArray sound = format + Chunk("data", data);
    QTest::newRow("right") << Riff(sound);
    QTest::newRow("RIFF size 0") << Riff(sound, 0);
    QTest::newRow("RIFF size unknown") << Riff(sound, 0xFFFFFFFF);
    QTest::newRow("RIFF size too small") << Riff(sound, 20);
    QTest::newRow("RIFF size too large") << Riff(sound, 1'000'000);
    QTest::newRow("data size 0") << Riff(format + Chunk("data", data, 0), 0);
    QTest::newRow("data size unknown") << Riff(format + Chunk("data", data, 0xFFFFFFFF), 0xFFFFFFFF);
    QTest::newRow("data size nearly unknown") << Riff(format + Chunk("data", data, 0xFFFFFFD8));
    QTest::newRow("data size too large") << Riff(format + Chunk("data", data, 5000));
    QTest::newRow("half a sample at the end")
        << Riff(format + Chunk("data", data + "x", data.size() + 2, false));
    QTest::newRow("odd chunk, padded") << Riff(Chunk("LIST", "INFOodd") + sound);
    QTest::newRow("odd chunk, not padded") << Riff(Chunk("LIST", "INFOodd", -1, false) + sound);
    QTest::newRow("odd chunk between, not padded")
        << Riff(format + Chunk("cue ", "odd", -1, false) + Chunk("data", data));
    QTest::newRow("text behind the sound") << Riff(sound + Chunk("LIST", "INFOISFT"));
    QTest::newRow("wrong fact") << Riff(format + Chunk("fact", Le32(3)) + Chunk("data", data));
    QTest::newRow("format behind the sound") << Riff(Chunk("data", data) + format);
    QTest::newRow("format of odd length") << Riff(FormatChunk({.extra = "x"}) + Chunk("data", data));
    const QByteArray pcmGuid = QByteArray::fromHex("0100000000001000800000aa00389b71");
    QTest::newRow("extensible") << PlainWave(
        {.tag = 0xFFFE, .extra = Le16(22) + Le16(16) + Le32(4) + pcmGuid}, data);
}

void WaveFileTest::CarelessHeaderStillPlays()
{
    QFETCH(const QByteArray, file);
    QCOMPARE(Samples(file), Bytes(Melody(500)));
}

void WaveFileTest::CutAdpcmPlaysAsFarAsItGoes_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QByteArray>("heard");
    const BuiltWave ima = ImaAdpcm(1, 3), ms = MsAdpcm(3);
    QTest::newRow("IMA") << ima.file << ima.heard;
    QTest::newRow("MS") << ms.file << ms.heard;
}

void WaveFileTest::CutAdpcmPlaysAsFarAsItGoes()
{
    QFETCH(const QByteArray, file);
    QFETCH(const QByteArray, heard);
    const QByteArray samples = Samples(file.chopped(100)); // 100 bytes, 200 samples of 2 bytes
    QCOMPARE(samples.size(), heard.size() - 400);
    QVERIFY(heard.startsWith(samples));
}

void WaveFileTest::NoWaveIsRefused_data()
{
    QTest::addColumn<QByteArray>("file");
    const QByteArray data = Bytes(Melody(50));
    const auto wave = [&](const WaveFormat &format) { return PlainWave(format, data); };
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("text") << QByteArray("Das ist keine Tondatei, sondern ein Text.\r\n");
    QTest::newRow("only RIFF") << QByteArray("RIFF");
    QTest::newRow("another RIFF file") << QByteArray(wave({})).replace(8, 4, "AVI ");
    QTest::newRow("no format") << Riff(Chunk("data", data));
    QTest::newRow("no sound") << Riff(FormatChunk({}));
    QTest::newRow("empty sound, text behind it")
        << Riff(FormatChunk({}) + Chunk("data", "") + Chunk("LIST", "INFOISFT"));
    QTest::newRow("short format") << Riff(Chunk("fmt ", Le16(1) + Le16(1)) + Chunk("data", data));
    QTest::newRow("no channels") << wave({.channels = 0, .extra = {}});
    QTest::newRow("300 channels") << wave({.channels = 300, .blockAlign = 600, .extra = {}});
    QTest::newRow("20 channels") << wave({.channels = 20, .blockAlign = 40, .extra = {}});
    QTest::newRow("rate 0") << wave({.rate = 0, .extra = {}});
    QTest::newRow("rate 1") << wave({.rate = 1, .extra = {}});
    QTest::newRow("rate 2147483647") << wave({.rate = 2147483647, .extra = {}});
    QTest::newRow("block of 0 bytes") << wave({.blockAlign = 0, .extra = {}});
    QTest::newRow("12 bits") << wave({.bits = 12, .extra = {}});
    QTest::newRow("MP3 inside") << wave({.tag = 0x55, .extra = {}});
    QTest::newRow("ADPCM without its header") << wave({.tag = 2, .blockAlign = 256, .bits = 4, .extra = {}});
}

void WaveFileTest::NoWaveIsRefused()
{
    QFETCH(const QByteArray, file);
    QVERIFY(!Decode(file));
}

void WaveFileTest::HugeFileIsReadUpToTheLimit()
{
    const QTemporaryDir directory;
    QFile file(directory.filePath("lang.wav"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(Riff(FormatChunk({}) + Chunk("data", Bytes(Melody(500)), 0xFFFFFFF0), 0xFFFFFFFF));
    QVERIFY(file.resize(qint64{3} * 1024 * 1024 * 1024)); // takes no room on the disk
    file.close();
    const std::optional<Wave> wave = LoadWave(file.fileName().toStdString());
    QVERIFY(wave);
    QCOMPARE(wave->length, MaxWaveBytes);
}

void WaveFileTest::DamagedWaveNeverCrashes()
{
    const QList<QByteArray> files = {Pcm(16, 2, 200).file, Pcm(24, 1, 200).file, Float(200).file,
                                     ImaAdpcm(2, 2).file, MsAdpcm(2).file};
    std::mt19937 engine(7);
    const auto random = [&engine] { return static_cast<unsigned>(engine()); };
    int decoded = 0;
    for (int round = 0; round < 5000; ++round) {
        QByteArray file = files.at(round % files.size());
        for (unsigned change = random() % 6; change > 0; --change) {
            // Mostly in the header, where it matters.
            const auto range = static_cast<unsigned>(random() % 4 == 0 ? file.size() : 80);
            file[static_cast<qsizetype>(random() % range)] =
                static_cast<char>(random() % 3 == 0 ? 255 : random());
        }
        if (random() % 5 == 0)
            file.truncate(static_cast<qsizetype>(random() % static_cast<unsigned>(file.size())));
        const std::optional<Wave> wave = Decode(file);
        decoded += wave ? 1 : 0;
        QVERIFY(!wave || wave->length <= static_cast<size_t>(file.size()) * 4);
    }
    QVERIFY(decoded > 0 && decoded < 5000);
}

PAUKFIX_APPLESS_TEST(WaveFileTest)
#include "WaveFileTest.moc"
