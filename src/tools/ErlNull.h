// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Werkzeugfenster.h"

namespace paukfix {

// Puts the done cards of the open file back into compartment 0.
class ErlNull final : public Werkzeugfenster
{
public:
    ErlNull(KarteiOeffner &oeffner, const Dienste &dienste, QWidget *parent = nullptr);

private:
    void cmdOK_Click();
};

} // namespace paukfix
