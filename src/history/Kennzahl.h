// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Verlaufswerte.h"

#include <QLabel>

namespace paukfix {

// A number, large, with its words, on a card of its own. Its text is the whole sentence, as a screen reader
// says it.
class Kennzahl final : public QLabel
{
public:
    explicit Kennzahl(QWidget *parent);

    void Zeigen(const Kennzahltext &text);
    // The words beside the number instead of below it.
    void SetFlach(bool flach);
    // What number and words need below each other, in pixels.
    int Textbreite() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QFont Zahlschrift() const;

    Kennzahltext text_;
    bool flach_ = false;
};

} // namespace paukfix
