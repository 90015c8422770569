// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "ResourceLimit.h"
#include "SoundStage.h"
#include "TestProgram.h"
#include "WaveBuilder.h"

#include <QDir>
#include <QFile>
#include <QStringList>
#include <QTest>

#include <array>
#include <csignal>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace paukfix;
using namespace Qt::StringLiterals;

// What is heard, what is said, and what is left behind.
class SoundPlayerTest : public SoundStage
{
    Q_OBJECT

private:
    QByteArray LongWave() const { return PlainWave({.rate = 8000, .extra = {}}, Bytes(Melody(2'000'000))); }

private slots:

    void init() { SetUp(); }

    void cleanup() { TearDown(); }

    void WaveIsHeardToItsLastSample_data();
    void WaveIsHeardToItsLastSample();
    void PathWithBlanksAndUmlautsPlays();
    void SecondSoundStopsTheFirst();
    void StopSoundStops();
    void StopSoundWithNothingPlayingIsHarmless();
    void EndedSoundLeavesNoDeviceAndNoThread();
    void SameSoundPlaysAgain();
    void FailedSoundStopsTheFirst();
    void UnplayableFileGivesTheMessage_data();
    void UnplayableFileGivesTheMessage();
    void NoDeviceGivesTheMessageAndLaterSoundsPlay();
    void UnansweringDeviceIsGivenUp();
    void EndOfThePlayerStopsTheSound();
    void ProgramKeepsItsSignals();
    void SystemWithoutThreadsIsAnErrorAndLaterSoundsPlay();
    void MemoryThatEndsIsAnErrorAndLaterSoundsPlay();
};

void SoundPlayerTest::WaveIsHeardToItsLastSample_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QByteArray>("heard");
    QTest::addColumn<char>("silence");
    const auto row = [](const char *name, const BuiltWave &wave, char silence = 0) {
        QTest::newRow(name) << wave.file << wave.heard << silence;
    };
    row("PCM 8 bit", Pcm(8, 1, 3000), static_cast<char>(128));
    row("PCM 8 bit stereo", Pcm(8, 2, 3000), static_cast<char>(128));
    row("PCM 16 bit", Pcm(16, 1, 3000));
    row("PCM 16 bit stereo", Pcm(16, 2, 3000));
    row("PCM 24 bit", Pcm(24, 1, 3000));
    row("PCM 32 bit", Pcm(32, 2, 3000));
    row("float", Float(3000));
    row("IMA ADPCM", ImaAdpcm(1, 10));
    row("IMA ADPCM stereo", ImaAdpcm(2, 10, 512));
    row("MS ADPCM", MsAdpcm(10));
    row("one sample", Pcm(16, 1, 1));
}

void SoundPlayerTest::WaveIsHeardToItsLastSample()
{
    QFETCH(const QByteArray, file);
    QFETCH(const QByteArray, heard);
    QFETCH(const char, silence);
    ListenTo("out.raw");
    Play(Write("a.wav", file));
    QCOMPARE(messages_, QStringList());
    QTRY_VERIFY_WITH_TIMEOUT(!Sounds("out.raw"), BusyMachine);
    const QByteArray output = Heard("out.raw");
    const qsizetype start = output.indexOf(heard);
    QVERIFY(start >= 0);
    // Nothing but silence before and after, and some of it to push the last sample out.
    QCOMPARE(output.first(start).count(silence), start);
    const qsizetype end = start + heard.size();
    QVERIFY(end < output.size());
    QCOMPARE(output.sliced(end).count(silence), output.size() - end);
}

void SoundPlayerTest::PathWithBlanksAndUmlautsPlays()
{
    ListenTo("out.raw");
    QVERIFY(QDir(directory_->path()).mkpath("Meine Töne  für Übungen"));
    Play(Write("Meine Töne  für Übungen/Käse & Brötchen ß €.wav", Pcm(16, 1, 100).file));
    QCOMPARE(messages_, QStringList());
    QTRY_VERIFY_WITH_TIMEOUT(!Sounds("out.raw"), BusyMachine);
    QVERIFY(Heard("out.raw").contains(Pcm(16, 1, 100).heard));
}

void SoundPlayerTest::SecondSoundStopsTheFirst()
{
    ListenTo("first.raw", 20);
    Play(Write("first.wav", LongWave()));
    QTRY_VERIFY_WITH_TIMEOUT(Heard("first.raw").size() > 0, BusyMachine);
    QVERIFY(Sounds("first.raw"));

    ListenTo("second.raw");
    Play(Write("second.wav", Pcm(16, 1, 3000).file));
    QVERIFY(!Sounds("first.raw"));
    QVERIFY(Heard("first.raw").size() < LongWave().size());
    QTRY_VERIFY_WITH_TIMEOUT(!Sounds("second.raw"), BusyMachine);
    QVERIFY(Heard("second.raw").contains(Pcm(16, 1, 3000).heard));
    QCOMPARE(messages_, QStringList());
}

