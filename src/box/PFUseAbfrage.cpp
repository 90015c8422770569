// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "PFUseAbfrage.h"

#include <QScopeGuard>
#include <QWindow>

#include <utility>

PFUseAbfrage::PFUseAbfrage(Teile teile) : teile_(std::move(teile)) {}

PFUseAbfrage::~PFUseAbfrage() = default;

Kartenabfrage::Ausgang PFUseAbfrage::Fragen(bool bearbeitbar)
{
    QWindow *box = teile_.box.windowHandle();
    halt_.emplace(box);
    auto gescheitert = qScopeGuard([this] { halt_.reset(); });
    teile_.eingabe.Halten();
    std::optional<Tastaturrueckgabe> zurueck; // ends while the query's window is there
    fenster_ =
        std::make_unique<PFUse>(AbfrageUmgebung{.store = teile_.kartei,
                                                .zustand = teile_.zustand,
                                                .meldungen = teile_.meldungen,
                                                .zufall = teile_.zufall,
                                                .konfig = teile_.konfig,
                                                .klang = teile_.klang,
                                                .stille = teile_.stille,
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
    if (lage == teile_.konfig.Abfrage)
        return;
    teile_.konfig.Abfrage = lage;
    teile_.konfig.Sichern(4, QString(), QStringLiteral("Die Fensterlage konnte nicht gespeichert werden: "));
}
