// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Deckquelle.h"

#include <QString>

#include <functional>

namespace paukfix {

// What a name of a medium means.
struct Medienbezug
{
    enum class Art
    {
        Da,
        Fehlt,
        Fern, // in the net
        Unlesbar
    };
    Art art = Art::Fehlt;
    Deckmedium medium; // of one that is there
};

// A name as a page has it: percent-encoded or not, an address in the net, or the medium itself ("data:").
Medienbezug MedienbezugLesen(const QString &name, const std::function<bool(const QString &)> &istDa);

} // namespace paukfix
