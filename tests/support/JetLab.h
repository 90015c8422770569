// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardRecord.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <array>
#include <cstdint>
#include <map>
#include <utility>
#include <variant>
#include <vector>

namespace paukfix {

using namespace Qt::StringLiterals;

// Writes databases of the former engine, version 3 and 4, as far as card files need them: one table, its
// catalogue, usage maps and long texts. What tests want to be odd can be set before Bytes().
class JetLab
{
public:
    using Value = std::variant<std::monostate, double, bool, QString>;
    using Row = std::array<Value, CardColumnCount>;

    enum class Memo
    {
        InRow,
        OnePage,
        Chained
    };

    explicit JetLab(int version) : version_(version) {}

    static Row RowOf(const CardRecord &card);

    // Of the header.
    std::uint8_t versionByte = 0xFF; // 0xFF: as the version says
    std::uint16_t codePage = 1252;
    std::uint32_t databaseKey = 0;
    QByteArray password;
    // Of the table.
    QString tableName = u"Lernkarten"_s;
    int mapType = 0;
    int realIndexes = 2; // many make the definition go over several pages
    std::uint16_t columnCodePage = 1252;
    std::map<QString, QString> renamed; // columns under other names
    // Columns of other types; of the values only whole numbers are kept, in columns for such.
    std::map<QString, int> retyped;
    int declaredRows = -1; // -1: as many as there are
    // Of texts.
    bool compress = true;
    Memo memo = Memo::OnePage;
    int chainPart = 100000; // bytes in one part of a chain at most

    int Add(const Row &row);

    int Add(const CardRecord &card) { return Add(RowOf(card)); }

    // A row as raw bytes.
    int AddRaw(const QByteArray &bytes);
    void Delete(int row);
    // To the back of the table's pages, with a pointer in its old place.
    void Move(int row);

    // The last row begins a page of its own from here on.
    void BreakPage() { breakPage_ = true; }

    QByteArray Bytes();

    // After Bytes().
    int PageSize() const { return version_ == 3 ? 2048 : 4096; }

    // Where the row's bytes begin in the file, and how many they are.
    std::pair<int, int> RowAt(int row) const;
    // Where the entry in its page's row table stands in the file.
    int RowEntryAt(int row) const;

    int PageOf(int row) const { return rows_[static_cast<std::size_t>(row)].page; }

    // First bytes of the parts of long texts in the file, in the order of writing.
    const QList<int> &LongPages() const { return longPages_; }

    int DefinitionPage() const { return definitionPage_; }

    static constexpr int MapPage = 1, CataloguePage = 2;

    // The pointer to a row: its number in the page is the low byte.
    static std::uint32_t Pointer(int page, int row) { return static_cast<std::uint32_t>(page << 8 | row); }

private:
    struct Stored
    {
        std::uint16_t flags = 0;
        QByteArray bytes;
    };

    struct DataPage
    {
        std::uint32_t owner = 0;
        std::vector<Stored> rows;
    };

    struct Planned
    {
        Row values;
        QByteArray raw;
        bool deleted = false, moved = false, ownPage = false;
        int page = 0, place = 0; // of what the walk meets
    };

    void Put(QByteArray &to, std::uint64_t number, int bytes) const;
    int Free(const DataPage &page) const;
    std::pair<int, int> Store(std::uint32_t owner, const Stored &row, bool fresh);
    QByteArray TextBytes(const QString &text) const;
    QByteArray MemoBytes(const QString &text);
    QByteArray RowBytes(const Row &row);
    QByteArray Definition(const std::vector<std::array<int, 2>> &columns, const QStringList &names,
                          std::uint32_t usageMap, int rows, int indexes) const;
    int PutDefinition(const QByteArray &definition, int firstPage);
    QByteArray DataPageBytes(const DataPage &page) const;
    QByteArray HeaderPage() const;
    QByteArray UsageMap(const QList<int> &pages);

    int version_;
    bool breakPage_ = false;
    std::vector<Planned> rows_;
    // By number; those of data pages are written last.
    std::map<int, QByteArray> pages_;
    std::map<int, DataPage> dataPages_;
    int nextPage_ = 0;
    int definitionPage_ = 0;
    QList<int> longPages_;
};

} // namespace paukfix
