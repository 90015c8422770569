// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Slotvorschau.h"

#include "Hausfarben.h"

#include <QPainter>
#include <QPainterPath>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr int Kleinste = 96; // pixels
constexpr int Zeichen = 32;
constexpr qreal Radius = 8;

} // namespace

Slotvorschau::Slotvorschau(Symbole symbol, const QString &aufforderung, QWidget *parent)
    : QLabel(parent), symbol_(symbol), aufforderung_(aufforderung)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    Benennen();
}

QSize Slotvorschau::sizeHint() const
{
    return {Kleinste * 3 / 2, Kleinste};
}

QSize Slotvorschau::minimumSizeHint() const
{
    return {Kleinste, Kleinste};
}

void Slotvorschau::SetBild(const QPixmap &bild)
{
    setPixmap(bild);
    Benennen();
}

void Slotvorschau::SetHinweis(const QString &hinweis)
{
    hinweis_ = hinweis;
    Benennen();
    update();
}

QString Slotvorschau::Gesagt() const
{
    return hinweis_.isEmpty() ? aufforderung_ : hinweis_;
}

// What is painted is heard.
void Slotvorschau::Benennen()
{
    setAccessibleName(pixmap(Qt::ReturnByValue).isNull() ? Gesagt().simplified() : u"Vorschau"_s);
}

void Slotvorschau::SetErwartet(bool erwartet)
{
    erwartet_ = erwartet;
    update();
}

void Slotvorschau::paintEvent(QPaintEvent *)
{
    const Hausfarben &farben = HausfarbenZu(palette());
    QPainter maler(this);
    maler.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    const bool mitBild = !pixmap(Qt::ReturnByValue).isNull();
    const bool leer = !mitBild && !Gesagt().trimmed().isEmpty();
    QPen rand(erwartet_ ? farben.fokus : farben.umriss, erwartet_ ? 2 : 1);
    if (leer && !erwartet_)
        rand.setStyle(Qt::DashLine);
    maler.setPen(mitBild && !erwartet_ ? QPen(Qt::NoPen) : rand);
    maler.setBrush(erwartet_ ? farben.gewaehlt : farben.antwortzone);
    const qreal halb = rand.widthF() / 2;
    maler.drawRoundedRect(QRectF(rect()).adjusted(halb, halb, -halb, -halb), Radius, Radius);
    if (mitBild)
        BildMalen(maler);
    else if (leer)
        AufforderungMalen(maler);
}

void Slotvorschau::BildMalen(QPainter &maler) const
{
    const QPixmap bild = pixmap(Qt::ReturnByValue);
    const QSizeF groesse = bild.size().boundedTo(size()) == bild.size()
                               ? QSizeF(bild.size())
                               : QSizeF(bild.size()).scaled(size(), Qt::KeepAspectRatio);
    QRectF platz({}, groesse);
    platz.moveCenter(QRectF(rect()).center());
    QPainterPath rund;
    rund.addRoundedRect(rect(), Radius, Radius);
    maler.setClipPath(rund);
    maler.drawPixmap(platz, bild, bild.rect());
}

void Slotvorschau::AufforderungMalen(QPainter &maler) const
{
    const Hausfarben &farben = HausfarbenZu(palette());
    const QString text = Gesagt();
    const int breite = width() - 16;
    const int hoch = fontMetrics()
                         .boundingRect(0, 0, breite, height(), Qt::AlignHCenter | Qt::TextWordWrap, text)
                         .height();
    const bool mitZeichen = Zeichen + 12 + hoch <= height() - 8;
    const int oben = (height() - hoch - (mitZeichen ? Zeichen + 12 : 0)) / 2;
    if (mitZeichen)
        SymbolMalen(maler, QRectF((width() - Zeichen) / 2.0, oben, Zeichen, Zeichen), symbol_,
                    farben.leiseTinte);
    maler.setPen(farben.leiseTinte);
    maler.drawText(QRect(8, mitZeichen ? oben + Zeichen + 12 : oben, breite, hoch),
                   Qt::AlignHCenter | Qt::TextWordWrap, text);
}

} // namespace paukfix
