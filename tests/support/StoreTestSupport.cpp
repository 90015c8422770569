// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "StoreTestSupport.h"

#include "CardSchema.h"
#include "CardTransaction.h"
#include "EngineLocks.h"
#include "PageSums.h"

#include <QFile>
#include <SQLiteCpp/Statement.h>
#include <sqlite3.h>

namespace paukfix {

using namespace Qt::StringLiterals;

CardRecord MakeCard(int frageNr, int fachNr, int fachLfdNr)
{
    CardRecord card;
    card.FrageNr = frageNr;
    card.FachNr = fachNr;
    card.FachLfdNr = fachLfdNr;
    card.Antworttyp = 1;
    card.Frage = card.Frage_Klartext = u"Frage %1"_s.arg(frageNr);
    card.Antwort_1 = card.Antwort_1_Klartext = u"Antwort %1"_s.arg(frageNr);
    card.Picture_9_Name = u"Thema %1"_s.arg(frageNr % 7);
    return card;
}

void MakeEmptyCardFile(const QString &path, int pageSize, bool sums)
{
    UseOpenFileLocks();
    UsePageSums();
    SQLite::Database database(QFile::encodeName(path).toStdString(),
                              SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
    QString sql = QString::fromStdString(NewFileSql());
    if (sums) {
        int room = PageSumSize;
        sqlite3_file_control(database.getHandle(), "main", SQLITE_FCNTL_RESERVE_BYTES, &room);
    } else {
        sql.replace(u"user_version=2;"_s, u"user_version=1;"_s).replace(u", \""_s, u",\""_s);
    }
    database.exec("PRAGMA page_size=" + std::to_string(pageSize) + "; BEGIN;" + sql.toStdString() + "COMMIT");
}

namespace {

void AddCards(const QString &path, const QList<CardRecord> &cards)
{
    CardFile file(path);
    CardRecordset recordset(file);
    CardTransaction transaction(recordset);
    for (const CardRecord &card : cards) {
        recordset.AddNew();
        recordset.Write(card);
        recordset.Update();
    }
    transaction.Commit();
}

} // namespace

void MakeCardFile(const QString &path, const QList<CardRecord> &cards)
{
    CardFile::Create(path);
    AddCards(path, cards);
}

void MakeFormerCardFile(const QString &path, const QList<CardRecord> &cards)
{
    MakeEmptyCardFile(path, 4096, false);
    AddCards(path, cards);
}

QList<CardRecord> ReadCards(const QString &path)
{
    CardFile file(path);
    CardRecordset recordset(file);
    recordset.SetIndex(u"BoxKey");
    QList<CardRecord> cards;
    for (recordset.MoveFirst(); !recordset.AtEOF(); recordset.MoveNext())
        cards.append(recordset.Read());
    return cards;
}

QString FaultIn(const QString &path)
{
    SQLite::Database database(QFile::encodeName(path).toStdString(), SQLite::OPEN_READWRITE);
    const auto rows = [&](const char *how) {
        SQLite::Statement select(database, std::string("SELECT _rowid_, FrageNr, FachNr, FachLfdNr FROM "
                                                       "Lernkarten ") +
                                               how + " ORDER BY FrageNr, FachNr, FachLfdNr");
        QStringList found;
        while (select.executeStep())
            for (int i = 0; i < 4; ++i)
                found << QString::fromUtf8(select.getColumn(i).getText());
        return found;
    };
    try {
        if (const std::string found = database.execAndGet("PRAGMA integrity_check").getString();
            found != "ok")
            return QString::fromStdString(found);
        const QStringList table = rows("NOT INDEXED");
        if (rows("INDEXED BY FrageNr") != table || rows("INDEXED BY BoxKey") != table)
            return u"indexes and table disagree"_s;
    } catch (const SQLite::Exception &error) {
        return QString::fromUtf8(error.what());
    }
    return {};
}

bool IsGermanMessage(const QString &text)
{
    static const QStringList english{u"disk I/O"_s,   u"unable to"_s, u"database "_s,    u"malformed"_s,
                                     u"constraint"_s, u"read-only"_s, u"not an error"_s, u"error"_s,
                                     u"cannot "_s,    u"no such"_s,   u"locked"_s};
    for (const QString &word : english)
        if (text.contains(word))
            return false;
    return text.size() > 15 && text.contains(u' ') && !text.contains(u"%1"_s);
}

} // namespace paukfix
