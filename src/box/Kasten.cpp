// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Kasten.h"

#include "FachBild.h"
#include "Farben.h"
#include "KastenFarben.h"
#include "KastenTeile.h"
#include "WuerfelBild.h"

#include <QCoreApplication>
#include <QFontInfo>
#include <QLabel>
#include <QMouseEvent>
#include <QScreen>
#include <QTimer>

#include <algorithm>
#include <cmath>

namespace {

// Milliseconds from one picture to the next while a file is opened: every second one that the display can
// show, so that painting costs a fraction of the reading.
constexpr qint64 Bildabstand = 33;
constexpr int KleinsterBalken = 3; // pixels; a compartment with one card is not an empty one

// Letter by letter, the two blanks at the end of one included.
const std::array<QString, FachSichtbar> Tooltips{
    QStringLiteral("Neue Karten"),
    QStringLiteral("falsch beantwortete Karten"),
    QStringLiteral("1x richtig beantwortet  "),
    QStringLiteral("2x richtig beantwortet"),
    QStringLiteral("3x richtig beantwortet"),
    QStringLiteral("4x richtig beantwortet"),
};

QString Fachname(std::size_t fach)
{
    return fach == FachNeu ? QStringLiteral("Neu") : QString::number(fach);
}

} // namespace

Kasten::Kasten(const FachTabelle &tabelle, QWidget *parent) : QWidget(parent), tabelle_(tabelle)
{
    setObjectName(QStringLiteral("Kasten"));
    setAccessibleName(QStringLiteral("Lernkasten"));
    setMouseTracking(true);
    for (std::size_t i = 0; i < line_.size(); ++i) {
        line_[i] = new QWidget(this);
        line_[i]->setObjectName(QStringLiteral("Line%1").arg(i + 1));
        line_[i]->setAttribute(Qt::WA_TransparentForMouseEvents);
        line_[i]->setPalette(KastenFarben::PetrolHell);
        line_[i]->setAutoFillBackground(true);
    }
    for (std::size_t i = 0; i < FachSichtbar; ++i) {
        image0_[i] = new FachBild(this);
        image0_[i]->setObjectName(QStringLiteral("Image0(%1)").arg(i));
        image0_[i]->setToolTip(Tooltips[i]);
        connect(image0_[i], &QAbstractButton::clicked, this,
                [this, i] { Image0_Click(static_cast<int>(i)); });
        kaShape_[i] = new KaShape(image0_[i]);
        kaShape_[i]->setObjectName(QStringLiteral("KaShape(%1)").arg(i));
        schild_[i] = new Schild(Fachname(i), this);
        schild_[i]->setObjectName(QStringLiteral("Label%1").arg(i + 1));
    }
    erledigt_ = new Schild(QStringLiteral("erledigt"), this);
    erledigt_->setObjectName(QStringLiteral("LErledigt"));
    rahmen_ = new Rahmen(this);
    wuerfel_ = new WuerfelBild(this);
    wuerfel_->setObjectName(QStringLiteral("PicWürfel"));
    wuerfel_->setAccessibleName(QStringLiteral("Würfel"));
    wuerfel_->WuerfelZeichnen(5);
    wuerfel_->setToolTip(QStringLiteral("Zufallsauswahl"));
    connect(wuerfel_, &QAbstractButton::clicked, this, [this] { PicWuerfel_Click(); });
    karte_ = new Kartenrahmen(this);
    karte_->hide();
    hinweis_ = new Zettel(this);
    hinweis_->setObjectName(QStringLiteral("Hinweis"));
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
    BalkenSetzen();
    NamenSetzen();
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

void Kasten::KarteLegen(const QString &frageNr, double links, double oben)
{
    karteVon_ = {links, oben};
    karte_->SetFrageNr(frageNr);
    karte_->SetFarbe(KastenFarben::Honig);
    karte_->setGeometry(masse_.Karte(links, oben));
    karte_->raise();
    karte_->show();
}

void Kasten::KarteFaerben(const QColor &farbe)
{
    karte_->SetFarbe(farbe);
    karte_->repaint();
}

void Kasten::KarteFliegen(int ziel, double anteil)
{
    const QRect von = masse_.Karte(karteVon_.x(), karteVon_.y());
    QRect nach = von;
    nach.moveCenter(ziel < FachSichtbar ? masse_.fach.at(static_cast<std::size_t>(ziel)).center()
                                        : masse_.stapel.center());
    if (ziel < FachSichtbar)
        nach.moveLeft(masse_.fach.at(static_cast<std::size_t>(ziel)).left());
    // Leaves and arrives gently, in a small arc.
    const double weg = anteil * anteil * (3 - 2 * anteil);
    const double bogen = -0.35 * karte_->height() * std::sin(3.14159265 * anteil);
    karte_->move(static_cast<int>(std::lround(von.x() + weg * (nach.x() - von.x()))),
                 static_cast<int>(std::lround(von.y() + weg * (nach.y() - von.y()) + bogen)));
    repaint();
}

void Kasten::KarteVerbergen()
{
    karte_->hide();
}

void Kasten::BalkenSetzen()
{
    for (std::size_t i = 0; i < FachSichtbar; ++i) {
        const Fach &fach = tabelle_[i];
        const QSize innen = image0_[i]->size();
        // The Neu bar keeps its width; how far its cards reach is the share of its capacity all the same.
        const double twips =
            i == FachNeu && fach.Kapazitaet > 0
                ? std::min(1.0, double(std::max<qint16>(fach.Anzahl, 0)) / fach.Kapazitaet) * fach.BreiteMax
                : bild_.Breite[i];
        const int breite =
            std::clamp(static_cast<int>(std::lround(masse_.Pixel(twips))),
                       fach.Anzahl > 0 ? KleinsterBalken : 0, std::max(innen.width(), KleinsterBalken));
        kaShape_[i]->setGeometry(0, 0, i == FachNeu ? innen.width() : breite, innen.height());
        kaShape_[i]->SetKarten(fach.Anzahl, breite);
        kaShape_[i]->setVisible(bild_.balken[i]);
        const bool vollstes = static_cast<int>(i) == bild_.VollstesFach;
        schild_[i]->SetBetont(vollstes && offen_);
        if (vollstes) {
            rahmen_->setVisible(offen_);
            rahmen_->setGeometry(image0_[i]->geometry().adjusted(-Rahmen::Dicke, -Rahmen::Dicke,
                                                                 Rahmen::Dicke, Rahmen::Dicke));
        }
    }
}

void Kasten::NamenSetzen()
{
    for (std::size_t i = 0; i < FachSichtbar; ++i) {
        QString name = QStringLiteral("Fach %1: %2 von %3 Karten")
                           .arg(Fachname(i))
                           .arg(tabelle_[i].Anzahl)
                           .arg(tabelle_[i].Kapazitaet);
        if (UeberKapazitaet(tabelle_[i]))
            name += QStringLiteral(", zu voll");
        if (offen_ && static_cast<int>(i) == bild_.VollstesFach)
            name += QStringLiteral(", vollstes Fach");
        if (name != image0_[i]->accessibleName())
            image0_[i]->setAccessibleName(name);
    }
}

void Kasten::Anordnen()
{
    masse_ = KastenMasse(size(), tabelle_);
    const QFont schildSchrift = Schrift(Gross, true);
    for (std::size_t i = 0; i < FachSichtbar; ++i) {
        image0_[i]->setGeometry(masse_.fach[i]);
        schild_[i]->setGeometry(masse_.schild[i]);
        schild_[i]->setFont(schildSchrift);
    }
    LinienLegen();
    erledigt_->setGeometry(masse_.stapelSchild);
    erledigt_->setFont(Schrift(Klein, true));
    wuerfel_->setGeometry(masse_.wuerfel);
    karte_->SetSchrift(Schrift(Klein), Schrift(1.7, true));
    karte_->setGeometry(masse_.Karte(karteVon_.x(), karteVon_.y()));
    if (!hinweis_->text().isEmpty())
        HinweisLegen();
    BalkenSetzen();
}

// Each tray is open at the top.
void Kasten::LinienLegen()
{
    const auto &fach = masse_.fach;
    const int oben = fach[0].top();
    const int unten = fach[0].bottom() + 3;
    std::size_t naechste = 0;
    const auto senkrecht = [&](int zuvor, int danach) {
        const int x = (zuvor + danach) / 2;
        line_[naechste++]->setGeometry(x, oben, 1, unten - oben);
        return x;
    };
    const auto umreissen = [&](const QRect &wanne, std::size_t erstes, std::size_t letztes) {
        const int links = senkrecht(wanne.left(), fach[erstes].left());
        for (std::size_t i = erstes; i < letztes; ++i)
            senkrecht(fach[i].right(), fach[i + 1].left());
        const int rechts = senkrecht(fach[letztes].right(), wanne.right());
        line_[naechste++]->setGeometry(links, unten, rechts - links + 1, 1);
    };
    umreissen(masse_.neu, FachNeu, FachNeu);
    umreissen(masse_.lernen, 1, FachSichtbar - 1);
}

void Kasten::HinweisLegen()
{
    hinweis_->setFont(Schrift(Gross));
    const int zeile = hinweis_->fontMetrics().height();
    hinweis_->setContentsMargins(2 * zeile, zeile + 22, 2 * zeile, zeile + 8);
    hinweis_->adjustSize();
    hinweis_->move(rect().center() - hinweis_->rect().center());
    hinweis_->raise();
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
    for (std::size_t i = 0; i < FachSichtbar; ++i) {
        if (masse_.schild[i].contains(punkt) || masse_.zaehler[i].contains(punkt))
            return static_cast<int>(i);
    }
    return -1;
}

void Kasten::Hervorheben(int fach)
{
    for (std::size_t i = 0; i < FachSichtbar; ++i)
        image0_[i]->SetHervorgehoben(static_cast<int>(i) == fach);
    setCursor(fach >= 0 ? Qt::PointingHandCursor : Qt::ArrowCursor);
    setToolTip(fach >= 0 ? Tooltips[static_cast<std::size_t>(fach)] : QString());
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
        image0_[static_cast<std::size_t>(fach)]->click();
}
