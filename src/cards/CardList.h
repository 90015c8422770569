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
        Antwort
    };

    struct Row
    {
        std::array<std::optional<double>, 3> numbers; // FrageNr, FachNr, FachLfdNr
        QString question, answer;                     // plain texts
    };

    // Lists all cards by their numbers. `cards` must outlive the list.
    explicit CardList(CardRecordset &cards);

    int Count() const { return static_cast<int>(order_.size()); }

    // Numbers by value, texts as a German dictionary does (by their beginnings); equal ones by card number.
    void Sort(Column column, bool ascending);

    // Of long texts only the beginning.
    const Row &At(int row);
    // The whole texts.
    Row Whole(int row);

    // The first row from `from` on, and round to it again, whose card number begins with `text` or whose
    // question or answer, in one line, contains it, letter case ignored.
    std::optional<int> Find(const QString &text, int from);

    // The card in a row, whatever the order: for finding it again after a sort.
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

    CardRecordset &cards_;
    std::vector<std::int64_t> order_;
    std::list<Block> blocks_; // latest first
};

} // namespace paukfix
