// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "LateLibrary.h"

#include <dlfcn.h>

namespace paukfix {

LateLibrary::LateLibrary(const char *name)
    : library_(dlopen(name, RTLD_NOW | RTLD_LOCAL)), complete_(library_ != nullptr)
{
}

void *LateLibrary::Symbol(const char *name) const
{
    return library_ ? dlsym(library_, name) : nullptr;
}

} // namespace paukfix
