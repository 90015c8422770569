// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

namespace paukfix {

// A library of the machine that is loaded when it is used first, by name: with some come a dozen others,
// which every start would have to wait for. Once loaded it stays to the end of the program.
class LateLibrary
{
public:
    explicit LateLibrary(const char *name);

    // `function` becomes the library's function of that name; null where there is none.
    template <typename Function>
    void Find(Function *&function, const char *name)
    {
        function = reinterpret_cast<Function *>(Symbol(name));
        complete_ = complete_ && function != nullptr;
    }

    // Whether it is there, and everything was found.
    bool IsComplete() const { return complete_; }

private:
    void *Symbol(const char *name) const;

    void *library_;
    bool complete_;
};

} // namespace paukfix
