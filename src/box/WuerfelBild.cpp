// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "WuerfelBild.h"

#include "KastenFarben.h"

#include <QPainter>

#include <algorithm>
#include <array>

namespace paukfix {

namespace {

// The nine places of pips, row by row; a bit each, place 0 the lowest.
constexpr std::array<unsigned, 7> Muster{0,           0b000010000, 0b100000001, 0b100010001,
                                         0b101000101, 0b101010101, 0b101101101};

} // namespace

WuerfelBild::WuerfelBild(QWidget *parent) : BildKnopf(parent) {}

void WuerfelBild::WuerfelZeichnen(int augen)
{
    augen_ = std::clamp(augen, 1, 6);
    update();
}

void WuerfelBild::Leeren()
{
    augen_ = 0;
    update();
}

void WuerfelBild::SetGrund(const QColor &farbe)
{
    grund_ = farbe;
    update();
}

void WuerfelBild::paintEvent(QPaintEvent *)
{
    QPainter maler(this);
    maler.setRenderHint(QPainter::Antialiasing);
    const double seite = std::min(width(), height());
    const double rundung = seite * 0.2;
    const QRectF wuerfel =
        QRectF((width() - seite) / 2, (height() - seite) / 2, seite, seite).adjusted(2, 2, -2, -2);

    maler.setPen(Qt::NoPen);
    maler.setBrush(KastenFarben::HonigDunkel);
    maler.drawRoundedRect(wuerfel, rundung, rundung);
    // The upper side, a little lower while it is pressed.
    const double dicke = seite * (isDown() ? 0.02 : 0.06);
    const QRectF oben = wuerfel.adjusted(0, 0, 0, -dicke);
    maler.setBrush(grund_);
    maler.setPen(QPen(KastenFarben::HonigDunkel, underMouse() ? 2.5 : 1.2));
    maler.drawRoundedRect(oben, rundung, rundung);

    maler.setPen(Qt::NoPen);
    maler.setBrush(KastenFarben::Tinte);
    const double auge = seite * 0.085;
    for (int platz = 0; platz < 9; ++platz) {
        if (Muster[static_cast<std::size_t>(augen_)] >> platz & 1) {
            const int spalte = platz % 3, zeile = platz / 3;
            const QPointF mitte(oben.left() + oben.width() * (0.25 + 0.25 * spalte),
                                oben.top() + oben.height() * (0.25 + 0.25 * zeile));
            maler.drawEllipse(mitte, auge, auge);
        }
    }
    if (hasFocus()) {
        maler.setBrush(Qt::NoBrush);
        maler.setPen(QPen(palette().color(QPalette::WindowText), 2, Qt::DashLine));
        maler.drawRoundedRect(wuerfel.adjusted(-1, -1, 1, 1), rundung, rundung);
    }
}

} // namespace paukfix
