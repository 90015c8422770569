// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "AsciiTausch.h"
#include "CardFile.h"
#include "FuzzProgramm.h"
#include "KarteiOeffner.h"

using namespace paukfix;
using namespace Qt::StringLiterals;

// Any file is imported, as often as the box takes its cards, or refused; box, counts and file agree after it.
// What is exported then is read back as so many cards.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    QString name = u"karten.pzb"_s;
    const QString path = Directory().filePath(name);
    QFile::remove(path);
    CardFile::Create(path);
    StummeMeldungen meldungen;
    const FastClock clock;
    CardStore store;
    KarteiOeffner oeffner(store, meldungen, clock);
    store.KarteiPfad = Directory().path();
    oeffner.OpenCardFile(name);
    Require(store.IsOpen());
    const Werkbank bank{store, oeffner, meldungen};
    const QString text = PutFile(u"text.txt"_s, BytesOf(data, size));
    AsciiImportieren(bank, text, u';');
    Require(store.IsOpen());
    const int imported = store.Karten().RecordCount();
    Require(imported == store.FachInfo[0].Anzahl);

    const QString out = Directory().filePath(u"aus.txt"_s);
    if (AsciiExportieren(bank, out, u';') == Ausgang::Gelungen &&
        AsciiImportieren(bank, out, u';') == Ausgang::Gelungen)
        Require(store.Karten().RecordCount() == 2 * imported + 1); // the headings are a line too
    return 0;
}
