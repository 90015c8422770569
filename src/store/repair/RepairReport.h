// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "SalvagedCard.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <vector>

// The German text that tells what a repair saved and what not, or what a conversion took over. It names every
// card that is not as it was.
class RepairReport
{
public:
    enum class Occasion : std::uint8_t
    {
        Repair,
        Conversion
    };

    explicit RepairReport(Occasion occasion = Occasion::Repair) : occasion_(occasion) {}

    void AddCard(const SalvagedCard &card);

    // A card that is known to have been in the file and of which nothing readable is left.
    void AddLost(int number) { lost_.push_back(number); }

    // Cards of which nothing is known but that the file counts them.
    void SetMissing(std::uint32_t cards) { missing_ = cards; }

    // Is every card as it was?
    bool IsPerfect() const;

    void SetJournalUsed() { journalUsed_ = true; }

    // In UTF-8.
    QByteArray Text(const QString &path, const QString &oldName, const QDateTime &when) const;

private:
    Occasion occasion_;
    int cards_ = 0, perfect_ = 0;
    std::uint32_t missing_ = 0;
    bool journalUsed_ = false;
    std::vector<int> lost_;
    // The remarks by kind: incomplete, doubtful, changed.
    std::array<QStringList, 3> remarks_;
};
