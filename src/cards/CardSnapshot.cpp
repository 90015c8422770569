// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardSnapshot.h"

#include "CardFile.h"
#include "CardSchema.h"
#include "JournalFile.h"
#include "SafeFile.h"
#include "StoreError.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringList>

#include <cerrno>
#include <utility>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 Patience = 5000; // ms

bool IsSame(const QString &one, const QString &other)
{
    QFile a(one), b(other);
    if (!a.open(QIODevice::ReadOnly) || !b.open(QIODevice::ReadOnly) || a.size() != b.size())
        return false;
    constexpr qint64 Block = 1 << 20;
    for (;;) {
        const QByteArray part = a.read(Block);
        if (part != b.read(Block))
            return false;
        if (part.isEmpty())
            return a.atEnd() && a.error() == QFile::NoError;
    }
}

// The journals that lie beside the file. The index of a log is made anew from it.
QStringList Journals(const QString &path)
{
    QStringList found;
    for (const char *suffix : {"-journal", "-wal"})
        if (const QString name = CompanionOf(path, suffix); QFileInfo::exists(name))
            found << name;
    return found;
}

} // namespace

CardSnapshot::CardSnapshot(const QString &path)
    : directory_(QDir::tempPath() + u"/paukfix-XXXXXX"_s),
      path_(directory_.filePath(QFileInfo(path).fileName()))
{
    if (!directory_.isValid())
        ThrowFileError(ENOSPC, QDir::tempPath());
    const QString file = Resolved(path);
    const auto copied = [&](const QString &from) { return path_ + from.mid(file.size()); };
    for (const QDeadlineTimer end(Patience); !end.hasExpired();) {
        CheckAccess(path, CardFile::Access::ReadOnly); // no pipe under the name of a journal
        const QStringList all = QStringList(file) + Journals(path);
        bool whole = true;
        for (const QString &old : QDir(directory_.path()).entryList(QDir::Files | QDir::Hidden))
            QFile::remove(directory_.filePath(old));
        try {
            for (const QString &one : all)
                CopyFile(one, copied(one));
        } catch (const StoreError &error) {
            if (error.Number() != Fehler::DateiNichtGefunden || !QFileInfo::exists(file))
                throw;
            whole = false; // a journal has gone meanwhile
        }
        for (qsizetype i = 0; whole && i < all.size(); ++i)
            whole = IsSame(all[i], copied(all[i]));
        if (whole && all == QStringList(file) + Journals(path))
            return;
    }
    throw StoreError(Fehler::Gesperrt,
                     DateiSatz(path) + u"wird gerade von einem anderen Programm geändert."_s);
}

} // namespace paukfix
