// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Werkbank.h"

#include "CardBulk.h"
#include "CardFile.h"
#include "CardTransaction.h"
#include "SafeFile.h"

#include <QDir>
#include <QFileInfo>

#include <optional>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

// Two sentences in a row: the first one gets a full stop where it has none.
QString Saetze(const QString &erster, const QString &zweiter)
{
    const bool endet = !erster.isEmpty() && u".!?"_s.contains(erster.back());
    return erster + (endet ? u" "_s : u". "_s) + zweiter;
}

QString NichtsUebernommen()
{
    return u"Es wurde nichts übernommen."_s;
}

// What is known after a commit that failed. It may be on the disk all the same.
QString Verbleib(const std::optional<BoxState> &vorher, const std::optional<BoxState> &nachher)
{
    if (vorher == nachher)
        return NichtsUebernommen();
    if (!nachher)
        return u"Ob etwas übernommen wurde, ist nicht bekannt."_s;
    return u"Die Änderungen wurden trotzdem gespeichert."_s;
}

} // namespace

QString FehlerKontext()
{
    return u"Leider ist folgender Fehler Aufgetreten: "_s;
}

void FehlerMelden(Meldungen &meldungen, const std::vector<StoreError> &fehler)
{
    for (const StoreError &einer : fehler)
        meldungen.Zeigen((einer.Number() == Fehler::Abgebrochen ? QString() : FehlerKontext()) +
                         einer.Text());
}

bool Versuchen(Meldungen &meldungen, const std::function<void()> &tun)
{
    try {
        tun();
        return true;
    } catch (const StoreError &fehler) {
        FehlerMelden(meldungen, {fehler});
    } catch (const std::exception &fehler) {
        FehlerMelden(meldungen, {StoreError(Fehler::ZuWenigSpeicher, ErrorText(fehler))});
    }
    return false;
}

QString KartenText(int anzahl)
{
    return anzahl == 1 ? u"1 Karte"_s : u"%1 Karten"_s.arg(anzahl);
}

QString Kommen(int anzahl)
{
    return KartenText(anzahl) + (anzahl == 1 ? u" kommt"_s : u" kommen"_s);
}

void InEinemZug(CardRecordset &karten, const std::function<void()> &arbeit)
{
    std::optional<BoxState> vorher;
    bool versucht = false;
    std::optional<CardTransaction> zug;
    try {
        zug.emplace(karten);
        vorher = StateOfBox(karten);
        arbeit();
        versucht = true;
        zug->Commit();
    } catch (const std::exception &fehler) {
        const auto *bekannt = dynamic_cast<const StoreError *>(&fehler);
        std::optional<BoxState> nachher;
        try {
            if (zug)
                zug->Rollback();
            nachher = StateOfBox(karten);
        } catch (const StoreError &) { // the engine rolls back when the file is closed
        }
        if (bekannt && bekannt->Number() == Fehler::Abgebrochen && !versucht)
            throw; // it says so itself
        throw StoreError(
            bekannt ? bekannt->Number() : Fehler::ZuWenigSpeicher,
            Saetze(ErrorText(fehler), versucht ? Verbleib(vorher, nachher) : NichtsUebernommen()));
    }
}

void Oeffnen(const Werkbank &bank, QString &name, Vertrauen vertrauen)
{
    bank.unwiderruflich();
    if (bank.progress)
        bank.progress(0, 0);
    bank.oeffner.OpenCardFile(name, vertrauen);
}

void NeuOeffnen(const Werkbank &bank)
{
    QString name = bank.store.CurrentFileName;
    if (name.isEmpty())
        return;
    const SchritteBewahren schritte(bank.store);
    Oeffnen(bank, name);
}

QString VollerPfad(const CardStore &store, const QString &dateiname)
{
    if (dateiname.isEmpty())
        throw StoreError(Fehler::DateiNichtGefunden, u"Es ist kein Dateiname angegeben."_s);
    return QDir::cleanPath(QDir(store.KarteiPfad).absoluteFilePath(QDir::fromNativeSeparators(dateiname)));
}

void NichtDieOffene(const CardStore &store, const QString &pfad)
{
    if (store.IsOpen() && SameFile(pfad, store.CardPath(store.CurrentFileName)))
        throw StoreError(Fehler::NichtErlaubt,
                         u"Die Datei „%1“ ist die Kartei, die gerade geöffnet ist."_s.arg(pfad));
}

QString ZielPfad(const CardStore &store, const QString &dateiname)
{
    QString pfad = VollerPfad(store, dateiname);
    NichtDieOffene(store, pfad);
    if (QFileInfo(pfad).isDir())
        throw StoreError(Fehler::NichtErlaubt,
                         u"„%1“ ist ein Ordner. Bitte auch den Namen der Datei angeben."_s.arg(pfad));
    CheckReplaceable(pfad);
    return pfad;
}

} // namespace paukfix
