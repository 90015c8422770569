// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Werkzeugfenster.h"

namespace paukfix {

// Writes the simple cards of the open card file to a text file.
class AExport final : public Werkzeugfenster
{
public:
    AExport(KarteiOeffner &oeffner, const Dienste &dienste, QWidget *parent = nullptr);

private:
    void cmdDateiname_Click();
    void cmdOK_Click();

    QComboBox *cmbTrennzeichen_;
    QLineEdit *lblDateiname_;
};

} // namespace paukfix
