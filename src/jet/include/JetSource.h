// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardSource.h"

#include <QString>

#include <memory>

namespace paukfix {

// Does the file begin as those of the former database engine do, of whatever version? False where nothing can
// be read.
bool IsJetFile(const QString &path);

// The cards of such a file, to be copied as they are. Throws StoreError as CheckConvertible does.
std::unique_ptr<CardSource> OpenJetCards(const QString &path);

} // namespace paukfix
