// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Oeffnung.h"

#include "CardFile.h"
#include "CardFileCheck.h"
#include "FreshFile.h"
#include "JetConversion.h"
#include "JetSource.h"
#include "Repair.h"

#include <QFileInfo>
#include <QScopeGuard>

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
bool OpenWhole(CardStore &kartei, const QString &path, const Oeffnungsmelder &melder)
{
    ClearFreshFiles(QFileInfo(Resolved(path)).path()); // reads the card file where something lies beside it
    auto file = std::make_unique<CardFile>(path);
    CheckCardFile(file->Database(), melder.pruefung());
    RemoveRepairLeftovers(path); // the lock is ours: nobody is repairing the file
    const bool lacksSums = file->LacksPageSums();
    kartei.Uebernehmen(std::move(file));
    kartei.HighestCardNumber = kartei.FachInfo.Zaehlen(kartei.Karten(), melder.gezaehlt);
    return lacksSums;
}

} // namespace

Oeffnung Oeffnen(CardStore &kartei, const QString &fileName, const Clock &clock,
                 const Oeffnungsmelder &melder)
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
        lacksSums = OpenWhole(kartei, path, melder);
    } catch (const StoreError &error) {
        return {IsDamage(error) && !former ? Ausgang::Beschaedigt : Ausgang::Gescheitert, error};
    } catch (const std::exception &error) {
        return {Ausgang::Gescheitert, StoreError(Fehler::ZuWenigSpeicher, ErrorText(error))};
    }
    nothingHalf.dismiss();
    kartei.CurrentFileName = fileName;
    kartei.FehlerStatus = 0;
    kartei.sitzung.StartSessionTally(clock.Now(), kartei.FachInfo);
    return {Ausgang::Offen, {}, lacksSums};
}

void KarteiAnlegen(CardStore &kartei, const QString &fileName)
{
    const QString path = kartei.CardPath(fileName);
    const bool isOpenOne = kartei.IsOpen() && SameFile(path, kartei.OffenerPfad());
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
