// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardSalvage.h"
#include "CardSurvey.h"
#include "EngineReader.h"
#include "FileHandle.h"
#include "Fortschritt.h"

#include <QString>

// Everything that reads one state of a damaged card file, held together because each part refers to the one
// before.
struct DamagedState
{
    // `file` is a descriptor that must stay open, of a file of `size` bytes.
    DamagedState(int file, std::int64_t size, EngineReader &engine, const Fortschritt &fortschritt = {});

    DamagedState(const DamagedState &) = delete;
    DamagedState &operator=(const DamagedState &) = delete;

    PageReader reader;
    CardSurvey survey;
    CardSalvage salvage;
};

// The cards of a damaged card file that is only read: nothing is written to it or beside it.
class DamagedCards
{
public:
    // Throws StoreError 3024, 3051, 3045 (in use by another program), and whatever `fortschritt` throws.
    explicit DamagedCards(const QString &path, const Fortschritt &fortschritt = {});

    const QString &Path() const { return path_; }

    // Under the keys that a repair would give them.
    const std::vector<CardPlan> &Cards() const { return state_.salvage.Cards(); }

    // Nothing where no text of the card is left.
    std::optional<SalvagedCard> Read(const CardPlan &plan) const { return state_.salvage.Read(plan); }

    // Cards that the file knows of and that are not among Cards().
    std::size_t Lost() const { return state_.salvage.MissingNumbers().size(); }

private:
    QString path_;
    FileHandle file_;
    EngineReader engine_;
    DamagedState state_;
};
