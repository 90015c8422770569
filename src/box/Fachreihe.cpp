// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Fachreihe.h"

#include "FachBild.h"
#include "KastenFarben.h"
#include "KastenTeile.h"

#include <QMouseEvent>

#include <algorithm>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

// Letter by letter, the two blanks at the end of one included.
const std::array<QString, FachSichtbar> Tooltips{
    u"Neue Karten"_s,
    u"falsch beantwortete Karten"_s,
    u"1x richtig beantwortet  "_s,
    u"2x richtig beantwortet"_s,
    u"3x richtig beantwortet"_s,
    u"4x richtig beantwortet"_s,
};

QString Aufschrift(std::size_t fach)
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
        schild_[i] = new Schild(Aufschrift(i), &kasten);
        schild_[i]->setObjectName(u"Label%1"_s.arg(i + 1));
    }
    rahmen_ = new Rahmen(&kasten);
    kasten.setMouseTracking(true);
    kasten.installEventFilter(this);
}

void Fachreihe::Anordnen(const KastenMasse &masse)
{
    for (std::size_t i = 0; i < FachSichtbar; ++i) {
        image0_[i]->setGeometry(masse.fach[i]);
        schild_[i]->setGeometry(masse.schild[i]);
        schild_[i]->setFont(masse.schildSchrift);
        fuesse_[i] = masse.schild[i] | masse.zaehler[i];
    }
    LinienLegen(masse);
}

void Fachreihe::LinienLegen(const KastenMasse &masse)
{
    const auto &fach = masse.fach;
    std::size_t naechste = 0;
    const auto senkrecht = [&](int zuvor, int danach, int oben) {
        line_[naechste++]->setGeometry((zuvor + danach) / 2, oben, 1, masse.neu.boden - oben);
    };
    const auto umreissen = [&](const KastenMasse::Wanne &wanne, std::size_t erstes, std::size_t letztes) {
        senkrecht(wanne.vorn.left(), fach[erstes].left(), wanne.vorn.top());
        for (std::size_t i = erstes; i < letztes; ++i)
            senkrecht(fach[i].right(), fach[i + 1].left(), masse.trennerOben);
        senkrecht(fach[letztes].right(), wanne.vorn.right(), wanne.vorn.top());
        line_[naechste++]->setGeometry(wanne.vorn.left(), wanne.boden + 1, wanne.vorn.width(), 1);
    };
    umreissen(masse.neu, FachNeu, FachNeu);
    umreissen(masse.lernen, 1, FachSichtbar - 1);
}

void Fachreihe::Zeigen(const FachTabelle &tabelle, const BoxBild &bild, const KastenMasse &masse, bool offen)
{
    fuellung_ = masse.Fuellung(tabelle, bild);
    for (std::size_t i = 0; i < FachSichtbar; ++i) {
        const QSize innen = image0_[i]->size();
        kaShape_[i]->setGeometry(0, 0, i == FachNeu ? innen.width() : fuellung_[i], innen.height());
        kaShape_[i]->setVisible(bild.balken[i]);
        // The cards stand out above the walls.
        const int wand = (i == FachNeu ? masse.neu : masse.lernen).vorn.top() - masse.fach[i].top();
        image0_[i]->SetRahmen(tabelle[i].Anzahl > 0 ? 0 : wand, offen);
    }
    VollstesMarkieren(bild.VollstesFach, offen);
    NamenSetzen(tabelle, bild, offen);
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
        stand_[i] = u"%1 von %2 Karten"_s.arg(tabelle[i].Anzahl).arg(tabelle[i].Kapazitaet);
        if (UeberKapazitaet(tabelle[i]))
            stand_[i] += u", zu voll"_s;
        if (offen && static_cast<int>(i) == bild.VollstesFach)
            stand_[i] += u", vollstes Fach"_s;
        const QString name = u"Fach %1: %2"_s.arg(Aufschrift(i), stand_[i]);
        if (name != image0_[i]->accessibleName())
            image0_[i]->setAccessibleName(name);
    }
}

bool Fachreihe::eventFilter(QObject *, QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseMove:
        Hervorheben(FachBei(static_cast<QMouseEvent *>(event)->pos()));
        return false;
    case QEvent::Leave:
        Hervorheben(-1);
        return false;
    case QEvent::MouseButtonRelease: {
        const auto *maus = static_cast<QMouseEvent *>(event);
        const int fach = FachBei(maus->pos());
        if (maus->button() == Qt::LeftButton && fach >= 0)
            image0_.at(static_cast<std::size_t>(fach))->click();
        return false;
    }
    default:
        return false;
    }
}

int Fachreihe::FachBei(QPoint punkt) const
{
    const auto *fuss = std::find_if(fuesse_.begin(), fuesse_.end(),
                                    [&](const QRect &platz) { return platz.contains(punkt); });
    return fuss == fuesse_.end() ? -1 : static_cast<int>(fuss - fuesse_.begin());
}

void Fachreihe::Hervorheben(int fach)
{
    for (std::size_t i = 0; i < FachSichtbar; ++i)
        image0_[i]->SetHervorgehoben(static_cast<int>(i) == fach);
    kasten_.setCursor(fach >= 0 ? Qt::PointingHandCursor : Qt::ArrowCursor);
    kasten_.setToolTip(
        fach < 0 ? QString()
                 : u"%1: %2"_s.arg(Erklaerung(fach).trimmed(), stand_.at(static_cast<std::size_t>(fach))));
}

const QString &Fachreihe::Erklaerung(int fach)
{
    return Tooltips.at(static_cast<std::size_t>(fach));
}

} // namespace paukfix
