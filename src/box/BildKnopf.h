// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QAbstractButton>
#include <QKeyEvent>

namespace paukfix {

// A part of the box that can be pressed: by mouse, or by Enter and the space bar when Tab has brought the
// focus to it. The mouse leaves the focus where it is.
class BildKnopf : public QAbstractButton
{
public:
    explicit BildKnopf(QWidget *parent) : QAbstractButton(parent)
    {
        setFocusPolicy(Qt::TabFocus);
        setCursor(Qt::PointingHandCursor);
        setAttribute(Qt::WA_Hover);
    }

protected:
    void keyPressEvent(QKeyEvent *event) override
    {
        if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
            click();
        else
            QAbstractButton::keyPressEvent(event);
    }
};

} // namespace paukfix
