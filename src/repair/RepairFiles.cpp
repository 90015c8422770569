// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "RepairFiles.h"

#include "CardSchema.h"
#include "EngineLocks.h"
#include "JournalFile.h"
#include "Repair.h"
#include "SafeFile.h"
#include "StoreError.h"
#include "TolerantRead.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <functional>
#include <sys/stat.h>
#include <unistd.h>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

QString WorkDirectory(const QString &path)
{
    return BesideName(path, u".reparatur"_s);
}

QString NewFile(const QString &work)
{
    return work + u"/neu.pzb"_s;
}

QString ReportDraft(const QString &work)
{
    return work + u"/bericht.txt"_s;
}

// What is to be kept aside where it cannot just get a second name.
QString AsideDraft(const QString &work)
{
    return work + u"/beiseite"_s;
}

struct ResultNames
{
    QString aside, report;
};

// Of the repair number `count` of the file, counted from 1.
ResultNames NamesOf(const QString &path, int count)
{
    const QString number = count == 1 ? QString() : u"-%1"_s.arg(count);
    return {BesideName(path, u".beschädigt"_s + number),
            BesideName(path, u".Reparatur"_s + number + u".txt"_s)};
}

// What is wrong with the files, as it stands to who wants this file repaired.
StoreError ForRepair(const StoreError &error, const QString &path)
{
    const auto named = [&](int number, const QString &text) { return StoreError(number, text.arg(path)); };
    switch (error.Number()) {
    case Fehler::DateiNichtGefunden:
    case Fehler::PfadNichtGefunden:
        return named(Fehler::KarteiNichtGefunden, u"Die Datei „%1“ wurde nicht gefunden."_s);
    case Fehler::DatentraegerVoll:
        return named(error.Number(), u"Der Datenträger ist voll; an der Datei „%1“ wurde nichts geändert."_s);
    case Fehler::NichtErlaubt:
        return named(error.Number(), u"Neben der Datei „%1“ darf nicht geschrieben werden."_s);
    case Fehler::GeraeteFehler:
        return named(error.Number(), u"Ein-/Ausgabefehler bei der Datei „%1“."_s);
    default:
        return error;
    }
}

// Runs `step` upon the files of the repair of `path`.
void OnFiles(const QString &path, const std::function<void()> &step)
{
    try {
        step();
    } catch (const StoreError &error) {
        throw ForRepair(error, path);
    }
}

} // namespace

RepairFiles::RepairFiles(const QString &path) : path_(QFileInfo(path).canonicalFilePath())
{
    OnFiles(path, [&] {
        if (path_.isEmpty())
            ThrowFileError(ENOENT, path);
    });
    OpenDamaged();
    work_ = WorkDirectory(path_);
    for (const char *suffix : CompanionSuffixes)
        if (IsNameTaken(path_ + QLatin1String(suffix)))
            companions_ << QLatin1String(suffix);
    ChooseNames();
    QDir(work_).removeRecursively(); // of a repair that was killed
    if (mkdir(QFile::encodeName(work_).constData(), 0700) != 0)
        OnFiles(path_, [&] { ThrowFileError(errno, path_); });
}

RepairFiles::~RepairFiles()
{
    QDir(work_).removeRecursively();
}

void RepairFiles::OpenDamaged()
{
    int lock = F_WRLCK;
    OnFiles(path_, [&] {
        try {
            damaged_ = OpenFile(path_, O_RDWR);
        } catch (const StoreError &error) {
            if (error.Number() != Fehler::NichtErlaubt)
                throw;
            damaged_ = OpenFile(path_, O_RDONLY);
            lock = F_RDLCK;
        }
        size_ = SizeOf(damaged_, path_);
    });
    if (!S_ISREG(StatusOf(damaged_, path_).st_mode))
        ThrowNoRegularFile(path_);
    LockCardFile(damaged_.Get(), lock, path_);
}

void RepairFiles::ChooseNames()
{
    // A repair that was killed may have given the damaged file its second name.
    const auto isFree = [this](const QString &suffix) {
        return !IsNameTaken(aside_ + suffix) || SameFile(aside_ + suffix, path_ + suffix, Links::Themselves);
    };
    for (int count = 1;; ++count) {
        const ResultNames names = NamesOf(path_, count);
        aside_ = names.aside;
        report_ = names.report;
        if (isFree({}) && !IsNameTaken(report_) &&
            std::all_of(companions_.begin(), companions_.end(), isFree))
            return;
    }
}

