// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardSurvey.h"
#include "SalvagedCard.h"

#include <cstdint>

namespace paukfix {

enum class TextEncoding : std::uint8_t
{
    Utf8,
    Utf16LittleEndian,
    Utf16BigEndian
};

// How the texts of these cards are encoded, judged by the texts themselves.
TextEncoding FindEncoding(const CardSurvey &survey);
// Takes the values out of a record. A text that breaks off is kept up to there; what lies behind the break is
// null; both are remarked.
SalvagedCard DecodeCard(const CardBytes &record, TextEncoding encoding);

} // namespace paukfix
