// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "JetTable.h"

#include "Windows1252.h"

#include <algorithm>
#include <numeric>
#include <unordered_set>
#include <utility>

namespace paukfix {

namespace {

// Any 16-bit number can be a card's, so no more rows are of use.
constexpr std::size_t MostRows = 1 << 16;
// Of one memo, in bytes as stored; more than a card file could take.
constexpr std::size_t MostMemoBytes = 32 << 20;

QString WideText(Bytes bytes)
{
    QString text(static_cast<qsizetype>(bytes.size() / 2), Qt::Uninitialized);
    for (qsizetype i = 0; i < text.size(); ++i)
        text[i] = QChar(static_cast<ushort>(Little16(bytes, static_cast<std::size_t>(i) * 2)));
    return text;
}

// Each zero where a character could begin switches between one and two bytes a character.
QString CompressedText(Bytes bytes)
{
    QString text;
    text.reserve(static_cast<qsizetype>(bytes.size()));
    bool wide = false;
    for (std::size_t at = 0; at < bytes.size(); ++at)
        if (bytes[at] == 0)
            wide = !wide;
        else if (!wide)
            text += QChar(bytes[at]);
        else if (++at < bytes.size())
            text += QChar(static_cast<ushort>(Little16(bytes, at - 1)));
    return text;
}

QString Decoded(Bytes bytes, bool version4)
{
    if (!version4)
        return FromWindows1252({bytes.data(), static_cast<qsizetype>(bytes.size())});
    if (bytes.size() >= 2 && bytes[0] == 0xFF && bytes[1] == 0xFE)
        return CompressedText(bytes.subspan(2));
    return WideText(bytes);
}

// Of a value among the fixed ones, in bytes.
std::size_t SizeOf(JetType type)
{
    switch (type) {
    case JetType::Integer:
        return 2;
    case JetType::Long:
        return 4;
    case JetType::Double:
        return 8;
    default:
        return 0;
    }
}

} // namespace

std::optional<JetRecord> JetRecord::Of(std::vector<std::uint8_t> row, const JetLayout &layout,
                                       bool hasVariables, std::uint32_t mostColumns)
{
    const std::size_t unit = layout.unit, size = row.size();
    if (size < unit)
        return std::nullopt;
    JetRecord record;
    record.row_ = std::move(row);
    record.layout_ = &layout;
    record.columns_ = layout.Unit(record.row_, 0);
    const std::size_t mask = (record.columns_ + 7) / 8;
    const std::size_t count = hasVariables ? unit : 0; // of variable values
    if (record.columns_ > mostColumns || size < unit + mask + count)
        return std::nullopt;
    record.maskAt_ = record.valuesEnd_ = size - mask;
    if (hasVariables) {
        record.variables_ = layout.Unit(record.row_, record.maskAt_ - unit);
        record.jumps_ = unit == 1 ? (size - 1) / 256 : 0;
        // One offset more than values, where the last one ends; and the count.
        const std::size_t table = unit * (record.variables_ + 2) + record.jumps_;
        if (record.maskAt_ < unit + table)
            return std::nullopt;
        record.valuesEnd_ = record.maskAt_ - table;
    }
    return record;
}

bool JetRecord::Has(const JetColumn &column) const
{
    return column.number < columns_ && (row_[maskAt_ + column.number / 8] >> column.number % 8 & 1U) != 0;
}

// The offsets stand in reverse order before the jump table, which stands in reverse order before their
// number. An offset of version 3 has one byte; the jump table names the first value in each further 256 bytes
// of the row.
std::size_t JetRecord::VariableOffset(std::uint32_t variable) const
{
    const std::size_t jumpsEnd = maskAt_ - layout_->unit;
    std::size_t offset = layout_->Unit(row_, jumpsEnd - jumps_ - layout_->unit * (std::size_t{variable} + 1));
    for (std::size_t jump = 1; jump <= jumps_; ++jump)
        if (row_[jumpsEnd - jump] <= variable)
            offset += 256;
    return offset;
}

std::optional<Bytes> JetRecord::Value(const JetColumn &column) const
{
    std::size_t start = 0, end = 0;
    if (column.fixed) {
        start = layout_->unit + column.offset;
        end = start + SizeOf(column.type);
    } else if (column.variable < variables_) {
        start = VariableOffset(column.variable);
        end = VariableOffset(column.variable + 1);
    }
    if (start == 0 || start > end || end > valuesEnd_)
        return std::nullopt;
    return Bytes(row_).subspan(start, end - start);
}

std::optional<double> JetRecord::Number(const JetColumn &column) const
{
    const Bytes bytes = Has(column) ? Value(column).value_or(Bytes()) : Bytes();
    if (bytes.empty() || bytes.size() != SizeOf(column.type))
        return std::nullopt;
    switch (column.type) {
    case JetType::Integer:
        return static_cast<std::int16_t>(Little16(bytes, 0));
    case JetType::Long:
        return static_cast<std::int32_t>(Little32(bytes, 0));
    default:
        return LittleDouble(bytes, 0);
    }
}

JetTable::JetTable(JetFile &file, std::uint32_t definition)
    : file_(file), layout_(file.Layout()), definition_(definition), textBytesLeft_(file.Size())
{
    const std::vector<std::uint8_t> stored = Definition();
    const Bytes bytes(stored);
    if (bytes.size() < layout_.indexes)
        file.ThrowDamaged();
    declaredRows_ = Little32(bytes, layout_.rows);
    mostColumns_ = Little16(bytes, layout_.mostColumns);
    hasVariables_ = Little16(bytes, layout_.variables) != 0;
    usageMap_ = Little32(bytes, layout_.usageMap);
    const std::size_t count = Little16(bytes, layout_.columns);
    const std::size_t columns =
        layout_.indexes + std::uint64_t{Little32(bytes, layout_.realIndexes)} * layout_.indexSize;
    std::size_t name = columns + count * layout_.columnSize; // the names follow the columns
    for (std::size_t i = 0; i < count; ++i) {
        if (name + layout_.unit > bytes.size())
            file.ThrowDamaged();
        const std::size_t length = layout_.Unit(bytes, name);
        name += layout_.unit;
        if (length > bytes.size() - name)
            file.ThrowDamaged();
        const Bytes entry = bytes.subspan(columns + i * layout_.columnSize, layout_.columnSize);
        JetColumn &column = columns_.emplace_back();
        column.name = Decoded(bytes.subspan(name, length), file.IsVersion4());
        column.type = static_cast<JetType>(entry[0]);
        column.fixed = (entry[layout_.columnFlags] & 1U) != 0;
        column.number = Little16(entry, layout_.columnNumber);
        column.offset = Little16(entry, layout_.columnOffset);
        column.variable = Little16(entry, layout_.columnVariable);
        column.codePage = file.IsVersion4() ? 0 : Little16(entry, 11);
        name += length;
    }
}

bool JetTable::IsDefinition(JetFile &file, std::uint32_t page)
{
    constexpr std::uint8_t DefinitionPage = 2;
    return file.Page(page)[0] == DefinitionPage;
}

// A definition may go on in further pages.
std::vector<std::uint8_t> JetTable::Definition()
{
    constexpr std::size_t MostPages = 64; // 255 columns and 32 indexes take less
    constexpr std::size_t PageHeader = 8;
    std::vector<std::uint8_t> definition;
    std::unordered_set<std::uint32_t> visited;
    std::uint32_t page = definition_;
    while (page != 0 && visited.size() < MostPages && IsDefinition(file_, page) &&
           visited.insert(page).second) {
        const Bytes bytes = file_.Page(page);
        const Bytes part = bytes.subspan(definition.empty() ? 0 : PageHeader);
        definition.insert(definition.end(), part.begin(), part.end());
        page = Little32(bytes, 4);
    }
    return definition;
}

const JetColumn *JetTable::Column(QStringView name) const
{
    const auto found = std::find_if(columns_.begin(), columns_.end(), [&](const JetColumn &column) {
        return column.name.compare(name, Qt::CaseInsensitive) == 0;
    });
    return found == columns_.end() ? nullptr : &*found;
}

std::vector<JetPlace> JetTable::Rows()
{
    const auto map = file_.Row(JetPlace::Of(usageMap_));
    std::vector<JetPlace> mapped;
    if (map) {
        mapped = RowsIn(MappedPages(map->bytes));
        if (mapped.size() >= declaredRows_)
            return mapped;
    }
    // A damaged map leaves pages out. Every page names its owner, but so does one that was given back.
    std::vector<std::uint32_t> all(file_.PageCount());
    std::iota(all.begin(), all.end(), 0U);
    std::vector<JetPlace> owned = RowsIn(all);
    return !map || owned.size() <= declaredRows_ ? owned : mapped;
}

// The map names pages by bits, or further pages that hold the bits.
std::vector<std::uint32_t> JetTable::MappedPages(Bytes map)
{
    std::vector<std::uint32_t> pages;
    const auto take = [&](std::uint64_t first, Bytes bits) {
        for (std::size_t byte = 0; byte < bits.size(); ++byte)
            for (unsigned bit = 0; bit < 8; ++bit)
                if (const std::uint64_t page = first + byte * 8 + bit;
                    (bits[byte] >> bit & 1U) != 0 && page < file_.PageCount())
                    pages.push_back(static_cast<std::uint32_t>(page));
    };
    if (map[0] == 0 && map.size() > 5) {
        take(Little32(map, 1), map.subspan(5));
    } else if (map[0] == 1) {
        constexpr std::uint8_t MapPage = 5;
        for (std::size_t i = 0; 1 + i * 4 + 4 <= map.size(); ++i) {
            const std::uint32_t number = Little32(map, 1 + i * 4);
            if (number == 0 || number >= file_.PageCount())
                continue;
            const Bytes page = file_.Page(number);
            if (page[0] == MapPage)
                take(std::uint64_t{i} * (page.size() - 4) * 8, page.subspan(4));
        }
    }
    return pages;
}

std::vector<JetPlace> JetTable::RowsIn(const std::vector<std::uint32_t> &pages)
{
    std::vector<JetPlace> rows;
    std::unordered_set<std::uint64_t> known;
    for (const std::uint32_t page : pages)
        for (std::uint32_t i = 0; i < file_.RowCount(page) && rows.size() < MostRows; ++i)
            if (const auto place = Follow({page, i});
                place && known.insert(std::uint64_t{place->page} << 32U | place->row).second)
                rows.push_back(*place);
    return rows;
}

// Where the row stands that begins at this place: it may have been moved, and moved again.
std::optional<JetPlace> JetTable::Follow(JetPlace place)
{
    constexpr int MostMoves = 16;
    for (int moves = 0; moves <= MostMoves; ++moves) {
        const auto row = file_.Row(place);
        if (!row || row->owner != definition_ || (row->deleted && moves == 0))
            break;
        if (!row->moved)
            return place;
        if (row->bytes.size() < 4)
            break;
        place = JetPlace::Of(Little32(row->bytes, 0));
    }
    return std::nullopt;
}

std::optional<JetRecord> JetTable::Record(JetPlace place)
{
    auto row = file_.Row(place);
    if (!row)
        return std::nullopt;
    return JetRecord::Of(std::move(row->bytes), layout_, hasVariables_, mostColumns_);
}

JetText JetTable::Text(const JetRecord &record, const JetColumn &column)
{
    const auto value = record.Value(column);
    if (!value || !Take(value->size()))
        return {};
    if (column.type != JetType::Memo)
        return {Decoded(*value, file_.IsVersion4()), true};
    bool whole = false;
    const std::vector<std::uint8_t> bytes = MemoBytes(*value, whole);
    return {Decoded(bytes, file_.IsVersion4()), whole};
}

// A memo is stored in the row behind its head, in one row of another page, or in a chain of such rows.
std::vector<std::uint8_t> JetTable::MemoBytes(Bytes value, bool &whole)
{
    constexpr std::size_t Head = 12, Link = 4;
    constexpr std::uint32_t InRow = 0x80000000, InOnePage = 0x40000000, LengthBits = 0x3FFFFFFF;
    std::vector<std::uint8_t> memo;
    if (value.size() < Head)
        return memo;
    const std::uint32_t stored = Little32(value, 0);
    const std::size_t length = stored & LengthBits;
    const std::size_t wanted = std::min(length, MostMemoBytes);
    const auto append = [&](Bytes part) {
        part = part.first(std::min(part.size(), wanted - memo.size()));
        memo.insert(memo.end(), part.begin(), part.end());
    };
    if ((stored & InRow) != 0) {
        append(value.subspan(Head));
    } else {
        const std::size_t skipped = (stored & InOnePage) != 0 ? 0 : Link;
        std::unordered_set<std::uint32_t> visited;
        std::uint32_t pointer = Little32(value, 4);
        while (memo.size() < wanted && pointer != 0 && visited.insert(pointer >> 8U).second) {
            const auto part = LongValue(pointer);
            if (!part || part->size() < skipped)
                break;
            append(Bytes(*part).subspan(skipped));
            pointer = skipped == 0 ? 0 : Little32(*part, 0);
        }
    }
    whole = memo.size() == length;
    return memo;
}

std::optional<std::vector<std::uint8_t>> JetTable::LongValue(std::uint32_t pointer)
{
    auto row = file_.Row(JetPlace::Of(pointer));
    if (!row || row->deleted || row->moved || row->owner != JetFile::LongValues || !Take(row->bytes.size()))
        return std::nullopt;
    return std::move(row->bytes);
}

// Each byte belongs to one text, so that together they fit into the file.
bool JetTable::Take(std::size_t bytes)
{
    textBytesLeft_ -= static_cast<std::int64_t>(bytes);
    return textBytesLeft_ >= 0;
}

} // namespace paukfix
