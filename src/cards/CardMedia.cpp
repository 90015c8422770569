// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardMedia.h"

#include "CardValue.h"
#include "TextHelpers.h"

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>

#include <string>
#include <vector>

namespace paukfix {

namespace {

QString TextOf(const SQLite::Column &column)
{
    const char *text = column.getText();
    return TextFromUtf8({text, column.getBytes()});
}

} // namespace

const QList<int> &MediaColumns()
{
    static const QList<int> columns = [] {
        QList<int> found;
        for (const char16_t *name :
             {u"Picture_1_Name", u"Picture_2_Name", u"Picture_3_Name", u"Picture_4_Name", u"Picture_5_Name",
              u"Picture_6_Name", u"Picture_7_Name", u"Picture_8_Name"})
            found << CardColumnIndex(name);
        return found;
    }();
    return columns;
}

QList<MediaName> MediaNames(SQLite::Database &database)
{
    static_assert(MaxTextLength < 300); // a longer one is not believed to be a name
    std::string all;
    for (const int column : MediaColumns())
        all += (all.empty() ? "" : " UNION ALL ") + std::string("SELECT \"FrageNr\",substr(CAST(") +
               QuotedColumn(column) + " AS TEXT),1,300) AS name FROM \"Lernkarten\"";
    SQLite::Statement read(database,
                           "SELECT name,count(DISTINCT \"FrageNr\") FROM (" + all +
                               ") WHERE length(name)>0 GROUP BY name ORDER BY min(\"FrageNr\"),name");
    QList<MediaName> names;
    while (read.executeStep())
        names.append({TextOf(read.getColumn(0)), read.getColumn(1).getInt()});
    return names;
}

QList<MediaName> MediaNames(CardRecordset &cards)
{
    QList<MediaName> names;
    cards.Beside([&](SQLite::Database &database) { names = MediaNames(database); });
    return names;
}

void RenameMedia(CardRecordset &cards, const QHash<QString, QString> &names)
{
    if (names.isEmpty())
        return;

    struct Change
    {
        std::int64_t row;
        QString name;
    };

    cards.Past([&](SQLite::Database &database) {
        for (const int column : MediaColumns()) {
            std::string search = "SELECT _rowid_,CAST(";
            search.append(QuotedColumn(column)).append(R"( AS TEXT) FROM "Lernkarten" WHERE length()");
            search.append(QuotedColumn(column)).append(") BETWEEN 1 AND 250");
            SQLite::Statement find(database, search);
            std::vector<Change> changes;
            while (find.executeStep())
                if (const auto name = names.constFind(TextOf(find.getColumn(1))); name != names.cend())
                    changes.push_back({find.getColumn(0).getInt64(), *name});
            std::string change = R"(UPDATE "Lernkarten" SET )";
            change.append(QuotedColumn(column)).append("=?2 WHERE _rowid_=?1");
            SQLite::Statement write(database, change);
            for (const Change &one : changes) {
                write.bind(1, one.row);
                write.bind(2, one.name.toStdString());
                write.exec();
                write.reset();
            }
        }
    });
}

} // namespace paukfix
