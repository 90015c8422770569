// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardFile.h"
#include "StoreError.h"

#include <QFile>

#include <cstdio>
#include <iostream>
#include <string>

using namespace paukfix;

// A second run of the program: opens the card file, runs the SQL that may follow, says the number of the
// error or 0, and keeps the file open until its input ends. Each line of the input is run as SQL, too.
int main(int argc, char **argv)
{
    try {
        CardFile file(QFile::decodeName(argv[1]));
        if (argc > 2)
            file.Database().exec(argv[2]);
        std::puts("0");
        std::fflush(stdout);
        for (std::string line; std::getline(std::cin, line);)
            file.Database().exec(line);
    } catch (const StoreError &error) {
        std::printf("%d\n", error.Number());
    }
    return 0;
}
