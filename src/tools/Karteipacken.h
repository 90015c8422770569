// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Werkzeugfenster.h"

namespace paukfix {

// Makes one file of the open box with all pictures and sounds that its cards name.
class Karteipacken final : public Werkzeugfenster
{
public:
    Karteipacken(KarteiOeffner &oeffner, const Dienste &dienste, QWidget *parent = nullptr);

private:
    void cmdDateiname_Click();
    void cmdOK_Click();

    QLineEdit *lblDateiname_;
};

} // namespace paukfix
