// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "PFUseAbfrage.h"

#include <QScopeGuard>
#include <QWindow>

PFUseAbfrage::PFUseAbfrage(const Teile &teile) : teile_(teile) {}

PFUseAbfrage::~PFUseAbfrage() = default;

Kartenabfrage::Ausgang PFUseAbfrage::Fragen(bool bearbeitbar)
{
    QWindow *box = teile_.box.windowHandle();
    halt_.emplace(box);
    auto gescheitert = qScopeGuard([this] { halt_.reset(); });
    teile_.eingabe.Halten();
    std::optional<Tastaturrueckgabe> zurueck; // ends while the query's window is there
    fenster_ = std::make_unique<PFUse>(
        AbfrageUmgebung{.store = teile_.kartei,
                        .zustand = teile_.zustand,
                        .meldungen = teile_.dienste.meldungen,
                        .zufall = teile_.dienste.zufall,
                        .konfig = teile_.dienste.konfig,
                        .klang = [this](const QString &pfad) { teile_.dienste.ton.Spielen(pfad); },
                        .stille = [this] { teile_.dienste.ton.Stille(); },
                        .bearbeitbar = bearbeitbar,
                        // What was typed before the keyboard was held is on its way
                        // to the box, which takes no keys once the query is shown.
                        .erscheint =
                            [this, box] {
                                TastenAbholen(box);
                                teile_.eingabe.Weitergeben(*fenster_);
                            },
                        .geht =
                            [this, box, &zurueck] {
                                teile_.eingabe.Halten();
                                zurueck.emplace(fenster_->windowHandle(), box);
                                TastenAbholen(box); // a hidden window takes none
                            }},
        &teile_.box);
    const Ausgang ausgang = fenster_->Fragen();
    gescheitert.dismiss();
    return ausgang;
}

void PFUseAbfrage::Schliessen()
{
    if (fenster_)
        QMetaObject::invokeMethod(fenster_.get(), &QWidget::close, Qt::QueuedConnection);
}

void PFUseAbfrage::Abschliessen()
{
    const Fensterlage lage = fenster_->Lage();
    fenster_.reset();
    halt_.reset();
    if (lage == teile_.dienste.konfig.Abfrage)
        return;
    teile_.dienste.konfig.Abfrage = lage;
    teile_.dienste.konfig.Sichern(4, QString(),
                                  QStringLiteral("Die Fensterlage konnte nicht gespeichert werden: "));
}
