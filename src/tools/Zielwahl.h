// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardStore.h"
#include "Dialoge.h"
#include "Meldungen.h"

#include <QString>

namespace paukfix {

// The file that a tool is to make: chosen in the save dialog, or typed. What speaks against it is reported.
class Zielwahl
{
public:
    Zielwahl(const CardStore &store, Dialoge &dialoge, Meldungen &meldungen);

    // Asks for the file; the save dialog asks whether to replace one. Empty when it is cancelled.
    QString Waehlen(const DateiDialog &dialog);
    // Whether the tool may make `ziel`. Whether to replace a file that was not chosen in the save dialog is
    // asked here.
    bool DarfErstellen(const QString &ziel);
    // Whether `name` is that of a card file.
    bool IstKarteiname(const QString &name);

private:
    const CardStore &store_;
    Dialoge &dialoge_;
    Meldungen &meldungen_;
    QString gewaehlt_;
};

} // namespace paukfix
