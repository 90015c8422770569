// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "FileHandle.h"

#include <QSocketNotifier>

#include <memory>

namespace paukfix {

// The signals that ask a program to end (SIGTERM, SIGINT, SIGHUP), told to the application as the wish to
// quit. To be made before the first thread, or that one would take them; they wait until Melden(). One that
// the program was started to ignore stays ignored.
class Endsignale
{
public:
    Endsignale();

    // To be called when the application is there.
    void Melden();

private:
    FileHandle leitung_;
    std::unique_ptr<QSocketNotifier> waechter_;
};

} // namespace paukfix
