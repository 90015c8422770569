// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "JournalFile.h"

#include "FileHandle.h"
#include "SafeFile.h"

#include <QByteArrayView>
#include <QFile>

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace paukfix {

namespace {

// The last bytes of such a journal, as they begin every journal.
constexpr std::array<unsigned char, 8> Mark{0xd9, 0xd5, 0x05, 0xf9, 0x20, 0xa1, 0x63, 0xd7};

bool EndsInMark(QFile &file)
{
    constexpr auto Length = static_cast<qint64>(Mark.size());
    return file.size() > Length && file.seek(file.size() - Length) &&
           file.read(Length) == QByteArrayView(Mark.data(), Length);
}

} // namespace

QString CompanionOf(const QString &cardFile, const char *suffix)
{
    return Resolved(cardFile) + QLatin1String(suffix);
}

bool NamesOtherFiles(const QString &journal)
{
    QFile file(journal);
    return file.open(QIODevice::ReadOnly) && EndsInMark(file);
}

bool HoldsChange(const QString &journal)
{
    char byte = 0;
    // A special file could block here.
    const FileHandle file(open(QFile::encodeName(journal).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat info = {};
    // A journal whose change is done begins with zeros, or is cut to nothing.
    return file.Get() >= 0 && fstat(file.Get(), &info) == 0 && S_ISREG(info.st_mode) &&
           read(file.Get(), &byte, 1) == 1 && byte != '\0';
}

bool HasUnfinishedChange(const QString &cardFile)
{
    return HoldsChange(CompanionOf(cardFile, "-journal")) || HoldsChange(CompanionOf(cardFile, "-wal"));
}

void ForgetOtherFiles(const QString &journal)
{
    QFile file(journal);
    if (!file.open(QIODevice::ReadWrite) ||
        (EndsInMark(file) && !file.resize(file.size() - static_cast<qint64>(Mark.size()))))
        ThrowFileError(EIO, journal);
}

} // namespace paukfix
