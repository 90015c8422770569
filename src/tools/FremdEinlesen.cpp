// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "FremdEinlesen.h"

#include "CardAdd.h"
#include "CardFile.h"
#include "CardMedia.h"
#include "CardTransaction.h"
#include "FreshFile.h"
#include "Vorhandenenwahl.h"

#include <QFileInfo>

#include <array>
#include <string>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

QSet<QString> Genannte(CardRecordset &karten)
{
    QSet<QString> namen;
    for (const MediaName &medium : MediaNames(karten))
        namen.insert(medium.name);
    return namen;
}

Vorabzaehler ZaehlerFuer(CardStore &store)
{
    std::optional<Kartenabgleich> box;
    if (store.IsOpen() && !store.NurAnsehen())
        store.Karten().Beside([&](SQLite::Database &database) { box.emplace(database); });
    return Vorabzaehler(std::move(box));
}

// By its texts: what its pictures and sounds will be called is only known when they are there.
void Zaehlen(Vorabzaehler &zaehler, const Deckkarte &karte)
{
    std::string frage;
    std::array<std::string, 5> antworten;
    zaehler.Karte([&] {
        Karteninhalt inhalt;
        inhalt.typ = AntworttypVon(karte);
        frage = karte.frage.klar.toStdString();
        inhalt.frage = frage;
        for (std::size_t i = 0; i < karte.antworten.size() && i < antworten.size(); ++i) {
            antworten[i] = karte.antworten[i].text.klar.toStdString();
            inhalt.antworten[i] = antworten[i];
            inhalt.richtig[i] = karte.ankreuzen && karte.antworten[i].richtig;
        }
        return inhalt;
    });
}

// All cards of the deck, inside the transaction that is open.
AddedCards Hinzufuegen(const Werkbank &bank, CardStore &kartei, Deckkarten &karten, Vorhandene vorhandene)
{
    AddedCards neue = CopyAllCards(kartei, karten, bank.progress, vorhandene);
    if (karten.Hindernis())
        throw StoreError(*karten.Hindernis());
    return neue;
}

struct Zwischenstand
{
    AddedCards neue;
    Deckbericht bericht;
    qsizetype medien = 0;
};

Zwischenstand InOffene(const Werkbank &bank, Deckquelle &quelle, const QString &name, const Einlesewahl &wahl)
{
    CardStore &store = bank.store;
    Zwischenstand stand;
    const DirectoryLock ort(store.KarteiPfad);
    Beilagen beilagen(ort, store.CurrentFileName);
    Deckkarten karten(quelle, wahl.deck, beilagen, stand.bericht);
    try {
        const Aenderung schritt(store, u"Einlesen von „%1“"_s.arg(name));
        InEinemZug(store.Karten(), [&] {
            stand.neue = Hinzufuegen(bank, store, karten, wahl.vorhandene);
            beilagen.Hinlegen();
        });
        stand.medien = beilagen.Anzahl();
        if (stand.medien > 0)
            beilagen.Abschliessen(Genannte(store.Karten()));
    } catch (const StoreError &) {
        // Whether the cards were stored after all is asked of the file, which is open here.
        if (store.IsOpen())
            Step(bank.meldungen, FehlerKontext(), [&] { beilagen.Abschliessen(Genannte(store.Karten())); });
        throw;
    }
    return stand;
}

Zwischenstand InNeue(const Werkbank &bank, Deckquelle &quelle, const QString &ziel, const Einlesewahl &wahl)
{
    Zwischenstand stand;
    FreshFile neu(ziel);
    const QFileInfo ort(ziel);
    std::optional<DirectoryLock> anderswo; // where the new file's name is a link
    if (!SameFile(neu.Lock().Directory(), ort.absolutePath()))
        anderswo.emplace(ort.absolutePath());
    Beilagen beilagen(anderswo ? *anderswo : neu.Lock(), ort.fileName());
    Deckkarten karten(quelle, wahl.deck, beilagen, stand.bericht);
    QSet<QString> genannt;
    neu.Make([&](const QString &pfad) {
        CardFile::Create(pfad);
        auto datei = std::make_unique<CardFile>(pfad);
        CardFile::WriteUnsynced(datei->Database()); // TakePlace syncs it
        CardStore eigene;
        eigene.ZumFuellen(std::move(datei));
        CardTransaction zug(eigene.Karten());
        stand.neue = Hinzufuegen(bank, eigene, karten, Vorhandene::Uebernehmen);
        zug.Commit();
        if (beilagen.Anzahl() > 0)
            genannt = Genannte(eigene.Karten());
    });
    beilagen.Hinlegen();
    neu.TakePlace();
    stand.medien = beilagen.Anzahl();
    beilagen.Abschliessen(genannt);
    return stand;
}

} // namespace

Deckvorschau DeckAnsehen(const Werkbank &bank, Deckquelle &quelle)
{
    Deckvorschau vorschau;
    Vorabzaehler zaehler = ZaehlerFuer(bank.store);
    vorschau.inhalt = quelle.Inhalt();
    quelle.VonVorn();
    for (Deckkarte karte; quelle.Naechste(karte, vorschau.bericht);) {
        if (vorschau.karten++ == 0) {
            vorschau.beispielFrage = karte.frage.klar;
            vorschau.beispielAntwort = karte.antworten.front().text.klar;
        }
        vorschau.hatSchlagwoerter |= !karte.schlagwoerter.isEmpty();
        vorschau.hatStapel |= !karte.stapel.isEmpty();
        vorschau.hatLernstand |= karte.fach != 0;
        Zaehlen(zaehler, karte);
        Melden(bank.progress, quelle.Gelesen(), vorschau.inhalt.karten);
    }
    quelle.VonVorn();
    vorschau.bekannt = zaehler.Bekannt();
    vorschau.andereAntwort = zaehler.AndereAntwort();
    return vorschau;
}

Ausgang FremdEinlesen(const Werkbank &bank, Deckquelle &quelle, const QString &name, const Einlesewahl &wahl,
                      Eingelesenes &ergebnis)
{
    CardStore &store = bank.store;
    Zwischenstand stand;
    QString neuerName;
    const QString alterPfad = store.KarteiPfad;
    const bool gelungen = Versuchen(bank.meldungen, [&] {
        quelle.VonVorn();
        if (!wahl.neueKartei) {
            stand = InOffene(bank, quelle, name, wahl);
            return;
        }
        const QString ziel = ZielPfad(store, *wahl.neueKartei);
        CheckNameLength(ziel);
        stand = InNeue(bank, quelle, ziel, wahl);
        store.KarteiPfad = QFileInfo(ziel).absolutePath();
        neuerName = QFileInfo(ziel).fileName();
    });
    if (wahl.neueKartei && gelungen) {
        Oeffnen(bank, neuerName, Vertrauen::EbenGeschrieben);
        if (!store.IsOpen()) {
            store.KarteiPfad = alterPfad;
            NeuOeffnen(bank);
            return Ausgang::Gescheitert;
        }
    } else if (!wahl.neueKartei) {
        NeuOeffnen(bank);
    }
    if (!gelungen)
        return Ausgang::Gescheitert;
    FehlerMelden(bank.meldungen, stand.neue.errors);
    ergebnis = {.karten = stand.neue.count,
                .ausgelassen = stand.neue.leftOut,
                .erneuert = stand.neue.renewed,
                .medien = stand.medien,
                .rest = stand.bericht.Text()};
    return stand.neue.errors.empty() ? Ausgang::Gelungen : Ausgang::Teilweise;
}

} // namespace paukfix
