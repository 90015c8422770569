// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "PageReader.h"

#include <cstdint>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

// What the trees, the schema and the free list of a damaged database file still tell: which pages belong to
// the cards, which are free, and which numbers and places the two indexes know.
class PageTrees
{
public:
    explicit PageTrees(const PageReader &reader);

    // Does the table's tree lead to this page?
    bool InTable(std::uint32_t page) const { return owner_[page] == Owner::Table; }

    // Does the page belong to something else that the schema names?
    bool InOther(std::uint32_t page) const { return owner_[page] == Owner::Other; }

    bool IsFree(std::uint32_t page) const { return free_[page]; }

    // Is the page a b-tree page without a fault?
    bool IsSound(std::uint32_t page) const { return sound_[page]; }

    PageKind Kind(std::uint32_t page) const { return kinds_[page]; }

    // Is the whole tree of the table without a fault, so that a page it does not lead to holds no card?
    bool TableWhole() const { return tableWhole_; }

    // Is the whole index on "FrageNr" without a fault, so that a card it does not know was deleted?
    bool NumbersWhole() const { return numbersWhole_; }

    struct Place
    {
        double compartment = 0;
        double place = 0;
    };

    // By the card's row: its FrageNr, and its FachNr and FachLfdNr.
    const std::unordered_map<std::int64_t, double> &Numbers() const { return numbers_; }

    const std::unordered_map<std::int64_t, Place> &Places() const { return places_; }

private:
    enum class Owner : std::uint8_t
    {
        None,
        Table,
        Other,
        NumberIndex,
        PlaceIndex
    };

    struct SchemaRow
    {
        Owner owner;
        std::uint32_t root;
        bool isTable;
    };

    void ClassifyPages();
    void ReadFreeList();
    std::vector<SchemaRow> ReadSchema() const;
    bool WalkTree(std::uint32_t root, Owner owner, PageKind leaf);
    void ReadIndexes();
    void ReadIndexPage(const BTreePage &page);

    const PageReader &reader_;
    std::vector<PageKind> kinds_;
    std::vector<Owner> owner_;
    std::vector<bool> sound_, wiped_, free_;
    bool tableWhole_ = false, numbersWhole_ = false, placesWhole_ = false;
    std::unordered_map<std::int64_t, double> numbers_;
    std::unordered_map<std::int64_t, Place> places_;
};

// Finds page size and usable size, from the header where it is true, else from the structure of the pages.
PageGeometry FindGeometry(int file, std::int64_t size);
