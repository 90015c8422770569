// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "JetLab.h"

#include "CardValue.h"
#include "Windows1252.h"

#include <QStringList>

#include <bit>
#include <numeric>
#include <optional>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr int FlagType = 1, LongType = 4, IntegerType = 3, DoubleType = 7, TextType = 10, MemoType = 12;
constexpr std::uint16_t DeletedFlag = 0x8000, MovedFlag = 0x4000;
constexpr std::uint32_t LongOwner = 0x4C41564C;

int TypeOf(int column)
{
    switch (KindOf(column)) {
    case CardKind::Number:
        return DoubleType;
    case CardKind::Flag:
        return FlagType;
    case CardKind::Text:
        break;
    }
    return QByteArray(CardColumns()[static_cast<std::size_t>(column)].declaredType) == "LONGTEXT" ? MemoType
                                                                                                  : TextType;
}

bool IsFixed(int type)
{
    return type != TextType && type != MemoType;
}

int FixedSize(int type)
{
    return type == DoubleType ? 8 : type == LongType ? 4 : type == IntegerType ? 2 : 0;
}

// Nothing for a text that the compression cannot hold.
std::optional<QByteArray> Compressed(const QString &text)
{
    QByteArray bytes("\xFF\xFE");
    bool wide = false;
    for (const QChar c : text) {
        if (c.cell() == 0)
            return std::nullopt;
        if ((c.row() != 0) != wide) {
            bytes += '\0';
            wide = !wide;
        }
        bytes += static_cast<char>(c.cell());
        if (wide)
            bytes += static_cast<char>(c.row());
    }
    return bytes;
}

void CodeHeader(QByteArray &page, int length)
{
    constexpr std::array<std::uint8_t, 4> Key{0xC7, 0xDA, 0x39, 0x6B};
    std::array<int, 256> box{};
    std::iota(box.begin(), box.end(), 0);
    for (int i = 0, j = 0; i < 256; ++i) {
        j = (j + box[static_cast<std::size_t>(i)] + Key[static_cast<std::size_t>(i % 4)]) % 256;
        std::swap(box[static_cast<std::size_t>(i)], box[static_cast<std::size_t>(j)]);
    }
    int i = 0, j = 0;
    for (int at = 0x18; at < 0x18 + length; ++at) {
        i = (i + 1) % 256;
        int &one = box[static_cast<std::size_t>(i)];
        j = (j + one) % 256;
        int &other = box[static_cast<std::size_t>(j)];
        std::swap(one, other);
        page[at] = static_cast<char>(page[at] ^ box[static_cast<std::size_t>((one + other) % 256)]);
    }
}

} // namespace

JetLab::Row JetLab::RowOf(const CardRecord &card)
{
    Row row;
    for (std::size_t i = 0; i < row.size(); ++i) {
        const auto &member = CardColumns()[i].member;
        if (const auto *text = std::get_if<QString CardRecord::*>(&member))
            row[i] = (card.*(*text)).isEmpty() ? Value() : Value(card.*(*text));
        else if (const auto *flag = std::get_if<bool CardRecord::*>(&member))
            row[i] = card.*(*flag);
        else
            row[i] = card.*std::get<double CardRecord::*>(member);
    }
    return row;
}

int JetLab::Add(const Row &row)
{
    rows_.push_back({row, {}, false, false, std::exchange(breakPage_, false)});
    return static_cast<int>(rows_.size()) - 1;
}

int JetLab::AddRaw(const QByteArray &bytes)
{
    const int row = Add(Row());
    rows_.back().raw = bytes;
    return row;
}

void JetLab::Delete(int row)
{
    rows_[static_cast<std::size_t>(row)].deleted = true;
}

void JetLab::Move(int row)
{
    rows_[static_cast<std::size_t>(row)].moved = true;
}

void JetLab::Put(QByteArray &to, std::uint64_t number, int bytes) const
{
    for (int i = 0; i < bytes; ++i)
        to += static_cast<char>(i < 8 ? number >> 8 * i : 0);
}

