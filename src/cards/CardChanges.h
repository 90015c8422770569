// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace SQLite {
class Database;
}

namespace paukfix {

// What was changed in the cards of a card file: each row that was touched as it stood before, packed, in the
// order in which they were touched. Of a new row only that it is new, of a changed one only what was changed
// in it. At most MaxBytes (bytes); what would lead past that is not kept, and Whole() is false then.
class CardChanges
{
public:
    static constexpr std::size_t MaxBytes = std::size_t{64} << 20;

    enum class Kind : char
    {
        Added,
        Changed,
        Deleted
    };

    // A text is stored as UTF-8, a blob as it is.
    struct Text
    {
        std::string bytes;
    };

    struct Blob
    {
        std::string bytes;
    };

    using Value = std::variant<std::monostate, std::int64_t, double, Text, Blob>;

    struct Cell
    {
        int column = 0; // in the table's order, from 0
        Value value;
    };

    struct Row
    {
        Kind kind = Kind::Added;
        std::int64_t id = 0;
        std::vector<Cell> before; // of a deleted row all
    };

    void Add(const Row &row);

    void SetIncomplete() { whole_ = false; }

    bool Whole() const { return whole_; }

    bool IsEmpty() const { return begins_.empty() && whole_; }

    std::size_t Bytes() const { return packed_.size() + begins_.size() * sizeof(std::uint32_t); }

    std::size_t Count() const { return begins_.size(); }

    Row At(std::size_t i) const;

private:
    std::string packed_;
    std::vector<std::uint32_t> begins_; // of the rows in `packed_`
    bool whole_ = true;
};

// Puts all rows back as they stood, the last one first: so no two cards meet in an index on the way back that
// did not meet on the way there. Wants an open transaction; throws SQLite::Exception.
void TakeBack(SQLite::Database &database, const CardChanges &changes);

// Whether all rows stand as they did before the changes, as after a rollback. Throws SQLite::Exception.
bool StandAsBefore(SQLite::Database &database, const CardChanges &changes);

// How many bytes the changes may take that TakeBack would make; counted no further than MaxBytes, past which
// they would not be kept. Throws SQLite::Exception.
std::size_t BytesToRepeat(SQLite::Database &database, const CardChanges &changes);

} // namespace paukfix
