// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "FileHandle.h"
#include "Progress.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <cstdint>

namespace paukfix {

// The files around a repair: the damaged one, locked against other programs as long as this object lives, the
// directory in which the work is done, and the names that the results get. All methods throw StoreError.
//
// At every moment either the damaged file or the repaired one stands whole at its path, together with what
// belongs to it; a kill leaves at most the working directory, which RemoveRepairLeftovers() clears.
class RepairFiles
{
public:
    // Throws 3024, 3051, 3045 (in use by another program).
    explicit RepairFiles(const QString &path);
    RepairFiles(const RepairFiles &) = delete;
    RepairFiles &operator=(const RepairFiles &) = delete;
    ~RepairFiles();

    int Damaged() const { return damaged_.Get(); }

    std::int64_t Size() const { return size_; }

    // The file's real path: a repair goes through a symbolic link.
    const QString &Path() const { return path_; }

    // Is there a journal of an unfinished transaction, or a log, beside the damaged file?
    bool HasCompanions() const { return !companions_.isEmpty(); }

    // In the working directory: a copy of the damaged file with its companions, the new file, its report.
    QString CopyPath() const;
    QString NewPath() const;
    // What `progress` throws ends it.
    void MakeCopy(const Progress &progress = {}) const;
    void WriteReport(const QByteArray &text) const;

    // An error's text with the damaged file named instead of a file of the working directory.
    QString ForUsers(QString text) const;

    // The names that the damaged file and the report will have, chosen once.
    const QString &AsidePath() const { return aside_; }

    const QString &ReportPath() const { return report_; }

    // Keeps the damaged file with its companions under its own name and lets the new file take its place.
    void Swap() const;

private:
    void OpenDamaged();
    void ChooseNames();
    void HandOver(const QString &file) const;
    void KeepAside(const QString &from, const QString &to) const;
    void RetireCompanions() const;

    QString path_;
    QString work_;
    QString aside_, report_;
    FileHandle damaged_;
    std::int64_t size_ = 0;
    QStringList companions_; // suffixes of the engine's files that stand beside the damaged one
};

} // namespace paukfix
