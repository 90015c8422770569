// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardFacts.h"
#include "Werkzeugfenster.h"

#include <optional>

namespace paukfix {

// Writes the simple cards of the open card file to a text file, or all its cards with all that they have.
class AExport final : public Werkzeugfenster
{
public:
    AExport(KarteiOeffner &oeffner, const Dienste &dienste, QWidget *parent = nullptr);

private:
    void cmdDateiname_Click();
    void cmdOK_Click();
    void FormGewaehlt();

    QComboBox *cmbForm_;
    QComboBox *cmbZeichensatz_;
    QComboBox *cmbTrennzeichen_;
    QLineEdit *lblDateiname_;
    std::optional<CardKinds> arten_; // of the cards; nothing where they cannot be read
};

} // namespace paukfix
