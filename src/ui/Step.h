// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Meldungen.h"
#include "StoreError.h"

#include <exception>
#include <utility>

namespace paukfix {

// "Report and carry on": runs one step of a handler. Where it throws, shows `kontext` followed directly by
// the error's text. Tells whether the step succeeded; the handler decides whether the next one still makes
// sense.
template <typename Tun>
bool Step(Meldungen &meldungen, const QString &kontext, Tun &&tun)
{
    try {
        std::forward<Tun>(tun)();
        return true;
    } catch (const std::exception &fehler) {
        meldungen.Zeigen(kontext + ErrorText(fehler));
        return false;
    }
}

} // namespace paukfix
