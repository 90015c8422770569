// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Symbole.h"

#include <QList>
#include <QPointer>
#include <QWidget>

class QAction;
class QToolButton;

namespace paukfix {

// The icons above the form, in groups: each does what an action of the window does and is as enabled and as
// checked as it is. They stand in one line, closer together where it is narrow, and in two where it is too
// narrow for that; the last line ends with one more widget. For the Tab key the bar is one stop: from there
// the arrow keys walk along the icons, Space and Enter press one, and Escape leads back to where the keyboard
// was.
class Symbolleiste final : public QWidget
{
public:
    // `amEnde` becomes a child.
    Symbolleiste(QWidget *amEnde, QWidget *parent);

    // The next icons stand apart from those before.
    void Gruppe();
    // The icon's tooltip is the action's text and key.
    void Anfuegen(QAction *aktion, Symbole symbol);
    // Gives the keyboard to the icon that had it last, or takes it back to where it was before.
    void Wechseln();

protected:
    bool eventFilter(QObject *objekt, QEvent *event) override;
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
    QList<QToolButton *> Waehlbare() const;
    QToolButton *Halt() const;
    void HaltSetzen();
    bool Taste(const QToolButton *knopf, int taste);

    QList<QList<QToolButton *>> gruppen_;
    QPointer<QToolButton> zuletzt_; // had the keyboard last
    QPointer<QWidget> vorher_;      // had the keyboard before the bar
    QList<int> striche_;            // x of the lines between the groups of the first row; then of the second
    QWidget *amEnde_;
    Masse masse_ = Weit;
};

} // namespace paukfix
