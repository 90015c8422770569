// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Kasten.h"

#include "Fachreihe.h"
#include "Kartenfaecher.h"
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
constexpr int Tickdauer = 40; // milliseconds

} // namespace

Kasten::Kasten(const FachTabelle &tabelle, QWidget *parent) : QWidget(parent), tabelle_(tabelle)
{
    setObjectName(u"Kasten"_s);
    setAccessibleName(u"Lernkasten"_s);
    kopf_ = new Kastenkopf(*this);
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
    const int breite = 78 * fontMetrics().height();
    return QSize(breite, KastenMasse::Hoehe(breite)).expandedTo(minimumSizeHint());
}

QSize Kasten::minimumSizeHint() const
{
    // A small screen is shown the whole box all the same.
    return KastenMasse::Mindestgroesse(font()).boundedTo(screen()->availableSize() * 0.8);
}

void Kasten::Zeigen(const BoxBild &bild)
{
    bild_ = bild;
    gezeigt_.start();
    kopf_->Zeigen(tabelle_, bild_.VollstesFach, zustand_);
    faecher_->Zeigen(tabelle_, bild_, masse_, zustand_ == Kastenkopf::Zustand::Offen);
    const QString erledigt = u"erledigt: %1 Karten"_s.arg(tabelle_[FachErledigt].Anzahl);
    if (erledigt != erledigt_->accessibleName())
        erledigt_->setAccessibleName(erledigt);
    for (std::size_t i = 0; i < FachAnzahl; ++i)
        if (std::exchange(gezaehlt_[i], tabelle_[i].Anzahl) != tabelle_[i].Anzahl)
            Verwerfen(masse_.Spalte(i));
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

void Kasten::ZeigenTickend(const BoxBild &bild)
{
    for (std::size_t i = 0; i < FachAnzahl; ++i)
        tickt_[i] = tabelle_[i].Anzahl != gezaehlt_[i];
    ticken_.start(Tickdauer, this);
    Zeigen(bild);
}

void Kasten::timerEvent(QTimerEvent *event)
{
    if (event->timerId() == nachholen_.timerId()) {
        nachholen_.stop();
        Zeigen(bild_);
    } else if (event->timerId() == ticken_.timerId()) {
        ticken_.stop();
        for (std::size_t i = 0; i < FachAnzahl; ++i)
            if (std::exchange(tickt_[i], false))
                Verwerfen(masse_.Spalte(i));
    } else {
        QWidget::timerEvent(event);
    }
}

void Kasten::Malen()
{
    update();
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    gezeigt_.start();
}

void Kasten::SetZustand(Kastenkopf::Zustand zustand)
{
    if (std::exchange(zustand_, zustand) != zustand)
        Zeigen(bild_);
}

void Kasten::SetHinweis(const QString &text, std::function<void()> tun)
{
    hinweis_->SetTun(std::move(tun));
    if (text == hinweis_->text())
        return;
    hinweis_->setText(text);
    hinweis_->setVisible(!text.isEmpty());
    if (!text.isEmpty())
        HinweisLegen();
    gezeigt_.invalidate(); // what comes next is painted at once, as it may be followed by a long silence
}

void Kasten::SetUnterwegs(int fach)
{
    if (fach == unterwegs_)
        return;
    for (const int eines : {std::exchange(unterwegs_, fach), fach})
        if (eines >= 0)
            Verwerfen(masse_.Spalte(static_cast<std::size_t>(eines)));
}

QPoint Kasten::Vorderste(int fach) const
{
    const auto i = static_cast<std::size_t>(fach);
    const Kartenfaecher faecher(std::max<int>(tabelle_.at(i).Anzahl, 1),
                                {.saat = i * 97,
                                 .innen = masse_.fach.at(i).toRectF(),
                                 .gefuellt = double(faecher_->Fuellung().at(i)),
                                 .pixelJeTwip = masse_.Pixel(1),
                                 .tiefe = masse_.tiefe});
    return faecher.Vorderste().toPoint();
}

void Kasten::Anordnen()
{
    masse_ = KastenMasse(size(), tabelle_, font());
    kopf_->Anordnen(masse_);
    faecher_->Anordnen(masse_);
    erledigt_->setGeometry(masse_.stapelSchild);
    erledigt_->setFont(masse_.schildSchrift);
    wuerfel_->setGeometry(masse_.wuerfel);
    karte_->Anordnen(masse_.kleineSchrift, masse_.schildSchrift);
    if (!hinweis_->text().isEmpty())
        HinweisLegen();
    faecher_->Zeigen(tabelle_, bild_, masse_, zustand_ == Kastenkopf::Zustand::Offen);
    Verwerfen(masse_.bild);
}

void Kasten::HinweisLegen()
{
    hinweis_->setFont(masse_.knopfSchrift);
    const int zeile = hinweis_->fontMetrics().height();
    hinweis_->setContentsMargins(2 * zeile, zeile + 22, 2 * zeile, zeile + 8);
    hinweis_->adjustSize();
    hinweis_->move(masse_.bild.center() - hinweis_->rect().center());
    hinweis_->raise();
}

void Kasten::Verwerfen(const QRegion &was)
{
    veraltet_ += was;
    update(was);
}

void Kasten::BildMalen()
{
    const qreal dichte = devicePixelRatioF();
    const QSize groesse = (masse_.bild.size().toSizeF() * dichte).toSize();
    if (gemaltes_.size() != groesse || gemaltes_.devicePixelRatio() != dichte) {
        gemaltes_ = QPixmap(groesse);
        gemaltes_.setDevicePixelRatio(dichte);
        veraltet_ = masse_.bild;
    }
    if (veraltet_.isEmpty())
        return;
    QPainter maler(&gemaltes_);
    maler.setRenderHint(QPainter::Antialiasing);
    maler.translate(-masse_.bild.topLeft());
    // One by one: what is clipped to several rectangles is painted line by line.
    for (const QRect &teil : std::exchange(veraltet_, {})) {
        maler.setClipRect(teil);
        maler.fillRect(teil, palette().color(backgroundRole()));
        KastenMaler(maler, palette(), masse_)
            .Malen({.tabelle = tabelle_,
                    .fuellung = faecher_->Fuellung(),
                    .unterwegs = unterwegs_,
                    .tickt = tickt_});
    }
}

void Kasten::paintEvent(QPaintEvent *event)
{
    if (event->rect().intersects(masse_.bild)) {
        BildMalen();
        QPainter(this).drawPixmap(masse_.bild.topLeft(), gemaltes_);
    }
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
    else if (event->type() == QEvent::PaletteChange)
        Verwerfen(masse_.bild);
}

} // namespace paukfix
