// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardFile.h"
#include "CardRecord.h"
#include "CardSource.h"
#include "Progress.h"

#include <SQLiteCpp/Statement.h>

#include <array>
#include <optional>

namespace paukfix {

// The cards of a sound card file, which is only read.
class CardFileSource final : public CardSource
{
public:
    // Throws StoreError as CardFile and CheckCardFile do, 3265 where the file lacks a field that is copied,
    // and whatever `progress` throws.
    explicit CardFileSource(const QString &path, const Progress &progress = {});

    int Count() const override { return count_; }

    bool Next() override;
    void Read(int column, CopiedValue &value) override;

private:
    CardFile file_;
    int count_ = 0;
    std::array<int, CardColumnCount> place_{}; // in a row of cards_
    std::optional<SQLite::Statement> cards_;
};

} // namespace paukfix
