// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardStore.h"
#include "KartenAusText.h"
#include "Progress.h"

#include <QByteArray>
#include <QStringList>

#include <optional>
#include <vector>

namespace paukfix {

// What a text file would give, before it is imported.
struct Importvorschau
{
    std::vector<SimpleCard> erste; // at most 20
    int karten = 0;
    int andere = 0;                // lines with a text but no separator
    std::vector<int> andereZeilen; // the first of them
    int bekannt = 0;               // cards that the box has
    int andereAntwort = 0;         // cards whose question it has with another answer
    Unpassendes unpassend;
    bool nurAnfang = false; // not counted: the file is too large, or nobody wanted to wait
    QString hindernis;      // why nothing can be read
};

// A text file that is to be imported, looked at beforehand: the cards of the open box stay as they are as
// long as it lives.
class Importprobe
{
public:
    // Nothing where there is no such file that can be read.
    static std::optional<Importprobe> Lesen(CardStore &store, const QString &dateiname);

    // What the file makes likely.
    Aufbau Raten(const Zeichensatz &zeichensatz = {}, const std::optional<Textform> &form = {}) const;

    // What the first line has in its fields.
    QStringList ErsteZeile(const Aufbau &aufbau) const;

    // So large that somebody would wait for Ansehen().
    bool DauertLange() const;

    // Where `progress` ends the work, the first cards are there all the same.
    Importvorschau Ansehen(const Aufbau &aufbau, const Progress &progress = {}) const;

private:
    Importprobe(CardStore &store, QByteArray datei, bool ganz);

    void EinfacheKarten(const Textinhalt &inhalt, const Aufbau &aufbau, const Progress &progress,
                        Importvorschau &vorschau) const;
    void GanzeKarten(const Textinhalt &inhalt, const Aufbau &aufbau, const Progress &progress,
                     Importvorschau &vorschau) const;

    CardStore *store_;
    QByteArray datei_;
    bool ganz_;                         // all of it
    std::optional<Kartenabgleich> box_; // nothing where it cannot be read
};

} // namespace paukfix
