// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Wuerfelspiel.h"

#include "Bewegungstakt.h"
#include "Farben.h"
#include "Wuerfel.h"
#include "WuerfelBild.h"

#include <QScopeGuard>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr int Wurfdauer = 120, Wurfpause = 30; // milliseconds of a face; a roll shows two

} // namespace

void Wuerfelspiel::PicWürfel_Click()
{
    CardStore &kartei = teile_.kartei;
    if (kartei.FehlerStatus > 0 || teile_.belegung.IstGesperrt())
        return;
    if (kartei.NurAnsehen()) {
        teile_.dienste.meldungen.Zeigen(Lernlauf::NichtAbgefragt());
        return;
    }
    if (KartenImSpiel(kartei.FachInfo) == 0) {
        teile_.dienste.meldungen.Zeigen(u"Sorry, gar keine Karten da"_s);
        return;
    }
    const auto weiter = qScopeGuard([this] { teile_.eingabe.Weitergeben(); });
    const auto belegt = teile_.belegung.Belegen();
    teile_.eingabe.Halten();
    const std::optional<int> fach = Wuerfeln();
    if (!fach)
        return;
    // The colour belongs to the pick that is under way.
    const auto weiss = qScopeGuard([this] { teile_.bild.SetGrund(Qt::white); });
    try {
        if (ZufaelligeKarte(kartei.Karten(), *fach, kartei.FachInfo[static_cast<std::size_t>(*fach)].Anzahl,
                            teile_.dienste.zufall))
            teile_.lernlauf.KarteAbfragen();
    } catch (const std::exception &fehler) {
        teile_.lernlauf.LesefehlerMelden(u"Die Karte kann nicht gelesen werden: "_s, fehler);
    }
}

// The compartment that was accepted. None where none can be: a rejected roll is shown then.
std::optional<int> Wuerfelspiel::Wuerfeln()
{
    const bool moeglich = IrgendeinFachSpielbar(teile_.kartei.FachInfo);
    for (;;) {
        const Wurf wurf = paukfix::Wuerfeln(teile_.kartei.FachInfo, teile_.dienste.zufall);
        teile_.bild.SetGrund(Qt::white);
        teile_.bild.Leeren();
        if (teile_.dienste.konfig.Animation)
            teile_.bild.WuerfelZeichnen(wurf.augen);
        WurfZeigen();
        teile_.bild.SetGrund(wurf.angenommen ? Farben::Richtig : Farben::Falsch);
        teile_.bild.WuerfelZeichnen(wurf.augen);
        WurfZeigen();
        if (wurf.angenommen)
            return wurf.fach;
        if (!moeglich)
            return std::nullopt;
    }
}

void Wuerfelspiel::WurfZeigen()
{
    if (!teile_.dienste.konfig.Animation)
        return;
    teile_.bild.repaint();
    const Bewegungstakt takt(teile_.verzoegerung, Wurfdauer, Wurfpause);
    for (int i = 0; i < takt.Schritte() && !takt.IstUm() && !teile_.eingabe.Unterbrochen(); ++i)
        takt.Pause();
}

} // namespace paukfix
