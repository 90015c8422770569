// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "NeueKartei.h"

#include "CardBulk.h"
#include "CardFile.h"
#include "CardMedia.h"
#include "CardTransaction.h"
#include "FreshFile.h"
#include "TextHelpers.h"

#include <QFileInfo>
#include <QSet>

#include <algorithm>
#include <optional>
#include <utility>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

// A new card file is made of the open one by `aendern`, at `ziel`.
struct Vorhaben
{
    QString ziel;
    Medien medien = Medien::Bleiben;
    std::function<void(CardRecordset &)> aendern;
};

// The report on what did not come along.
QString NeueKarteiMachen(const Werkbank &bank, const Vorhaben &vorhaben)
{
    CardStore &store = bank.store;
    const QString quelle = store.CardPath(store.CurrentFileName);
    const QFileInfo ziel(vorhaben.ziel);
    FreshFile neu(vorhaben.ziel);
    std::optional<DirectoryLock> anderswo; // where the new file's name is a link
    std::optional<Medienzug> zug;
    if (vorhaben.medien == Medien::Kommen && !SameFile(store.KarteiPfad, ziel.absolutePath())) {
        if (!SameFile(neu.Lock().Directory(), ziel.absolutePath()))
            anderswo.emplace(ziel.absolutePath());
        zug.emplace(bank, store.KarteiPfad, anderswo ? *anderswo : neu.Lock(), ziel.fileName());
    }
    const bool ansehen = store.NurAnsehen();
    if (!ansehen)
        store.CloseCardFile(); // a card file is copied only while it is closed
    neu.Make([&](const QString &pfad) {
        CopyFile(ansehen ? store.Datei().ReadablePath() : quelle, pfad);
        CardFile datei(pfad);
        CardRecordset karten(datei);
        CardTransaction arbeit(karten);
        vorhaben.aendern(karten);
        if (zug) {
            for (const MediaName &medium : MediaNames(karten))
                zug->Mitnahme().Mitnehmen(medium.name, medium.cards);
            RenameMedia(karten, zug->Mitnahme().Umbenannt());
        }
        arbeit.Commit();
    });
    if (zug)
        zug->Hinlegen();
    neu.TakePlace();
    return zug ? zug->Bericht() : QString();
}

Ausgang NeueKartei(const Werkbank &bank, Vorhaben vorhaben)
{
    CardStore &store = bank.store;
    const QString alterPfad = store.KarteiPfad;
    QString name;
    if (!Versuchen(bank.meldungen, [&] {
            vorhaben.ziel = ZielPfad(store, vorhaben.ziel);
            CheckNameLength(vorhaben.ziel);
        }))
        return Ausgang::Gescheitert;
    bool unveraendert = false;
    QString bericht;
    const bool gemacht = Versuchen(bank.meldungen, [&] {
        // Another file may stand where the open one stood: what is copied must be what is shown.
        if (!store.NurAnsehen())
            InEinemZug(store.Karten(), [] {});
        unveraendert = true;
        bericht = NeueKarteiMachen(bank, vorhaben);
        store.KarteiPfad = QFileInfo(vorhaben.ziel).absolutePath();
        name = QFileInfo(vorhaben.ziel).fileName();
    });
    if (gemacht) {
        Oeffnen(bank, name);
        MedienBerichten(bank.meldungen, bericht);
        if (store.IsOpen())
            return Ausgang::Gelungen;
    }
    store.KarteiPfad = alterPfad;
    if (!unveraendert || !store.IsOpen())
        NeuOeffnen(bank);
    return Ausgang::Gescheitert;
}

} // namespace

QString ThemaSchluessel(QString thema)
{
    CleanFieldText(thema, {});
    const bool leer = std::all_of(thema.begin(), thema.end(), [](QChar zeichen) { return zeichen == u' '; });
    return leer ? u"<leeres Themafeld>"_s : thema;
}

QStringList Themen(CardRecordset &karten, Field thema, QHash<QString, int> *zahlen)
{
    QStringList themen;
    QHash<QString, int> bekannt;
    for (karten.MoveFirst(); !karten.AtEOF(); karten.MoveNext()) {
        const QString schluessel = ThemaSchluessel(thema.Text());
        if (++bekannt[schluessel] == 1)
            themen << schluessel;
    }
    if (zahlen)
        *zahlen = std::move(bekannt);
    return themen;
}

Ausgang ThemenAusfiltern(const Werkbank &bank, const QString &ziel, const QStringList &uebernehmen,
                         Medien medien)
{
    const QSet<QString> bleibt(uebernehmen.begin(), uebernehmen.end());
    return NeueKartei(
        bank, {ziel, medien, [&](CardRecordset &karten) {
                   DeleteByTopic(
                       karten, [&](const QString &thema) { return bleibt.contains(ThemaSchluessel(thema)); },
                       bank.progress);
               }});
}

Ausgang KarteiSpiegeln(const Werkbank &bank, const QString &ziel, Medien medien)
{
    return NeueKartei(
        bank, {ziel, medien, [&](CardRecordset &karten) { SwapQuestionAndAnswer(karten, bank.progress); }});
}

} // namespace paukfix
