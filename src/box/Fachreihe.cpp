// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Fachreihe.h"

#include "FachBild.h"
#include "KastenFarben.h"
#include "KastenMaler.h"
#include "KastenTeile.h"

#include <algorithm>
#include <cmath>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr int KleinsterBalken = 3; // pixels; a compartment with one card is not an empty one

// Letter by letter, the two blanks at the end of one included.
const std::array<QString, FachSichtbar> Tooltips{
    u"Neue Karten"_s,
    u"falsch beantwortete Karten"_s,
    u"1x richtig beantwortet  "_s,
    u"2x richtig beantwortet"_s,
    u"3x richtig beantwortet"_s,
    u"4x richtig beantwortet"_s,
};

QString Fachname(std::size_t fach)
{
    return fach == FachNeu ? u"Neu"_s : QString::number(fach);
}

} // namespace

Fachreihe::Fachreihe(QWidget &kasten) : QObject(&kasten), kasten_(kasten)
{
    for (std::size_t i = 0; i < line_.size(); ++i) {
        line_[i] = new QWidget(&kasten);
        line_[i]->setObjectName(u"Line%1"_s.arg(i + 1));
        line_[i]->setAttribute(Qt::WA_TransparentForMouseEvents);
        line_[i]->setPalette(KastenFarben::PetrolHell);
        line_[i]->setAutoFillBackground(true);
    }
    for (std::size_t i = 0; i < FachSichtbar; ++i) {
        image0_[i] = new FachBild(&kasten);
        image0_[i]->setObjectName(u"Image0(%1)"_s.arg(i));
        image0_[i]->setToolTip(Tooltips[i]);
        connect(image0_[i], &QAbstractButton::clicked, this,
                [this, i] { emit Gewaehlt(static_cast<int>(i)); });
        kaShape_[i] = new KaShape(image0_[i]);
        kaShape_[i]->setObjectName(u"KaShape(%1)"_s.arg(i));
        schild_[i] = new Schild(Fachname(i), &kasten);
        schild_[i]->setObjectName(u"Label%1"_s.arg(i + 1));
    }
    rahmen_ = new Rahmen(&kasten);
}

void Fachreihe::Anordnen(const KastenMasse &masse)
{
    const QFont schrift = KastenMaler::Schrift(kasten_.font(), masse, KastenMaler::Gross, true);
    for (std::size_t i = 0; i < FachSichtbar; ++i) {
        image0_[i]->setGeometry(masse.fach[i]);
        schild_[i]->setGeometry(masse.schild[i]);
        schild_[i]->setFont(schrift);
    }
    LinienLegen(masse);
}

void Fachreihe::LinienLegen(const KastenMasse &masse)
{
    const auto &fach = masse.fach;
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
    umreissen(masse.neu, FachNeu, FachNeu);
    umreissen(masse.lernen, 1, FachSichtbar - 1);
}

void Fachreihe::Zeigen(const FachTabelle &tabelle, const BoxBild &bild, const KastenMasse &masse, bool offen)
{
    BalkenSetzen(tabelle, bild, masse);
    VollstesMarkieren(bild.VollstesFach, offen);
    NamenSetzen(tabelle, bild, offen);
}

void Fachreihe::BalkenSetzen(const FachTabelle &tabelle, const BoxBild &bild, const KastenMasse &masse)
{
    for (std::size_t i = 0; i < FachSichtbar; ++i) {
        const Fach &fach = tabelle[i];
        const QSize innen = image0_[i]->size();
        // The Neu bar keeps its width; how far its cards reach is the share of its capacity all the same.
        const double twips =
            i == FachNeu && fach.Kapazitaet > 0
                ? std::min(1.0, double(std::max<qint16>(fach.Anzahl, 0)) / fach.Kapazitaet) * fach.BreiteMax
                : bild.Breite[i];
        const int breite =
            std::clamp(static_cast<int>(std::lround(masse.Pixel(twips))),
                       fach.Anzahl > 0 ? KleinsterBalken : 0, std::max(innen.width(), KleinsterBalken));
        kaShape_[i]->setGeometry(0, 0, i == FachNeu ? innen.width() : breite, innen.height());
        kaShape_[i]->SetKarten(fach.Anzahl, breite);
        kaShape_[i]->setVisible(bild.balken[i]);
    }
}

void Fachreihe::VollstesMarkieren(int fach, bool offen)
{
    for (std::size_t i = 0; i < FachSichtbar; ++i)
        schild_[i]->SetBetont(offen && static_cast<int>(i) == fach);
    constexpr int Dicke = Rahmen::Dicke;
    rahmen_->setVisible(offen);
    rahmen_->setGeometry(
        image0_.at(static_cast<std::size_t>(fach))->geometry().adjusted(-Dicke, -Dicke, Dicke, Dicke));
}

void Fachreihe::NamenSetzen(const FachTabelle &tabelle, const BoxBild &bild, bool offen)
{
    for (std::size_t i = 0; i < FachSichtbar; ++i) {
        QString name =
            u"Fach %1: %2 von %3 Karten"_s.arg(Fachname(i)).arg(tabelle[i].Anzahl).arg(tabelle[i].Kapazitaet);
        if (UeberKapazitaet(tabelle[i]))
            name += u", zu voll"_s;
        if (offen && static_cast<int>(i) == bild.VollstesFach)
            name += u", vollstes Fach"_s;
        if (name != image0_[i]->accessibleName())
            image0_[i]->setAccessibleName(name);
    }
}

void Fachreihe::Hervorheben(int fach)
{
    for (std::size_t i = 0; i < FachSichtbar; ++i)
        image0_[i]->SetHervorgehoben(static_cast<int>(i) == fach);
}

void Fachreihe::Druecken(int fach)
{
    image0_.at(static_cast<std::size_t>(fach))->click();
}

const QString &Fachreihe::Erklaerung(int fach)
{
    return Tooltips.at(static_cast<std::size_t>(fach));
}

} // namespace paukfix
