// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Symbolleiste.h"

#include "Farben.h"

#include <QAction>
#include <QEvent>
#include <QMenu>
#include <QPainter>
#include <QToolButton>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr int Knopf = 34; // pixels, at the usual resolution
constexpr int Bild = 20;
constexpr int Zwischen = 4;        // between the icons of a group
constexpr int Gruppenabstand = 17; // with a line in its middle
constexpr int Rand = 16;
constexpr int Oben = 4;

} // namespace

Symbolleiste::Symbolleiste(QWidget *amEnde, QWidget *parent) : QWidget(parent), amEnde_(amEnde)
{
    setObjectName(u"Symbolleiste"_s);
    setAccessibleName(u"Symbolleiste"_s);
    amEnde_->setParent(this);
    Gruppe();
}

void Symbolleiste::Gruppe()
{
    gruppen_.append(QList<QToolButton *>());
}

void Symbolleiste::Anfuegen(QAction *aktion, Symbole symbol)
{
    const QString text = aktion->text().remove(u'&');
    const QString taste = aktion->shortcut().toString(QKeySequence::NativeText);
    aktion->setToolTip(taste.isEmpty() ? text : u"%1 (%2)"_s.arg(text, taste));
    aktion->setIcon(Symbol(symbol));
    aktion->setIconVisibleInMenu(false);
    auto *knopf = new QToolButton(this);
    knopf->setObjectName(u"Symbol"_s + aktion->objectName());
    knopf->setDefaultAction(aktion);
    knopf->setAccessibleName(text);
    knopf->setAutoRaise(true);
    knopf->setIconSize({Bild, Bild});
    knopf->setFixedSize(Knopf, Knopf);
    knopf->setFocusPolicy(Qt::NoFocus); // the text keeps the keyboard; all is reached by menu and key
    if (aktion->menu())
        knopf->setPopupMode(QToolButton::InstantPopup);
    gruppen_.last().append(knopf);
    setMinimumWidth(Gruppenbreite(0) + 2 * Rand);
}

int Symbolleiste::Gruppenbreite(qsizetype gruppe) const
{
    const auto anzahl = static_cast<int>(gruppen_.at(gruppe).size());
    return anzahl * (Knopf + Zwischen) - Zwischen;
}

// The second line, where there is one, begins with the first group that does not go into the first beside
// what stands at the end.
void Symbolleiste::Anordnen()
{
    amEnde_->adjustSize();
    int alle = -Gruppenabstand;
    for (qsizetype i = 0; i < gruppen_.size(); ++i)
        alle += Gruppenbreite(i) + Gruppenabstand;
    const int platz = width() - 2 * Rand;
    const bool eine = alle + Gruppenabstand + amEnde_->width() <= platz;
    striche_.clear();
    int x = 0;
    int zeile = 0;
    const auto y = [&zeile] { return Oben + zeile * (Knopf + Zwischen); };
    for (qsizetype i = 0; i < gruppen_.size(); ++i) {
        if (x > 0 && !eine && zeile == 0 && x + Gruppenabstand + Gruppenbreite(i) > platz) {
            x = 0;
            ++zeile;
            striche_.append(-1);
        }
        if (x > 0) {
            striche_.append(Rand + x + Gruppenabstand / 2);
            x += Gruppenabstand;
        }
        for (QToolButton *knopf : gruppen_.at(i)) {
            knopf->move(Rand + x, y());
            x += Knopf + Zwischen;
        }
        x -= Zwischen;
    }
    if (!eine && x + Gruppenabstand + amEnde_->width() > platz)
        ++zeile; // what stands at the end has a line of its own
    amEnde_->move(width() - Rand - amEnde_->width(), y() + (Knopf - amEnde_->height()) / 2);
    setFixedHeight(y() + Knopf + Oben + 1);
    update();
}

void Symbolleiste::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    Anordnen();
}

bool Symbolleiste::event(QEvent *event)
{
    // What stands at the end has another text.
    if (event->type() == QEvent::LayoutRequest)
        Anordnen();
    return QWidget::event(event);
}

void Symbolleiste::paintEvent(QPaintEvent *)
{
    QPainter maler(this);
    maler.setPen(
        Farben::Getoent(palette().color(QPalette::WindowText), palette().color(QPalette::Window), 0.3));
    int y = Oben;
    for (const int x : striche_) {
        if (x < 0)
            y += Knopf + Zwischen;
        else
            maler.drawLine(x, y + 4, x, y + Knopf - 5);
    }
    maler.setPen(
        Farben::Getoent(palette().color(QPalette::WindowText), palette().color(QPalette::Window), 0.15));
    maler.drawLine(0, height() - 1, width(), height() - 1);
}

} // namespace paukfix
