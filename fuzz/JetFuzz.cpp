// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "FuzzSupport.h"
#include "JetCards.h"
#include "StoreError.h"

using namespace paukfix;
using namespace Qt::StringLiterals;

// Any file is refused, or yields cards whose keys are in range and unique; the file is only read.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString path = PutFile(u"frueher.pzb"_s, BytesOf(data, size));
    try {
        JetCards cards(path);
        std::int64_t texts = 0;
        int before = -32769;
        for (const CardPlan &plan : cards.Cards()) {
            Require(plan.number > before && plan.compartment >= 0 && plan.compartment <= 6);
            before = plan.number;
            const SalvagedCard card = cards.Read(plan);
            for (const SalvagedCard::Value &value : card.values)
                if (const auto *text = std::get_if<QByteArray>(&value)) {
                    Require(text->isValidUtf8());
                    texts += text->size();
                }
        }
        // A stored byte becomes at most two of UTF-8; short texts and the heads of memos are in rows.
        Require(texts <= 4 * static_cast<std::int64_t>(size));
    } catch (const StoreError &error) {
        Require(!error.Text().isEmpty());
    }
    return 0;
}
