// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "JetTable.h"

#include "StoreError.h"
#include "Windows1252.h"

#include <algorithm>
#include <bit>
#include <numeric>

namespace {

constexpr std::uint32_t cataloguePage = 2;
// Any 16-bit number can be a card's, so no more rows are of use.
constexpr std::size_t mostRows = 1 << 16;
// Of one memo, in bytes as stored; more than a card file could take.
constexpr std::uint32_t mostMemoBytes = 32 << 20;

// Where the parts of a table definition stand, from the first byte of its first page.
struct DefinitionLayout
{
    std::size_t rows, mostColumns, variables, columns, realIndexes, usageMap, indexes;
    std::size_t indexSize, columnSize;
};

constexpr DefinitionLayout layout3{12, 21, 23, 25, 31, 35, 43, 8, 18};
constexpr DefinitionLayout layout4{16, 41, 43, 45, 51, 55, 63, 12, 25};

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
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        if (bytes[at] == 0)
            wide = !wide;
        else if (!wide)
            text += QChar(bytes[at]);
        else if (++at < bytes.size())
            text += QChar(static_cast<ushort>(Little16(bytes, at - 1)));
    }
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

[[noreturn]] void ThrowDamaged(const JetFile &file)
{
    throw StoreError(Fehler::Beschaedigt, QStringLiteral("Die Datei „%1“ ist beschädigt.").arg(file.Path()));
}

bool IsDefinition(Bytes page)
{
    constexpr std::uint8_t definitionPage = 2;
    return page[0] == definitionPage;
}

} // namespace

std::optional<JetRecord> JetRecord::Of(Bytes row, bool version4, bool hasVariables, std::uint32_t mostColumns)
{
    const std::size_t unit = version4 ? 2 : 1; // bytes of a count or offset in a row
    const auto number = [&](std::size_t at) { return version4 ? Little16(row, at) : row[at]; };
    JetRecord record;
    record.row_ = row;
    record.version4_ = version4;
    if (row.size() < unit)
        return std::nullopt;
    record.columns_ = number(0);
    const std::size_t mask = (record.columns_ + 7) / 8;
    const std::size_t tail = hasVariables ? unit : 0; // number of variable values
    if (record.columns_ > mostColumns || row.size() < unit + mask + tail)
        return std::nullopt;
    record.maskAt_ = row.size() - mask;
    record.valuesEnd_ = record.maskAt_;
    if (hasVariables) {
        record.variables_ = number(record.maskAt_ - unit);
        record.jumps_ = version4 ? 0 : static_cast<std::uint32_t>((row.size() - 1) / 256);
        // One offset more than values: where the last one ends.
        const std::size_t table = unit * (record.variables_ + 2) + record.jumps_;
        if (record.maskAt_ < unit + table)
            return std::nullopt;
        record.valuesEnd_ = record.maskAt_ - table;
    }
    return record;
}

bool JetRecord::IsSet(std::uint32_t column) const
{
    return column < columns_ && (row_[maskAt_ + column / 8] >> column % 8 & 1U) != 0;
}

// The offsets stand in reverse order before the jump table, which stands in reverse order before their
// number. An offset of version 3 has one byte; the jump table names the first value in each further 256 bytes
// of the row.
std::size_t JetRecord::VariableOffset(std::uint32_t variable) const
{
    if (version4_)
        return Little16(row_, maskAt_ - 2 * (std::size_t{variable} + 2));
    const std::size_t jumpsEnd = maskAt_ - 1;
    std::size_t offset = row_[jumpsEnd - jumps_ - variable - 1];
    for (std::size_t jump = 0; jump < jumps_; ++jump)
        if (row_[jumpsEnd - jump - 1] <= variable)
            offset += 256;
    return offset;
}

