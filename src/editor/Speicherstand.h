// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QLabel>

namespace paukfix {

// Says whether the card is stored: "gespeichert" with a tick, or "geändert" with a dot.
class Speicherstand final : public QLabel
{
public:
    explicit Speicherstand(QWidget *parent = nullptr);

    // A change of it is announced.
    void Zeigen(bool geaendert);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    bool geaendert_ = false;
};

} // namespace paukfix
