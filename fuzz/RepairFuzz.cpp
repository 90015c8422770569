// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardFile.h"
#include "CardFileCheck.h"
#include "CardRecordset.h"
#include "FuzzSupport.h"
#include "Repair.h"
#include "StoreError.h"

using namespace paukfix;
using namespace Qt::StringLiterals;

// Any file is refused and left as it was, or becomes a sound card file with as many cards as the repair says.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes = BytesOf(data, size);
    const QString path = PutFile(u"karten.pzb"_s, bytes);
    try {
        const RepairResult result = RepairDatabase(path);
        {
            CardFile file(path);
            CheckCardFile(file.Database());
            CardRecordset cards(file);
            int count = 0;
            for (; !cards.AtEOF(); cards.MoveNext(), ++count)
                static_cast<void>(cards.Read());
            Require(count == result.cards && count > 0);
        }
        QFile::remove(result.damagedFile);
        QFile::remove(result.report);
    } catch (const StoreError &error) {
        Require(error.Number() == Fehler::Beschaedigt);
        QFile file(path);
        Require(file.open(QIODevice::ReadOnly) && file.readAll() == bytes);
    }
    return 0;
}