JetValue JetRecord::Value(const JetColumn &column) const
{
    if (!IsSet(column.number))
        return {};
    std::size_t start = 0, end = 0;
    if (column.fixed) {
        start = (version4_ ? 2 : 1) + std::size_t{column.offset};
        switch (column.type) {
        case JetType::Flag:
        case JetType::Byte:
            end = start + 1;
            break;
        case JetType::Integer:
            end = start + 2;
            break;
        case JetType::Long:
        case JetType::Single:
            end = start + 4;
            break;
        default:
            end = start + 8;
        }
    } else {
        if (column.variable >= variables_)
            return {}; // the row is older than the column
        start = VariableOffset(column.variable);
        end = VariableOffset(column.variable + 1);
    }
    if (start > end || end > valuesEnd_)
        return {JetValue::State::Broken, {}};
    return {JetValue::State::There, row_.subspan(start, end - start)};
}

std::optional<double> JetRecord::Number(const JetColumn &column) const
{
    const Bytes bytes = Value(column).bytes;
    switch (column.type) {
    case JetType::Byte:
        return bytes.size() == 1 ? std::optional<double>(bytes[0]) : std::nullopt;
    case JetType::Integer:
        return bytes.size() == 2 ? std::optional<double>(static_cast<std::int16_t>(Little16(bytes, 0)))
                                 : std::nullopt;
    case JetType::Long:
        return bytes.size() == 4 ? std::optional<double>(static_cast<std::int32_t>(Little32(bytes, 0)))
                                 : std::nullopt;
    case JetType::Single:
        return bytes.size() == 4 ? std::optional<double>(std::bit_cast<float>(Little32(bytes, 0)))
                                 : std::nullopt;
    case JetType::Double:
        return bytes.size() == 8 ? std::optional<double>(std::bit_cast<double>(
                                       Little32(bytes, 0) | std::uint64_t{Little32(bytes, 4)} << 32U))
                                 : std::nullopt;
    default:
        return std::nullopt;
    }
}

// The page of the definition that the catalogue names. `damaged` is set where the catalogue cannot be read
// whole.
static std::optional<std::uint32_t> FindInCatalogue(JetFile &file, QStringView name, bool &damaged)
{
    constexpr double tableType = 1;
    constexpr std::uint32_t pageBits = 0xFFFFFF; // of an object's number
    try {
        JetTable objects(file, cataloguePage);
        const JetColumn *id = objects.Column(u"Id");
        const JetColumn *title = objects.Column(u"Name");
        const JetColumn *type = objects.Column(u"Type");
        if (id == nullptr || id->type != JetType::Long || title == nullptr || type == nullptr) {
            damaged = true;
            return std::nullopt;
        }
        const std::vector<JetPlace> rows = objects.Rows();
        damaged = rows.size() < objects.DeclaredRows();
        for (const JetPlace &place : rows) {
            const std::vector<std::uint8_t> row = objects.RowBytes(place);
            const auto record = objects.Split(row);
            const auto object = record ? record->Number(*id) : std::nullopt;
            damaged = damaged || !object;
            if (object && record->Number(*type) == tableType &&
                objects.Text(*title, record->Value(*title).bytes).text.compare(name, Qt::CaseInsensitive) ==
                    0)
                return static_cast<std::uint32_t>(static_cast<std::int32_t>(*object)) & pageBits;
        }
    } catch (const StoreError &) {
        damaged = true;
    }
    return std::nullopt;
}

