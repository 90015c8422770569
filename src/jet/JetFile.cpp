// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "JetFile.h"

#include "JetSource.h"
#include "StoreError.h"
#include "TolerantRead.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <numeric>
#include <string_view>
#include <utility>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr std::size_t VersionAt = 0x14;
constexpr std::size_t CodedFrom = 0x18;
constexpr std::size_t CodePageAt = 0x3C;
constexpr std::size_t KeyAt = 0x3E;
constexpr std::size_t PasswordAt = 0x42;
constexpr std::size_t DateAt = 0x72; // version 4: when the database was made
constexpr std::size_t HeaderSize = 0x98;

using Header = std::array<std::uint8_t, HeaderSize>;

bool BeginsAsJet(const Header &header)
{
    using namespace std::string_view_literals;
    const std::string_view start(reinterpret_cast<const char *>(header.data()), VersionAt);
    return start == "\0\1\0\0Standard Jet DB\0"sv || start == "\0\1\0\0Standard ACE DB\0"sv;
}

Header ReadHeader(int file)
{
    Header header{};
    ReadTolerant(file, 0, header.data(), header.size());
    return header;
}

// RC4 with the key that is the same in all files.
void Decode(std::span<std::uint8_t> bytes)
{
    constexpr std::array<std::uint8_t, 4> Key{0xC7, 0xDA, 0x39, 0x6B};
    std::array<std::uint8_t, 256> state{};
    std::iota(state.begin(), state.end(), std::uint8_t{0});
    std::uint8_t j = 0;
    for (std::size_t i = 0; i < state.size(); ++i) {
        j = static_cast<std::uint8_t>(j + state[i] + Key[i % Key.size()]);
        std::swap(state[i], state[j]);
    }
    std::uint8_t i = 0;
    j = 0;
    for (std::uint8_t &byte : bytes) {
        j = static_cast<std::uint8_t>(j + state[++i]);
        std::swap(state[i], state[j]);
        byte ^= state[static_cast<std::uint8_t>(state[i] + state[j])];
    }
}

// Version 4 hides the password behind the day on which the database was made.
bool HasPassword(const Header &header, std::size_t size, bool version4)
{
    const double date = version4 ? LittleDouble(header, DateAt) : 0;
    const auto day = std::abs(date) < 1e9 ? static_cast<std::int32_t>(date) : 0;
    for (std::size_t i = 0; i < size; ++i)
        if (header[PasswordAt + i] !=
            static_cast<std::uint8_t>(static_cast<std::uint32_t>(day) >> 8 * (i % 4)))
            return true;
    return false;
}

constexpr JetLayout Layout3{
    2048, 126, 20, 8,  1,             // pages and rows
    12,   21,  23, 25, 31, 35, 43, 8, // definition
    18,   1,   3,  13, 14             // column
};
constexpr JetLayout Layout4{
    4096, 128, 40, 12, 2,              // pages and rows
    16,   41,  43, 45, 51, 55, 63, 12, // definition
    25,   5,   7,  15, 21              // column
};

} // namespace

std::uint32_t Little16(Bytes bytes, std::size_t at)
{
    return bytes[at] | static_cast<std::uint32_t>(bytes[at + 1]) << 8U;
}

std::uint32_t Little32(Bytes bytes, std::size_t at)
{
    return Little16(bytes, at) | Little16(bytes, at + 2) << 16U;
}

double LittleDouble(Bytes bytes, std::size_t at)
{
    return std::bit_cast<double>(Little32(bytes, at) | std::uint64_t{Little32(bytes, at + 4)} << 32U);
}

bool IsJetFile(const QString &path)
{
    try {
        return BeginsAsJet(ReadHeader(OpenRegular(path).Get()));
    } catch (const StoreError &) {
        return false;
    }
}

JetFile::JetFile(const QString &path) : path_(path), file_(OpenRegular(path)), size_(SizeOf(file_, path))
{
    CheckHeader();
    const auto pageSize = static_cast<std::int64_t>(Layout().pageSize);
    pageCount_ = static_cast<std::uint32_t>(
        std::min<std::int64_t>((size_ + pageSize - 1) / pageSize, 1 << 24)); // a pointer has no more
}

const JetLayout &JetFile::Layout() const
{
    return version4_ ? Layout4 : Layout3;
}

void JetFile::CheckHeader()
{
    Header header = ReadHeader(file_.Get());
    const auto refuse = [this](int number, const QString &why) {
        throw StoreError(number, u"Die Datei „%1“ %2."_s.arg(path_, why));
    };
    if (!BeginsAsJet(header))
        refuse(Fehler::FormatUnbekannt, u"ist keine Kartei im alten Dateiformat"_s);
    if (header[VersionAt] > 1)
        refuse(Fehler::FormatUnbekannt,
               u"hat ein neueres Format der Jet-Datenbank; gelesen werden nur Jet 3 und Jet 4"_s);
    version4_ = header[VersionAt] == 1;
    Decode(std::span(header).subspan(CodedFrom, Layout().headerCode));
    if (Little32(header, KeyAt) != 0)
        refuse(Fehler::FormatUnbekannt, u"ist verschlüsselt und lässt sich nicht lesen"_s);
    if (HasPassword(header, Layout().password, version4_))
        refuse(Fehler::KennwortFalsch, u"ist mit einem Kennwort geschützt und lässt sich nicht lesen"_s);
    const std::uint32_t codePage = Little16(header, CodePageAt);
    if (codePage != 0 && codePage != 1252 && (codePage != 1200 || !version4_))
        refuse(Fehler::FormatUnbekannt,
               u"benutzt die Codeseite %1; gelesen werden nur Windows-1252 und Unicode"_s.arg(codePage));
}

Bytes JetFile::Page(std::uint32_t number)
{
    Slot &slot = slots_[number % slots_.size()];
    if (slot.number != number) {
        slot.number = number;
        slot.bytes.assign(Layout().pageSize, 0);
        if (number < pageCount_)
            ReadTolerant(file_.Get(), static_cast<std::int64_t>(number * Layout().pageSize),
                         slot.bytes.data(), slot.bytes.size());
    }
    return slot.bytes;
}

std::uint32_t JetFile::RowCount(std::uint32_t page)
{
    constexpr std::uint8_t DataPage = 1;
    constexpr std::uint32_t Most = 256; // a pointer has no more
    const Bytes bytes = Page(page);
    return bytes[0] == DataPage ? std::min(Little16(bytes, Layout().rowCount), Most) : 0;
}

std::optional<JetRow> JetFile::Row(JetPlace place)
{
    // Rows are stored from the page's end; each ends where the one before it begins.
    constexpr std::uint32_t Deleted = 0x8000, Moved = 0x4000, Offset = 0x1FFF;
    if (place.row >= RowCount(place.page))
        return std::nullopt;
    const Bytes page = Page(place.page);
    const std::size_t at = Layout().rowCount + 2 + std::size_t{place.row} * 2;
    const std::uint32_t entry = Little16(page, at);
    const std::size_t start = entry & Offset;
    const std::size_t end = place.row == 0 ? page.size() : Little16(page, at - 2) & Offset;
    if (start < at + 2 || start >= end || end > page.size())
        return std::nullopt;
    const Bytes bytes = page.subspan(start, end - start);
    return JetRow{
        Little32(page, 4), (entry & Deleted) != 0, (entry & Moved) != 0, {bytes.begin(), bytes.end()}};
}

void JetFile::ThrowDamaged() const
{
    throw StoreError(Fehler::Beschaedigt, u"Die Datei „%1“ ist beschädigt."_s.arg(path_));
}

} // namespace paukfix
