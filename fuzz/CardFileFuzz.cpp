// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "FuzzProgramm.h"
#include "KarteiOeffner.h"

using namespace paukfix;
using namespace Qt::StringLiterals;

// Any file is opened or refused with a message. What is open can be learned with: each card is read, one is
// moved, one added, one deleted.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    QString name = u"karten.pzb"_s;
    QFile::remove(Directory().filePath(name + u"-journal"_s));
    PutFile(name, BytesOf(data, size));
    StummeMeldungen meldungen;
    const FastClock clock;
    CardStore store;
    KarteiOeffner oeffner(store, meldungen, clock);
    store.KarteiPfad = Directory().path();
    oeffner.OpenCardFile(name);
    Require(store.IsOpen() != name.isEmpty());
    if (!store.IsOpen())
        return 0;
    try {
        CardRecordset &cards = store.Karten();
        for (cards.MoveLast(); !cards.AtBOF(); cards.MovePrevious())
            static_cast<void>(cards.Read());
        cards.Seek(CardRecordset::Comparison::AtLeast, 0);
        if (!cards.NoMatch()) {
            cards.Edit();
            store.Felder().FachNr.Set(1);
            store.Felder().FachLfdNr.Set(store.FachInfo[1].LfdMax + 1);
            cards.Update();
        }
        cards.AddNew();
        cards.Write(CardRecord{});
        store.Felder().FrageNr.Set(store.HighestCardNumber + 1);
        cards.Update();
        cards.MoveFirst();
        if (!cards.AtEOF())
            cards.Delete();
    } catch (const StoreError &error) {
        Require(!error.Text().isEmpty());
    }
    return 0;
}
