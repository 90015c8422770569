// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Flaeche.h"

namespace paukfix {

// The line of one answer, which shows when the answer is right.
class Antwortfeld final : public Flaeche
{
public:
    explicit Antwortfeld(QWidget *parent);

    void SetRichtig(bool richtig);

protected:
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void FarbenSetzen();

    bool richtig_ = false;
};

} // namespace paukfix
