// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "DamagedCards.h"

#include "CardFile.h"
#include "DamagedState.h"
#include "EngineLocks.h"
#include "FileHandle.h"
#include "SalvagedSource.h"

#include <fcntl.h>

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

class DamagedCards final : public SalvagedSource
{
public:
    DamagedCards(const QString &path, const Progress &progress)
        : SalvagedSource(path),
          file_(OpenLocked(path)),
          engine_(path, EngineReader::Access::ReadOnly),
          state_(file_.Get(), SizeOf(file_, path), engine_, progress)
    {
        Begin(state_.salvage.Cards(), static_cast<qint64>(state_.salvage.MissingNumbers().size()));
    }

    QString Remark() const override { return IsDamaged() + u"Alle Karten ließen sich lesen."_s; }

private:
    std::optional<SalvagedCard> ReadCard(const CardPlan &plan) override { return state_.salvage.Read(plan); }

    FileHandle file_;
    EngineReader engine_;
    DamagedState state_;
};

} // namespace

std::unique_ptr<CardSource> OpenDamagedCards(const QString &path, const Progress &progress)
{
    return std::make_unique<DamagedCards>(path, progress);
}

RepairOutlook LookAtDamaged(const QString &path, const Progress &progress)
{
    const FileHandle file = OpenLocked(path);
    EngineReader engine(path, EngineReader::Access::ReadOnly);
    const DamagedState state(file.Get(), SizeOf(file, path), engine, progress);
    const auto &cards = state.salvage.Cards();
    RepairOutlook outlook;
    outlook.known = static_cast<int>(cards.size() + state.salvage.MissingNumbers().size());
    int done = 0;
    for (const CardPlan &plan : cards) {
        Melden(progress, ++done, static_cast<int>(cards.size()));
        outlook.saved += state.salvage.Read(plan) ? 1 : 0;
    }
    return outlook;
}

} // namespace paukfix