int JetLab::Free(const DataPage &page) const
{
    qsizetype taken = version_ == 3 ? 10 : 14;
    for (const Stored &row : page.rows)
        taken += row.bytes.size() + 2;
    return PageSize() - static_cast<int>(taken);
}

// In the last page of the owner that has room, or a fresh one. Returns page and row.
std::pair<int, int> JetLab::Store(std::uint32_t owner, const Stored &row, bool fresh)
{
    if (!fresh)
        for (auto page = dataPages_.rbegin(); page != dataPages_.rend(); ++page)
            if (page->second.owner == owner && page->second.rows.size() < 255 &&
                Free(page->second) >= row.bytes.size() + 2) {
                page->second.rows.push_back(row);
                return {page->first, static_cast<int>(page->second.rows.size()) - 1};
            }
    const int number = nextPage_++;
    dataPages_[number] = {owner, {row}};
    if (owner == LongOwner)
        longPages_ << number;
    return {number, 0};
}

QByteArray JetLab::TextBytes(const QString &text) const
{
    if (version_ == 3)
        return ToWindows1252(text).value();
    if (compress)
        if (const auto bytes = Compressed(text))
            return *bytes;
    return {reinterpret_cast<const char *>(text.utf16()), text.size() * 2};
}

QByteArray JetLab::MemoBytes(const QString &text)
{
    const QByteArray content = TextBytes(text);
    const auto length = static_cast<std::uint32_t>(content.size());
    std::uint32_t flags = 0, pointer = 0;
    const auto pointerTo = [](std::pair<int, int> place) { return Pointer(place.first, place.second); };
    switch (memo) {
    case Memo::InRow:
        flags = 0x80000000;
        break;
    case Memo::OnePage:
        flags = 0x40000000;
        pointer = pointerTo(Store(LongOwner, {0, content}, false));
        break;
    case Memo::Chained: {
        const int most = std::min(chainPart, PageSize() - (version_ == 3 ? 10 : 14) - 2 - 4);
        QList<QByteArray> parts;
        for (qsizetype at = 0; at < content.size(); at += most)
            parts << content.mid(at, most);
        for (auto part = parts.crbegin(); part != parts.crend(); ++part) {
            QByteArray bytes;
            Put(bytes, pointer, 4);
            pointer = pointerTo(Store(LongOwner, {0, bytes + *part}, true));
        }
    }
    }
    QByteArray head;
    Put(head, length | flags, 4);
    Put(head, pointer, 4);
    Put(head, 0, 4);
    return memo == Memo::InRow ? head + content : head;
}

