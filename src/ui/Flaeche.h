// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QWidget>

// A surface with rounded corners in the palette's colour of its background role, with a thin outline where
// one is asked for.
class Flaeche final : public QWidget
{
public:
    explicit Flaeche(QWidget *parent, QPalette::ColorRole grund = QPalette::Base);

    void SetUmriss(bool umriss);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    bool umriss_ = false;
};
