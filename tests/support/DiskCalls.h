// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <functional>

namespace paukfix {

// The system's own functions on files, seen and spoiled by the test that has made one of these, as long as it
// lives: a program that uses it calls them through here. One at a time.
class DiskCalls
{
public:
    DiskCalls();
    DiskCalls(const DiskCalls &) = delete;
    DiskCalls &operator=(const DiskCalls &) = delete;
    ~DiskCalls();

    QStringList calls; // "sync PATH", "rename PATH to PATH", "link PATH to PATH", in their order
    bool waits = true; // false: a sync does nothing, because no power fails
    QString readOnlyDirectory;
    std::function<int(const QString &to)> renameFails = [](const QString &) { return 0; }; // an error, or 0
};

} // namespace paukfix
