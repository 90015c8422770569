// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardFacts.h"

#include "TextHelpers.h"

#include <QCollator>
#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace paukfix {

using namespace Qt::StringLiterals;

QStringList Topics(CardRecordset &cards)
{
    QStringList topics;
    cards.Beside([&](SQLite::Database &database) {
        SQLite::Statement read(database,
                               R"(SELECT DISTINCT CAST("Picture_9_Name" AS TEXT) FROM "Lernkarten" )"
                               R"(WHERE length("Picture_9_Name") BETWEEN 1 AND 250)");
        while (read.executeStep()) {
            const SQLite::Column topic = read.getColumn(0);
            const char *text = topic.getText();
            topics << TextFromUtf8({text, topic.getBytes()});
        }
    });
    QCollator german(QLocale(QLocale::German, QLocale::Germany));
    german.setCaseSensitivity(Qt::CaseInsensitive);
    german.setNumericMode(true);
    // With the keys that they are sorted by: each is compared many times.
    std::vector<std::pair<QCollatorSortKey, QString>> sorted;
    sorted.reserve(static_cast<std::size_t>(topics.size()));
    for (const QString &topic : std::as_const(topics))
        sorted.emplace_back(german.sortKey(topic), topic);
    std::sort(sorted.begin(), sorted.end(), [](const auto &a, const auto &b) { return a.first < b.first; });
    for (std::size_t i = 0; i < sorted.size(); ++i)
        topics[static_cast<qsizetype>(i)] = sorted[i].second;
    return topics;
}

CardPosition PlaceOfCurrent(CardRecordset &cards)
{
    CardPosition place;
    const bool byNumber = cards.Index().compare(u"FrageNr"_s, Qt::CaseInsensitive) == 0;
    const bool current = !cards.AtBOF() && !cards.AtEOF();
    const double key = current ? cards[byNumber ? u"FrageNr" : u"FachNr"].Number() : 0;
    const double second = current && !byNumber ? cards[u"FachLfdNr"].Number() : 0;
    cards.Beside([&](SQLite::Database &database) {
        place.of = database.execAndGet(R"(SELECT count(*) FROM "Lernkarten")").getInt();
        if (!current)
            return;
        SQLite::Statement count(
            database, byNumber
                          ? R"(SELECT count(*) FROM "Lernkarten" WHERE "FrageNr"<=?1)"
                          : R"(SELECT count(*) FROM "Lernkarten" WHERE ("FachNr","FachLfdNr")<=(?1,?2))");
        count.bind(1, key);
        if (!byNumber)
            count.bind(2, second);
        if (count.executeStep())
            place.number = count.getColumn(0).getInt();
    });
    return place;
}

CardKinds KindsOfCards(CardRecordset &cards)
{
    CardKinds kinds;
    cards.Beside([&](SQLite::Database &database) {
        SQLite::Statement count(
            database,
            R"(SELECT sum("Antworttyp"=1),)"
            R"(sum("Antworttyp"=1 AND coalesce("Picture_1_Name",'')||coalesce("Picture_2_Name",'')||)"
            R"(coalesce("Picture_3_Name",'')||coalesce("Picture_6_Name",'')||coalesce("Picture_7_Name",'')||)"
            R"(coalesce("Picture_8_Name",'')<>''),count(*) FROM "Lernkarten")");
        count.executeStep();
        kinds.typed = count.getColumn(0).getInt();
        kinds.typedWithMedia = count.getColumn(1).getInt();
        kinds.others = count.getColumn(2).getInt() - kinds.typed;
    });
    return kinds;
}

} // namespace paukfix
