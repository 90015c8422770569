// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardFileSource.h"

#include "CardFileCheck.h"
#include "CardRecordset.h"
#include "CardValue.h"

#include <SQLiteCpp/Exception.h>

namespace paukfix {

CardFileSource::CardFileSource(const QString &path, const Progress &progress)
    : file_(path, CardFile::Access::ReadOnly)
{
    CheckCardFile(file_.Database(), progress);
    CardRecordset cards(file_);
    for (const int column : CopiedColumns())
        static_cast<void>(cards[QString::fromLatin1(CardColumns()[static_cast<std::size_t>(column)].name)]);
    count_ = cards.RecordCount();
}

bool CardFileSource::Next()
{
    try {
        if (!cards_) {
            std::string names;
            int place = 0;
            for (const int column : CopiedColumns()) {
                names += (names.empty() ? "" : ",") + QuotedColumn(column);
                place_[static_cast<std::size_t>(column)] = place++;
            }
            cards_.emplace(file_.Database(), "SELECT " + names +
                                                 R"( FROM "Lernkarten" INDEXED BY "BoxKey" )"
                                                 R"(ORDER BY "FachNr","FachLfdNr")");
        }
        return cards_->executeStep();
    } catch (const SQLite::Exception &error) {
        ThrowStoreError(error, file_.Path());
    }
}

void CardFileSource::Read(int column, CopiedValue &value)
{
    const SQLite::Column from = cards_->getColumn(place_[static_cast<std::size_t>(column)]);
    value.kind = CopiedValue::Kind::Null;
    if (from.isNull())
        return;
    if (KindOf(column) == CardKind::Text) {
        const char *bytes = from.getText(); // before getBytes(): it converts numbers
        value.text.assign(bytes, static_cast<std::size_t>(from.getBytes()));
        value.kind = CopiedValue::Kind::Text;
    } else {
        value.number = FromEngine(from, column).toDouble();
        value.kind = CopiedValue::Kind::Number;
    }
}

} // namespace paukfix
