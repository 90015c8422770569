// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Symbolleiste.h"

#include "Farben.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QToolButton>

#include <algorithm>

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
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget *alt, QWidget *neu) {
        if (alt && neu && isAncestorOf(neu) && !isAncestorOf(alt))
            vorher_ = alt;
    });
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
    knopf->installEventFilter(this);
    if (aktion->menu())
        knopf->setPopupMode(QToolButton::InstantPopup);
    gruppen_.last().append(knopf);
    setMinimumWidth(320);
    HaltSetzen();
}

QList<QToolButton *> Symbolleiste::Waehlbare() const
{
    QList<QToolButton *> waehlbare;
    for (const QList<QToolButton *> &gruppe : gruppen_)
        for (QToolButton *knopf : gruppe)
            if (knopf->isEnabled())
                waehlbare << knopf;
    return waehlbare;
}

// The bar's stop of the Tab key; null where nothing is enabled.
QToolButton *Symbolleiste::Halt() const
{
    return zuletzt_ && zuletzt_->isEnabled() ? zuletzt_.get() : Waehlbare().value(0);
}

// A click leaves the keyboard with the text.
void Symbolleiste::HaltSetzen()
{
    const QToolButton *halt = Halt();
    for (const QList<QToolButton *> &gruppe : gruppen_)
        for (QToolButton *knopf : gruppe)
            knopf->setFocusPolicy(knopf == halt ? Qt::TabFocus : Qt::NoFocus);
}

void Symbolleiste::Wechseln()
{
    const QWidget *fokus = window()->focusWidget();
    QWidget *ziel = Halt();
    if (fokus && isAncestorOf(fokus))
        ziel = vorher_;
    if (ziel)
        ziel->setFocus(Qt::ShortcutFocusReason);
}

bool Symbolleiste::Taste(const QToolButton *knopf, int taste)
{
    const QList<QToolButton *> waehlbare = Waehlbare();
    const qsizetype hier = waehlbare.indexOf(knopf);
    qsizetype neu = 0;
    switch (taste) {
    case Qt::Key_Left:
    case Qt::Key_Up:
        neu = std::max<qsizetype>(hier - 1, 0);
        break;
    case Qt::Key_Right:
    case Qt::Key_Down:
        neu = std::min(hier + 1, waehlbare.size() - 1);
        break;
    case Qt::Key_Home:
        break;
    case Qt::Key_End:
        neu = waehlbare.size() - 1;
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        waehlbare.at(hier)->click();
        return true;
    case Qt::Key_Escape:
        Wechseln();
        return true;
    default:
        return false;
    }
    waehlbare.at(neu)->setFocus(Qt::OtherFocusReason);
    return true;
}

bool Symbolleiste::eventFilter(QObject *objekt, QEvent *event)
{
    auto *knopf = qobject_cast<QToolButton *>(objekt);
    if (event->type() == QEvent::FocusIn) {
        zuletzt_ = knopf;
        HaltSetzen();
    } else if (event->type() == QEvent::EnabledChange) {
        HaltSetzen();
    } else if (event->type() == QEvent::KeyPress && knopf->isEnabled()) {
        const auto &taste = static_cast<const QKeyEvent &>(*event);
        return (taste.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier && Taste(knopf, taste.key());
    }
    return false;
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
