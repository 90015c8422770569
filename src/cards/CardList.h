// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardRecordset.h"

#include <QString>

#include <array>
#include <cstdint>
#include <functional>
#include <list>
#include <optional>
#include <unordered_set>
#include <vector>

namespace paukfix {

// A text in one line: breaks, tabs and every other white space are blanks, as a grid shows them.
QString OneLine(const QString &text);

// The cards of an open card file as the rows of a list. Of all cards only the order is kept; a row is read
// when it is asked for, with some neighbours, and forgotten again. A card that has gone meanwhile is an empty
// row. All methods throw StoreError.
class CardList
{
public:
    enum class Column
    {
        FrageNr,
        FachNr,
        FachLfdNr,
        Frage,
        Antwort,
        Thema
    };

    struct Row
    {
        std::array<std::optional<double>, 3> numbers; // FrageNr, FachNr, FachLfdNr
        QString question, answer, topic;              // plain texts
    };

    // Lists all cards by their numbers. `cards` must outlive the list.
    explicit CardList(CardRecordset &cards);

    // The rows that are shown, of all that there are.
    int Count() const { return static_cast<int>(order_.size()); }

    int Total() const { return static_cast<int>(all_.size()); }

    // Numbers by value, texts as a German dictionary does (by their beginnings); equal ones by card number.
    void Sort(Column column, bool ascending);

    // Of long texts only the beginning.
    const Row &At(int row);
    // The whole texts of a card.
    Row Whole(std::int64_t id);

    // From now on shows only the cards whose number begins with `text` or whose question, answer or topic, in
    // one line, contains it, letter case ignored; all for an empty text. The order stays.
    void Filter(const QString &text);

    // The cards whose numbers lie from `from` to `to`, both included, shown or not, in the order of the list.
    std::vector<std::int64_t> Numbered(int from, int to);

    // The card in a row, whatever the order: for finding it again after a sort or a filter.
    std::int64_t Id(int row) const { return order_[static_cast<std::size_t>(row)]; }

    std::optional<int> RowOf(std::int64_t id) const;

private:
    static constexpr int BlockSize = 64;
    static constexpr std::size_t MostBlocks = 16;

    struct Block
    {
        int number = 0;
        std::vector<Row> rows;
    };

    void Load(int blockNumber);
    void Show();

    CardRecordset &cards_;
    std::vector<std::int64_t> all_;
    std::vector<std::int64_t> order_; // of all, those that are shown
    QString filter_;
    std::unordered_set<std::int64_t> hits_; // of the filter, where there is one
    std::list<Block> blocks_;               // latest first
};

} // namespace paukfix