JetTable::JetTable(JetFile &file, std::uint32_t definition)
    : file_(file), definition_(definition), memoBytesLeft_(file.Size())
{
    const bool version4 = file.IsVersion4();
    const DefinitionLayout &layout = version4 ? layout4 : layout3;
    const std::vector<std::uint8_t> stored = Definition(definition);
    const Bytes bytes(stored);
    if (bytes.size() < layout.indexes)
        ThrowDamaged(file);
    declaredRows_ = Little32(bytes, layout.rows);
    mostColumns_ = Little16(bytes, layout.mostColumns);
    hasVariables_ = Little16(bytes, layout.variables) != 0;
    usageMap_ = Little32(bytes, layout.usageMap);
    const std::size_t count = Little16(bytes, layout.columns);
    const std::size_t columns =
        layout.indexes + std::uint64_t{Little32(bytes, layout.realIndexes)} * layout.indexSize;
    std::size_t name = columns + count * layout.columnSize;
    if (name > bytes.size())
        ThrowDamaged(file);
    for (std::size_t i = 0; i < count; ++i) {
        const Bytes entry = bytes.subspan(columns + i * layout.columnSize, layout.columnSize);
        JetColumn column;
        column.type = static_cast<JetType>(entry[0]);
        column.number = Little16(entry, version4 ? 5 : 1);
        column.variable = Little16(entry, version4 ? 7 : 3);
        column.codePage = version4 ? 0 : Little16(entry, 11);
        column.fixed = (entry[version4 ? 15 : 13] & 1U) != 0;
        column.offset = Little16(entry, version4 ? 21 : 14);
        const std::size_t unit = version4 ? 2 : 1;
        if (name + unit > bytes.size())
            ThrowDamaged(file);
        const std::size_t length = version4 ? Little16(bytes, name) : bytes[name];
        name += unit;
        if (length > bytes.size() - name)
            ThrowDamaged(file);
        const Bytes letters = bytes.subspan(name, length);
        column.name = version4 ? WideText(letters) : Decoded(letters, false);
        name += length;
        columns_.push_back(std::move(column));
    }
}

// A definition may go on in further pages.
std::vector<std::uint8_t> JetTable::Definition(std::uint32_t page)
{
    constexpr std::size_t mostPages = 64; // 255 columns and 32 indexes take less
    constexpr std::size_t pageHeader = 8;
    std::vector<std::uint8_t> definition;
    std::vector<std::uint32_t> visited;
    while (page != 0 && visited.size() < mostPages &&
           std::find(visited.begin(), visited.end(), page) == visited.end()) {
        const Bytes bytes = file_.Page(page);
        if (!IsDefinition(bytes))
            break;
        const auto from = bytes.begin() + (visited.empty() ? 0 : static_cast<std::ptrdiff_t>(pageHeader));
        definition.insert(definition.end(), from, bytes.end());
        visited.push_back(page);
        page = Little32(bytes, 4);
    }
    return definition;
}

std::optional<std::uint32_t> JetTable::Find(JetFile &file, QStringView name,
                                            bool (*looksLike)(const JetTable &table))
{
    bool damaged = false;
    if (const auto page = FindInCatalogue(file, name, damaged); page || !damaged)
        return page;
    constexpr int mostDefinitions = 1000; // of any real database
    int definitions = 0;
    for (std::uint32_t page = cataloguePage + 1; page < file.PageCount() && definitions < mostDefinitions;
         ++page) {
        if (!IsDefinition(file.Page(page)))
            continue;
        ++definitions;
        try {
            if (looksLike(JetTable(file, page)))
                return page;
        } catch (const StoreError &) { // the further page of a definition, or a damaged one
            continue;
        }
    }
    ThrowDamaged(file);
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
    const JetPlace mapPlace = JetPlace::Of(usageMap_);
    const Bytes mapPage = file_.Page(mapPlace.page);
    const auto map = file_.Row(mapPage, mapPlace.row);
    std::vector<JetPlace> mapped;
    if (map) {
        const std::vector<std::uint8_t> bytes(map->bytes.begin(), map->bytes.end());
        mapped = RowsIn(MappedPages(bytes));
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
        constexpr std::uint8_t mapPage = 5;
        for (std::size_t i = 0; 1 + i * 4 + 4 <= map.size(); ++i) {
            const std::uint32_t number = Little32(map, 1 + i * 4);
            if (number == 0 || number >= file_.PageCount())
                continue;
            const Bytes page = file_.Page(number);
            if (page[0] == mapPage)
                take(std::uint64_t{i} * (page.size() - 4) * 8, page.subspan(4));
        }
    }
    return pages;
}

