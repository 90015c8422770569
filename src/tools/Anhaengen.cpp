// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Anhaengen.h"

#include "CardAdd.h"
#include "CardFile.h"
#include "CardFileCheck.h"
#include "DamagedCards.h"
#include "JetCards.h"
#include "JournalFile.h"
#include "SafeFile.h"

#include <optional>

namespace {

bool IstSieSelbst(const CardStore &store, const QString &quelle)
{
    // By position: what stands in the path where the open file's name would stand.
    const qsizetype rest = quelle.size() - store.KarteiPfad.size() - 1;
    if (rest > 0 && quelle.right(rest) == store.CurrentFileName)
        return true;
    return !quelle.isEmpty() && SameFile(VollerPfad(store, quelle), store.CardPath(store.CurrentFileName));
}

// The file alone holds a half of what is meant, and to complete it is to write to it.
void NichtsUnfertiges(const QString &quelle)
{
    if (HasUnfinishedChange(quelle))
        throw StoreError(
            Fehler::Gesperrt,
            QStringLiteral(
                "In der Datei „%1“ ist eine Änderung nicht zu Ende gekommen. Bitte beenden Sie das "
                "Programm, das sie benutzt, oder öffnen Sie sie einmal als Kartei; danach lässt sie "
                "sich anhängen.")
                .arg(quelle));
}

} // namespace

Ausgang KarteiAnhängen(const Werkbank &bank, const QString &quelle, int *anzahl)
{
    CardStore &store = bank.store;
    if (IstSieSelbst(store, quelle)) {
        bank.meldungen.Zeigen(QStringLiteral("Datei kann nicht an sich selbst angehängt werden ") +
                              store.CurrentFileName);
        return Ausgang::Gescheitert;
    }
    std::optional<CardFile> datei;
    std::optional<DamagedCards> beschaedigte; // what a repair would find in it
    std::optional<JetCards> fruehere;         // a card file of the former database engine is read as it is
    const bool offen = Schritt(bank.meldungen, FehlerKontext(), [&] {
        const QString pfad = VollerPfad(store, quelle);
        if (JetFile::Recognises(pfad)) {
            fruehere.emplace(pfad);
        } else {
            try {
                datei.emplace(pfad, CardFile::Access::ReadOnly);
                NichtsUnfertiges(pfad);
                CheckCardFile(datei->Database(), bank.fortschritt);
                CheckCopyable(*datei);
            } catch (const StoreError &fehler) {
                NichtsUnfertiges(pfad);
                datei.reset();
                if (fehler.Number() != Fehler::Beschaedigt)
                    throw;
                beschaedigte.emplace(pfad, bank.fortschritt);
                if (beschaedigte->Cards().empty())
                    throw;
            }
        }
    });
    if (!offen)
        return Ausgang::Gescheitert;

    AddedCards neue;
    bool gespeichert = true;
    try {
        InEinemZug(store.Karten(), [&] {
            neue = fruehere       ? AddCardsOf(store, *fruehere, bank.fortschritt)
                   : beschaedigte ? AddCardsOf(store, *beschaedigte, bank.fortschritt)
                                  : AddCardsOf(store, *datei, bank.fortschritt);
        });
    } catch (const StoreError &fehler) {
        gespeichert = false;
        neue = {.count = 0, .errors = {fehler}};
    }
    datei.reset();
    beschaedigte.reset();
    NeuOeffnen(bank);
    FehlerMelden(bank.meldungen, neue.errors);
    if (!gespeichert)
        return Ausgang::Gescheitert;
    if (anzahl)
        *anzahl = neue.count;
    return neue.errors.empty() ? Ausgang::Gelungen : Ausgang::Teilweise;
}
