// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Anhaengen.h"

#include "CardAdd.h"
#include "CardFile.h"
#include "JetCards.h"
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

// A card file to copy from; one of the former database engine is read as it is.
struct AppendSource
{
    std::optional<CardFile> datei;
    std::optional<JetCards> fruehere;
};

// Throws StoreError where `pfad` is no card file that can be copied.
void OpenAppendSource(AppendSource &quelle, const QString &pfad)
{
    if (JetFile::Recognises(pfad)) {
        quelle.fruehere.emplace(pfad);
    } else {
        quelle.datei.emplace(pfad, CardFile::Access::ReadOnly);
        CheckCopyable(*quelle.datei);
    }
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
    AppendSource offene;
    const bool offen = Schritt(bank.meldungen, FehlerKontext(),
                               [&] { OpenAppendSource(offene, VollerPfad(store, quelle)); });
    if (!offen)
        return Ausgang::Gescheitert;

    AddedCards neue;
    bool gespeichert = true;
    try {
        InEinemZug(store.Karten(), [&] {
            neue = offene.fruehere ? CopyAllCards(store, *offene.fruehere, bank.fortschritt)
                                   : CopyAllCards(store, *offene.datei, bank.fortschritt);
        });
    } catch (const StoreError &fehler) {
        gespeichert = false;
        neue = {.count = 0, .errors = {fehler}};
    }
    offene.datei.reset();
    NeuOeffnen(bank);
    FehlerMelden(bank.meldungen, neue.errors);
    if (!gespeichert)
        return Ausgang::Gescheitert;
    if (anzahl)
        *anzahl = neue.count;
    return neue.errors.empty() ? Ausgang::Gelungen : Ausgang::Teilweise;
}
