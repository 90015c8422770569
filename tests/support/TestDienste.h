// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Dienste.h"
#include "StoreTestSupport.h"
#include "TestDialoge.h"
#include "TestZufall.h"

#include <QStringList>

namespace paukfix {

// Notes what is played.
class TestTon final : public Ton
{
public:
    void Spielen(const QString &pfad) override { gespielt << pfad; }

    void Stille() override { ++stillen; }

    QStringList gespielt;
    int stillen = 0;
};

// The services of a test: questions and dialogs are answered beforehand, nothing waits, chance and sounds are
// noted; the settings are the real ones, in a directory of their own.
struct TestDienste
{
    TestDienste() { konfig.ProgrammPfad = programm.path(); }

    QTemporaryDir programm;
    TestMeldungen meldungen;
    TestDialoge dialoge;
    TestClock clock;
    TestZufall zufall;
    TestTon ton;
    AppConfig konfig{meldungen};

    Dienste Alle() { return {meldungen, dialoge, clock, zufall, ton, konfig}; }
};

} // namespace paukfix
