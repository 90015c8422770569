// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "DamagedCards.h"

#include "CardFile.h"
#include "DamagedState.h"
#include "EngineLocks.h"
#include "FileHandle.h"
#include "SalvagedSource.h"

#include <fcntl.h>
#include <memory>
#include <utility>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

FileHandle OpenLocked(const QString &path)
{
    CheckAccess(path, CardFile::Access::ReadOnly);
    FileHandle file = OpenFile(path, O_RDONLY);
    LockCardFile(file.Get(), F_RDLCK, path);
    return file;
}

// The damaged file, locked, and all that can be read of it.
struct Damaged
{
    Damaged(const QString &path, const Progress &progress)
        : file(OpenLocked(path)),
          engine(path, EngineReader::Access::ReadOnly),
          state(file.Get(), SizeOf(file, path), engine, progress)
    {
    }

    FileHandle file;
    EngineReader engine;
    DamagedState state;
};

class DamagedCards final : public SalvagedSource
{
public:
    DamagedCards(const QString &path, std::unique_ptr<Damaged> damaged)
        : SalvagedSource(path), damaged_(std::move(damaged))
    {
        const CardSalvage &salvage = damaged_->state.salvage;
        Begin(salvage.Cards(), static_cast<qint64>(salvage.MissingNumbers().size()));
    }

    QString Remark() const override { return IsDamaged() + u"Alle Karten ließen sich lesen."_s; }

private:
    std::optional<SalvagedCard> ReadCard(const CardPlan &plan) override
    {
        return damaged_->state.salvage.Read(plan);
    }

    std::unique_ptr<Damaged> damaged_;
};

} // namespace

std::unique_ptr<CardSource> OpenDamagedCards(const QString &path, const Progress &progress)
{
    return std::make_unique<DamagedCards>(path, std::make_unique<Damaged>(path, progress));
}

RepairOutlook LookAtDamaged(const QString &path, const Progress &progress)
{
    const Damaged damaged(path, progress);
    const CardSalvage &salvage = damaged.state.salvage;
    const auto &cards = salvage.Cards();
    RepairOutlook outlook;
    outlook.known = static_cast<int>(cards.size() + salvage.MissingNumbers().size());
    int done = 0;
    for (const CardPlan &plan : cards) {
        Melden(progress, ++done, static_cast<int>(cards.size()));
        outlook.saved += salvage.Read(plan) ? 1 : 0;
    }
    return outlook;
}

} // namespace paukfix
