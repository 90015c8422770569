// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Anzeige.h"
#include "FileHandle.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>

#include <fcntl.h>
#include <sys/resource.h>

namespace paukfix {

// A real disk of one megabyte for a program and its card file, mounted in a namespace of the program's own.
// Where the system allows none, or none is wanted, the program may write no file beyond its first bytes
// instead: the system refuses it in the same calls.
class KleinePlatte
{
public:
    // The program is started on a copy of `kartei`, which lies on the small disk at `ort`, an empty
    // directory.
    KleinePlatte(const Anzeige &anzeige, const QString &programm, const QString &kartei, const QString &ort,
                 bool echt)
        : ort_(ort), echt_(echt && Erlaubt()), lauf(anzeige, u"sh"_s, Befehl(programm, kartei))
    {
        if (echt && !echt_)
            qWarning("no disk can be mounted here: the size of files is limited instead");
    }

    // Waits until the copy is there.
    bool Bereit()
    {
        const QString vorn = echt_ ? u"/proc/%1/root"_s.arg(lauf.prozess.processId()) : QString();
        if (!QTest::qWaitFor([&] { return QFile::exists(vorn + ort_ + u"/a.pzb"_s); }, 30000))
            return false;
        platte_ = FileHandle(::open(QFile::encodeName(vorn + ort_).constData(), O_PATH | O_CLOEXEC));
        return platte_.Get() >= 0;
    }

    // Where the test finds it, also when the program has ended.
    QString Kartei() const { return Dort(u"a.pzb"_s); }

    // Nothing more goes on the disk.
    void Fuellen()
    {
        if (!echt_) {
            Begrenzen(512);
            return;
        }
        QFile fuellung(Dort(u"fuellung"_s));
        QVERIFY(fuellung.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
        const QByteArray block(4096, 'x');
        while (fuellung.write(block) > 0) {
        }
        QCOMPARE(fuellung.error(), QFile::ResourceError);
    }

    void Leeren()
    {
        if (!echt_)
            Begrenzen(RLIM_INFINITY);
        else
            QVERIFY(QFile::remove(Dort(u"fuellung"_s)));
    }

    bool IstEcht() const { return echt_; }

private:
    static bool Erlaubt()
    {
        return QProcess::execute(u"unshare"_s, {u"-rm"_s, u"mount"_s, u"-t"_s, u"tmpfs"_s, u"-o"_s,
                                                u"size=1m"_s, u"tmpfs"_s, u"/mnt"_s}) == 0;
    }

    QStringList Befehl(const QString &programm, const QString &kartei) const
    {
        const QString start = u"cp \"$1\" \"$2/a.pzb\" && exec \"$0\" \"$2/a.pzb\""_s;
        const QString ganz = echt_ ? u"exec unshare -rm sh -c 'mount -t tmpfs -o size=1m tmpfs \"$2\" && "_s +
                                         start + u"' \"$0\" \"$1\" \"$2\""_s
                                   : u"trap '' XFSZ; "_s + start;
        return {u"-c"_s, ganz, programm, kartei, ort_};
    }

    QString Dort(const QString &name) const { return u"/proc/self/fd/%1/%2"_s.arg(platte_.Get()).arg(name); }

    void Begrenzen(rlim_t bytes) const
    {
        const rlimit grenze{bytes, RLIM_INFINITY};
        QCOMPARE(::prlimit(static_cast<pid_t>(lauf.prozess.processId()), RLIMIT_FSIZE, &grenze, nullptr), 0);
    }

    QString ort_;
    bool echt_;
    FileHandle platte_;

public:
    Lauf lauf;
};

} // namespace paukfix
