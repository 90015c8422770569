// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Speicherstand.h"

#include "Hausfarben.h"
#include "Symbole.h"

#include <QAccessible>
#include <QPainter>

#include <algorithm>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr int Zeichen = 12; // pixels
constexpr int Rand = 10;

const auto Gespeichert = u"gespeichert"_s;
const auto Geaendert = u"geändert"_s;

} // namespace

// As wide as the longer word: nothing moves when it changes.
Speicherstand::Speicherstand(QWidget *parent) : QLabel(Gespeichert, parent)
{
    setObjectName(u"Speicherstand"_s);
    setContentsMargins(Rand + Zeichen + 6, 3, Rand, 3);
    setMinimumWidth(sizeHint().width());
}

void Speicherstand::Zeigen(bool geaendert)
{
    if (geaendert == geaendert_)
        return;
    geaendert_ = geaendert;
    setText(geaendert ? Geaendert : Gespeichert);
    QAccessibleEvent meldung(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&meldung);
}

void Speicherstand::paintEvent(QPaintEvent *)
{
    const Hausfarben &farben = HausfarbenZu(palette());
    QPainter maler(this);
    maler.setRenderHint(QPainter::Antialiasing);
    const QRectF feld = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    maler.setPen(geaendert_ ? farben.akzentUmriss : farben.umriss);
    maler.drawRoundedRect(feld, feld.height() / 2, feld.height() / 2);
    const QRectF zeichen(Rand, (height() - Zeichen) / 2.0, Zeichen, Zeichen);
    if (geaendert_) {
        maler.setBrush(farben.akzent);
        maler.drawEllipse(zeichen.adjusted(1, 1, -1, -1));
    } else {
        SymbolMalen(maler, zeichen, Symbole::Haken, farben.richtigText);
    }
    maler.setPen(geaendert_ ? palette().color(QPalette::WindowText) : farben.leise);
    maler.drawText(contentsRect(), Qt::AlignVCenter | Qt::AlignLeft, text());
}

} // namespace paukfix
