// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QWidget>

#include <optional>

namespace paukfix {

// Two bars one below the other: hollow for then, filled for now, so that they are told apart without colour.
class StatistikBalken final : public QWidget
{
public:
    // `hoechstens` is the count that a full bar stands for, above 0; a missing bar is not drawn.
    StatistikBalken(std::optional<int> beginn, std::optional<int> jetzt, int hoechstens, QWidget *parent);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    std::optional<int> beginn_, jetzt_;
    int hoechstens_;
};

} // namespace paukfix
