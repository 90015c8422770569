// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "DamagedState.h"

DamagedState::DamagedState(int file, std::int64_t size, EngineReader &engine, const Fortschritt &fortschritt)
    : reader(file, size, FindGeometry(file, size, fortschritt)),
      survey(reader, fortschritt),
      salvage(survey, engine)
{
}
