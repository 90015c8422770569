// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardSalvage.h"
#include "CardSurvey.h"
#include "EngineReader.h"
#include "Progress.h"

namespace paukfix {

// Everything that reads one state of a damaged card file, held together because each part refers to the one
// before.
struct DamagedState
{
    // `file` is a descriptor that must stay open, of a file of `size` bytes.
    DamagedState(int file, std::int64_t size, EngineReader &engine, const Progress &progress = {});

    DamagedState(const DamagedState &) = delete;
    DamagedState &operator=(const DamagedState &) = delete;

    PageReader reader;
    CardSurvey survey;
    CardSalvage salvage;
};

} // namespace paukfix
