// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Kasten.h"

#include "Fachreihe.h"
#include "Kartenrahmen.h"
#include "KastenMaler.h"
#include "KastenTeile.h"
#include "WuerfelBild.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QTimer>

#include <utility>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

// Milliseconds from one picture to the next while a file is opened: every second one that the display can
// show, so that painting costs a fraction of the reading.
constexpr qint64 Bildabstand = 33;

} // namespace

Kasten::Kasten(const FachTabelle &tabelle, QWidget *parent) : QWidget(parent), tabelle_(tabelle)
{
    setObjectName(u"Kasten"_s);
    setAccessibleName(u"Lernkasten"_s);
    setMouseTracking(true);
    faecher_ = new Fachreihe(*this);
    connect(faecher_, &Fachreihe::Gewaehlt, this, &Kasten::FachGewaehlt);
    erledigt_ = new Schild(u"erledigt"_s, this);
    erledigt_->setObjectName(u"LErledigt"_s);
    wuerfel_ = new WuerfelBild(this);
    wuerfel_->setObjectName(u"PicWürfel"_s);
    wuerfel_->setAccessibleName(u"Würfel"_s);
    wuerfel_->WuerfelZeichnen(5);
    wuerfel_->setToolTip(u"Zufallsauswahl"_s);
    connect(wuerfel_, &QAbstractButton::clicked, this, &Kasten::WuerfelGewaehlt);
    karte_ = new Kartenrahmen(masse_, this);
    karte_->hide();
    hinweis_ = new Zettel(this);
    hinweis_->setObjectName(u"Hinweis"_s);
    hinweis_->hide();
    Anordnen();
    Zeigen(bild_);
}

QSize Kasten::sizeHint() const
{
    const int breite = 70 * fontMetrics().height();
    return QSize(breite, KastenMasse::Hoehe(breite)).expandedTo(minimumSizeHint());
}

QSize Kasten::minimumSizeHint() const
{
    // A small screen is shown the whole box all the same.
    return KastenMasse::Mindestgroesse().boundedTo(screen()->availableSize() * 0.8);
}

void Kasten::Zeigen(const BoxBild &bild)
{
    bild_ = bild;
    gezeigt_.start();
    faecher_->Zeigen(tabelle_, bild_, masse_, offen_);
    update();
}

void Kasten::ZeigenLaufend(const BoxBild &bild)
{
    bild_ = bild;
    if (gezeigt_.isValid() && gezeigt_.elapsed() < Bildabstand) {
        // The last one of a run is shown as soon as the event loop comes to it.
        if (!nachholen_.isActive())
            nachholen_.start(0, this);
        return;
    }
    Zeigen(bild);
    Malen();
}

void Kasten::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != nachholen_.timerId())
        return QWidget::timerEvent(event);
    nachholen_.stop();
    Zeigen(bild_);
}

void Kasten::Malen()
{
    update();
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    gezeigt_.start();
}

void Kasten::SetOffen(bool offen)
{
    offen_ = offen;
}

void Kasten::SetHinweis(const QString &text, std::function<void()> tun)
{
    hinweis_->SetTun(std::move(tun));
    if (text == hinweis_->text())
        return;
    hinweis_->setText(text);
    hinweis_->setVisible(!text.isEmpty());
    Anordnen();
    gezeigt_.invalidate(); // what comes next is painted at once, as it may be followed by a long silence
}

void Kasten::Anordnen()
{
    masse_ = KastenMasse(size(), tabelle_);
    faecher_->Anordnen(masse_);
    erledigt_->setGeometry(masse_.stapelSchild);
    erledigt_->setFont(KastenMaler::Schrift(font(), masse_, KastenMaler::Klein, true));
    wuerfel_->setGeometry(masse_.wuerfel);
    karte_->Anordnen(KastenMaler::Schrift(font(), masse_, KastenMaler::Klein),
                     KastenMaler::Schrift(font(), masse_, 1.7, true));
    if (!hinweis_->text().isEmpty())
        HinweisLegen();
    faecher_->Zeigen(tabelle_, bild_, masse_, offen_);
}

void Kasten::HinweisLegen()
{
    hinweis_->setFont(KastenMaler::Schrift(font(), masse_, KastenMaler::Gross));
    const int zeile = hinweis_->fontMetrics().height();
    hinweis_->setContentsMargins(2 * zeile, zeile + 22, 2 * zeile, zeile + 8);
    hinweis_->adjustSize();
    hinweis_->move(rect().center() - hinweis_->rect().center());
    hinweis_->raise();
}

void Kasten::paintEvent(QPaintEvent *)
{
    QPainter maler(this);
    maler.setRenderHint(QPainter::Antialiasing);
    KastenMaler(maler, *this, masse_).Malen(tabelle_);
    if (!std::exchange(gemalt_, true))
        QTimer::singleShot(0, this, &Kasten::Gemalt);
}

void Kasten::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    Anordnen();
}

void Kasten::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        Anordnen();
}

int Kasten::FachBei(QPoint punkt) const
{
    for (std::size_t i = 0; i < FachSichtbar; ++i)
        if (masse_.schild[i].contains(punkt) || masse_.zaehler[i].contains(punkt))
            return static_cast<int>(i);
    return -1;
}

void Kasten::Hervorheben(int fach)
{
    faecher_->Hervorheben(fach);
    setCursor(fach >= 0 ? Qt::PointingHandCursor : Qt::ArrowCursor);
    setToolTip(fach >= 0 ? Fachreihe::Erklaerung(fach) : QString());
}

void Kasten::mouseMoveEvent(QMouseEvent *event)
{
    Hervorheben(FachBei(event->pos()));
}

void Kasten::leaveEvent(QEvent *event)
{
    QWidget::leaveEvent(event);
    Hervorheben(-1);
}

// Name and count belong to the compartment: the narrow ones are easier to hit that way.
void Kasten::mouseReleaseEvent(QMouseEvent *event)
{
    const int fach = FachBei(event->pos());
    if (event->button() == Qt::LeftButton && fach >= 0)
        faecher_->Druecken(fach);
}

} // namespace paukfix
