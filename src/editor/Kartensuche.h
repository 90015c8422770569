// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardStore.h"
#include "SearchHit.h"

#include <QString>

class QTextDocument;

namespace paukfix {

enum class Suchergebnis
{
    Gefunden,
    NichtGefunden,
    OhneKarten // nothing was searched, the state is as it was
};

// Walks the open cards in their order, from the current one round to it again, for the next hit of `begriff`
// in topic, question and answers, letter case ignored. The recordset then stands on the hit, or where the
// walk stopped. Just the first occurrence in a field counts. Throws StoreError where the file cannot be
// walked; a field that cannot be read holds no hit.
Suchergebnis KarteSuchen(CardStore &kartei, SearchHit &treffer, const QString &begriff);

// The place in the document of character `stelle` (from 0) of its plain text, in which line breaks are two
// characters.
int DokumentStelle(const QTextDocument &dokument, qsizetype stelle);

} // namespace paukfix
