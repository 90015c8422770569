// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Symbole.h"

#include <QList>
#include <QWidget>

class QAction;
class QToolButton;

namespace paukfix {

// The icons above the form, in groups: each does what an action of the window does and is as enabled and as
// checked as it is. They stand in one line, closer together where it is narrow, and in two where it is too
// narrow for that; the last line ends with one more widget.
class Symbolleiste final : public QWidget
{
public:
    // `amEnde` becomes a child.
    Symbolleiste(QWidget *amEnde, QWidget *parent);

    // The next icons stand apart from those before.
    void Gruppe();
    // The icon's tooltip is the action's text and key.
    void Anfuegen(QAction *aktion, Symbole symbol);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    bool event(QEvent *event) override;

private:
    // Pixels, at the usual resolution.
    struct Masse
    {
        int knopf, zwischen, gruppen, rand;
    };

    static constexpr Masse Weit{34, 4, 17, 16};
    static constexpr Masse Eng{28, 2, 9, 12};

    int Gruppenbreite(qsizetype gruppe) const;
    int Breite() const;
    void Anordnen();

    QList<QList<QToolButton *>> gruppen_;
    QList<int> striche_; // x of the lines between the groups of the first row; then of the second
    QWidget *amEnde_;
    Masse masse_ = Weit;
};

} // namespace paukfix
