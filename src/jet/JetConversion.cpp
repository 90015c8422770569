// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "JetConversion.h"

#include "FreshFile.h"
#include "JetCards.h"
#include "JetSource.h"
#include "RepairReport.h"
#include "SalvageWriter.h"
#include "StoreError.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

RepairReport WriteCards(const QString &from, const QString &to)
{
    JetCards cards(from);
    RepairReport report(RepairReport::Occasion::Conversion);
    report.SetMissing(cards.Lost());
    auto plan = cards.Cards().begin();
    WriteSalvagedCards(to, [&]() -> std::optional<SalvagedCard> {
        if (plan == cards.Cards().end())
            return std::nullopt;
        SalvagedCard card = cards.Read(*plan);
        ApplyKeys(card, *plan++);
        CheckContent(card);
        report.AddCard(card);
        return card;
    });
    return report;
}

} // namespace

JetNames ConversionNames(const QString &path)
{
    const QString real = QFileInfo(path).canonicalFilePath();
    for (int count = 1;; ++count) {
        const QString number = count == 1 ? QString() : u"-%1"_s.arg(count);
        JetNames names{BesideName(real, u".altes-Format"_s + number),
                       BesideName(real, u".Umwandlung"_s + number + u".txt"_s)};
        // The same file: a conversion was killed before the new file took its place.
        if (SameFile(names.oldFile, real, Links::Themselves) ||
            (!IsNameTaken(names.oldFile) && !IsNameTaken(names.report)))
            return names;
    }
}

void CheckConvertible(const QString &path)
{
    static_cast<void>(JetCards(path));
}

QString ConvertJetFile(const QString &path)
{
    FreshFile fresh(path); // holds the directory's lock
    if (!IsJetFile(path))
        return {};
    RepairReport report;
    fresh.Make([&](const QString &file) { report = WriteCards(path, file); });

    const JetNames names = ConversionNames(path);
    const QString real = QFileInfo(path).canonicalFilePath();
    auto goBack = qScopeGuard([&] {
        // The new file may have taken its place already: the old one has no other name then.
        if (IsJetFile(real)) {
            QFile::remove(names.report);
            QFile::remove(names.oldFile);
        }
    });
    if (!SameFile(names.oldFile, real, Links::Themselves))
        KeepUnderName(real, names.oldFile);
    // Told before it is so: a kill in between must not take the report away.
    QFile::remove(names.report);
    if (!report.IsPerfect())
        WriteFileSynced(names.report,
                        report.Text(real, QFileInfo(names.oldFile).fileName(), QDateTime::currentDateTime()));
    fresh.TakePlace();
    goBack.dismiss();
    return report.IsPerfect() ? QString() : names.report;
}

} // namespace paukfix
