// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Meldungen.h"

namespace paukfix {

// The real message boxes: modal over the active window, titled with the application title of the moment,
// German whatever the desktop's language. Texts are shown as they are, never as markup.
class MeldungenFenster final : public Meldungen
{
public:
    ~MeldungenFenster() override;

    void Zeigen(const QString &text, Symbol symbol = Symbol::Keins) override;
    Antwort Fragen(const QString &text, Antwort vorgabe = Antwort::Ja) override;
    qsizetype Waehlen(const QString &text, const QStringList &knoepfe, qsizetype abbruch) override;
    void Bericht(const QString &titel, const QString &text) override;
    void Sanduhr(bool an) override;

private:
    bool sanduhr_ = false;
};

// Installs the toolkit's own German texts in the running application. False when the catalogue is not
// installed.
bool DeutscheTexte();

} // namespace paukfix