QByteArray JetLab::RowBytes(const Row &row)
{
    const int unit = version_ == 3 ? 1 : 2;
    QByteArray bytes, mask(7, '\0');
    Put(bytes, CardColumnCount, unit);
    QByteArray variable;
    std::vector<qsizetype> starts;
    for (int i = 0; i < CardColumnCount; ++i) {
        const Value &value = row[static_cast<std::size_t>(i)];
        const auto retypedTo = retyped.find(QLatin1String(CardColumns()[static_cast<std::size_t>(i)].name));
        const int type = TypeOf(i);
        const bool whole = type == DoubleType && retypedTo != retyped.end() &&
                           (retypedTo->second == IntegerType || retypedTo->second == LongType);
        bool there = (retypedTo == retyped.end() || whole) && !std::holds_alternative<std::monostate>(value);
        if (type == FlagType)
            there = there && std::get<bool>(value);
        if (there)
            mask[i / 8] = static_cast<char>(mask[i / 8] | 1 << i % 8);
        if (whole && there) // in the first bytes of the place that a double would have
            Put(bytes, static_cast<std::uint64_t>(static_cast<std::int64_t>(std::get<double>(value))), 8);
        else if (type == DoubleType)
            Put(bytes, there ? std::bit_cast<std::uint64_t>(std::get<double>(value)) : 0, 8);
        if (IsFixed(type))
            continue;
        starts.push_back(variable.size());
        if (there)
            variable +=
                type == MemoType ? MemoBytes(std::get<QString>(value)) : TextBytes(std::get<QString>(value));
    }
    const qsizetype fixedEnd = bytes.size();
    starts.push_back(variable.size());
    for (qsizetype &start : starts)
        start += fixedEnd;
    bytes += variable;
    const auto values = static_cast<qsizetype>(starts.size()) - 1;
    if (version_ == 4) {
        for (auto start = starts.crbegin(); start != starts.crend(); ++start)
            Put(bytes, static_cast<std::uint64_t>(*start), 2);
        Put(bytes, static_cast<std::uint64_t>(values), 2);
        return bytes + mask;
    }
    // The number of jumps follows from the length of the row with them.
    const qsizetype without = bytes.size() + values + 1 + 1 + mask.size();
    qsizetype jumps = 0;
    while ((without + jumps - 1) / 256 > jumps)
        ++jumps;
    for (auto start = starts.crbegin(); start != starts.crend(); ++start)
        Put(bytes, static_cast<std::uint64_t>(*start), 1);
    for (qsizetype jump = jumps; jump > 0; --jump) {
        std::uint64_t first = 0;
        while (first < starts.size() && starts[first] < 256 * jump)
            ++first;
        Put(bytes, first < starts.size() ? first : 0xFF, 1);
    }
    Put(bytes, static_cast<std::uint64_t>(values), 1);
    return bytes + mask;
}

// Columns as pairs of type and place among the fixed values.
QByteArray JetLab::Definition(const std::vector<std::array<int, 2>> &columns, const QStringList &names,
                              std::uint32_t usageMap, int rows, int indexes) const
{
    const bool v4 = version_ == 4;
    const auto count = static_cast<std::uint64_t>(columns.size());
    std::uint64_t variables = 0;
    QByteArray entries, nameBytes;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const auto [type, offset] = columns[i];
        const bool fixed = IsFixed(type);
        const std::uint64_t variable = fixed ? 0 : variables++;
        Put(entries, static_cast<std::uint64_t>(type), 1);
        Put(entries, 0, v4 ? 4 : 0);
        Put(entries, i, 2);
        Put(entries, variable, 2);
        Put(entries, i, 2);
        Put(entries, v4 ? 0x409 : 0, 2);
        Put(entries, v4 ? 0 : 0x409, 2);
        Put(entries, columnCodePage, v4 ? 0 : 2);
        Put(entries, fixed ? 3 : 2, 1);
        Put(entries, 1, v4 ? 1 : 0);
        Put(entries, 0, v4 ? 4 : 0);
        Put(entries, static_cast<std::uint64_t>(fixed ? offset : 0), 2);
        Put(entries, static_cast<std::uint64_t>(fixed ? FixedSize(type) : 0), 2);
        const QString &name = names[static_cast<qsizetype>(i)];
        const QByteArray letters =
            v4 ? QByteArray(reinterpret_cast<const char *>(name.utf16()), name.size() * 2)
               : ToWindows1252(name).value();
        Put(nameBytes, static_cast<std::uint64_t>(letters.size()), v4 ? 2 : 1);
        nameBytes += letters;
    }
    QByteArray bytes;
    Put(bytes, 0x0102, 2);
    Put(bytes, 0, 2);
    Put(bytes, 0, 4); // the next page: PutDefinition()
    Put(bytes, 0, 4);
    Put(bytes, 0, v4 ? 4 : 0);
    Put(bytes, static_cast<std::uint64_t>(rows), 4);
    Put(bytes, 0, v4 ? 20 : 4);
    Put(bytes, 0x4E, 1);
    Put(bytes, count, 2);
    Put(bytes, variables, 2);
    Put(bytes, count, 2);
    Put(bytes, static_cast<std::uint64_t>(indexes), 4);
    Put(bytes, static_cast<std::uint64_t>(indexes), 4);
    Put(bytes, usageMap, 4);
    Put(bytes, usageMap, 4);
    return bytes + QByteArray(indexes * (v4 ? 12 : 8), '\0') + entries + nameBytes;
}

