// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "JetCards.h"

#include "CardValue.h"
#include "StoreError.h"

#include <QStringEncoder>
#include <QStringList>

#include <algorithm>
#include <optional>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

// Of all texts of a card, in UTF-8; a row of a card file takes little more.
constexpr qsizetype MostTextBytes = 30'000'000;

// The first page of the definition of "Lernkarten" as the catalogue names it. `whole` tells whether all of
// the catalogue could be read.
std::optional<std::uint32_t> FindInCatalogue(JetFile &file, bool &whole)
{
    constexpr std::uint32_t CataloguePage = 2;
    constexpr double TableType = 1;
    constexpr std::uint32_t PageBits = 0xFFFFFF; // of an object's number
    JetTable catalogue(file, CataloguePage);
    const JetColumn *id = catalogue.Column(u"Id");
    const JetColumn *name = catalogue.Column(u"Name");
    const JetColumn *type = catalogue.Column(u"Type");
    if (id == nullptr || id->type != JetType::Long || name == nullptr || type == nullptr)
        return std::nullopt;
    const std::vector<JetPlace> rows = catalogue.Rows();
    bool all = rows.size() >= catalogue.DeclaredRows();
    for (const JetPlace &place : rows) {
        const auto record = catalogue.Record(place);
        const auto number = record ? record->Number(*id) : std::nullopt;
        all = all && number;
        if (number && record->Number(*type) == TableType &&
            catalogue.Text(*record, *name).text.compare(u"Lernkarten", Qt::CaseInsensitive) == 0)
            return static_cast<std::uint32_t>(static_cast<std::int32_t>(*number)) & PageBits;
    }
    whole = all;
    return std::nullopt;
}

bool IsCardTable(JetFile &file, std::uint32_t page)
{
    try {
        const JetTable table(file, page);
        return std::all_of(CardColumns().begin(), CardColumns().end(), [&](const CardColumn &column) {
            return table.Column(QString::fromLatin1(column.name)) != nullptr;
        });
    } catch (const StoreError &) { // the further page of a definition, or a damaged one
        return false;
    }
}

std::uint32_t FindCardTable(JetFile &file)
{
    bool whole = false;
    try {
        if (const auto page = FindInCatalogue(file, whole))
            return *page;
    } catch (const StoreError &) { // its definition is damaged
    }
    if (whole)
        throw StoreError(Fehler::TabelleFehlt,
                         u"Die Datei „%1“ enthält keine Tabelle „Lernkarten“."_s.arg(file.Path()));
    int definitions = 1000; // more than any real database has
    for (std::uint32_t page = 0; page < file.PageCount() && definitions > 0; ++page)
        if (JetTable::IsDefinition(file, page)) {
            --definitions;
            if (IsCardTable(file, page))
                return page;
        }
    file.ThrowDamaged();
}

bool Fits(JetType type, CardKind kind)
{
    switch (type) {
    case JetType::Flag:
        return kind == CardKind::Flag;
    case JetType::Integer:
    case JetType::Long:
    case JetType::Double:
        return kind == CardKind::Number;
    case JetType::Text:
    case JetType::Memo:
        return kind == CardKind::Text;
    }
    return false;
}

// No program reads these; a file may do without.
bool IsIdle(const QString &name)
{
    return name.endsWith(u"_type") || name.endsWith(u"_endlos");
}

} // namespace

JetCards::JetCards(const QString &path) : file_(path), table_(file_, FindCardTable(file_))
{
    BindColumns();
    FindCards();
}

void JetCards::BindColumns()
{
    for (int i = 0; i < CardColumnCount; ++i) {
        const QString name = QString::fromLatin1(CardColumns()[static_cast<std::size_t>(i)].name);
        const JetColumn *column = columns_[static_cast<std::size_t>(i)] = table_.Column(name);
        if (column == nullptr) {
            if (!IsIdle(name))
                throw StoreError(Fehler::FeldFehlt, u"Das Feld „%1“ fehlt in dieser Kartei."_s.arg(name));
            continue;
        }
        if (!Fits(column->type, KindOf(i)))
            ThrowTypeMismatch(i);
        if (KindOf(i) == CardKind::Text && column->codePage != 0 && column->codePage != 1252)
            throw StoreError(Fehler::FormatUnbekannt,
                             u"Das Feld „%1“ benutzt die Codeseite %2; gelesen werden nur Windows-1252 "
                             u"und Unicode."_s.arg(name)
                                 .arg(column->codePage));
    }
}

void JetCards::FindCards()
{
    std::vector<CardPlan> candidates;
    for (const JetPlace &place : table_.Rows()) {
        const auto record = table_.Record(place);
        if (!record)
            continue;
        FoundCard card;
        card.rowid = static_cast<std::int64_t>(candidates.size()) + 1;
        card.source = places_.size();
        places_.push_back(place);
        card.number = record->Number(*columns_[ColFrageNr]).value_or(FoundCard::None);
        card.compartment = record->Number(*columns_[ColFachNr]).value_or(FoundCard::None);
        card.place = record->Number(*columns_[ColFachLfdNr]).value_or(FoundCard::None);
        // The engine kept its keys in indexes too: what stands in a row may be believed.
        card.whole = card.confirmed = card.placed = true;
        candidates.push_back({card, 0, 0, 0, {}});
    }
    plans_ = GiveKeys(std::move(candidates), CardWitness());
    const auto found = static_cast<std::uint32_t>(plans_.size());
    lost_ = table_.DeclaredRows() > found ? table_.DeclaredRows() - found : 0;
}

SalvagedCard JetCards::Read(const CardPlan &plan)
{
    SalvagedCard card;
    const auto record = table_.Record(places_[plan.card.source]);
    QStringList cut, lost;
    qsizetype textBytes = 0;
    for (std::size_t i = 0; record && i < columns_.size(); ++i) {
        const auto column = static_cast<int>(i);
        const bool there = columns_[i] != nullptr && record->Has(*columns_[i]);
        SalvagedCard::Value &value = card.values[i];
        if (KindOf(column) == CardKind::Flag) {
            value = there ? -1.0 : 0.0;
        } else if (there && KindOf(column) == CardKind::Number) {
            if (const auto number = record->Number(*columns_[i]))
                value = *number;
            else
                lost << ColumnText(column);
        } else if (there) {
            const JetText text = table_.Text(*record, *columns_[i]);
            // A half of a character that stands alone cannot be stored and becomes a replacement character.
            QStringEncoder encode(QStringEncoder::Utf8, QStringEncoder::Flag::Stateless);
            const QByteArray bytes = encode(text.text);
            if ((!text.whole && bytes.isEmpty()) || textBytes + bytes.size() > MostTextBytes) {
                lost << ColumnText(column);
                continue;
            }
            textBytes += bytes.size();
            value = bytes;
            if (!text.whole)
                cut << ColumnText(column);
            else if (encode.hasError())
                card.remarks.push_back(
                    {Remark::Kind::Doubtful, ColumnText(column) + u" enthielt unlesbare Zeichen"_s});
        }
    }
    RemarkGaps(card, cut, lost);
    return card;
}

} // namespace paukfix
