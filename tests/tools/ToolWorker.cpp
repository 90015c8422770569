// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
// tool_worker TOOL DIRECTORY: opens "offen.pzb" in the directory, says "los", runs the tool, says "fertig"
// and waits to be killed.
#include "Anhaengen.h"
#include "AsciiTausch.h"
#include "KarteiOeffner.h"
#include "NachNeu.h"
#include "NeueKartei.h"
#include "Packauftrag.h"
#include "StoreTestSupport.h"

#include <map>
#include <unistd.h>

using namespace paukfix;
using namespace Qt::StringLiterals;

static void Say(const char *what)
{
    const QByteArray line = QByteArray(what) + '\n';
    if (write(STDOUT_FILENO, line.constData(), static_cast<size_t>(line.size())) != line.size())
        _exit(2);
}

int main(int argc, char *argv[])
{
    if (argc != 3)
        return 2;
    TestMeldungen meldungen;
    TestClock clock;
    clock.perSecond = 1;
    CardStore store;
    KarteiOeffner oeffner(store, meldungen, clock);
    store.KarteiPfad = QString::fromLocal8Bit(argv[2]);
    QString name = u"offen.pzb"_s;
    oeffner.OpenCardFile(name);
    const Werkbank bank{store, oeffner, meldungen};
    const std::map<QByteArray, std::function<bool()>> tools{
        {"export", [&] { return AsciiExportieren(bank, "ziel.txt", u'\t') == Ausgang::Gelungen; }},
        {"import", [&] { return AsciiImportieren(bank, "neu.txt", u'\t') == Ausgang::Gelungen; }},
        {"anhaengen",
         [&] { return KarteiAnhaengen(bank, store.CardPath("quelle.pzb")) == Ausgang::Gelungen; }},
        {"ausfiltern",
         [&] {
             return ThemenAusfiltern(bank, "ziel.pzb", {"Thema 1", "Thema 4"}) == Ausgang::Gelungen;
         }},
        {"spiegeln", [&] { return KarteiSpiegeln(bank, "ziel.pzb") == Ausgang::Gelungen; }},
        {"anhaengen mit Medien",
         [&] {
             return KarteiAnhaengen(bank, store.CardPath("dort/quelle.pzb"), Medien::Kommen) ==
                    Ausgang::Gelungen;
         }},
        {"spiegeln mit Medien",
         [&] { return KarteiSpiegeln(bank, "dort/ziel.pzb", Medien::Kommen) == Ausgang::Gelungen; }},
        {"packen", [&] { return KarteiPacken(bank, "ziel.pzbz") == Ausgang::Gelungen; }},
        {"alle", [&] { return AlleNachNeu(bank) == Ausgang::Gelungen; }},
        {"erledigte", [&] { return ErledigteNachNeu(bank).has_value(); }},
    };
    Say("los");
    if (!tools.at(argv[1])())
        return 3;
    Say("fertig");
    pause();
    return 0;
}
