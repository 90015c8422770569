// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Anhaengen.h"

#include "CardAdd.h"
#include "CardFileSource.h"
#include "ContentPlaces.h"
#include "DamagedCards.h"
#include "JetSource.h"
#include "JournalFile.h"
#include "SafeFile.h"
#include "Vorhandenenwahl.h"

#include <QFileInfo>

#include <memory>

namespace paukfix {

using namespace Qt::StringLiterals;

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
            u"In der Datei „%1“ ist eine Änderung nicht zu Ende gekommen. Bitte beenden Sie das "
            u"Programm, das sie benutzt, oder öffnen Sie sie einmal als Kartei; danach lässt sie "
            u"sich anhängen."_s.arg(quelle));
}

// The cards of the file at `pfad`: of a sound card file, of one of the former database engine, or what a
// repair would find in a damaged one. Throws StoreError where it has none that can be copied.
std::unique_ptr<CardSource> OpenAppendSource(const QString &pfad, const Progress &progress)
{
    if (IsJetFile(pfad))
        return OpenJetCards(pfad);
    try {
        return std::make_unique<CardFileSource>(pfad, progress);
    } catch (const StoreError &fehler) {
        NichtsUnfertiges(pfad);
        if (fehler.Number() != Fehler::Beschaedigt)
            throw;
        auto beschaedigte = OpenDamagedCards(pfad, progress);
        if (beschaedigte->Count() == 0)
            throw;
        return beschaedigte;
    }
}

// The cards of the sound card file at `pfad`, and which of them the open box has.
Anhang Gezaehlt(CardStore &store, const QString &pfad)
{
    CardFileSource quelle(pfad);
    std::optional<Kartenabgleich> box;
    store.Karten().Beside([&](SQLite::Database &database) { box.emplace(database); });
    Vorabzaehler zaehler(std::move(box));
    const std::vector<int> &spalten = quelle.Columns();
    const ContentPlaces stellen(spalten);
    std::vector<CopiedValue> werte(spalten.size());
    while (quelle.Next()) {
        for (std::size_t i = 0; i < werte.size(); ++i)
            quelle.Read(spalten[i], werte[i]);
        zaehler.Karte([&] { return stellen.Of(werte); });
    }
    return {.karten = quelle.Count(),
            .medien = {},
            .bekannt = zaehler.Bekannt(),
            .andereAntwort = zaehler.AndereAntwort()};
}

} // namespace

Ausgang KarteiAnhaengen(const Werkbank &bank, const QString &quelle, Medien medien, Angehaengt *angehaengt,
                        Vorhandene vorhandene)
{
    CardStore &store = bank.store;
    if (IstSieSelbst(store, quelle)) {
        bank.meldungen.Zeigen(u"Datei kann nicht an sich selbst angehängt werden "_s + store.CurrentFileName);
        return Ausgang::Gescheitert;
    }
    std::unique_ptr<CardSource> offene;
    const bool offen = Versuchen(
        bank.meldungen, [&] { offene = OpenAppendSource(VollerPfad(store, quelle), bank.progress); });
    if (!offen)
        return Ausgang::Gescheitert;

    AddedCards neue;
    bool gespeichert = true;
    std::optional<DirectoryLock> ort;
    std::optional<Medienzug> zug;
    try {
        const QString von = QFileInfo(VollerPfad(store, quelle)).absolutePath();
        if (medien == Medien::Kommen && !SameFile(von, store.KarteiPfad)) {
            ort.emplace(store.KarteiPfad);
            zug.emplace(bank, von, *ort, store.CurrentFileName);
        }
        const Aenderung schritt(store, u"Anhängen von „%1“"_s.arg(QFileInfo(quelle).fileName()));
        InEinemZug(store.Karten(), [&] {
            if (!zug) {
                neue = CopyAllCards(store, *offene, bank.progress, vorhandene);
                return;
            }
            MitMedien karten(*offene, zug->Mitnahme());
            neue = CopyAllCards(store, karten, bank.progress, vorhandene);
            if (karten.Hindernis())
                throw StoreError(*karten.Hindernis());
            zug->Hinlegen();
        });
    } catch (const StoreError &fehler) {
        gespeichert = false;
        neue = {};
        neue.errors = {fehler};
    }
    offene.reset();
    QString bericht;
    qsizetype kopiert = 0;
    if (zug && store.IsOpen()) {
        zug->Abschliessen(store.Karten());
        bericht = zug->Bericht();
        kopiert = zug->Anzahl();
    }
    zug.reset();
    ort.reset();
    NeuOeffnen(bank);
    FehlerMelden(bank.meldungen, neue.errors);
    if (!neue.remark.isEmpty())
        bank.meldungen.Zeigen(neue.remark);
    if (!gespeichert)
        return Ausgang::Gescheitert;
    MedienBerichten(bank.meldungen, bericht);
    if (angehaengt)
        *angehaengt = {
            .karten = neue.count, .medien = kopiert, .ausgelassen = neue.leftOut, .erneuert = neue.renewed};
    return neue.errors.empty() ? Ausgang::Gelungen : Ausgang::Teilweise;
}

std::optional<Anhang> AnhangIn(CardStore &store, const QString &quelle)
{
    try {
        if (quelle.isEmpty() || IstSieSelbst(store, quelle))
            return std::nullopt;
        const QString pfad = VollerPfad(store, quelle);
        if (!QFileInfo(pfad).isFile() || IsJetFile(pfad))
            return std::nullopt;
        Anhang anhang = Gezaehlt(store, pfad);
        CardFile datei(pfad, CardFile::Access::ReadOnly);
        anhang.medien = MediaNames(datei.Database());
        return anhang;
    } catch (const std::exception &) { // told when it is to be appended
        return std::nullopt;
    }
}

} // namespace paukfix
