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

constexpr int Bild = 20; // pixels, at the usual resolution
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
    knopf->setFocusPolicy(Qt::NoFocus); // the text keeps the keyboard; all is reached by menu and key
    if (aktion->menu())
        knopf->setPopupMode(QToolButton::InstantPopup);
    gruppen_.last().append(knopf);
    setMinimumWidth(320);
}

int Symbolleiste::Gruppenbreite(qsizetype gruppe) const
{
    const auto anzahl = static_cast<int>(gruppen_.at(gruppe).size());
    return anzahl * (masse_.knopf + masse_.zwischen) - masse_.zwischen;
}

// Of all in one line.
int Symbolleiste::Breite() const
{
    int alle = 2 * masse_.rand + amEnde_->width();
    for (qsizetype i = 0; i < gruppen_.size(); ++i)
        alle += Gruppenbreite(i) + masse_.gruppen;
    return alle;
}

void Symbolleiste::Anordnen()
{
    amEnde_->adjustSize();
    masse_ = Weit;
    if (Breite() > width())
        masse_ = Eng;
    const bool eine = Breite() <= width();
    const int platz = width() - 2 * masse_.rand;
    striche_.clear();
    int x = 0;
    int zeile = 0;
    const auto y = [&] { return Oben + zeile * (masse_.knopf + masse_.zwischen); };
    for (qsizetype i = 0; i < gruppen_.size(); ++i) {
        // The second line has the last two groups.
        if (!eine && i == gruppen_.size() - 2) {
            x = 0;
            ++zeile;
            striche_.append(-1);
        }
        if (x > 0) {
            striche_.append(masse_.rand + x + masse_.gruppen / 2);
            x += masse_.gruppen;
        }
        for (QToolButton *knopf : gruppen_.at(i)) {
            knopf->setGeometry(masse_.rand + x, y(), masse_.knopf, masse_.knopf);
            x += masse_.knopf + masse_.zwischen;
        }
        x -= masse_.zwischen;
    }
    amEnde_->move(masse_.rand + platz - amEnde_->width(), y() + (masse_.knopf - amEnde_->height()) / 2);
    setFixedHeight(y() + masse_.knopf + Oben + 1);
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
            y += masse_.knopf + masse_.zwischen;
        else
            maler.drawLine(x, y + 4, x, y + masse_.knopf - 5);
    }
    maler.setPen(
        Farben::Getoent(palette().color(QPalette::WindowText), palette().color(QPalette::Window), 0.15));
    maler.drawLine(0, height() - 1, width(), height() - 1);
}

} // namespace paukfix
