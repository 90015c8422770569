// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardRecordset.h"
#include "CardSource.h"
#include "TextSaetze.h"

#include <optional>
#include <vector>

namespace paukfix {

// Cards as text with all their fields, from which they come back as they were: records of fields in quotes,
// parted by semicolons, the first one with the names of the 52 columns. Numbers stand without quotes, ticks
// as True and False; nothing between two separators is null.

// The text of the card on which the recordset stands, and of the names above them all. Null characters, which
// no text file has, are left out by whoever writes it.
class FelderSchreiber
{
public:
    explicit FelderSchreiber(CardRecordset &karten);

    static QString Kopf();
    QString Karte() const; // throws StoreError where a value cannot be read

private:
    std::vector<std::optional<Field>> felder_; // of each column; a file may lack some
};

// Whether a record names columns of cards, at least those that no card can do without.
bool NenntAlleFelder(const std::vector<Textfeld> &felder);

// The cards of such a text, in its order. Columns may stand in another order, some may be missing, and what a
// spreadsheet makes of ticks and numbers is understood.
class FelderQuelle final : public CardSource
{
public:
    // The text names its fields; those that `ziel` lacks are passed over. Where compartments are not wanted,
    // all cards go to 0. Throws StoreError 13 where quotes do not end.
    FelderQuelle(const Textinhalt &inhalt, const Textform &form, const CardRecordset &ziel, bool mitFaechern);

    int Count() const override { return static_cast<int>(zeilen_.size()); }

    bool Next() override;

    const std::vector<int> &Columns() const override { return spalten_; }

    void Read(int column, CopiedValue &value) override;

    CardPlace Place() const override { return platz_; }

    // Where each card begins in the file, from 1.
    const std::vector<int> &Zeilen() const { return zeilen_; }

    // Cards whose compartment is none, which went to 0.
    const std::vector<int> &OhneFach() const { return ohneFach_; }

private:
    bool NaechsterSatz();
    const Textfeld *Feld(int column) const;
    std::optional<int> Ganzzahl(int column) const;

    TextSaetze saetze_;
    bool mitFaechern_;
    std::vector<Textfeld> felder_;
    std::vector<int> feldDerSpalte_; // of each column of a card; -1: none
    std::vector<int> spalten_;
    CardPlace platz_;
    std::vector<int> zeilen_;
    std::vector<int> ohneFach_; // lines
};

} // namespace paukfix
