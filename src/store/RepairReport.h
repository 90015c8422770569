// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "SalvagedCard.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <vector>

// The German text that tells what a repair saved and what not. It names every card that is not as it was.
class RepairReport
{
public:
    void AddCard(const SalvagedCard &card);

    // A card that is known to have been in the file and of which nothing readable is left.
    void AddLost(int number) { lost_.push_back(number); }

    void SetJournalUsed() { journalUsed_ = true; }

    // In UTF-8.
    QByteArray Text(const QString &path, const QString &damagedName, const QDateTime &when) const;

private:
    int cards_ = 0, perfect_ = 0;
    bool journalUsed_ = false;
    std::vector<int> lost_;
    // The remarks by kind: incomplete, doubtful, changed.
    std::array<QStringList, 3> remarks_;
};
