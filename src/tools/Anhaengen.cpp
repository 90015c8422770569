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

// Where the engine cannot read the file: it alone holds a half of what is meant, and to complete it is to
// write to it.
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

// A card file to copy from; one of the former database engine is read as it is.
struct AppendSource
{
    std::optional<CardFile> datei;
    std::optional<DamagedCards> beschaedigte; // what a repair would find in it
    std::optional<JetCards> fruehere;
};

// Throws StoreError where `pfad` is no card file that can be copied.
void OpenAppendSource(AppendSource &quelle, const QString &pfad, const Fortschritt &fortschritt)
{
    if (JetFile::Recognises(pfad)) {
        quelle.fruehere.emplace(pfad);
        return;
    }
    try {
        quelle.datei.emplace(pfad, CardFile::Access::ReadOnly);
        CheckCardFile(quelle.datei->Database(), fortschritt);
        CheckCopyable(*quelle.datei);
    } catch (const StoreError &fehler) {
        NichtsUnfertiges(pfad);
        quelle.datei.reset();
        if (fehler.Number() != Fehler::Beschaedigt)
            throw;
        quelle.beschaedigte.emplace(pfad, fortschritt);
        if (quelle.beschaedigte->Cards().empty())
            throw;
    }
}

} // namespace

Ausgang KarteiAnhaengen(const Werkbank &bank, const QString &quelle, int *anzahl)
{
    CardStore &store = bank.store;
    if (IstSieSelbst(store, quelle)) {
        bank.meldungen.Zeigen(QStringLiteral("Datei kann nicht an sich selbst angehängt werden ") +
                              store.CurrentFileName);
        return Ausgang::Gescheitert;
    }
    AppendSource offene;
    const bool offen = Schritt(bank.meldungen, FehlerKontext(), [&] {
        OpenAppendSource(offene, VollerPfad(store, quelle), bank.fortschritt);
    });
    if (!offen)
        return Ausgang::Gescheitert;

    AddedCards neue;
    bool gespeichert = true;
    try {
        InEinemZug(store.Karten(), [&] {
            neue = offene.fruehere       ? CopyAllCards(store, *offene.fruehere, bank.fortschritt)
                   : offene.beschaedigte ? CopyAllCards(store, *offene.beschaedigte, bank.fortschritt)
                                         : CopyAllCards(store, *offene.datei, bank.fortschritt);
        });
    } catch (const StoreError &fehler) {
        gespeichert = false;
        neue = {.count = 0, .errors = {fehler}, .remark = {}};
    }
    offene.datei.reset();
    offene.beschaedigte.reset();
    NeuOeffnen(bank);
    FehlerMelden(bank.meldungen, neue.errors);
    if (!neue.remark.isEmpty())
        bank.meldungen.Zeigen(neue.remark);
    if (!gespeichert)
        return Ausgang::Gescheitert;
    if (anzahl)
        *anzahl = neue.count;
    return neue.errors.empty() ? Ausgang::Gelungen : Ausgang::Teilweise;
}
