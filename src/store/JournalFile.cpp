// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "JournalFile.h"

#include "SafeFile.h"

#include <QByteArrayView>
#include <QFile>

#include <array>
#include <cerrno>

namespace {

// The last bytes of such a journal, as they begin every journal.
constexpr std::array<unsigned char, 8> mark{0xd9, 0xd5, 0x05, 0xf9, 0x20, 0xa1, 0x63, 0xd7};

bool EndsInMark(QFile &file)
{
    constexpr auto length = static_cast<qint64>(mark.size());
    return file.size() > length && file.seek(file.size() - length) &&
           file.read(length) == QByteArrayView(mark.data(), length);
}

} // namespace

bool NamesOtherFiles(const QString &journal)
{
    QFile file(journal);
    return file.open(QIODevice::ReadOnly) && EndsInMark(file);
}

void ForgetOtherFiles(const QString &journal)
{
    QFile file(journal);
    if (!file.open(QIODevice::ReadWrite) ||
        (EndsInMark(file) && !file.resize(file.size() - static_cast<qint64>(mark.size()))))
        ThrowFileError(EIO, journal);
}
