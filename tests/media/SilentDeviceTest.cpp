// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Sdl.h"
#include "SoundStage.h"
#include "TestProgram.h"
#include "WaveBuilder.h"

using namespace paukfix;
using namespace Qt::StringLiterals;

// A system without any sound device, made by a sound server that is not there and a configuration of ALSA
// that knows none; this machine's own devices are out of reach.
class SilentDeviceTest : public SoundStage
{
    Q_OBJECT

private:
    QString wave_;

    // ALSA's default device writes what it plays into the file `name`; no card is behind it.
    void PlugIn(const QString &name) const
    {
        const QString device =
            u"pcm.null { type null }\n"
            u"pcm.!default { type file slave.pcm null format raw file \"%1\" }"_s.arg(Path(name));
        qputenv("ALSA_CONFIG_PATH", QFile::encodeName(Write(name + ".conf", device.toUtf8())));
    }

    static void Unplug() { qputenv("ALSA_CONFIG_PATH", "/dev/null"); }

    // The driver that the system would take by itself.
    static void SystemDriver(const char *name) { LoadSdl()->SetHint(SDL_HINT_AUDIODRIVER, name); }

    bool IsHeardIn(const QString &name) const { return Heard(name).contains(Pcm(16, 1, 3000).heard); }

private slots:

    void init()
    {
        SetUp();
        qunsetenv("SDL_AUDIODRIVER");
        qputenv("PULSE_SERVER", "unix:/nicht/da");
        Unplug();
        wave_ = Write("a.wav", Pcm(16, 1, 3000).file);
    }

    void cleanup()
    {
        SystemDriver("");
        TearDown();
    }

    void SystemWithoutDevicePlaysUnheardAndWithoutAMessage()
    {
        QVERIFY(!player_->IsSilent());
        for (int i = 0; i < 3; ++i) {
            Play(wave_);
            QCOMPARE(messages_, QStringList());
            QVERIFY(player_->IsSilent());
        }
        QTRY_COMPARE_WITH_TIMEOUT(Threads(), ownThreads_ + 1, BusyMachine); // it ends like any other sound
        Play(wave_);
        player_->StopSound();
        QTRY_COMPARE_WITH_TIMEOUT(Threads(), ownThreads_ + 1, BusyMachine);
        QVERIFY(player_->IsSilent());
        QCOMPARE(messages_, QStringList());
    }

    void AnEmptyChoiceOfTheDriverIsNone()
    {
        qputenv("SDL_AUDIODRIVER", "");
        Play(wave_);
        QCOMPARE(messages_, QStringList());
        QVERIFY(player_->IsSilent());
    }

    void UnplayableFileGivesTheMessageInSilenceToo()
    {
        Play(Path("fehlt.wav"));
        QCOMPARE(messages_, QStringList(NoWave));
        QVERIFY(!player_->IsSilent()); // nobody has looked for a device yet
        Play(wave_);
        QVERIFY(player_->IsSilent());
        Play(Write("text.wav", "kein Ton"));
        QCOMPARE(messages_, QStringList({NoWave, NoWave}));
        QVERIFY(player_->IsSilent());
    }

    void DeviceThatComesIsHeardAndOneThatGoesIsMissedAtOnce()
    {
        Play(wave_);
        QVERIFY(player_->IsSilent());
        PlugIn("out.raw");
        const auto isHeard = [&] {
            Play(wave_);
            return !player_->IsSilent();
        };
        QTRY_VERIFY_WITH_TIMEOUT(isHeard(), BusyMachine);
        QTRY_VERIFY_WITH_TIMEOUT(!Sounds("out.raw") && IsHeardIn("out.raw"), BusyMachine);

        Unplug();
        Play(wave_);
        QVERIFY(player_->IsSilent());
        QCOMPARE(messages_, QStringList());
    }

    void DeviceWithoutACardIsHeard()
    {
        PlugIn("out.raw");
        Play(wave_);
        QVERIFY(!player_->IsSilent());
        QTRY_VERIFY_WITH_TIMEOUT(!Sounds("out.raw") && IsHeardIn("out.raw"), BusyMachine);
        QCOMPARE(messages_, QStringList());
    }

    void DeviceThatFailsGivesTheMessage()
    {
        SystemDriver("disk");
        WriteTo("nicht/da/out.raw");
        Play(wave_);
        QCOMPARE(messages_, QStringList(NoWave));
        QVERIFY(!player_->IsSilent());

        WriteTo("out.raw");
        Play(wave_);
        QTRY_VERIFY_WITH_TIMEOUT(!Sounds("out.raw") && IsHeardIn("out.raw"), BusyMachine);
        QCOMPARE(messages_, QStringList(NoWave));
    }

    void DriverThatTheUserHasChosenAndThatFailsGivesTheMessage_data()
    {
        QTest::addColumn<QByteArray>("driver");
        QTest::newRow("unknown") << QByteArray("nonsense");
        QTest::newRow("without a server") << QByteArray("pulseaudio");
        QTest::newRow("without a device") << QByteArray("alsa");
    }

    void DriverThatTheUserHasChosenAndThatFailsGivesTheMessage()
    {
        QFETCH(const QByteArray, driver);
        qputenv("SDL_AUDIODRIVER", driver);
        Play(wave_);
        QCOMPARE(messages_, QStringList(NoWave));
        QVERIFY(!player_->IsSilent());
    }

    void SilentDriverThatTheUserHasChosenIsADevice()
    {
        qputenv("SDL_AUDIODRIVER", "dummy");
        Play(wave_);
        QCOMPARE(messages_, QStringList());
        QVERIFY(!player_->IsSilent());
    }
};

PAUKFIX_CORE_TEST(SilentDeviceTest)
#include "SilentDeviceTest.moc"