void SoundPlayerTest::StopSoundStops()
{
    ListenTo("out.raw", 20);
    Play(Write("a.wav", LongWave()));
    QVERIFY(Sounds("out.raw"));
    player_->StopSound();
    QTRY_VERIFY_WITH_TIMEOUT(!Sounds("out.raw"), BusyMachine);
    QVERIFY(Heard("out.raw").size() < LongWave().size());
    QCOMPARE(messages_, QStringList());
}

void SoundPlayerTest::StopSoundWithNothingPlayingIsHarmless()
{
    player_->StopSound();
    player_->StopSound();
    ListenTo("out.raw");
    Play(Write("a.wav", Pcm(16, 1, 100).file));
    QTRY_VERIFY_WITH_TIMEOUT(!Sounds("out.raw"), BusyMachine);
    player_->StopSound();
    QCOMPARE(messages_, QStringList());
    QVERIFY(Heard("out.raw").contains(Pcm(16, 1, 100).heard));
}

void SoundPlayerTest::EndedSoundLeavesNoDeviceAndNoThread()
{
    QCOMPARE(Threads(), ownThreads_);
    ListenTo("out.raw");
    Play(Write("a.wav", Pcm(16, 1, 3000).file));
    QTRY_VERIFY_WITH_TIMEOUT(!Sounds("out.raw"), BusyMachine);
    QTRY_COMPARE_WITH_TIMEOUT(Threads(), ownThreads_ + 1, BusyMachine); // the player's, which sleeps
}

void SoundPlayerTest::SameSoundPlaysAgain()
{
    const QString wave = Write("a.wav", Pcm(16, 1, 3000).file);
    for (const QString &name : {u"1.raw"_s, u"2.raw"_s, u"3.raw"_s}) {
        ListenTo(name);
        Play(wave);
        QTRY_VERIFY_WITH_TIMEOUT(!Sounds(name), BusyMachine);
        QVERIFY(Heard(name).contains(Pcm(16, 1, 3000).heard));
    }
    QCOMPARE(messages_, QStringList());
}

void SoundPlayerTest::FailedSoundStopsTheFirst()
{
    ListenTo("out.raw", 20);
    Play(Write("a.wav", LongWave()));
    QVERIFY(Sounds("out.raw"));
    Play(Path("fehlt.wav"));
    QCOMPARE(messages_, QStringList(NoWave));
    QVERIFY(!Sounds("out.raw"));
}

void SoundPlayerTest::UnplayableFileGivesTheMessage_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("missing") << "fehlt.wav";
    QTest::newRow("missing directory") << "fehlt/a.wav";
    QTest::newRow("empty") << "leer.wav";
    QTest::newRow("text") << "text.wav";
    QTest::newRow("directory") << "verzeichnis.wav";
    QTest::newRow("pipe without writer") << "pipe.wav";
    QTest::newRow("device") << "zero.wav";
    QTest::newRow("link to itself") << "schleife.wav";
    QTest::newRow("name too long") << QString(300, 'x');
    QTest::newRow("NUL in the name") << QString("gut.wav") + QChar::Null + "x";
}

void SoundPlayerTest::UnplayableFileGivesTheMessage()
{
    ListenTo("out.raw");
    Write("gut.wav", Pcm(16, 1, 100).file);
    Write("leer.wav", "");
    Write("text.wav", "kein Ton");
    QVERIFY(QDir(directory_->path()).mkdir("verzeichnis.wav"));
    QCOMPARE(mkfifo(QFile::encodeName(Path("pipe.wav")).constData(), 0600), 0);
    QVERIFY(QFile::link("/dev/zero", Path("zero.wav")));
    QVERIFY(QFile::link(Path("schleife.wav"), Path("schleife.wav")));
    QFETCH(const QString, name);
    Play(directory_->path() + '/' + name);
    QCOMPARE(messages_, QStringList(NoWave));
    QVERIFY(!QFile::exists(Path("out.raw")));

    Play(Path("gut.wav"));
    QCOMPARE(messages_, QStringList(NoWave));
    QTRY_VERIFY_WITH_TIMEOUT(!Sounds("out.raw"), BusyMachine);
    QVERIFY(Heard("out.raw").contains(Pcm(16, 1, 100).heard));
}

void SoundPlayerTest::NoDeviceGivesTheMessageAndLaterSoundsPlay()
{
    qputenv("SDL_AUDIODRIVER", "nonsense");
    const QString wave = Write("a.wav", Pcm(16, 1, 100).file);
    Play(wave);
    QCOMPARE(messages_, QStringList(NoWave));
    Play(wave);
    QCOMPARE(messages_, QStringList({NoWave, NoWave}));

    ListenTo("nicht/da/out.raw");
    Play(wave);
    QCOMPARE(messages_, QStringList({NoWave, NoWave, NoWave}));

    messages_.clear();
    ListenTo("out.raw");
    Play(wave);
    QCOMPARE(messages_, QStringList());
    QTRY_VERIFY_WITH_TIMEOUT(!Sounds("out.raw"), BusyMachine);
    QVERIFY(Heard("out.raw").contains(Pcm(16, 1, 100).heard));
}