QString RepairFiles::CopyPath() const
{
    return work_ + u"/kopie.pzb"_s;
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

void RepairFiles::MakeCopy(const Progress &progress) const
{
    OnFiles(path_, [&] {
        CopyTolerant(damaged_, CopyPath(), progress);
        for (const QString &suffix : companions_)
            if (suffix != u"-shm") // the engine makes it anew from the log
                CopyTolerant(OpenFile(path_ + suffix, O_RDONLY | O_NOFOLLOW), CopyPath() + suffix);
    });
    if (companions_.contains(u"-journal"_s))
        ForgetOtherFiles(CopyPath() + u"-journal"_s);
}

void RepairFiles::WriteReport(const QByteArray &text) const
{
    OnFiles(path_, [&] { WriteFileSynced(ReportDraft(work_), text, 0600); });
}

void RepairFiles::KeepAside(const QString &from, const QString &to) const
{
    if (SameFile(from, to, Links::Themselves) ||
        link(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0)
        return;
    if (errno == EEXIST)
        ThrowFileError(errno, to);
    // a file system without hard links
    const QString copy = AsideDraft(work_);
    CopyTolerant(OpenFile(from, O_RDONLY | O_NOFOLLOW), copy);
    SyncFile(copy);
    RenameSynced(copy, to);
}

// The file belongs to whom the damaged one belongs, as far as this user may say so, and is on the disk.
void RepairFiles::HandOver(const QString &file) const
{
    const struct stat owner = StatusOf(damaged_, path_);
    const FileHandle handle = OpenFile(file, O_RDWR);
    static_cast<void>(fchown(handle.Get(), owner.st_uid, owner.st_gid) == 0);
    static_cast<void>(fchmod(handle.Get(), owner.st_mode & 07777) == 0);
    Sync(handle, file);
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
        SyncDirectory(QFileInfo(path_).absolutePath());
        if (HasCompanions())
            RetireCompanions();
        RenameSynced(NewPath(), path_);
        RenameSynced(ReportDraft(work_), report_);
    } catch (const StoreError &error) {
        // Back to the names of before, the journal before the file that it belongs to.
        for (auto suffix = kept.crbegin(); suffix != kept.crend(); ++suffix)
            rename(QFile::encodeName(aside_ + *suffix).constData(),
                   QFile::encodeName(path_ + *suffix).constData());
        // Two names of one file stay both when the one is renamed to the other.
        for (const QString &suffix : kept)
            if (SameFile(aside_ + suffix, path_ + suffix, Links::Themselves))
                unlink(QFile::encodeName(aside_ + suffix).constData());
        throw ForRepair(error, path_);
    }
}

// The copy is what the engine makes of the damaged file and its journal. With it in place the journal may go:
// no moment is left in which a kill would lose the journal, or let the engine apply it to the new file.
void RepairFiles::RetireCompanions() const
{
    HandOver(CopyPath());
    RenameSynced(CopyPath(), path_);
    for (const QString &suffix : companions_)
        if (unlink(QFile::encodeName(path_ + suffix).constData()) != 0 && errno != ENOENT)
            ThrowFileError(errno, path_);
    SyncDirectory(QFileInfo(path_).absolutePath());
}

void RemoveRepairLeftovers(const QString &path)
{
    const QString real = QFileInfo(path).canonicalFilePath();
    const QString work = WorkDirectory(real);
    if (real.isEmpty() || !IsNameTaken(work))
        return;
    if (const QString draft = ReportDraft(work); IsNameTaken(draft) && !IsNameTaken(NewFile(work))) {
        // Killed when the new file was in its place already: its report follows.
        int count = 1;
        while (IsNameTaken(NamesOf(real, count + 1).aside))
            ++count;
        if (const QString report = NamesOf(real, count).report; !IsNameTaken(report))
            rename(QFile::encodeName(draft).constData(), QFile::encodeName(report).constData());
    }
    QDir(work).removeRecursively();
}

} // namespace paukfix
