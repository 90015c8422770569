// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "FachBild.h"

#include "KastenFarben.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace paukfix {

namespace {

constexpr double Rundung = 5;
constexpr double KartenAbstand = 4.0; // pixels from one edge to the next, the gap included
constexpr double KartenDicke = 3.5;
constexpr int Bezugshoehe = 280; // of a compartment whose cards have these sizes

// A pattern that looks shuffled and is the same each time, so that the cards stand still.
unsigned Streuung(int i)
{
    unsigned wert = static_cast<unsigned>(i) * 2654435761u + 0x9E3779B9u;
    wert ^= wert >> 15;
    wert *= 2246822519u;
    return wert ^ (wert >> 13);
}

QColor Kartenfarbe(int i)
{
    if (i == 0)
        return KastenFarben::Honig;
    const unsigned streuung = Streuung(i) % 23;
    if (streuung == 0)
        return KastenFarben::Rosa;
    if (streuung <= 2)
        return KastenFarben::Himmel;
    return streuung % 2 == 0 ? KastenFarben::Papier : KastenFarben::PapierSchatten.lighter(104);
}

} // namespace

KaShape::KaShape(QWidget *parent) : QWidget(parent)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void KaShape::SetKarten(int anzahl, int breite)
{
    if (anzahl == anzahl_ && breite == breite_)
        return;
    anzahl_ = anzahl;
    breite_ = breite;
    update();
}

void KaShape::paintEvent(QPaintEvent *)
{
    if (anzahl_ < 1 || breite_ < 1)
        return;
    QPainter maler(this);
    maler.setRenderHint(QPainter::Antialiasing);
    maler.setPen(Qt::NoPen);
    const double mass = std::clamp(double(height()) / Bezugshoehe, 0.8, 1.4);
    const double dicke = KartenDicke * mass;
    // As many edges as there are cards, while they can be told apart.
    const double platz = std::max<double>(breite_, dicke);
    const double teilung = KartenAbstand * mass;
    const int kanten = std::clamp(static_cast<int>(std::lround((platz - dicke) / teilung)) + 1, 1, anzahl_);
    const double abstand = kanten > 1 ? (platz - dicke) / (kanten - 1) : 0;
    const double rand = height() * 0.045;
    const double spiel = height() * 0.03;
    for (int i = 0; i < kanten; ++i) {
        const unsigned streuung = Streuung(i);
        const double oben = rand + spiel * ((streuung & 0xFF) / 255.0);
        const double unten = rand + spiel * ((streuung >> 8 & 0xFF) / 255.0);
        const QRectF kante(abstand * i, oben, dicke, height() - oben - unten);
        const QColor farbe = Kartenfarbe(i);
        // Light falls from the left: each card has a bright edge and a shaded side, and throws a shadow on
        // the next.
        maler.setBrush(QColor(0, 0, 0, 60));
        maler.drawRect(kante.translated(dicke * 0.5, dicke * 0.3));
        maler.setBrush(farbe.darker(135));
        maler.drawRoundedRect(kante, 0.8, 0.8);
        const QRectF hell = kante.adjusted(0, 0, -dicke * 0.32, -dicke * 0.3);
        maler.setBrush(farbe);
        maler.drawRoundedRect(hell, 0.8, 0.8);
        maler.setBrush(KastenFarben::Koralle);
        maler.drawRect(QRectF(hell.left(), hell.top() + height() * 0.035, hell.width(), dicke * 0.7));
    }
}

FachBild::FachBild(QWidget *parent) : BildKnopf(parent) {}

void FachBild::SetHervorgehoben(bool an)
{
    if (an == hervorgehoben_)
        return;
    hervorgehoben_ = an;
    update();
}

void FachBild::paintEvent(QPaintEvent *)
{
    QPainter maler(this);
    maler.setRenderHint(QPainter::Antialiasing);
    const QRectF flaeche(rect());
    QColor boden = KastenFarben::PetrolDunkel;
    if (isDown())
        boden = boden.darker(115);
    else if (hervorgehoben_ || underMouse())
        boden = boden.lighter(125);
    maler.setPen(Qt::NoPen);
    maler.setBrush(boden);
    maler.drawRoundedRect(flaeche, Rundung, Rundung);
    // The upper wall throws a shadow on the ground.
    const double tiefe = flaeche.height() * 0.12;
    QLinearGradient schatten(0, 0, 0, tiefe);
    schatten.setColorAt(0, QColor(0, 0, 0, 90));
    schatten.setColorAt(1, QColor(0, 0, 0, 0));
    maler.setBrush(schatten);
    maler.setClipRect(QRectF(0, 0, flaeche.width(), tiefe));
    maler.drawRoundedRect(flaeche, Rundung, Rundung);
    maler.setClipping(false);
    if (hasFocus()) {
        maler.setBrush(Qt::NoBrush);
        maler.setPen(QPen(KastenFarben::Papier, 2, Qt::DashLine));
        maler.drawRoundedRect(flaeche.adjusted(1, 1, -1, -1), Rundung, Rundung);
    }
}

} // namespace paukfix
