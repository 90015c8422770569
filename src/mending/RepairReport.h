// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "SalvagedCard.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <vector>

namespace paukfix {

// Cards that were not taken out of a damaged file as they were.
struct Losses
{
    qint64 lost = 0;       // known to have been there
    qint64 incomplete = 0; // taken, but a part could not be read
    qint64 doubtful = 0;   // taken as it was read, but it does not look right
    qint64 uncertain = 0;  // taken, but perhaps deleted or changed before

    // Counts a card that was taken.
    void Add(const SalvagedCard &card);
};

// Names the losses beside the number of `cards` that were `done`, in German sentences; empty where there are
// none.
QString LossText(qint64 cards, const QString &done, const Losses &losses, const QString &end = {});

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

    // What is missing and which cards are to be looked at, in German sentences that end in a full stop and
    // name the report; empty where nothing is.
    QString Summary(const QString &reportName) const;

    // Is every card as it was?
    bool IsPerfect() const;

    // Pages of the file that do not fit their sums.
    void SetWrongSums(std::uint32_t pages, std::uint32_t ofPages)
    {
        wrongSums_ = pages;
        pages_ = ofPages;
    }

    void SetJournalUsed() { journalUsed_ = true; }

    // In UTF-8.
    QByteArray Text(const QString &path, const QString &oldName, const QDateTime &when) const;

private:
    Occasion occasion_;
    int cards_ = 0, perfect_ = 0;
    std::uint32_t missing_ = 0;
    std::uint32_t wrongSums_ = 0, pages_ = 0;
    bool journalUsed_ = false;
    std::vector<int> lost_;
    std::array<QStringList, 4> remarks_; // by kind
};

} // namespace paukfix
