// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Progress.h"
#include "SalvagedCard.h"

#include <QString>

#include <functional>

namespace paukfix {

// Makes a card file at `path`, where nothing may stand, of the cards that `next` delivers until there are no
// more, and checks it. Nothing is synced: nobody needs the file before it is whole. Returns the number of
// cards. Throws StoreError, and what `next` and `progress`, which is told of the check, throw.
int WriteSalvagedCards(const QString &path, const std::function<std::optional<SalvagedCard>()> &next,
                       const Progress &progress = {});

} // namespace paukfix
