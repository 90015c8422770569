// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Tastenkappe.h"

#include "Farben.h"
#include "Hausfarben.h"
#include "Schriftgrade.h"

#include <QApplication>
#include <QEvent>
#include <QPainter>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr int RandInTaste = 6; // beside the name
constexpr int RandUmTaste = 1; // left and right of the key
constexpr int RandUeberTaste = 2;
constexpr qreal Radius = 4;

constexpr QStringView Trenner = u" · ";

} // namespace

Tastenkappe::Tastenkappe(const QString &muster, QWidget *parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    SchriftSetzen();
    SetTasten(muster);
}

void Tastenkappe::SetTasten(const QString &muster)
{
    if (muster_ == muster)
        return;
    muster_ = muster;
    teile_.clear();
    QString rest = muster;
    int gruppe = 0;
    for (const QString &stueck : muster.split(Trenner.toString())) {
        if (gruppe > 0)
            teile_.append({Trenner.toString(), false, gruppe});
        // "[" and "]" in turn: what stands between them is a key.
        bool taste = false;
        for (const QString &teil : QString(stueck).replace(u']', u'[').split(u'[')) {
            if (!teil.isEmpty())
                teile_.append({teil, taste, gruppe});
            taste = !taste;
        }
        ++gruppe;
    }
    setText(rest.remove(u'[').remove(u']'));
    updateGeometry();
    update();
}

QSize Tastenkappe::sizeHint() const
{
    const QMargins rand = contentsMargins();
    return {BisGruppe(teile_.isEmpty() ? 0 : teile_.last().gruppe) + rand.left() + rand.right(),
            fontMetrics().height() + 2 * RandUeberTaste + 2 + rand.top() + rand.bottom()};
}

QSize Tastenkappe::minimumSizeHint() const
{
    return {0, sizeHint().height()};
}

void Tastenkappe::paintEvent(QPaintEvent *)
{
    const Hausfarben &farben = HausfarbenZu(palette());
    const QColor grund = palette().color(backgroundRole());
    QPainter maler(this);
    maler.setRenderHint(QPainter::Antialiasing);
    const QRect platz = contentsRect();
    int gezeigt = teile_.isEmpty() ? 0 : teile_.last().gruppe;
    while (gezeigt > 0 && BisGruppe(gezeigt) > platz.width())
        --gezeigt;
    const int breite = BisGruppe(gezeigt);
    if (breite > platz.width())
        return;
    int x = platz.left();
    if ((alignment() & Qt::AlignRight) != 0)
        x += platz.width() - breite;
    else if ((alignment() & Qt::AlignHCenter) != 0)
        x += (platz.width() - breite) / 2;
    const int hoehe = fontMetrics().height() + 2 * RandUeberTaste;
    const int oben = platz.top() + (platz.height() - hoehe) / 2;
    const QColor text = isEnabled() ? Farben::Lesbar(farben.leise, grund)
                                    : palette().color(QPalette::Disabled, QPalette::WindowText);
    const QColor umriss = Farben::Lesbar(farben.umriss, grund, Farben::KontrastUmriss);
    for (const Teil &teil : teile_) {
        if (teil.gruppe > gezeigt)
            break;
        const QRectF feld(x, oben, Breite(teil), hoehe);
        if (teil.taste) {
            maler.setPen(umriss);
            maler.drawRoundedRect(feld.adjusted(RandUmTaste + 0.5, 0.5, -RandUmTaste - 0.5, -0.5), Radius,
                                  Radius);
        }
        maler.setPen(text);
        maler.drawText(feld, Qt::AlignCenter | Qt::TextDontClip, teil.text);
        x += Breite(teil);
    }
}

// The widget's own font is a share of what it stands on, and follows it.
void Tastenkappe::changeEvent(QEvent *event)
{
    QLabel::changeEvent(event);
    if (event->type() == QEvent::ParentChange || event->type() == QEvent::ApplicationFontChange)
        SchriftSetzen();
}

int Tastenkappe::Breite(const Teil &teil) const
{
    return fontMetrics().horizontalAdvance(teil.text) + (teil.taste ? 2 * (RandInTaste + RandUmTaste) : 0);
}

int Tastenkappe::BisGruppe(int gruppe) const
{
    int breite = 0;
    for (const Teil &teil : teile_)
        if (teil.gruppe <= gruppe)
            breite += Breite(teil);
    return breite;
}

void Tastenkappe::SchriftSetzen()
{
    setFont(Schriftgrad::In(parentWidget() ? parentWidget()->font() : QApplication::font(this),
                            Schriftgrad::Klein));
}

} // namespace paukfix
