// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QColor>
#include <QPalette>
#include <QRectF>

class QPainter;
class QStyleOption;
class QStyleOptionButton;
class QStyleOptionTab;

namespace paukfix {

// How the style paints its surfaces. Colours are those of the palette's current group.
namespace Stilmaler {

inline constexpr qreal Radius = 8;        // of fields and buttons
inline constexpr qreal KleinerRadius = 4; // of ticks and rings around text
inline constexpr int Ringbreite = 2;
inline constexpr int Ringabstand = 2;

enum class Knopfart
{
    Gewoehnlich,
    Leitend,
    Loeschend
};

// The outline of fields and buttons and the ring of what has the keyboard: at least 3 on the window.
QColor Umriss(const QPalette &palette);
QColor Fokus(const QPalette &palette);
// The ground of a button that is neither pressed nor leading, and the text on a button.
QColor Knopfgrund(const QPalette &palette);
QColor Knopftext(const QPalette &palette, Knopfart art);

void Knopf(QPainter &maler, const QStyleOptionButton &option, Knopfart art);
// A button of a tool bar: without an outline until it is touched or switched on.
void Werkzeugknopf(QPainter &maler, const QStyleOption &option);
// A tab; the one that is shown looks like a button that is switched on.
void Reiter(QPainter &maler, const QStyleOptionTab &option);
// A field on `grund`; with the keyboard its outline is the ring. Without `grund` the outline alone.
void Feld(QPainter &maler, const QStyleOption &option, const QColor &grund = {});
// Marks; `farbe` for tick and outline where it is valid.
void Haken(QPainter &maler, const QStyleOption &option, const QColor &farbe);
void Punkt(QPainter &maler, const QStyleOption &option, const QColor &farbe);
// A small arrow head in the middle of `flaeche`, pointing down or up.
void Pfeil(QPainter &maler, const QRectF &flaeche, bool hinauf, const QColor &farbe);
// The ring along the inside of `flaeche`.
void Ring(QPainter &maler, const QRectF &flaeche, qreal radius, const QColor &farbe);

} // namespace Stilmaler

} // namespace paukfix
