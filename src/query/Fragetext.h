// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "RichTextBox.h"

namespace paukfix {

// The question on its card: as large as it has room, and in the middle of it; a long one is scrolled.
class Fragetext final : public RichTextBox
{
public:
    explicit Fragetext(QWidget *eltern);

    // `mitte`: between left and right too, in lines of no more than `breite` pixels. Else it begins at the
    // left.
    void Zeigen(const QString &text, bool mitte, int breite);
    void SetRand(const QMargins &rand) override;

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void Anpassen();

    QMargins rand_; // what a picture takes
    bool mitte_ = false;
    int breite_ = 0;
    bool passtAn_ = false;
};

} // namespace paukfix
