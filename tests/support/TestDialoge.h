// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Dialoge.h"

#include <QList>

#include <deque>

// Answers file dialogs with the paths that were set, else cancels, and keeps what was asked. For tests that
// link the floor of the dialogs.
class TestDialoge final : public Dialoge
{
public:
    QString DateiOeffnen(const DateiDialog &dialog) override
    {
        zumOeffnen.append(dialog);
        return Naechster();
    }

    QString DateiSpeichern(const DateiDialog &dialog) override
    {
        zumSpeichern.append(dialog);
        return Naechster();
    }

    std::optional<Schriftwahl> SchriftWaehlen(const Schriftwahl &) override { return std::nullopt; }

    QList<DateiDialog> zumOeffnen, zumSpeichern;
    std::deque<QString> pfade;

private:
    QString Naechster()
    {
        if (pfade.empty())
            return {};
        QString pfad = pfade.front();
        pfade.pop_front();
        return pfad;
    }
};
