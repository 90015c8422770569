// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Slotdialog.h"

#include <QSize>

namespace paukfix {

// The dialog for the pictures of a card.
class Bildbearbeiten final : public Slotdialog
{
public:
    Bildbearbeiten(const CardStore &kartei, const Dienste &dienste, Kartendateien dateien,
                   QWidget *parent = nullptr);

private:
    void Vorschau(const QString &pfad) override;
    void Belegen(Slotkarte &karte, const QString &pfad) override;
    void VorschauLeeren() override;

    Slotvorschau *EigeneVorschau() override { return Picture1_; }

    void Annehmen(const QString &pfad) override;
    void Angenommen(const QString &pfad) override;

    Slotvorschau *Picture1_; // of the chosen slot
    QSize bild_;             // of the file shown, in pixels
};

} // namespace paukfix
