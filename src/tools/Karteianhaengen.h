// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Werkzeugfenster.h"

namespace paukfix {

class Vorhandenenwahl;

// Copies the cards of another card file into the open one. Stays open after its work; what was appended is
// not appended again before the file is chosen or its name typed anew.
class Karteianhängen final : public Werkzeugfenster
{
public:
    Karteianhängen(KarteiOeffner &oeffner, const Dienste &dienste, QWidget *parent = nullptr);

private:
    void cmdDateiname_Click();
    void cmdOK_Click();
    void NeuGewaehlt();

    QLineEdit *lblDateiname_;
    Medienwahl *chkMedien_;
    Vorhandenenwahl *vorhandene_;
    QLabel *ergebnis_; // of the last work, until the file name changes
};

} // namespace paukfix
