// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "FuzzSupport.h"
#include "KvtmlQuelle.h"
#include "StoreError.h"

using namespace paukfix;
using namespace Qt::StringLiterals;

// Any file is refused with a sentence, or gives cards that a box can hold.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    try {
        KvtmlQuelle quelle(PutFile(u"deck.kvtml"_s, BytesOf(data, size)));
        Deckbericht bericht;
        for (Deckkarte karte; quelle.Naechste(karte, bericht);) {
            Require(karte.fach >= 0 && karte.fach <= 6 && !karte.antworten.empty() &&
                    karte.antworten.size() <= 5);
            Require(karte.frage.klar.size() <= static_cast<qsizetype>(size) * 40);
        }
    } catch (const StoreError &error) {
        Require(!error.Text().isEmpty());
    }
    return 0;
}
