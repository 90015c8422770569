// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardRecord.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace paukfix {

// Reads the text form of a card file (samples/README.md): one block a card. The cards come numbered from 1,
// their running numbers in the compartments from 1, both in the order of the text. Throws std::runtime_error
// with "file:line: what is wrong" at the first mistake.
std::vector<CardRecord> ReadKartentext(const QString &path);

// The pictures and sounds that a card names.
QStringList MediaOf(const CardRecord &card);

} // namespace paukfix
