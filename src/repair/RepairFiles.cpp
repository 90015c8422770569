// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "RepairFiles.h"

#include "CardSchema.h"
#include "EngineLocks.h"
#include "JournalFile.h"
#include "PageReader.h"
#include "Repair.h"
#include "StoreError.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace {

QString WorkDirectory(const QString &path)
{
    return BesideName(path, QStringLiteral(".reparatur"));
}

QString NewFile(const QString &work)
{
    return work + QStringLiteral("/neu.pzb");
}

QString ReportDraft(const QString &work)
{
    return work + QStringLiteral("/bericht.txt");
}

// What is to be kept aside where it cannot just get a second name.
QString AsideDraft(const QString &work)
{
    return work + QStringLiteral("/beiseite");
}

struct ResultNames
{
    QString aside, report;
};

// Of the repair number `count` of the file, counted from 1.
ResultNames NamesOf(const QString &path, int count)
{
    const QString number = count == 1 ? QString() : QStringLiteral("-%1").arg(count);
    return {BesideName(path, QStringLiteral(".beschädigt") + number),
            BesideName(path, QStringLiteral(".Reparatur") + number + QStringLiteral(".txt"))};
}

[[noreturn]] void ThrowFileError(int error, const QString &path)
{
    switch (error) {
    case ENOENT:
        throw StoreError(Fehler::KarteiNichtGefunden,
                         QStringLiteral("Die Datei „%1“ wurde nicht gefunden.").arg(path));
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        throw StoreError(
            Fehler::DatentraegerVoll,
            QStringLiteral("Der Datenträger ist voll; an der Datei „%1“ wurde nichts geändert.").arg(path));
    case EACCES:
    case EPERM:
    case EROFS:
        throw StoreError(Fehler::NichtErlaubt,
                         QStringLiteral("Neben der Datei „%1“ darf nicht geschrieben werden.").arg(path));
    case EIO:
        throw StoreError(Fehler::GeraeteFehler,
                         QStringLiteral("Ein-/Ausgabefehler bei der Datei „%1“.").arg(path));
    default:
        throw StoreError(
            error, QStringLiteral("Ein-/Ausgabefehler bei der Datei „%1“ (Nummer %2).").arg(path).arg(error));
    }
}

void Check(bool done, const QString &path)
{
    if (!done)
        ThrowFileError(errno, path);
}

FileHandle Open(const QString &path, int flags)
{
    FileHandle file(open(QFile::encodeName(path).constData(), flags | O_CLOEXEC, 0600));
    Check(file.Get() >= 0, path);
    return file;
}

void WriteAll(const FileHandle &file, Bytes bytes, const QString &path)
{
    while (!bytes.empty()) {
        const ssize_t written = write(file.Get(), bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR)
            continue;
        Check(written > 0, path);
        bytes = bytes.subspan(static_cast<std::size_t>(written));
    }
}

bool Exists(const QString &path)
{
    struct stat info = {};
    return lstat(QFile::encodeName(path).constData(), &info) == 0;
}

bool IsSameFile(const QString &one, const QString &other)
{
    struct stat first = {}, second = {};
    return lstat(QFile::encodeName(one).constData(), &first) == 0 &&
           lstat(QFile::encodeName(other).constData(), &second) == 0 && first.st_dev == second.st_dev &&
           first.st_ino == second.st_ino;
}

std::int64_t SizeOf(const FileHandle &file, const QString &path)
{
    struct stat info = {};
    Check(fstat(file.Get(), &info) == 0, path);
    return info.st_size;
}

void Sync(const QString &path)
{
    Check(fsync(Open(path, O_RDONLY).Get()) == 0, path);
}

