// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "FileHandle.h"

#include <QString>
#include <QTemporaryDir>

#include <memory>

namespace paukfix {

// A copy of a card file as it is at one moment, with its journals, in a directory of its own that goes with
// this object. The file is only read: no lock is taken, so that no other program is kept from anything, and
// nothing comes to lie beside it. What is copied is read a second time, and copied anew until both are the
// same: so it is what the file held between both, whoever writes in it. What a killed program has left goes
// with the next copy, or before.
class CardSnapshot
{
public:
    // Throws StoreError: 3045 where the file changes for seconds on end, 61 where the copy has no room, else
    // as CardFile does for a file to be read.
    explicit CardSnapshot(const QString &path);

    const QString &Path() const { return path_; }

private:
    void MakeDirectory();

    std::unique_ptr<QTemporaryDir> directory_;
    FileHandle lock_; // of the directory, while it is used
    QString path_;
};

// Removes the copies that programs of this user have left which are no more.
void ClearSnapshots() noexcept;

} // namespace paukfix
