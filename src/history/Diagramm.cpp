// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Diagramm.h"

#include "Farben.h"
#include "Hausfarben.h"
#include "Schriftgrade.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr int Rand = 16; // device-independent pixels, around all that a card shows
constexpr int Luecke = 8;

} // namespace

Diagramm::Diagramm(QWidget *parent) : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void Diagramm::Zeigen(const Verlaufswerte &werte)
{
    werte_ = werte;
    setAccessibleName(Titel());
    setAccessibleDescription(InWorten());
    update();
}

void Diagramm::SetMitTagen(bool mit)
{
    mitTagen_ = mit;
    update();
}

QSize Diagramm::sizeHint() const
{
    return {fontMetrics().height() * 60, fontMetrics().height() * 15};
}

QSize Diagramm::minimumSizeHint() const
{
    return {fontMetrics().height() * 16, fontMetrics().height() * 6};
}

const Hausfarben &Diagramm::Farbsatz() const
{
    return HausfarbenZu(palette());
}

QFont Diagramm::KleineSchrift() const
{
    return Schriftgrad::In(font(), Schriftgrad::Klein);
}

// Both pictures of a window compute the same left and right edge.
QRectF Diagramm::Feld() const
{
    const QFontMetricsF schrift(KleineSchrift());
    int meiste = 9999;
    for (const int karten : werte_.jetzt)
        meiste = std::max(meiste, karten);
    const double links = Rand + schrift.horizontalAdvance(QString::number(meiste)) + Luecke;
    const double rechts =
        Rand + Luecke + schrift.height() + schrift.horizontalAdvance(u"erledigt: %1"_s.arg(meiste));
    const double oben = Rand + fontMetrics().height() + Luecke + schrift.height() / 2;
    const double unten = Rand + (mitTagen_ ? schrift.height() + Luecke : schrift.height() / 2);
    return QRectF(rect()).adjusted(links, std::min(oben, height() * 0.4), -rechts, -unten);
}

int Diagramm::MeisteMarken(const QRectF &feld) const
{
    return static_cast<int>(feld.height() / (QFontMetricsF(KleineSchrift()).height() * 2));
}

void Diagramm::paintEvent(QPaintEvent *)
{
    const Hausfarben &farben = Farbsatz();
    QPainter maler(this);
    maler.setRenderHint(QPainter::Antialiasing);
    maler.setPen(farben.umriss);
    maler.setBrush(farben.karte);
    maler.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 8, 8);

    QFont titel = font();
    titel.setWeight(QFont::DemiBold);
    maler.setFont(titel);
    maler.setPen(farben.tinte);
    maler.drawText(QRectF(rect()).adjusted(Rand, Rand * 0.75, -Rand, 0), Qt::AlignLeft | Qt::AlignTop,
                   Titel());

    const QRectF feld = Feld();
    if (feld.width() < 1 || feld.height() < 1 || werte_.tage.empty())
        return;
    maler.setFont(KleineSchrift());
    Malen(maler, feld);
    if (mitTagen_)
        TageMalen(maler, feld);
}

void Diagramm::SkalaMalen(QPainter &maler, const QRectF &feld, const Wertachse &achse) const
{
    const Hausfarben &farben = Farbsatz();
    const QColor linie = Farben::Getoent(farben.tinte, farben.karte, 0.15);
    const double zeile = QFontMetricsF(maler.font()).height();
    for (int wert = -achse.unten; wert <= achse.oben; wert += achse.schritt) {
        const double y = achse.Y(wert, feld);
        maler.setPen(linie);
        maler.drawLine(QPointF(feld.left(), y), QPointF(feld.right(), y));
        maler.setPen(farben.leiseTinte);
        maler.drawText(QRectF(0, y - zeile / 2, feld.left() - Luecke, zeile),
                       Qt::AlignRight | Qt::AlignVCenter, QString::number(std::abs(wert)));
    }
}

void Diagramm::TageMalen(QPainter &maler, const QRectF &feld) const
{
    const Hausfarben &farben = Farbsatz();
    const Zeitachse tage = Tage();
    const auto nennen = [&](int tag, const QString &text) {
        const QFontMetricsF schrift(maler.font());
        const double breite = schrift.horizontalAdvance(text) + 2;
        const double mitte = tage.X(tag + 0.5, feld);
        const double x = std::clamp(mitte - breite / 2, feld.left() - Luecke,
                                    std::max(feld.left(), feld.right() + Luecke - breite));
        maler.drawText(QRectF(x, feld.bottom() + Luecke, breite, schrift.height()), Qt::AlignCenter, text);
    };
    maler.setPen(farben.leiseTinte);
    const double platz =
        QFontMetricsF(maler.font()).horizontalAdvance(Tagname(werte_.von, werte_.heute) + u"0000"_s);
    for (const int tag : tage.Marken(platz, feld))
        nennen(tag, Tagname(werte_.von.addDays(tag), werte_.heute));
    QFont fett = maler.font();
    fett.setWeight(QFont::DemiBold);
    maler.setFont(fett);
    maler.setPen(farben.tinte);
    nennen(tage.tage - 1, u"heute"_s);
}

void Diagramm::NameMalen(QPainter &maler, const QRectF &feld, double y, const QString &text,
                         const QColor &farbe) const
{
    const double zeile = QFontMetricsF(maler.font()).height();
    maler.setPen(farbe);
    maler.drawText(QRectF(feld.right() + Luecke, y - zeile / 2, width() - feld.right() - Luecke, zeile),
                   Qt::AlignLeft | Qt::AlignVCenter, text);
}

bool Diagramm::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    const auto *hilfe = static_cast<QHelpEvent *>(event);
    const QRectF feld = Feld();
    const int tag = feld.contains(hilfe->pos()) ? Tage().Tag(hilfe->pos().x(), feld) : -1;
    if (tag >= 0)
        QToolTip::showText(hilfe->globalPos(), TagInWorten(tag), this);
    else
        QToolTip::hideText();
    return true;
}

} // namespace paukfix
