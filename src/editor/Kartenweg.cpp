// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Kartenweg.h"

namespace paukfix {

using namespace Qt::StringLiterals;

bool OhneKarten(const CardRecordset &karten)
{
    return karten.AtBOF() && karten.AtEOF();
}

bool AmEnde(const CardRecordset &karten, Richtung richtung)
{
    return richtung == Richtung::Vor ? karten.AtEOF() : karten.AtBOF();
}

void Bewegen(CardRecordset &karten, Richtung richtung)
{
    if (richtung == Richtung::Vor)
        karten.MoveNext();
    else
        karten.MovePrevious();
}

bool AufKarte(const CardFieldHandles &felder)
{
    try {
        return !felder.FrageNr.IsNull();
    } catch (const StoreError &fehler) {
        if (fehler.Number() == Fehler::KeinDatensatz)
            return false;
        throw;
    }
}

void Ordnen(CardRecordset &karten, QStringView index) noexcept
{
    try {
        karten.SetIndex(index);
    } catch (const StoreError &) { // the next move says what is wrong
    }
}

NachNummer::NachNummer(CardRecordset &karten) : karten_(karten), vorher_(karten.Index())
{
    karten.SetIndex(u"FrageNr");
}

NachNummer::~NachNummer()
{
    Ordnen(karten_, vorher_);
}

CardPosition Platz(CardRecordset &karten, const CardPosition &vorher, std::optional<Richtung> schritt)
{
    if (schritt && vorher.number > 0)
        return {vorher.number + (schritt == Richtung::Vor ? 1 : -1), vorher.of};
    try {
        return PlaceOfCurrent(karten);
    } catch (const StoreError &) {
        return {};
    }
}

} // namespace paukfix
