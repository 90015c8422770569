// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "BigBox.h"

#include "CardFile.h"
#include "CardRecordset.h"
#include "CardTransaction.h"
#include "KarteiOeffner.h"
#include "Oeffnung.h"

#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

namespace paukfix {

using namespace Qt::StringLiterals;

QString Words(int seed, int words)
{
    static const QStringList stock{u"der"_s,     u"Fluß"_s,    u"Übung"_s,   u"macht"_s,
                                   u"Meister"_s, u"und"_s,     u"lernt"_s,   u"täglich"_s,
                                   u"Karten"_s,  u"Vokabel"_s, u"schnell"_s, u"Brücke"_s};
    QString text;
    for (int i = 0; i < words; ++i)
        text += stock[(seed * 7 + i * i * 3 + i) % stock.size()] + u' ';
    return text;
}

QString Rtf(const QString &plain)
{
    return uR"({\rtf1\ansi\ansicpg1252\deff0\deflang1031{\fonttbl{\f0\fnil\fcharset0 Arial;}}
\viewkind4\uc1\pard\f0\fs20 )"_s +
           plain + u"\\par\r\n}\r\n"_s;
}

const QString &BigFile()
{
    static const QTemporaryDir directory;
    static const QString path = [] {
        QString name = directory.filePath(u"gross.pzb"_s);
        CardFile::Create(name);
        CardFile file(name);
        CardRecordset cards(file);
        CardTransaction transaction(cards);
        for (int i = 1; i <= CardCount; ++i) {
            CardRecord card;
            card.FrageNr = (i * 7919) % CardCount + 1;
            card.FachNr = i % 7;
            card.FachLfdNr = (i - i % 7) / 7.0 + 1;
            card.Antworttyp = i % 5 == 0 ? 2 : 1;
            card.Frage_Klartext = Words(i, 12) + QString::number(i);
            card.Frage = Rtf(card.Frage_Klartext);
            card.Antwort_1_Klartext = Words(i + 5, 6);
            card.Antwort_1 = Rtf(card.Antwort_1_Klartext);
            card.Picture_9_Name = Words(i % 40, 2);
            if (card.Antworttyp == 2) {
                card.Antwort_2_Klartext = Words(i + 6, 6);
                card.Antwort_2 = Rtf(card.Antwort_2_Klartext);
            }
            cards.AddNew();
            cards.Write(card);
            cards.Update();
        }
        transaction.Commit();
        return name;
    }();
    return path;
}

void OpenCopy(CardStore &store, const QString &directory, const Clock &clock)
{
    store.KarteiPfad = directory;
    if (!QFile::copy(BigFile(), directory + u"/a.pzb"_s) ||
        Oeffnen(store, u"a.pzb"_s, clock).ausgang != Oeffnung::Ausgang::Offen)
        qFatal("the copy of the big box cannot be opened");
}

SQLite::Database OpenFloor(const QString &path)
{
    SQLite::Database database(path.toStdString(), SQLite::OPEN_READWRITE);
    database.exec("PRAGMA locking_mode=EXCLUSIVE; BEGIN EXCLUSIVE; COMMIT; PRAGMA synchronous=EXTRA;"
                  "PRAGMA secure_delete=ON");
    return database;
}

void OpenAgainAndAgain(benchmark::State &state, CardStore &store, KarteiOeffner &oeffner, const QString &path)
{
    store.KarteiPfad = path.section(u'/', 0, -2);
    for (auto _ : state) {
        QString name = path.section(u'/', -1);
        oeffner.OpenCardFile(name);
        if (name.isEmpty())
            state.SkipWithError("not opened");
        store.CloseCardFile();
    }
}

} // namespace paukfix
