// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
//
// konfig_writer DIRECTORY NAME1 NAME2 [ROUNDS]: makes the two names the latest recent file by turns, for ever
// or so many times, and prints a dot after each.
#include "AppConfig.h"
#include "StoreTestSupport.h"

#include <cstdio>
#include <cstdlib>

using namespace paukfix;

int main(int argc, char **argv)
{
    if (argc < 4)
        return 2;
    TestMeldungen meldungen;
    AppConfig config(meldungen);
    config.ProgrammPfad = QString::fromLocal8Bit(argv[1]);
    const QString names[] = {QString::fromLocal8Bit(argv[2]), QString::fromLocal8Bit(argv[3])};
    const long rounds = argc > 4 ? std::strtol(argv[4], nullptr, 10) : -1;
    for (long round = 0; round != rounds; ++round) {
        config.WriteConfig(1, names[round % 2]);
        std::putchar('.');
        std::fflush(stdout);
    }
    return meldungen.gezeigt.isEmpty() ? 0 : 1;
}
