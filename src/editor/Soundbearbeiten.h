// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Slotdialog.h"

namespace paukfix {

// The dialog for the sounds of a card; the preview is heard.
class Soundbearbeiten final : public Slotdialog
{
public:
    Soundbearbeiten(const CardStore &kartei, const Dienste &dienste, Kartendateien dateien,
                    QWidget *parent = nullptr);

private:
    void Vorschau(const QString &pfad) override;
    void Belegen(Slotkarte &karte, const QString &pfad) override;
    void Annehmen(const QString &pfad) override;
    void Angenommen(const QString &pfad) override;
};

} // namespace paukfix
