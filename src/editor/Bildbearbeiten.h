// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Slotdialog.h"

#include <QSize>

class QLabel;

namespace paukfix {

// The dialog for the pictures of a card.
class Bildbearbeiten final : public Slotdialog
{
public:
    Bildbearbeiten(const CardStore &kartei, const Dienste &dienste, Kartendateien dateien,
                   QWidget *parent = nullptr);

private:
    void Vorschau(const QString &pfad) override;
    void VorschauLeeren() override;
    void Annehmen(const QString &pfad) override;
    void Angenommen(const QString &pfad) override;

    QLabel *Picture1_ = nullptr; // its size is the largest that a preview has
    QSize bild_;                 // of the file shown, in pixels
};

} // namespace paukfix
