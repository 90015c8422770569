// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Kartenrahmen.h"

#include "Farben.h"
#include "KastenFarben.h"

#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

// Parts of the flight's time.
constexpr double Steigen = 80.0 / 360, Einsinken = 80.0 / 360;

} // namespace

Kartenrahmen::Kartenrahmen(const KastenMasse &masse, QWidget *parent)
    : QFrame(parent), masse_(masse), frageNr_(new QLabel(u"FrageNr:"_s, this)), mFrageNr_(new QLabel(this))
{
    setObjectName(u"Karte"_s);
    setAccessibleName(u"Gefragte Karte"_s);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    frageNr_->setObjectName(u"FrageNr"_s);
    frageNr_->setAlignment(Qt::AlignCenter);
    mFrageNr_->setObjectName(u"MFrageNr"_s);
    mFrageNr_->setAlignment(Qt::AlignCenter);
    auto *spalte = new QVBoxLayout(this);
    spalte->setContentsMargins(2, 8, 2, 4);
    spalte->setSpacing(0);
    spalte->addStretch(2);
    spalte->addWidget(frageNr_);
    spalte->addWidget(mFrageNr_);
    spalte->addStretch(3);
    QPalette farben = palette();
    farben.setColor(QPalette::WindowText, KastenFarben::Tinte);
    setPalette(farben);
    SetFarbe(KastenFarben::Honig);
}

void Kartenrahmen::Legen(const QString &frageNr, double links, double oben)
{
    liegt_ = {links, oben};
    mFrageNr_->setText(frageNr);
    mFrageNr_->setAccessibleName(u"Frage Nummer "_s + frageNr);
    SetFarbe(KastenFarben::Honig);
    setGeometry(masse_.Karte(links, oben));
    clearMask();
    raise();
    show();
}

void Kartenrahmen::SetFarbe(const QColor &farbe)
{
    QPalette farben = palette();
    farben.setColor(QPalette::Window, farbe);
    const bool signal = farbe == Farben::Richtig || farbe == Farben::Falsch;
    farben.setColor(QPalette::WindowText, signal ? Farben::AufSignal : KastenFarben::Tinte);
    setPalette(farben);
}

void Kartenrahmen::Fliegen(QPoint von, int ziel, double zeit)
{
    const QRect nach = ziel < FachSichtbar ? masse_.fach.at(static_cast<std::size_t>(ziel)) : masse_.stapel;
    const int hoehe = height();
    const double oben = std::max(2.0, von.y() + masse_.tiefe.y() - hoehe - 4);
    // How much of the card is to be seen above the cards that it comes out of or goes behind.
    const auto weich = [](double t) { return t * t * (3 - 2 * t); };
    const double steigt = weich(std::clamp(zeit / Steigen, 0.0, 1.0));
    const double fliegt = weich(std::clamp((zeit - Steigen) / (1 - Steigen - Einsinken), 0.0, 1.0));
    const double sinkt = weich(std::clamp((zeit - 1 + Einsinken) / Einsinken, 0.0, 1.0));
    const double bodenVon = von.y() + masse_.tiefe.y() / 2, bodenNach = nach.top() + masse_.tiefe.y() / 2;
    double y = oben;
    double sichtbar = hoehe;
    if (steigt < 1) {
        y = bodenVon - (bodenVon - oben) * steigt;
        sichtbar = bodenVon - y;
    } else if (sinkt > 0) {
        y = oben + (bodenNach - oben) * sinkt;
        sichtbar = bodenNach - y;
    }
    const QRect vorher = geometry();
    move(static_cast<int>(std::lround(von.x() + (nach.left() - von.x()) * fliegt)),
         static_cast<int>(std::lround(y)));
    setMask(QRect(0, 0, width(), std::clamp(static_cast<int>(std::lround(sichtbar)), 1, hoehe)));
    parentWidget()->repaint(vorher | geometry());
}

void Kartenrahmen::Anordnen(const QFont &klein, const QFont &gross)
{
    frageNr_->setFont(klein);
    mFrageNr_->setFont(gross);
    setGeometry(masse_.Karte(liegt_.x(), liegt_.y()));
}

void Kartenrahmen::paintEvent(QPaintEvent *)
{
    QPainter maler(this);
    maler.setRenderHint(QPainter::Antialiasing);
    const QColor farbe = palette().color(QPalette::Window);
    const double rundung = std::min(width(), height()) * 0.16;
    const double dicke = height() * 0.045;
    maler.setPen(Qt::NoPen);
    maler.setBrush(farbe.darker(125));
    maler.drawRoundedRect(QRectF(rect()), rundung, rundung);
    const QRectF oben = QRectF(rect()).adjusted(0, 0, 0, -dicke);
    maler.setBrush(farbe);
    maler.drawRoundedRect(oben, rundung, rundung);
    maler.setPen(
        QPen(farbe == KastenFarben::Honig ? KastenFarben::Koralle : palette().color(QPalette::WindowText),
             std::max(1.5, height() * 0.025), Qt::SolidLine, Qt::RoundCap));
    const double linie = oben.top() + oben.height() * 0.17;
    maler.drawLine(QPointF(width() * 0.16, linie), QPointF(width() * 0.84, linie));
}

} // namespace paukfix
