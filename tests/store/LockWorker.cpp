// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardFile.h"
#include "StoreError.h"

#include <QFile>

#include <cstdio>

using namespace paukfix;

// A second run of the program: opens the card file, says the number of the error or 0, and keeps the file
// open until its input ends.
int main(int, char **argv)
{
    try {
        const CardFile file(QFile::decodeName(argv[1]));
        std::puts("0");
        std::fflush(stdout);
        while (std::getchar() != EOF) {
        }
    } catch (const StoreError &error) {
        std::printf("%d\n", error.Number());
    }
    return 0;
}
