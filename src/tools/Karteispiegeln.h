// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Werkzeugfenster.h"

namespace paukfix {

// Makes a new card file in which question and answer of every simple card are exchanged.
class Karteispiegeln final : public Werkzeugfenster
{
public:
    Karteispiegeln(KarteiOeffner &oeffner, const Dienste &dienste, QWidget *parent = nullptr);

private:
    void cmdDateiname_Click();
    void cmdOK_Click();

    QLineEdit *lblDateiname_;
    Medienwahl *chkMedien_;
};

} // namespace paukfix
