// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "NeueKartei.h"

#include "CardBulk.h"
#include "CardFile.h"
#include "CardTransaction.h"
#include "FreshFile.h"
#include "TextHelpers.h"

#include <QFileInfo>
#include <QSet>

#include <algorithm>
#include <utility>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

void NeueKarteiMachen(CardStore &store, const QString &ziel,
                      const std::function<void(CardRecordset &)> &aendern)
{
    const QString quelle = store.CardPath(store.CurrentFileName);
    FreshFile neu(ziel);
    const bool ansehen = store.NurAnsehen();
    if (!ansehen)
        store.CloseCardFile(); // a card file is copied only while it is closed
    neu.Make([&](const QString &pfad) {
        CopyFile(ansehen ? store.Datei().ReadablePath() : quelle, pfad);
        CardFile datei(pfad);
        CardRecordset karten(datei);
        CardTransaction zug(karten);
        aendern(karten);
        zug.Commit();
    });
    neu.TakePlace();
}

Ausgang NeueKartei(const Werkbank &bank, const QString &ziel,
                   const std::function<void(CardRecordset &)> &aendern)
{
    CardStore &store = bank.store;
    const QString alterPfad = store.KarteiPfad;
    QString pfad;
    QString name;
    if (!Step(bank.meldungen, FehlerKontext(), [&] {
            pfad = ZielPfad(store, ziel);
            CheckNameLength(pfad);
        }))
        return Ausgang::Gescheitert;
    bool unveraendert = false;
    const bool gemacht = Step(bank.meldungen, FehlerKontext(), [&] {
        // Another file may stand where the open one stood: what is copied must be what is shown.
        if (!store.NurAnsehen())
            InEinemZug(store.Karten(), [] {});
        unveraendert = true;
        NeueKarteiMachen(store, pfad, aendern);
        store.KarteiPfad = QFileInfo(pfad).absolutePath();
        name = QFileInfo(pfad).fileName();
    });
    if (gemacht) {
        Oeffnen(bank, name);
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

Ausgang ThemenAusfiltern(const Werkbank &bank, const QString &ziel, const QStringList &uebernehmen)
{
    const QSet<QString> bleibt(uebernehmen.begin(), uebernehmen.end());
    return NeueKartei(bank, ziel, [&](CardRecordset &karten) {
        DeleteByTopic(
            karten, [&](const QString &thema) { return bleibt.contains(ThemaSchluessel(thema)); },
            bank.progress);
    });
}

Ausgang KarteiSpiegeln(const Werkbank &bank, const QString &ziel)
{
    return NeueKartei(bank, ziel,
                      [&](CardRecordset &karten) { SwapQuestionAndAnswer(karten, bank.progress); });
}

} // namespace paukfix
