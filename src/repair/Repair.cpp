// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Repair.h"

#include "CardFile.h"
#include "DamagedState.h"
#include "PageSums.h"
#include "RepairFiles.h"
#include "RepairReport.h"
#include "SalvageWriter.h"
#include "StoreError.h"

#include <QDateTime>
#include <QFileInfo>
#include <SQLiteCpp/Exception.h>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

// Writes the planned cards into a new file; the report learns of every one. Returns how many were written.
int WriteCards(const CardSalvage &salvage, const QString &newPath, RepairReport &report,
               const Progress &progress)
{
    auto plan = salvage.Cards().begin();
    int done = 0;
    const auto next = [&]() -> std::optional<SalvagedCard> {
        while (plan != salvage.Cards().end()) {
            Melden(progress, ++done, static_cast<int>(salvage.Cards().size()));
            auto card = salvage.Read(*plan);
            if (!card)
                report.AddLost(plan->number);
            ++plan;
            if (card) {
                report.AddCard(*card);
                return card;
            }
        }
        return std::nullopt;
    };
    const int cards = WriteSalvagedCards(newPath, next, progress);
    for (const int number : salvage.MissingNumbers())
        report.AddLost(number);
    return cards;
}

void ReportWrongSums(const DamagedState &state, RepairReport &report)
{
    constexpr std::size_t HeaderSize = 100;
    const std::uint32_t pages = state.reader.PageCount();
    if (state.reader.Geometry().hasSums) {
        report.SetWrongSums(state.survey.Trees().WrongSums(), pages);
        return;
    }
    // None fits: another program has written the file anew.
    std::vector<std::uint8_t> buffer;
    if (pages > 0 && NamesPageSums(state.reader.Read(1, buffer).first(HeaderSize)))
        report.SetWrongSums(pages, pages);
}

[[noreturn]] void ThrowNothingToSave(const QString &path)
{
    throw StoreError(Fehler::Beschaedigt, u"In der Datei „%1“ ist nichts zu retten."_s.arg(path));
}

int SaveCards(const RepairFiles &files, RepairReport &report, const Progress &progress)
{
    files.MakeCopy(progress);
    // An unfinished transaction is rolled back in the copy now.
    EngineReader engine(files.CopyPath());
    const FileHandle copy = OpenRegular(files.CopyPath());
    const std::int64_t size = SizeOf(copy, files.CopyPath());

    int cards = 0;
    try {
        auto best = std::make_unique<DamagedState>(copy.Get(), size, engine, progress);
        bool journalUsed = files.HasCompanions();
        if (journalUsed && !engine.FindsNoFault()) {
            // A journal that is damaged itself can take more away than it gives back.
            auto raw = std::make_unique<DamagedState>(files.Damaged(), files.Size(), engine, progress);
            if (raw->salvage.WholeCards() > best->salvage.WholeCards()) {
                best = std::move(raw);
                journalUsed = false;
            }
        }
        ReportWrongSums(*best, report);
        if (journalUsed)
            report.SetJournalUsed();
        if (!best->salvage.Cards().empty())
            cards = WriteCards(best->salvage, files.NewPath(), report, progress);
    } catch (const SQLite::Exception &error) {
        ThrowStoreError(error, files.NewPath());
    }
    return cards;
}

} // namespace

RepairResult RepairDatabase(const QString &path, const Progress &progress)
{
    const RepairFiles files(path);
    if (files.Size() == 0)
        ThrowNothingToSave(path);
    RepairReport report;
    int cards = 0;
    try {
        cards = SaveCards(files, report, progress);
        if (cards > 0)
            files.WriteReport(report.Text(files.Path(), QFileInfo(files.AsidePath()).fileName(),
                                          QDateTime::currentDateTime()));
    } catch (const StoreError &error) {
        throw StoreError(error.Number(), files.ForUsers(error.Text()));
    }
    if (cards == 0)
        ThrowNothingToSave(path);
    files.Swap();
    return {cards, files.AsidePath(), files.ReportPath(),
            report.Summary(QFileInfo(files.ReportPath()).fileName())};
}

} // namespace paukfix
