// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Oeffnung.h"

#include "CardFile.h"
#include "CardFileCheck.h"
#include "CardSnapshot.h"
#include "FreshFile.h"
#include "JetConversion.h"
#include "JetSource.h"
#include "JournalFile.h"
#include "Repair.h"

#include <QFileInfo>
#include <QScopeGuard>
#include <sqlite3.h>

#include <malloc.h>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

// What the repair can mend: damage of the file, and cards with a place or a number that no card can have.
bool IsDamage(const StoreError &error)
{
    switch (error.Number()) {
    case Fehler::Beschaedigt:
    case Fehler::IndexAusserhalb:
    case Fehler::TypUnvertraeglich:
    case Fehler::NullUngueltig:
        return true;
    case Fehler::Ueberlauf:
        return dynamic_cast<const TooManyCards *>(&error) == nullptr;
    default:
        return false;
    }
}

// Whether GivePageSums can give the file the sums of its pages.
bool OpenWhole(CardStore &kartei, const QString &path, const Oeffnungsmelder &melder, Vertrauen vertrauen)
{
    ClearFreshFiles(QFileInfo(Resolved(path)).path()); // reads the card file where something lies beside it
    auto file = std::make_unique<CardFile>(path);
    if (vertrauen == Vertrauen::Keines)
        CheckCardFile(file->Database(), melder.pruefung());
    RemoveRepairLeftovers(path); // the lock is ours: nobody is repairing the file
    const bool lacksSums = file->LacksPageSums();
    kartei.Uebernehmen(std::move(file));
    kartei.HighestCardNumber = kartei.FachInfo.Zaehlen(kartei.Karten(), melder.gezaehlt);
    return lacksSums;
}

// Whether another program has left off in the midst of a change.
bool OpenCopy(CardStore &kartei, const QString &path, const Oeffnungsmelder &melder)
{
    auto copy = std::make_unique<CardSnapshot>(path);
    // What stands in a log is finished.
    const bool unfinished =
        !QFileInfo::exists(CompanionOf(copy->Path(), "-wal")) && HasUnfinishedChange(copy->Path());
    WithPlaceNamed(copy->Path(), path, [&] {
        if (IsJetFile(copy->Path()))
            ConvertJetFile(copy->Path());
        CardFile sound(copy->Path()); // ends what another program has not finished
        CheckCardFile(sound.Database(), melder.pruefung());
    });
    kartei.Uebernehmen(std::make_unique<CardFile>(path, std::move(copy)));
    kartei.HighestCardNumber = kartei.FachInfo.Zaehlen(kartei.Karten(), melder.gezaehlt);
    return unfinished;
}

// Check and walk have filled the engine's cache with all of the box, while a learner needs a card at a time.
void SpeicherZurueckgeben(CardStore &kartei)
{
    kartei.Karten().Beside(
        [](SQLite::Database &database) { sqlite3_db_release_memory(database.getHandle()); });
    malloc_trim(0);
}

Oeffnung Geoeffnet(CardStore &kartei, const QString &fileName, const Clock &clock)
{
    kartei.CurrentFileName = fileName;
    kartei.FehlerStatus = 0;
    kartei.sitzung.StartSessionTally(clock.Now(), kartei.FachInfo);
    SpeicherZurueckgeben(kartei);
    return {.ausgang = Oeffnung::Ausgang::Offen, .fehler = {}};
}

} // namespace

Oeffnung Oeffnen(CardStore &kartei, const QString &fileName, const Clock &clock,
                 const Oeffnungsmelder &melder, Vertrauen vertrauen)
{
    using Ausgang = Oeffnung::Ausgang;
    kartei.CloseCardFile();
    auto nothingHalf = qScopeGuard([&] { kartei.CloseCardFile(); });
    const QString path = kartei.CardPath(fileName);
    bool former = false;
    bool lacksSums = false;
    try {
        former = IsJetFile(path);
        if (former) {
            // What could not be opened afterwards, or not be read, is not worth a question.
            CheckAccess(path, CardFile::Access::Exclusive);
            CheckConvertible(path);
            return {
                Ausgang::AltesFormat,
                StoreError(Fehler::FormatUnbekannt,
                           u"Die Datei „%1“ hat noch das alte Dateiformat und wurde nicht umgewandelt."_s.arg(
                               path))};
        }
        lacksSums = OpenWhole(kartei, path, melder, vertrauen);
    } catch (const StoreError &error) {
        return {IsDamage(error) && !former ? Ausgang::Beschaedigt : Ausgang::Gescheitert, error};
    } catch (const std::exception &error) {
        return {Ausgang::Gescheitert, StoreError(Fehler::ZuWenigSpeicher, ErrorText(error))};
    }
    nothingHalf.dismiss();
    Oeffnung oeffnung = Geoeffnet(kartei, fileName, clock);
    oeffnung.ohnePruefsummen = lacksSums;
    return oeffnung;
}

bool IstAnsehbar(const CardStore &kartei, const QString &fileName, const StoreError &fehler)
{
    if (fehler.Number() != Fehler::Gesperrt && fehler.Number() != Fehler::NichtErlaubt)
        return false;
    try {
        CheckAccess(kartei.CardPath(fileName), CardFile::Access::ReadOnly);
        return true;
    } catch (const StoreError &) {
        return false;
    }
}

Oeffnung ZumAnsehenOeffnen(CardStore &kartei, const QString &fileName, const Clock &clock,
                           const Oeffnungsmelder &melder)
{
    kartei.CloseCardFile();
    auto nothingHalf = qScopeGuard([&] { kartei.CloseCardFile(); });
    bool unfinished = false;
    try {
        unfinished = OpenCopy(kartei, kartei.CardPath(fileName), melder);
    } catch (const StoreError &error) {
        return {Oeffnung::Ausgang::Gescheitert, error};
    } catch (const std::exception &error) {
        return {Oeffnung::Ausgang::Gescheitert, StoreError(Fehler::ZuWenigSpeicher, ErrorText(error))};
    }
    nothingHalf.dismiss();
    Oeffnung oeffnung = Geoeffnet(kartei, fileName, clock);
    oeffnung.unfertig = unfinished;
    return oeffnung;
}

void KarteiAnlegen(CardStore &kartei, const QString &fileName)
{
    const QString path = kartei.CardPath(fileName);
    const bool isOpenOne = kartei.IsOpen() && !kartei.NurAnsehen() && SameFile(path, kartei.OffenerPfad());
    CheckNameLength(path);
    if (!isOpenOne)
        CheckReplaceable(path); // another program may be learning with it
    FreshFile fresh(path);
    fresh.Make(CardFile::Create);
    if (isOpenOne)
        kartei.CloseCardFile(); // a card file is never unlinked under the engine
    fresh.TakePlace();
}

} // namespace paukfix
