// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardSource.h"
#include "Progress.h"

#include <QString>

#include <memory>

namespace paukfix {

// What a repair would find in the damaged card file, which is only read: nothing is written to it or beside
// it. Throws StoreError 3024, 3051, 3045 (in use by another program), and whatever `progress` throws.
std::unique_ptr<CardSource> OpenDamagedCards(const QString &path, const Progress &progress = {});

// How many cards a repair would save, and of how many that are known to have been there.
struct RepairOutlook
{
    int saved = 0;
    int known = 0;
};

// Reads as OpenDamagedCards does, and throws the same.
RepairOutlook LookAtDamaged(const QString &path, const Progress &progress = {});

} // namespace paukfix
