// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <functional>
#include <sys/types.h>

namespace paukfix {

// The system's own functions on files, seen and spoiled by the test that has made one of these, as long as it
// lives: a program that uses it calls them through here. One at a time.
class DiskCalls
{
public:
    // What changes a file or a directory.
    struct Change
    {
        enum class What
        {
            Make, // a file that was not there
            Write,
            Truncate, // also to a greater length
            Sync,     // of a file or a directory
            Rename,
            Link,
            Remove,
            MakeDirectory
        };
        What what = What::Make;
        QString path{}; // of a file that is open, where it is by now
        QString to{};   // the other name
        ino_t file = 0;
        qint64 place = 0; // where is written, or the new length
        QByteArray bytes{};
    };

    DiskCalls();
    DiskCalls(const DiskCalls &) = delete;
    DiskCalls &operator=(const DiskCalls &) = delete;
    ~DiskCalls();

    QStringList calls; // "sync PATH", "rename PATH to PATH", "link PATH to PATH", in their order
    bool waits = true; // false: a sync does nothing, because no power fails
    QString readOnlyDirectory;
    std::function<int(const QString &to)> renameFails = [](const QString &) { return 0; }; // an error, or 0

    // Changes below this directory are shown one by one, whatever thread makes them; none where it is empty.
    QString below;
    // An error with which the change fails, or 0. Of a write that fails half the bytes are written first
    // where `half` says so.
    std::function<int(const Change &)> before = [](const Change &) { return 0; };
    std::function<void(const Change &)> done = [](const Change &) {};
    bool half = false;
};

} // namespace paukfix
