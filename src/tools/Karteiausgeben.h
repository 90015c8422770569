// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Werkzeugfenster.h"

namespace paukfix {

// Writes the open box as a deck that other programs read.
class Karteiausgeben final : public Werkzeugfenster
{
public:
    Karteiausgeben(KarteiOeffner &oeffner, const Dienste &dienste, QWidget *parent = nullptr);

private:
    void cmdDateiname_Click();
    void cmdOK_Click();
    void FormGewaehlt();
    QString Endung() const;

    QComboBox *cmbForm_;
    QLineEdit *lblDateiname_;
};

} // namespace paukfix
