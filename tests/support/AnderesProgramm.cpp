// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "AnderesProgramm.h"

#include <QDir>
#include <QFile>
#include <QProcess>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace paukfix {

using namespace Qt::StringLiterals;

// Runs in a process of its own: there POSIX locks are asked of the system as any other program does.
static bool SeesLock(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    const pid_t child = ::fork();
    if (child == 0) {
        struct flock lock = {};
        lock.l_type = F_RDLCK;
        lock.l_whence = SEEK_SET;
        lock.l_start = 0x40000000;
        lock.l_len = 512;
        const int file = ::open(name.constData(), O_RDONLY);
        ::_exit(file >= 0 && ::fcntl(file, F_GETLK, &lock) == 0 && lock.l_type == F_WRLCK ? 0 : 1);
    }
    int status = -1;
    return child > 0 && ::waitpid(child, &status, 0) == child && WIFEXITED(status) &&
           WEXITSTATUS(status) == 0;
}

QString OtherProgram(const QString &path, const QString &sql)
{
    QProcess other;
    other.setProcessChannelMode(QProcess::MergedChannels);
    other.start(u"sqlite3"_s, {path, sql});
    if (!other.waitForFinished())
        qFatal("sqlite3 does not end");
    return QString::fromUtf8(other.readAll());
}

QString GapInLock(const QString &path)
{
    if (!SeesLock(path))
        return u"no lock on "_s + path;
    for (const char *sql : {"SELECT count(*) FROM Lernkarten", "UPDATE Lernkarten SET Antworttyp=1"})
        if (const QString answer = OtherProgram(path, QLatin1String(sql)); !answer.contains(u"locked"))
            return u"%1 got: %2"_s.arg(QLatin1String(sql), answer);
    return {};
}

void LoseLocks(const QString &path)
{
    const QDir all(u"/proc/self/fd"_s);
    for (const QString &number : all.entryList(QDir::Files | QDir::System)) {
        if (QFile::symLinkTarget(all.filePath(number)) != path)
            continue;
        struct flock none = {};
        none.l_type = F_UNLCK;
        none.l_whence = SEEK_SET;
        if (::fcntl(number.toInt(), F_OFD_SETLK, &none) != 0)
            qFatal("the lock stays");
    }
}

} // namespace paukfix