// Blocks that the disk does not give are zeros in the copy; holes stay holes.
void CopyFile(const FileHandle &from, const QString &to, const Fortschritt &fortschritt = {})
{
    const FileHandle target = Open(to, O_WRONLY | O_CREAT | O_EXCL);
    const std::int64_t size = SizeOf(from, to);
    std::vector<std::uint8_t> block(std::size_t{1} << 20);
    const std::vector<DataPart> parts = DataParts(from.Get(), size);
    const std::int64_t end = parts.empty() ? 0 : parts.back().to;
    for (const DataPart &part : parts)
        for (std::int64_t at = part.from; at < part.to;) {
            if (fortschritt)
                fortschritt(static_cast<int>(at >> 20), static_cast<int>((end >> 20) + 1));
            const auto wanted = static_cast<std::size_t>(
                std::min<std::int64_t>(static_cast<std::int64_t>(block.size()), part.to - at));
            const std::size_t got = ReadTolerant(from.Get(), at, block.data(), wanted);
            if (got == 0)
                break;
            Check(lseek(target.Get(), at, SEEK_SET) == at, to);
            WriteAll(target, Bytes(block).first(got), to);
            at += static_cast<std::int64_t>(got);
        }
    Check(ftruncate(target.Get(), size) == 0, to);
}

void Rename(const QString &from, const QString &to)
{
    Check(rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0, to);
}

} // namespace

QString BesideName(const QString &path, const QString &suffix)
{
    constexpr qsizetype longest = 255 - 8; // bytes; room for "-journal"
    const QFileInfo info(path);
    QString name = info.fileName();
    while (!name.isEmpty() && QFile::encodeName(name + suffix).size() > longest)
        name.chop(name.size() > 1 && name.back().isLowSurrogate() ? 2 : 1);
    return info.dir().filePath(name + suffix);
}

RepairFiles::RepairFiles(const QString &path) : path_(QFileInfo(path).canonicalFilePath())
{
    if (path_.isEmpty())
        ThrowFileError(ENOENT, path);
    work_ = WorkDirectory(path_);
    Lock();
    for (const QString &suffix : {QStringLiteral("-journal"), QStringLiteral("-wal"), QStringLiteral("-shm")})
        if (Exists(path_ + suffix))
            companions_ << suffix;
    ChooseNames();
    QDir(work_).removeRecursively(); // of a repair that was killed
    Check(mkdir(QFile::encodeName(work_).constData(), 0700) == 0, path_);
}

RepairFiles::~RepairFiles()
{
    QDir(work_).removeRecursively();
}

