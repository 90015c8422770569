// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Dialoge.h"

#include <QList>

#include <deque>
#include <functional>

namespace paukfix {

// Answers file and font dialogs with what was set, else cancels, and keeps what was asked. For tests that
// link the floor of the dialogs.
class TestDialoge final : public Dialoge
{
public:
    QString DateiOeffnen(const DateiDialog &dialog) override
    {
        zumOeffnen.append(dialog);
        return Naechster(dialog);
    }

    QString DateiSpeichern(const DateiDialog &dialog) override
    {
        zumSpeichern.append(dialog);
        return Naechster(dialog);
    }

    std::optional<Schriftwahl> SchriftWaehlen(const Schriftwahl &vorgabe) override
    {
        schriftVorgabe = vorgabe;
        return schrift;
    }

    std::function<void()> beimFragen = [] {};
    QList<DateiDialog> gefragt;                  // all file dialogs
    QList<DateiDialog> zumOeffnen, zumSpeichern; // of these
    std::deque<QString> pfade;
    std::optional<Schriftwahl> schriftVorgabe; // what the font dialog was opened with
    std::optional<Schriftwahl> schrift;

private:
    QString Naechster(const DateiDialog &dialog)
    {
        gefragt.append(dialog);
        beimFragen();
        if (pfade.empty())
            return {};
        QString pfad = pfade.front();
        pfade.pop_front();
        return pfad;
    }
};

} // namespace paukfix
