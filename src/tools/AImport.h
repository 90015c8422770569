// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Werkzeugfenster.h"

namespace paukfix {

// Reads simple cards from a text file into compartment 0 of the open card file.
class AImport final : public Werkzeugfenster
{
public:
    AImport(KarteiOeffner &oeffner, const Dienste &dienste, QWidget *parent = nullptr);

private:
    void cmdDateiname_Click();
    void cmdOK_Click();
    void ZugangZeigen();

    QComboBox *cmbTrennzeichen_;
    QLineEdit *lblDateiname_;
};

} // namespace paukfix
