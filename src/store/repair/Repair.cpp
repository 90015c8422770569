// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Repair.h"

#include "CardFile.h"
#include "CardSalvage.h"
#include "CardSurvey.h"
#include "EngineReader.h"
#include "RepairFiles.h"
#include "RepairReport.h"
#include "SalvageWriter.h"
#include "StoreError.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <SQLiteCpp/Exception.h>

#include <fcntl.h>
#include <sys/stat.h>

namespace {

// Everything that reads one state of the damaged file, held together because each part refers to the one
// before.
struct Reading
{
    Reading(int file, std::int64_t size, EngineReader &engine)
        : reader(file, size, FindGeometry(file, size)), survey(reader), salvage(survey, engine)
    {
    }

    PageReader reader;
    CardSurvey survey;
    CardSalvage salvage;
};

// Writes the planned cards into a new file; the report learns of every one. Returns how many were written.
int WriteCards(const CardSalvage &salvage, const QString &newPath, RepairReport &report)
{
    auto plan = salvage.Cards().begin();
    const auto next = [&]() -> std::optional<SalvagedCard> {
        while (plan != salvage.Cards().end()) {
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
    const int cards = WriteSalvagedCards(newPath, next);
    for (const int number : salvage.MissingNumbers())
        report.AddLost(number);
    return cards;
}

[[noreturn]] void ThrowNothingToSave(const QString &path)
{
    throw StoreError(Fehler::Beschaedigt,
                     QStringLiteral("In der Datei „%1“ ist nichts zu retten.").arg(path));
}

int SaveCards(const RepairFiles &files, RepairReport &report)
{
    files.MakeCopy();
    // An unfinished transaction is rolled back in the copy now.
    EngineReader engine(files.CopyPath());
    const FileHandle copy(open(QFile::encodeName(files.CopyPath()).constData(), O_RDONLY | O_CLOEXEC));
    const std::int64_t size = QFileInfo(files.CopyPath()).size();

    int cards = 0;
    try {
        auto best = std::make_unique<Reading>(copy.Get(), size, engine);
        bool journalUsed = files.HasCompanions();
        if (journalUsed && !engine.FindsNoFault()) {
            // A journal that is damaged itself can take more away than it gives back.
            auto raw = std::make_unique<Reading>(files.Damaged(), files.Size(), engine);
            if (raw->salvage.WholeCards() > best->salvage.WholeCards()) {
                best = std::move(raw);
                journalUsed = false;
            }
        }
        if (journalUsed)
            report.SetJournalUsed();
        if (!best->salvage.Cards().empty())
            cards = WriteCards(best->salvage, files.NewPath(), report);
    } catch (const SQLite::Exception &error) {
        ThrowStoreError(error, files.NewPath());
    }
    return cards;
}

} // namespace

RepairResult RepairDatabase(const QString &path)
{
    const RepairFiles files(path);
    if (files.Size() == 0)
        ThrowNothingToSave(path);
    RepairReport report;
    int cards = 0;
    try {
        cards = SaveCards(files, report);
        if (cards > 0)
            files.WriteReport(report.Text(files.Path(), QFileInfo(files.AsidePath()).fileName(),
                                          QDateTime::currentDateTime()));
    } catch (const StoreError &error) {
        throw StoreError(error.Number(), files.ForUsers(error.Text()));
    }
    if (cards == 0)
        ThrowNothingToSave(path);
    files.Swap();
    return {cards, files.AsidePath(), files.ReportPath()};
}
