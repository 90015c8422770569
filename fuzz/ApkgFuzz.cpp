// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Deckquelle.h"
#include "FuzzSupport.h"
#include "StoreError.h"
#include "ZipWriter.h"

using namespace paukfix;
using namespace Qt::StringLiterals;

// Any file is refused with a sentence, or gives cards that a box can hold. What is no zip file is read as the
// collection of one: so the bytes behind its sums are reached too.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes = BytesOf(data, size);
    QString path = Directory().filePath(u"paket.apkg"_s);
    QFile::remove(path);
    if (bytes.startsWith("PK")) {
        PutFile(u"paket.apkg"_s, bytes);
    } else {
        ZipWriter zip(path);
        zip.Add(u"collection.anki2"_s, bytes, ZipWriter::Packing::Store);
        zip.Add(u"media"_s, R"({"0": "a.png"})", ZipWriter::Packing::Store);
        zip.Add(u"0"_s, "x", ZipWriter::Packing::Store);
        zip.Finish();
    }
    try {
        const auto quelle = DeckOeffnen(path);
        Deckbericht bericht;
        for (Deckkarte karte; quelle->Naechste(karte, bericht);) {
            Require(karte.fach >= 0 && karte.fach <= 6 && !karte.antworten.empty() &&
                    karte.antworten.size() <= 5);
            for (const auto *medium :
                 {&karte.frageBild, &karte.antwortBild, &karte.frageTon, &karte.antwortTon})
                if (*medium && !(*medium)->name.isEmpty())
                    Require(!(*medium)->name.contains(u'/') && (*medium)->name.front() != u'.');
        }
        static_cast<void>(bericht.Text());
    } catch (const StoreError &error) {
        Require(!error.Text().isEmpty());
    }
    return 0;
}
