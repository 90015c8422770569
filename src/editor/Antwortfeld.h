// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Flaeche.h"

class QLabel;

namespace paukfix {

// The line of one answer, which shows when the answer is right, and says when it is empty.
class Antwortfeld final : public Flaeche
{
public:
    explicit Antwortfeld(QWidget *parent);

    void SetRichtig(bool richtig);
    void SetLeer(bool leer);

protected:
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void FarbenSetzen();

    QLabel *leer_;
    bool richtig_ = false;
};

} // namespace paukfix
