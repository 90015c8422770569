// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "JetCards.h"

#include "CardValue.h"
#include "StoreError.h"

#include <QStringList>

#include <algorithm>

namespace {

const CardColumn &At(std::size_t column)
{
    return CardColumns()[column];
}

bool LooksLikeCards(const JetTable &table)
{
    return std::all_of(CardColumns().begin(), CardColumns().end(), [&](const CardColumn &column) {
        return table.Column(QString::fromLatin1(column.name)) != nullptr;
    });
}

std::uint32_t FindCardTable(JetFile &file)
{
    const auto page = JetTable::Find(file, u"Lernkarten", LooksLikeCards);
    if (!page)
        throw StoreError(
            Fehler::TabelleFehlt,
            QStringLiteral("Die Datei „%1“ enthält keine Tabelle „Lernkarten“.").arg(file.Path()));
    return *page;
}

bool Fits(JetType type, CardKind kind)
{
    switch (type) {
    case JetType::Flag:
        return kind == CardKind::Flag;
    case JetType::Byte:
    case JetType::Integer:
    case JetType::Long:
    case JetType::Single:
    case JetType::Double:
        return kind == CardKind::Number;
    case JetType::Text:
    case JetType::Memo:
        return kind == CardKind::Text;
    }
    return false;
}

// No program reads these; a file may do without.
bool IsIdle(std::size_t column)
{
    const QByteArrayView name(At(column).name);
    return name.endsWith("_type") || name.endsWith("_endlos");
}

// Halves of characters that stand alone cannot be stored.
bool ReplaceHalfCharacters(QString &text)
{
    if (text.isValidUtf16())
        return false;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate())
            ++i;
        else if (text[i].isSurrogate())
            text[i] = QChar::ReplacementCharacter;
    }
    return true;
}

} // namespace

JetCards::JetCards(const QString &path) : file_(path), table_(file_, FindCardTable(file_))
{
    BindColumns();
    FindCards();
}

void JetCards::BindColumns()
{
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        const QString name = QString::fromLatin1(At(i).name);
        columns_[i] = table_.Column(name);
        if (columns_[i] == nullptr) {
            if (!IsIdle(i))
                throw StoreError(Fehler::FeldFehlt,
                                 QStringLiteral("Das Feld „%1“ fehlt in dieser Kartei.").arg(name));
            continue;
        }
        if (!Fits(columns_[i]->type, KindOf(static_cast<int>(i))))
            ThrowTypeMismatch(static_cast<int>(i));
        const std::uint32_t codePage = columns_[i]->codePage;
        if (KindOf(static_cast<int>(i)) == CardKind::Text && codePage != 0 && codePage != 1252)
            throw StoreError(
                Fehler::FormatUnbekannt,
                QStringLiteral("Das Feld „%1“ benutzt die Codeseite %2; gelesen werden nur Windows-1252 "
                               "und Unicode.")
                    .arg(name)
                    .arg(codePage));
    }
}

void JetCards::FindCards()
{
    std::vector<CardPlan> candidates;
    for (const JetPlace &place : table_.Rows()) {
        const std::vector<std::uint8_t> row = table_.RowBytes(place);
        const auto record = table_.Split(row);
        if (!record)
            continue;
        CardCell cell;
        cell.rowid = static_cast<std::int64_t>(candidates.size()) + 1;
        cell.page = place.page;
        cell.offset = place.row;
        const auto key = [&](int column) {
            return record->Number(*columns_[static_cast<std::size_t>(column)]).value_or(CardCell::None);
        };
        cell.number = key(ColFrageNr);
        cell.compartment = key(ColFachNr);
        cell.place = key(ColFachLfdNr);
        // The engine kept its keys in indexes too: what stands in a row may be believed.
        cell.whole = cell.confirmed = cell.placed = true;
        candidates.push_back({cell, 0, 0, 0, {}});
    }
    plans_ = GiveKeys(std::move(candidates), CardWitness());
    const auto found = static_cast<std::uint32_t>(plans_.size());
    lost_ = table_.DeclaredRows() > found ? table_.DeclaredRows() - found : 0;
}

JetCards::Reading JetCards::Value(const JetRecord &record, std::size_t column)
{
    const CardKind kind = KindOf(static_cast<int>(column));
    if (columns_[column] == nullptr)
        return {kind == CardKind::Flag ? SalvagedCard::Value(0.0) : SalvagedCard::Value()};
    const JetColumn &from = *columns_[column];
    if (kind == CardKind::Flag)
        return {record.Flag(from) ? -1.0 : 0.0};
    const JetValue value = record.Value(from);
    if (value.state != JetValue::State::There)
        return {{}, value.state == JetValue::State::Null};
    if (kind == CardKind::Number) {
        const auto number = record.Number(from);
        return number ? Reading{*number} : Reading{{}, false};
    }
    JetText text = table_.Text(from, value.bytes);
    if (!text.whole && text.text.isEmpty())
        return {{}, false};
    const bool legible = !ReplaceHalfCharacters(text.text);
    return {text.text.toUtf8(), text.whole, legible};
}

SalvagedCard JetCards::Read(const CardPlan &plan)
{
    SalvagedCard card;
    const std::vector<std::uint8_t> row = table_.RowBytes({plan.cell.page, plan.cell.offset});
    const auto record = table_.Split(row);
    QStringList cut, lost;
    for (std::size_t i = 0; record && i < columns_.size(); ++i) {
        const Reading reading = Value(*record, i);
        card.values[i] = reading.value;
        const QString name = ColumnText(static_cast<int>(i));
        if (!reading.whole)
            (std::holds_alternative<QByteArray>(reading.value) ? cut : lost) << name;
        if (!reading.legible)
            card.remarks.push_back(
                {Remark::Kind::Doubtful, name + QStringLiteral(" enthielt unlesbare Zeichen")});
    }
    RemarkGaps(card, cut, lost);
    return card;
}
