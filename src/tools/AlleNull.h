// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Werkzeugfenster.h"

namespace paukfix {

// Puts all cards of the open file back into compartment 0.
class AlleNull final : public Werkzeugfenster
{
public:
    AlleNull(KarteiOeffner &oeffner, const Dienste &dienste, QWidget *parent = nullptr);

private:
    void cmdOK_Click();
};

} // namespace paukfix