void RepairFiles::Lock()
{
    const QByteArray name = QFile::encodeName(path_);
    // A special file could block here.
    int file = open(name.constData(), O_RDWR | O_CLOEXEC | O_NONBLOCK);
    const bool writable = file >= 0;
    if (!writable && (errno == EACCES || errno == EROFS))
        file = open(name.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    Check(file >= 0, path_);
    damaged_ = FileHandle(file);
    struct stat info = {};
    Check(fstat(file, &info) == 0, path_);
    if (!S_ISREG(info.st_mode))
        ThrowNoRegularFile(path_);
    size_ = info.st_size;

    LockCardFile(file, writable ? F_WRLCK : F_RDLCK, path_);
}

void RepairFiles::ChooseNames()
{
    // A repair that was killed may have given the damaged file its second name.
    const auto isFree = [this](const QString &suffix) {
        return !Exists(aside_ + suffix) || IsSameFile(aside_ + suffix, path_ + suffix);
    };
    for (int count = 1;; ++count) {
        const ResultNames names = NamesOf(path_, count);
        aside_ = names.aside;
        report_ = names.report;
        if (isFree({}) && !Exists(report_) && std::all_of(companions_.begin(), companions_.end(), isFree))
            return;
    }
}

QString RepairFiles::CopyPath() const
{
    return work_ + QStringLiteral("/kopie.pzb");
}

QString RepairFiles::NewPath() const
{
    return NewFile(work_);
}

QString RepairFiles::ForUsers(QString text) const
{
    for (const QString &file : {CopyPath(), NewPath(), ReportDraft(work_), AsideDraft(work_)})
        text.replace(file, path_);
    return text;
}

void RepairFiles::MakeCopy(const Fortschritt &fortschritt) const
{
    CopyFile(damaged_, CopyPath(), fortschritt);
    for (const QString &suffix : companions_)
        if (suffix != u"-shm") // the engine makes it anew from the log
            CopyFile(Open(path_ + suffix, O_RDONLY | O_NOFOLLOW | O_NONBLOCK), CopyPath() + suffix);
    if (companions_.contains(QStringLiteral("-journal")))
        ForgetOtherFiles(CopyPath() + QStringLiteral("-journal"));
}

void RepairFiles::WriteReport(const QByteArray &text) const
{
    const QString path = ReportDraft(work_);
    const FileHandle file = Open(path, O_WRONLY | O_CREAT | O_EXCL);
    WriteAll(
        file,
        {reinterpret_cast<const std::uint8_t *>(text.constData()), static_cast<std::size_t>(text.size())},
        path);
    Check(fsync(file.Get()) == 0, path);
}

void RepairFiles::KeepAside(const QString &from, const QString &to) const
{
    if (IsSameFile(from, to) ||
        link(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0)
        return;
    Check(errno != EEXIST, to);
    // a file system without hard links
    const QString copy = AsideDraft(work_);
    CopyFile(Open(from, O_RDONLY | O_NOFOLLOW), copy);
    Sync(copy);
    Rename(copy, to);
}

void RepairFiles::SyncDirectory() const
{
    const QString directory = QFileInfo(path_).absolutePath();
    const FileHandle file = Open(directory, O_RDONLY | O_DIRECTORY);
    // Some network file systems cannot sync a directory and need not.
    Check(fsync(file.Get()) == 0 || errno == EINVAL || errno == ENOTSUP, directory);
}

// The file belongs to whom the damaged one belongs, as far as this user may say so, and is on the disk.
void RepairFiles::HandOver(const QString &file) const
{
    struct stat info = {};
    Check(fstat(damaged_.Get(), &info) == 0, path_);
    const FileHandle handle = Open(file, O_RDWR);
    static_cast<void>(fchown(handle.Get(), info.st_uid, info.st_gid) == 0);
    static_cast<void>(fchmod(handle.Get(), info.st_mode & 07777) == 0);
    Check(fsync(handle.Get()) == 0, file);
}

void RepairFiles::Swap() const
{
    QStringList kept; // suffixes of the files that have their second name
    try {
        HandOver(NewPath());
        for (const QString &suffix : QStringList{QString()} + companions_) {
            KeepAside(path_ + suffix, aside_ + suffix);
            kept << suffix;
        }
        SyncDirectory();
        if (HasCompanions())
            RetireCompanions();
        Rename(NewPath(), path_);
        SyncDirectory();
        Rename(ReportDraft(work_), report_);
        SyncDirectory();
    } catch (const StoreError &error) {
        // Back to the names of before, the journal before the file that it belongs to.
        for (auto suffix = kept.crbegin(); suffix != kept.crend(); ++suffix)
            rename(QFile::encodeName(aside_ + *suffix).constData(),
                   QFile::encodeName(path_ + *suffix).constData());
        // Two names of one file stay both when the one is renamed to the other.
        for (const QString &suffix : kept)
            if (IsSameFile(aside_ + suffix, path_ + suffix))
                unlink(QFile::encodeName(aside_ + suffix).constData());
        throw StoreError(error.Number(), ForUsers(error.Text()));
    }
}

// The copy is what the engine makes of the damaged file and its journal. With it in place the journal may go:
// no moment is left in which a kill would lose the journal, or let the engine apply it to the new file.
void RepairFiles::RetireCompanions() const
{
    HandOver(CopyPath());
    Rename(CopyPath(), path_);
    SyncDirectory();
    for (const QString &suffix : companions_)
        Check(unlink(QFile::encodeName(path_ + suffix).constData()) == 0 || errno == ENOENT, path_);
    SyncDirectory();
}

void RemoveRepairLeftovers(const QString &path)
{
    const QString real = QFileInfo(path).canonicalFilePath();
    const QString work = WorkDirectory(real);
    if (real.isEmpty() || !Exists(work))
        return;
    if (const QString draft = ReportDraft(work); Exists(draft) && !Exists(NewFile(work))) {
        // Killed when the new file was in its place already: its report follows.
        int count = 1;
        while (Exists(NamesOf(real, count + 1).aside))
            ++count;
        if (const QString report = NamesOf(real, count).report; !Exists(report))
            rename(QFile::encodeName(draft).constData(), QFile::encodeName(report).constData());
    }
    QDir(work).removeRecursively();
}
