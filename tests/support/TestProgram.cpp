// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "TestProgram.h"

#include <algorithm>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

namespace {

std::map<std::string, TestMain> &Tests()
{
    static std::map<std::string, TestMain> tests;
    return tests;
}

} // namespace

bool RegisterTest(const char *name, TestMain run)
{
    return Tests().emplace(name, run).second;
}

int main(int argc, char *argv[])
{
    const auto test = argc > 1 ? Tests().find(argv[1]) : Tests().end();
    if (test == Tests().end()) {
        std::fputs("Name one of these classes:\n", stderr);
        for (const auto &[name, run] : Tests())
            std::fprintf(stderr, "  %s\n", name.c_str());
        return 2;
    }
    std::vector<char *> arguments{argv[0]};
    arguments.insert(arguments.end(), argv + 2, argv + argc);
    arguments.push_back(nullptr);
    return test->second(argc - 1, arguments.data());
}
