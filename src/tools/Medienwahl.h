// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardMedia.h"
#include "Medienzug.h"

#include <QCheckBox>

namespace paukfix {

// The offer to copy the pictures and sounds that cards name. It can be taken only where they would be parted
// from their cards.
class Medienwahl final : public QCheckBox
{
public:
    explicit Medienwahl(QWidget *parent);

    // For cards that come from the directory `von` to the directory `nach`, which need not be there, with the
    // `medien` that they name. Without these it is not known what they name.
    void Anbieten(const std::optional<QList<MediaName>> &medien, const QString &von, const QString &nach);
    void NichtsAnbieten();

    // While the work takes no clicks too.
    Medien Wahl() const { return angeboten_ && isChecked() ? Medien::Kommen : Medien::Bleiben; }

private:
    bool angeboten_ = false;
};

} // namespace paukfix