void SoundPlayerTest::UnansweringDeviceIsGivenUp()
{
    MakePlayer({.end = std::chrono::milliseconds(BusyMachine)});
    // Opening a pipe that nobody reads does not return.
    QCOMPARE(mkfifo(QFile::encodeName(Path("pipe")).constData(), 0600), 0);
    ListenTo("pipe");
    const QString wave = Write("a.wav", Pcm(16, 1, 100).file);
    Play(wave);
    QCOMPARE(messages_, QStringList(NoWave));
    Play(wave);
    QCOMPARE(messages_, QStringList({NoWave, NoWave}));

    ListenTo("out.raw");
    const int reader = open(QFile::encodeName(Path("pipe")).constData(), O_RDONLY | O_NONBLOCK);
    QVERIFY(reader >= 0);
    const auto plays = [&] {
        // A device in the pipe goes on writing until it is closed, and waits where nobody reads.
        std::array<char, 4096> rest{};
        while (read(reader, rest.data(), rest.size()) > 0) {
        }
        messages_.clear();
        Play(wave);
        return messages_.isEmpty();
    };
    QTRY_VERIFY_WITH_TIMEOUT(plays(), BusyMachine);
    QTRY_VERIFY_WITH_TIMEOUT(!Sounds("out.raw"), BusyMachine);
    QVERIFY(Heard("out.raw").contains(Pcm(16, 1, 100).heard));
    close(reader);
}

void SoundPlayerTest::EndOfThePlayerStopsTheSound()
{
    ListenTo("out.raw", 20);
    Play(Write("a.wav", LongWave()));
    QVERIFY(Sounds("out.raw"));
    player_.reset();
    QVERIFY(!Sounds("out.raw"));
    QTRY_COMPARE_WITH_TIMEOUT(Threads(), ownThreads_, BusyMachine);
}

void SoundPlayerTest::ProgramKeepsItsSignals()
{
    struct sigaction old = {};
    struct sigaction standard = {};
    standard.sa_handler = SIG_DFL;
    QCOMPARE(sigaction(SIGTERM, &standard, &old), 0);
    ListenTo("out.raw");
    Play(Write("a.wav", Pcm(16, 1, 100).file));
    struct sigaction now = {};
    QCOMPARE(sigaction(SIGTERM, &old, &now), 0);
    QVERIFY(now.sa_handler == SIG_DFL);
}

namespace {

} // namespace

void SoundPlayerTest::SystemWithoutThreadsIsAnErrorAndLaterSoundsPlay()
{
    ListenTo("out.raw");
    const QString wave = Write("a.wav", Pcm(16, 1, 100).file);
    const uid_t user = getuid();
    {
        const ResourceLimit threads(RLIMIT_NPROC, 0);
        // No limit holds for the superuser.
        const bool root = user == 0;
        QVERIFY(!root || setresuid(65534, 65534, 0) == 0);
        Play(wave);
        QVERIFY(!root || setresuid(0, 0, 0) == 0);
    }
    QCOMPARE(messages_, QStringList("Fehler bei Play_Sound Das System startet keinen weiteren Thread."));
    Play(wave);
    QCOMPARE(messages_.size(), 1);
    QTRY_VERIFY_WITH_TIMEOUT(!Sounds("out.raw"), BusyMachine);
    QVERIFY(Heard("out.raw").contains(Pcm(16, 1, 100).heard));
}

void SoundPlayerTest::MemoryThatEndsIsAnErrorAndLaterSoundsPlay()
{
#ifndef __SANITIZE_ADDRESS__ // which ends the program where memory ends
    ListenTo("out.raw");
    const QString wave = Write("a.wav", Pcm(16, 1, 100).file);
    const QString large = Write("gross.wav", Pcm(16, 1, 100).file);
    QVERIFY(QFile::resize(large, 100'000'000));
    Play(wave);
    QTRY_VERIFY_WITH_TIMEOUT(!Sounds("out.raw"), BusyMachine);
    QCOMPARE(messages_, QStringList());
    QFile sizes("/proc/self/statm");
    QVERIFY(sizes.open(QIODevice::ReadOnly));
    const rlim_t pages = sizes.readAll().split(' ').first().toULongLong();
    {
        const ResourceLimit memory(RLIMIT_AS,
                                   pages * static_cast<rlim_t>(sysconf(_SC_PAGESIZE)) + 50'000'000);
        Play(large);
    }
    QCOMPARE(messages_, QStringList("Fehler bei Play_Sound Nicht genügend Speicher."));
    QVERIFY(QFile::remove(Path("out.raw")));
    Play(wave);
    QCOMPARE(messages_.size(), 1);
    QTRY_VERIFY_WITH_TIMEOUT(!Sounds("out.raw"), BusyMachine);
    QVERIFY(Heard("out.raw").contains(Pcm(16, 1, 100).heard));
#endif
}

PAUKFIX_CORE_TEST(SoundPlayerTest)
#include "SoundPlayerTest.moc"
