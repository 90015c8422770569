// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QString>
#include <SQLiteCpp/Database.h>

#include <array>
#include <cstdint>
#include <string>

namespace paukfix {

// What a card file has to hold, and how it tells whether it is one of ours.

// The file's first bytes as they stand there: the engine does not tell them where it cannot open the file.
class CardFileHeader
{
public:
    explicit CardFileHeader(SQLite::Database &database);

    // False where the disk did not give them.
    bool IsRead() const { return isRead_; }

    // Does the file bear our mark?
    bool IsOurs() const;

    // Versions beyond those that the engine knows make it refuse to write.
    bool HasFormatOfEngine() const { return bytes_[18] <= 2 && bytes_[19] <= 2; }

    // Does each page keep the bytes free that a sum takes?
    bool HasRoomForSums() const;

    // Does it say that its pages have sums (PageSums.h)?
    bool NamesSums() const;

    // Does the file have as many pages as its header counts? The engine takes the header's word where both
    // counts of changes agree, and would not see what an older header leaves out. In a file that is changed
    // through a log (byte 19) both may be older than the log: nothing is said then.
    bool CountsItsPages() const;

private:
    std::int64_t At(std::size_t place) const;

    std::array<unsigned char, 100> bytes_{}; // numbers have their highest byte first
    std::int64_t size_ = 0;
    bool isRead_ = false;
};

// Our mark at byte 68 of the header, the application id: "Pauk" in ASCII.
inline constexpr std::uint32_t CardFileMark = 0x5061756b;

// The first version of our format whose pages have sums, in the header's user_version.
inline constexpr std::uint32_t FirstVersionWithSums = 2;

// Is it a file of ours from the time before the sums, with nothing beside the cards in it? Throws
// SQLite::Exception.
bool HasFormerFormat(SQLite::Database &database);

// What makes an empty database a card file of ours, where it keeps room for the sums: statements with a
// semicolon behind each.
std::string NewFileSql();

// Throws StoreError where the open database is no sound card file: 3049, 3343, in a file without our mark
// 3078 and 3015, as CardFile tells. `path` is named in the texts.
void CheckContent(SQLite::Database &database, const QString &path);

[[noreturn]] void ThrowDamaged(const QString &path);

[[noreturn]] void ThrowNoRegularFile(const QString &path);

// "Die Datei „…“ ": the beginning of a sentence about it.
QString DateiSatz(const QString &path);

} // namespace paukfix