// Returns the first page. The further ones are taken as they come.
int JetLab::PutDefinition(const QByteArray &definition, int firstPage)
{
    int number = firstPage;
    QByteArray page = definition.left(PageSize());
    qsizetype at = page.size();
    for (;;) {
        const bool more = at < definition.size();
        const int next = more ? nextPage_++ : 0;
        QByteArray pointer;
        Put(pointer, static_cast<std::uint64_t>(next), 4);
        page.replace(4, 4, pointer);
        pages_[number] = page.leftJustified(PageSize(), '\0');
        if (!more)
            return firstPage;
        number = next;
        page = QByteArray("\2\1\0\0\0\0\0\0", 8) + definition.mid(at, PageSize() - 8);
        at += PageSize() - 8;
    }
}

QByteArray JetLab::DataPageBytes(const DataPage &page) const
{
    QByteArray bytes;
    Put(bytes, 0x0101, 2);
    Put(bytes, static_cast<std::uint64_t>(Free(page)), 2);
    Put(bytes, page.owner, 4);
    Put(bytes, 0, version_ == 4 ? 4 : 0);
    Put(bytes, page.rows.size(), 2);
    qsizetype end = PageSize();
    QByteArray rows;
    for (const Stored &row : page.rows) {
        end -= row.bytes.size();
        Put(bytes, static_cast<std::uint64_t>(end) | row.flags, 2);
        rows.prepend(row.bytes);
    }
    return bytes.leftJustified(PageSize() - rows.size(), '\0') + rows;
}

QByteArray JetLab::HeaderPage() const
{
    QByteArray page(PageSize(), '\0');
    page.replace(0, 20, QByteArray("\0\1\0\0Standard Jet DB\0", 20));
    page[0x14] = static_cast<char>(versionByte != 0xFF ? versionByte : version_ == 3 ? 0 : 1);
    QByteArray coded;
    Put(coded, codePage, 2);
    Put(coded, databaseKey, 4);
    QByteArray secret = password.leftJustified(version_ == 3 ? 20 : 40, '\0');
    constexpr double Made = 38143.5;
    if (version_ == 4)
        for (int i = 0; i < secret.size(); ++i)
            secret[i] = static_cast<char>(secret[i] ^ (static_cast<int>(Made) >> i % 4 * 8));
    page.replace(0x3C, 6 + secret.size(), coded + secret);
    if (version_ == 4) {
        QByteArray date;
        Put(date, std::bit_cast<std::uint64_t>(Made), 8);
        page.replace(0x72, 8, date);
    }
    CodeHeader(page, version_ == 3 ? 126 : 128);
    return page;
}

QByteArray JetLab::UsageMap(const QList<int> &pages)
{
    const auto set = [](QByteArray &bits, int bit) {
        bits[bit / 8] = static_cast<char>(bits[bit / 8] | 1 << bit % 8);
    };
    QByteArray map;
    if (mapType == 0) {
        QByteArray bits(version_ == 3 ? 128 : 64, '\0');
        const int first = pages.isEmpty() ? 0 : pages.first();
        for (const int page : pages)
            set(bits, page - first);
        Put(map, 0, 1);
        Put(map, static_cast<std::uint64_t>(first), 4);
        return map + bits;
    }
    const int number = nextPage_++;
    QByteArray bits(PageSize() - 4, '\0');
    for (const int page : pages)
        set(bits, page);
    pages_[number] = QByteArray("\5\1\0\0", 4) + bits;
    Put(map, 1, 1);
    Put(map, static_cast<std::uint64_t>(number), 4);
    return map + QByteArray(16 * 4, '\0');
}

