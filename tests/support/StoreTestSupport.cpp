// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "StoreTestSupport.h"

CardRecord MakeCard(int frageNr, int fachNr, int fachLfdNr)
{
    CardRecord card;
    card.FrageNr = frageNr;
    card.FachNr = fachNr;
    card.FachLfdNr = fachLfdNr;
    card.Antworttyp = 1;
    card.Frage = card.Frage_Klartext = QStringLiteral("Frage %1").arg(frageNr);
    card.Antwort_1 = card.Antwort_1_Klartext = QStringLiteral("Antwort %1").arg(frageNr);
    card.Picture_9_Name = QStringLiteral("Thema %1").arg(frageNr % 7);
    return card;
}

void MakeCardFile(const QString &path, const QList<CardRecord> &cards)
{
    CardFile::Create(path);
    CardFile file(path);
    CardRecordset recordset(file);
    recordset.BeginTrans();
    for (const CardRecord &card : cards) {
        recordset.AddNew();
        recordset.Write(card);
        recordset.Update();
    }
    recordset.CommitTrans();
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