std::vector<JetPlace> JetTable::RowsIn(const std::vector<std::uint32_t> &pages)
{
    std::vector<JetPlace> rows;
    std::unordered_set<std::uint64_t> known;
    for (const std::uint32_t number : pages) {
        // Not held over the loop: following a moved row reads other pages.
        const std::uint32_t count = file_.RowCount(file_.Page(number));
        if (JetFile::Owner(file_.Page(number)) != definition_)
            continue;
        for (std::uint32_t i = 0; i < count && rows.size() < mostRows; ++i) {
            const auto row = file_.Row(file_.Page(number), i);
            if (!row || row->deleted)
                continue;
            std::optional<JetPlace> place = JetPlace{number, i};
            if (row->moved)
                place = row->bytes.size() < 4 ? std::nullopt : Follow(Little32(row->bytes, 0));
            if (place && known.insert(std::uint64_t{place->page} << 32U | place->row).second)
                rows.push_back(*place);
        }
    }
    return rows;
}

// A moved row may have been moved again.
std::optional<JetPlace> JetTable::Follow(std::uint32_t pointer)
{
    constexpr int mostMoves = 16;
    for (int move = 0; move < mostMoves; ++move) {
        const JetPlace place = JetPlace::Of(pointer);
        const Bytes page = file_.Page(place.page);
        const auto row = file_.Row(page, place.row);
        if (!row || JetFile::Owner(page) != definition_)
            return std::nullopt;
        if (!row->moved)
            return place;
        if (row->bytes.size() < 4)
            return std::nullopt;
        pointer = Little32(row->bytes, 0);
    }
    return std::nullopt;
}

std::vector<std::uint8_t> JetTable::RowBytes(JetPlace place)
{
    const auto row = file_.Row(file_.Page(place.page), place.row);
    return row ? std::vector<std::uint8_t>(row->bytes.begin(), row->bytes.end())
               : std::vector<std::uint8_t>();
}

std::optional<JetRecord> JetTable::Split(Bytes row) const
{
    return JetRecord::Of(row, file_.IsVersion4(), hasVariables_, mostColumns_);
}

JetText JetTable::Text(const JetColumn &column, Bytes value)
{
    if (column.type != JetType::Memo)
        return {Decoded(value, file_.IsVersion4()), true};
    bool whole = false;
    const std::vector<std::uint8_t> bytes = MemoBytes(value, whole);
    return {Decoded(bytes, file_.IsVersion4()), whole};
}

// A memo is stored in the row behind its head, in one row of another page, or in a chain of such rows.
std::vector<std::uint8_t> JetTable::MemoBytes(Bytes value, bool &whole)
{
    constexpr std::size_t head = 12;
    constexpr std::uint32_t inRow = 0x80000000, inOnePage = 0x40000000, lengthBits = 0x3FFFFFFF;
    std::vector<std::uint8_t> memo;
    whole = false;
    if (value.size() < head)
        return memo;
    const std::uint32_t stored = Little32(value, 0);
    const std::size_t length = stored & lengthBits;
    const std::size_t wanted = std::min<std::size_t>(length, mostMemoBytes);
    const auto append = [&](Bytes part) {
        part = part.first(std::min(part.size(), wanted - memo.size()));
        memo.insert(memo.end(), part.begin(), part.end());
    };
    if ((stored & inRow) != 0) {
        append(value.subspan(head));
    } else if ((stored & inOnePage) != 0) {
        if (const auto part = LongValue(JetPlace::Of(Little32(value, 4))))
            append(*part);
    } else {
        std::unordered_set<std::uint32_t> visited;
        std::uint32_t pointer = Little32(value, 4);
        while (memo.size() < wanted && pointer != 0 && visited.insert(pointer >> 8U).second) {
            const auto part = LongValue(JetPlace::Of(pointer));
            if (!part || part->size() < 4)
                break;
            append(part->subspan(4));
            pointer = Little32(*part, 0);
        }
    }
    whole = memo.size() == length;
    return memo;
}

std::optional<Bytes> JetTable::LongValue(JetPlace place)
{
    const Bytes page = file_.Page(place.page);
    const auto row = file_.Row(page, place.row);
    if (!row || row->deleted || row->moved || JetFile::Owner(page) != JetFile::LongValues)
        return std::nullopt;
    // Each row belongs to one memo, so that together they fit into the file.
    memoBytesLeft_ -= static_cast<std::int64_t>(row->bytes.size()) + 2;
    return memoBytesLeft_ >= 0 ? std::optional(row->bytes) : std::nullopt;
}