QByteArray JetLab::Bytes()
{
    pages_.clear();
    dataPages_.clear();
    longPages_.clear();
    nextPage_ = 3;
    const bool v4 = version_ == 4;
    pages_[0] = HeaderPage();

    // The card table.
    std::vector<std::array<int, 2>> columns;
    QStringList names;
    int fixed = 0, alive = 0;
    for (int i = 0; i < CardColumnCount; ++i) {
        const QString name = QLatin1String(CardColumns()[static_cast<std::size_t>(i)].name);
        columns.push_back({retyped.contains(name) ? retyped.at(name) : TypeOf(i), fixed});
        fixed += TypeOf(i) == DoubleType ? 8 : 0;
        names << (renamed.contains(name) ? renamed.at(name) : name);
    }
    for (const Planned &row : rows_)
        alive += row.deleted ? 0 : 1;
    const QByteArray definition =
        Definition(columns, names, Pointer(MapPage, 1), declaredRows < 0 ? alive : declaredRows, realIndexes);
    definitionPage_ = nextPage_++;
    PutDefinition(definition, definitionPage_);
    const auto owner = static_cast<std::uint32_t>(definitionPage_);
    for (Planned &row : rows_) {
        const QByteArray bytes = row.raw.isEmpty() ? RowBytes(row.values) : row.raw;
        Stored stored{0, bytes};
        if (row.moved) {
            const auto [page, place] = Store(owner, {DeletedFlag, bytes}, true);
            stored = {MovedFlag, {}};
            Put(stored.bytes, Pointer(page, place), 4);
        }
        if (row.deleted)
            stored.flags |= DeletedFlag;
        std::tie(row.page, row.place) = Store(owner, stored, row.ownPage);
    }
    QList<int> owned;
    for (const auto &[number, page] : dataPages_)
        if (page.owner == owner)
            owned << number;

    // The catalogue: a row for the table, after one for something else.
    pages_[CataloguePage].clear();
    PutDefinition(Definition({{LongType, 0}, {IntegerType, 4}, {TextType, 0}},
                             {u"Id"_s, u"Type"_s, u"Name"_s}, Pointer(MapPage, 0), 2, 0),
                  CataloguePage);
    const auto catalogueRow = [&](std::uint64_t id, std::uint64_t type, const QString &name) {
        const int unit = v4 ? 2 : 1;
        QByteArray row;
        Put(row, 3, unit);
        Put(row, id, 4);
        Put(row, type, 2);
        const qsizetype start = row.size();
        row += TextBytes(name);
        Put(row, static_cast<std::uint64_t>(row.size()), unit);
        Put(row, static_cast<std::uint64_t>(start), unit);
        Put(row, 1, unit);
        Put(row, 7, 1);
        return row;
    };
    const int cataloguePage = Store(CataloguePage, {0, catalogueRow(0x0F000001, 3, u"Tables"_s)}, true).first;
    Store(CataloguePage, {0, catalogueRow(static_cast<std::uint64_t>(definitionPage_), 1, tableName)}, false);

    const QByteArray catalogueMap = UsageMap({cataloguePage});
    DataPage maps{0, {{0, catalogueMap}, {0, UsageMap(owned)}}};
    pages_[MapPage] = DataPageBytes(maps);
    for (const auto &[number, page] : dataPages_)
        pages_[number] = DataPageBytes(page);
    QByteArray file;
    for (const auto &[number, page] : pages_)
        file += page;
    return file;
}

std::pair<int, int> JetLab::RowAt(int row) const
{
    const Planned &planned = rows_[static_cast<std::size_t>(row)];
    const DataPage &page = dataPages_.at(planned.page);
    qsizetype end = PageSize();
    for (int i = 0; i <= planned.place; ++i)
        end -= page.rows[static_cast<std::size_t>(i)].bytes.size();
    return {planned.page * PageSize() + static_cast<int>(end),
            static_cast<int>(page.rows[static_cast<std::size_t>(planned.place)].bytes.size())};
}

int JetLab::RowEntryAt(int row) const
{
    const Planned &planned = rows_[static_cast<std::size_t>(row)];
    return planned.page * PageSize() + (version_ == 3 ? 10 : 14) + 2 * planned.place;
}

} // namespace paukfix
