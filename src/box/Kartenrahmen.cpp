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
    von_ = {links, oben};
    mFrageNr_->setText(frageNr);
    mFrageNr_->setAccessibleName(u"Frage Nummer "_s + frageNr);
    SetFarbe(KastenFarben::Honig);
    setGeometry(masse_.Karte(links, oben));
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

void Kartenrahmen::Fliegen(int ziel, double anteil)
{
    const QRect von = masse_.Karte(von_.x(), von_.y());
    QRect nach = von;
    nach.moveCenter(ziel < FachSichtbar ? masse_.fach.at(static_cast<std::size_t>(ziel)).center()
                                        : masse_.stapel.center());
    if (ziel < FachSichtbar)
        nach.moveLeft(masse_.fach.at(static_cast<std::size_t>(ziel)).left());
    // Leaves and arrives gently, in a small arc.
    const double weg = anteil * anteil * (3 - 2 * anteil);
    const double bogen = -0.35 * height() * std::sin(3.14159265 * anteil);
    move(static_cast<int>(std::lround(von.x() + weg * (nach.x() - von.x()))),
         static_cast<int>(std::lround(von.y() + weg * (nach.y() - von.y()) + bogen)));
    parentWidget()->repaint();
}

void Kartenrahmen::Anordnen(const QFont &klein, const QFont &gross)
{
    frageNr_->setFont(klein);
    mFrageNr_->setFont(gross);
    setGeometry(masse_.Karte(von_.x(), von_.y()));
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
