// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "DamagedState.h"

namespace paukfix {

DamagedState::DamagedState(int file, std::int64_t size, EngineReader &engine, const Progress &progress)
    : reader(file, size, FindGeometry(file, size, progress)),
      survey(reader, progress),
      salvage(survey, engine)
{
}

} // namespace paukfix
