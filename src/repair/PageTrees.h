// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "PageReader.h"
#include "Progress.h"

#include <cstdint>
#include <map>
#include <unordered_map>
#include <vector>

namespace paukfix {

// What the trees, the schema and the free list of a damaged database file still tell: which pages belong to
// the cards, and which are free. A page may be one of an older state, so that what it leads to need not be
// all that there is.
class PageTrees
{
public:
    // Throws what `progress` throws.
    explicit PageTrees(const PageReader &reader, const Progress &progress = {});

    bool InTable(std::uint32_t page) const { return owner_[page] == Owner::Table; }

    // Does the table's tree lead to this page, and to rows like this one on it?
    bool InTable(std::uint32_t page, std::int64_t row) const;

    // The leaf page on which the table's tree would have this row; 0 where it leads nowhere.
    std::uint32_t LeafOf(std::int64_t row) const;

    // Does the tree of one of the two indexes lead to this page?
    bool InIndex(std::uint32_t page) const { return owner_[page] == Owner::Index; }

    // Does the page belong to something else that the schema names?
    bool InOther(std::uint32_t page) const { return owner_[page] == Owner::Other; }

    bool InNone(std::uint32_t page) const { return owner_[page] == Owner::None; }

    // Is the page on the free list? Always false where free pages are wiped: one with content is in use then.
    bool IsFree(std::uint32_t page) const { return free_[page]; }

    // Is the page a b-tree page without a fault?
    bool IsSound(std::uint32_t page) const { return sound_[page]; }

    // Is it one, and does its sum fit, where the file has sums? What it lacks may be believed then.
    bool IsWhole(std::uint32_t page) const { return sound_[page] && !wrong_[page]; }

    // Does the page not fit its sum? Never in a file without sums.
    bool HasWrongSum(std::uint32_t page) const { return wrong_[page]; }

    // How many such pages there are.
    std::uint32_t WrongSums() const { return wrongSums_; }

    PageKind Kind(std::uint32_t page) const { return kinds_[page]; }

    // Has the file more pages than its header says, so that its first pages are of an older state?
    bool HasGrown() const { return hasGrown_; }

    // Is what was deleted wiped in this file? As in all files of ours; others show it by what their pages
    // leave unused.
    bool IsWiped() const { return wipes_; }

    // Is the whole tree of the index on "FrageNr" without a fault? It may be one of an older state.
    bool NumbersWhole() const { return numbersWhole_; }

private:
    enum class Owner : std::uint8_t
    {
        None,
        Table,
        Other,
        Index
    };

    enum class Object : std::uint8_t
    {
        CardTable,
        NumberIndex,
        PlaceIndex,
        OtherTable,
        OtherIndex
    };

    struct SchemaRow
    {
        Object object;
        std::uint32_t root;
    };

    // Above the first one and up to the second one.
    struct RowRange
    {
        std::int64_t above, upTo;
    };

    struct Open
    {
        std::uint32_t page;
        RowRange rows;
    };

    void ClassifyPages(const Progress &progress);
    void ReadFreeList();
    std::vector<SchemaRow> ReadSchema() const;
    bool WalkTree(std::uint32_t root, Owner owner, PageKind leaf);
    static void AddChildren(const BTreePage &page, RowRange rows, std::vector<Open> &open);

    const PageReader &reader_;
    std::vector<PageKind> kinds_;
    std::vector<Owner> owner_;
    std::vector<bool> sound_, wrong_, empty_, free_;
    std::uint32_t wrongSums_ = 0;
    std::unordered_map<std::uint32_t, RowRange> rows_;  // of the table's leaf pages
    std::map<std::int64_t, std::uint32_t> leavesByRow_; // by the highest row that each can have
    bool wipes_ = false, numbersWhole_ = false, hasGrown_ = false;
};

// Finds page size and usable size, from the header where it is true, else from the structure of the pages.
// Throws what `progress` throws.
PageGeometry FindGeometry(int file, std::int64_t size, const Progress &progress = {});

} // namespace paukfix
