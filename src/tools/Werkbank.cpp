// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Werkbank.h"

#include "CardBulk.h"
#include "CardFile.h"
#include "SafeFile.h"

#include <QDir>
#include <QFileInfo>

#include <optional>

namespace {

// Two sentences in a row: the first one gets a full stop where it has none.
QString Saetze(const QString &erster, const QString &zweiter)
{
    const bool endet = !erster.isEmpty() && QStringLiteral(".!?").contains(erster.back());
    return erster + (endet ? QStringLiteral(" ") : QStringLiteral(". ")) + zweiter;
}

QString NichtsUebernommen()
{
    return QStringLiteral("Es wurde nichts übernommen.");
}

// What is known after a commit that failed. It may be on the disk all the same.
QString Verbleib(const std::optional<BoxState> &vorher, const std::optional<BoxState> &nachher)
{
    if (vorher == nachher)
        return NichtsUebernommen();
    if (!nachher)
        return QStringLiteral("Ob etwas übernommen wurde, ist nicht bekannt.");
    return QStringLiteral("Die Änderungen wurden trotzdem gespeichert.");
}

} // namespace

QString FehlerKontext()
{
    return QStringLiteral("Leider ist folgender Fehler Aufgetreten: ");
}

void FehlerMelden(Meldungen &meldungen, const std::vector<StoreError> &fehler)
{
    for (const StoreError &einer : fehler)
        Schritt(meldungen, FehlerKontext(), [&] { throw einer; });
}

QString KartenText(int anzahl)
{
    return anzahl == 1 ? QStringLiteral("1 Karte") : QStringLiteral("%1 Karten").arg(anzahl);
}

void InEinemZug(CardRecordset &karten, const std::function<void()> &arbeit)
{
    std::optional<BoxState> vorher;
    bool versucht = false;
    try {
        karten.BeginTrans();
        vorher = StateOfBox(karten);
        arbeit();
        versucht = true;
        karten.CommitTrans();
    } catch (const std::exception &fehler) {
        const auto *bekannt = dynamic_cast<const StoreError *>(&fehler);
        std::optional<BoxState> nachher;
        try {
            karten.Rollback();
            nachher = StateOfBox(karten);
        } catch (const StoreError &) { // the engine rolls back when the file is closed
        }
        throw StoreError(
            bekannt ? bekannt->Number() : Fehler::ZuWenigSpeicher,
            Saetze(ErrorText(fehler), versucht ? Verbleib(vorher, nachher) : NichtsUebernommen()));
    }
}

void Oeffnen(const Werkbank &bank, QString &name)
{
    if (bank.fortschritt)
        bank.fortschritt(0, 0);
    bank.oeffner.OpenCardFile(name);
}

void NeuOeffnen(const Werkbank &bank)
{
    QString name = bank.store.CurrentFileName;
    if (!name.isEmpty())
        Oeffnen(bank, name);
}

QString VollerPfad(const CardStore &store, const QString &dateiname)
{
    if (dateiname.isEmpty())
        throw StoreError(Fehler::DateiNichtGefunden, QStringLiteral("Es ist kein Dateiname angegeben."));
    return QDir::cleanPath(QDir(store.KarteiPfad).absoluteFilePath(QDir::fromNativeSeparators(dateiname)));
}

void NichtDieOffene(const CardStore &store, const QString &pfad)
{
    if (store.IsOpen() && SameFile(pfad, store.CardPath(store.CurrentFileName)))
        throw StoreError(Fehler::NichtErlaubt,
                         QStringLiteral("Die Datei „%1“ ist die Kartei, die gerade geöffnet ist.").arg(pfad));
}

QString ZielPfad(const CardStore &store, const QString &dateiname)
{
    QString pfad = VollerPfad(store, dateiname);
    NichtDieOffene(store, pfad);
    if (QFileInfo(pfad).isDir())
        throw StoreError(
            Fehler::NichtErlaubt,
            QStringLiteral("„%1“ ist ein Ordner. Bitte auch den Namen der Datei angeben.").arg(pfad));
    CheckReplaceable(pfad);
    return pfad;
}
