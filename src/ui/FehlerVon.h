// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "StoreError.h"

#include <optional>
#include <utility>

namespace paukfix {

// What `tun` throws, as a StoreError; nothing where it throws nothing.
template <typename Tun>
std::optional<StoreError> FehlerVon(Tun &&tun)
{
    try {
        std::forward<Tun>(tun)();
        return std::nullopt;
    } catch (const StoreError &fehler) {
        return fehler;
    } catch (const std::exception &fehler) {
        return StoreError(Fehler::ZuWenigSpeicher, ErrorText(fehler));
    }
}

} // namespace paukfix
