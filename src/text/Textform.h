// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "TextSaetze.h"

#include <optional>

namespace paukfix {

// The form that a text makes likely, by its beginning: Tab, ";", "," or "#", with quotes only where they do
// what quotes are for, or most fields have them. Nothing where no line has a separator.
std::optional<Textform> TextformRaten(const Textinhalt &inhalt);

// Which fields of a record are question, answer and topic, from 0; -1: none is.
struct Spalten
{
    int frage = 0;
    int antwort = 1;
    int thema = 2;

    bool operator==(const Spalten &) const = default;
};

// What a record of words that stand over columns ("Frage", "front", "Deutsch") tells of these; nothing where
// it is none.
std::optional<Spalten> UeberschriftRaten(const std::vector<Textfeld> &felder);

} // namespace paukfix
