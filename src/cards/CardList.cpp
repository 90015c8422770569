// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardList.h"

#include "CardValue.h"
#include "TextHelpers.h"

#include <QCollator>
#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr const char *WholeRow =
    R"(SELECT "FrageNr","FachNr","FachLfdNr","Frage_Klartext","Antwort_1_Klartext","Picture_9_Name" )"
    R"(FROM "Lernkarten" WHERE _rowid_=?1)";
constexpr const char *RowBeginnings =
    R"(SELECT "FrageNr","FachNr","FachLfdNr",substr("Frage_Klartext",1,400),)"
    R"(substr("Antwort_1_Klartext",1,400),substr("Picture_9_Name",1,400) FROM "Lernkarten" WHERE _rowid_=?1)";
constexpr const char *AllRows =
    R"(SELECT "FrageNr","FachNr","FachLfdNr","Frage_Klartext","Antwort_1_Klartext","Picture_9_Name",_rowid_ )"
    R"(FROM "Lernkarten")";

QString TextOf(const SQLite::Column &value)
{
    const char *text = value.getText(); // before getBytes(): it converts numbers
    return TextFromUtf8({text, value.getBytes()});
}

// The row that a statement stands on.
CardList::Row RowOfCard(SQLite::Statement &statement)
{
    CardList::Row row;
    for (std::size_t i = 0; i < row.numbers.size(); ++i)
        if (const SQLite::Column value = statement.getColumn(static_cast<int>(i)); !value.isNull())
            row.numbers[i] = value.getDouble();
    row.question = TextOf(statement.getColumn(3));
    row.answer = TextOf(statement.getColumn(4));
    row.topic = TextOf(statement.getColumn(5));
    return row;
}

// Reads one row with a statement that is prepared for all of them.
CardList::Row ReadRow(SQLite::Statement &statement, std::int64_t id)
{
    CardList::Row row;
    statement.bind(1, id);
    if (statement.executeStep())
        row = RowOfCard(statement);
    statement.reset();
    return row;
}

// What looks the same is the same: letters with their marks are compared in one form.
QString Comparable(const QString &text)
{
    return OneLine(text).normalized(QString::NormalizationForm_C);
}

bool Matches(const CardList::Row &row, const QString &text)
{
    return (row.numbers[0] && QString::number(*row.numbers[0]).startsWith(text)) ||
           Comparable(row.question).contains(text, Qt::CaseInsensitive) ||
           Comparable(row.answer).contains(text, Qt::CaseInsensitive) ||
           Comparable(row.topic).contains(text, Qt::CaseInsensitive);
}

const char *NumberColumn(CardList::Column column)
{
    switch (column) {
    case CardList::Column::FachNr:
        return "FachNr";
    case CardList::Column::FachLfdNr:
        return "FachLfdNr";
    default:
        return "FrageNr";
    }
}

const char *TextColumn(CardList::Column column)
{
    switch (column) {
    case CardList::Column::Antwort:
        return "Antwort_1_Klartext";
    case CardList::Column::Thema:
        return "Picture_9_Name";
    default:
        return "Frage_Klartext";
    }
}

} // namespace

QString OneLine(const QString &text)
{
    QString line = text;
    line.replace(u"\r\n"_s, u" "_s);
    for (QChar &character : line)
        if (character.isSpace())
            character = u' ';
    return line;
}

CardList::CardList(CardRecordset &cards) : cards_(cards)
{
    Sort(Column::FrageNr, true);
}

