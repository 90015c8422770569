// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Lauftext.h"

#include <QString>
#include <QStringView>

#include <string>
#include <utility>
#include <vector>

namespace paukfix {

// A tag of HTML with its attributes.
struct HtmlTag
{
    std::u16string name; // in small letters
    std::vector<std::pair<QStringView, QStringView>> attribute;
    bool leer = false;    // ends itself: <x/>
    qsizetype laenge = 0; // from the name up to behind the ">"

    bool Hat(QStringView attribut) const;
    // Entities are resolved.
    QString Wert(QStringView attribut) const;
};

// Reads a tag from its name on. One without an end goes up to the end of the text.
HtmlTag HtmlTagLesen(QStringView text);

// The value of an attribute, its entities resolved.
QString HtmlAttribut(QStringView wert);

// How a text looks at some place of a page.
struct HtmlStil
{
    Laufformat format;
    Ausrichtung ausrichtung = Ausrichtung::Links;
    bool woertlich = false; // white space counts as it stands
    bool verborgen = false;
};

// What a tag changes of it, by its name, its attributes and its style. True where it sets a background, which
// a card does not have.
bool StilAnwenden(HtmlStil &stil, const HtmlTag &tag, QStringList &schriften);

} // namespace paukfix
