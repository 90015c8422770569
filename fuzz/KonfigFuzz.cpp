// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "AppConfig.h"
#include "FuzzProgramm.h"
#include "KonfigFormat.h"

using namespace paukfix;
using namespace Qt::StringLiterals;

// Any settings file is read, and a section that is rewritten reads back; names survive whatever they are.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes = BytesOf(data, size);
    PutFile(u"konfig.dat"_s, bytes);
    StummeMeldungen meldungen;
    AppConfig config(meldungen);
    config.ProgrammPfad = Directory().path();
    config.ReadConfig();
    try {
        static_cast<void>(config.ReadIntroAnimation());
    } catch (const StoreError &error) {
        Require(!error.Text().isEmpty());
    }
    for (const QString &name : config.MDat)
        if (!name.isEmpty())
            Require(NameFromLine(LineFromName(name)) == name);
    const QString name = u"/home/karl/Französisch.pzb"_s;
    config.WriteConfig(1, name);
    config.WriteConfig(2, {});
    config.WriteConfig(3, u"False"_s);
    const Schrift written = config.schrift;
    config.ReadConfig();
    Require(config.schrift.FontName == written.FontName && config.schrift.FontBold == written.FontBold &&
            config.schrift.Color == written.Color);
    return 0;
}