void CardList::Sort(Column column, bool ascending)
{
    std::vector<std::int64_t> order;
    cards_.Beside([&](SQLite::Database &database) {
        if (column < Column::Frage) {
            SQLite::Statement read(
                database,
                u"SELECT _rowid_ FROM \"Lernkarten\" ORDER BY \"%1\" %2, \"FrageNr\""_s
                    .arg(QLatin1String(NumberColumn(column)), QLatin1String(ascending ? "ASC" : "DESC"))
                    .toStdString());
            while (read.executeStep())
                order.push_back(read.getColumn(0).getInt64());
            return;
        }
        QCollator german(QLocale(QLocale::German, QLocale::Germany));
        german.setCaseSensitivity(Qt::CaseInsensitive);
        std::vector<std::pair<QCollatorSortKey, std::int64_t>> keys;
        SQLite::Statement read(
            database, u"SELECT _rowid_,substr(\"%1\",1,80) FROM \"Lernkarten\" ORDER BY \"FrageNr\""_s
                          .arg(QLatin1String(TextColumn(column)))
                          .toStdString());
        while (read.executeStep())
            keys.emplace_back(german.sortKey(TextOf(read.getColumn(1))), read.getColumn(0).getInt64());
        std::stable_sort(keys.begin(), keys.end(), [&](const auto &one, const auto &other) {
            return ascending ? one.first < other.first : other.first < one.first;
        });
        for (const auto &[key, id] : keys)
            order.push_back(id);
    });
    all_ = std::move(order);
    Show();
}

void CardList::Show()
{
    order_.clear();
    std::copy_if(all_.begin(), all_.end(), std::back_inserter(order_),
                 [this](std::int64_t id) { return filter_.isEmpty() || hits_.contains(id); });
    blocks_.clear();
}

const CardList::Row &CardList::At(int row)
{
    const int number = row / BlockSize;
    const auto known = std::find_if(blocks_.begin(), blocks_.end(),
                                    [&](const Block &block) { return block.number == number; });
    if (known == blocks_.end())
        Load(number);
    else
        blocks_.splice(blocks_.begin(), blocks_, known);
    return blocks_.front().rows[static_cast<std::size_t>(row % BlockSize)];
}

void CardList::Load(int blockNumber)
{
    Block block;
    block.number = blockNumber;
    const int first = blockNumber * BlockSize;
    cards_.Beside([&](SQLite::Database &database) {
        SQLite::Statement read(database, RowBeginnings);
        for (int row = first; row < std::min(first + BlockSize, Count()); ++row)
            block.rows.push_back(ReadRow(read, Id(row)));
    });
    blocks_.push_front(std::move(block));
    if (blocks_.size() > MostBlocks)
        blocks_.pop_back();
}

CardList::Row CardList::Whole(std::int64_t id)
{
    Row whole;
    cards_.Beside([&](SQLite::Database &database) {
        SQLite::Statement read(database, WholeRow);
        whole = ReadRow(read, id);
    });
    return whole;
}

void CardList::Filter(const QString &text)
{
    const QString wanted = Comparable(text);
    std::unordered_set<std::int64_t> hits;
    if (!wanted.isEmpty())
        cards_.Beside([&](SQLite::Database &database) {
            // What is typed on finds a part of what was found; to walk in the order of the file is quicker
            // than to look up many.
            if (!filter_.isEmpty() && wanted.startsWith(filter_) && order_.size() < all_.size() / 8) {
                SQLite::Statement read(database, WholeRow);
                for (const std::int64_t id : order_)
                    if (Matches(ReadRow(read, id), wanted))
                        hits.insert(id);
                return;
            }
            SQLite::Statement walk(database, AllRows);
            while (walk.executeStep())
                if (Matches(RowOfCard(walk), wanted))
                    hits.insert(walk.getColumn(6).getInt64());
        });
    hits_ = std::move(hits);
    filter_ = wanted;
    Show();
}

std::vector<std::int64_t> CardList::Numbered(int from, int to)
{
    std::unordered_set<std::int64_t> within;
    cards_.Beside([&](SQLite::Database &database) {
        SQLite::Statement read(database,
                               R"(SELECT _rowid_ FROM "Lernkarten" WHERE "FrageNr" BETWEEN ?1 AND ?2)");
        read.bind(1, from);
        read.bind(2, to);
        while (read.executeStep())
            within.insert(read.getColumn(0).getInt64());
    });
    std::vector<std::int64_t> numbered;
    std::copy_if(all_.begin(), all_.end(), std::back_inserter(numbered),
                 [&](std::int64_t id) { return within.contains(id); });
    return numbered;
}

std::optional<int> CardList::RowOf(std::int64_t id) const
{
    const auto found = std::find(order_.begin(), order_.end(), id);
    if (found == order_.end())
        return std::nullopt;
    return static_cast<int>(found - order_.begin());
}

} // namespace paukfix
