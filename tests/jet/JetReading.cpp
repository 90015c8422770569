// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "JetReading.h"

#include "SafeFile.h"
#include "StoreTestSupport.h"

namespace paukfix {

using namespace Qt::StringLiterals;

QString Put(const QTemporaryDir &directory, const QByteArray &bytes)
{
    const QString path = directory.filePath(u"früher.pzb"_s);
    WriteFileSynced(path, bytes);
    return path;
}

Found Read(const QByteArray &bytes)
{
    const QTemporaryDir directory;
    JetCards cards(Put(directory, bytes));
    Found found;
    for (const CardPlan &plan : cards.Cards()) {
        found.plans << plan;
        found.cards << cards.Read(plan);
    }
    found.lost = cards.Lost();
    return found;
}

QStringList Remarks(const SalvagedCard &card)
{
    QStringList texts;
    for (const Remark &remark : card.remarks)
        texts << remark.text;
    return texts;
}

QStringList Numbers(const Found &found)
{
    QStringList numbers;
    for (const CardPlan &plan : found.plans)
        numbers << QString::number(plan.number);
    return numbers;
}

JetLab Three(int version)
{
    JetLab lab(version);
    for (int i = 1; i <= 3; ++i)
        lab.Add(MakeCard(i, 0, i));
    return lab;
}

} // namespace paukfix
