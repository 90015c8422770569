// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "SoundPlayer.h"

#include <QDir>
#include <QFile>
#include <QStringList>
#include <QTemporaryDir>
#include <QTest>

#include <chrono>
#include <memory>

namespace paukfix {

using namespace Qt::StringLiterals;

constexpr int BusyMachine = 60000; // ms that a wait may take where the machine has much else to do

// Threads of this process: those of the test, the player's, and SDL's while a device is open.
inline int Threads()
{
    return static_cast<int>(QDir(u"/proc/self/task"_s).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size());
}

// A player, and SDL's disk device, which writes what would be heard into a file.
class SoundStage : public QObject
{
protected:
    void SetUp()
    {
        ownThreads_ = Threads();
        directory_ = std::make_unique<QTemporaryDir>();
        messages_.clear();
        MakePlayer(
            {.start = std::chrono::milliseconds(BusyMachine), .end = std::chrono::milliseconds(BusyMachine)});
    }

    void TearDown()
    {
        player_.reset();
        // A thread that has been waited for is still listed for a moment.
        QTRY_COMPARE_WITH_TIMEOUT(Threads(), ownThreads_, BusyMachine);
    }

    void MakePlayer(SoundPlayer::Patience patience)
    {
        player_ = std::make_unique<SoundPlayer>(
            [this](const std::string &message) { messages_ << QString::fromStdString(message); }, patience);
    }

    QString Path(const QString &name) const { return directory_->filePath(name); }

    // The disk device opened from now on writes into the file `name`, waiting `delay` ms for each buffer.
    void WriteTo(const QString &name, int delay = 0) const
    {
        qputenv("SDL_DISKAUDIOFILE", QFile::encodeName(Path(name)));
        qputenv("SDL_DISKAUDIODELAY", QByteArray::number(delay));
    }

    // The same, with the disk device as the one that the user has chosen.
    void ListenTo(const QString &name, int delay = 0) const
    {
        qputenv("SDL_AUDIODRIVER", "disk");
        WriteTo(name, delay);
    }

    QString Write(const QString &name, const QByteArray &content) const
    {
        QFile file(Path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("cannot write %s", qPrintable(name));
        return file.fileName();
    }

    QByteArray Heard(const QString &name) const
    {
        QFile file(Path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    // Whether a device is still writing into the file `name`.
    bool Sounds(const QString &name) const
    {
        const QDir descriptors(u"/proc/self/fd"_s);
        for (const QString &entry :
             descriptors.entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot))
            if (QFile::symLinkTarget(descriptors.filePath(entry)) == Path(name))
                return true;
        return false;
    }

    void Play(const QString &path) { player_->PlaySound(path.toStdString()); }

    const QString NoWave = u"Keine WAV-Datei nicht vorhanden !"_s;
    std::unique_ptr<QTemporaryDir> directory_;
    std::unique_ptr<SoundPlayer> player_;
    QStringList messages_;
    int ownThreads_ = 0;
};

} // namespace paukfix
