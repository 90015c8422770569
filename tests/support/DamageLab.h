// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardRecord.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QMap>
#include <QSet>
#include <QString>

#include <random>

namespace paukfix {

// Where a card lies in its file and what it says. Found through the engine's own page statistics, not through
// the code that repairs.
struct CardTruth
{
    struct Extent
    {
        qint64 from, to; // bytes
    };

    int number = 0;
    QByteArray digest;     // of all 52 values
    QByteArray marker;     // unique word in the question
    QList<Extent> extents; // its cell and its overflow pages
};

// A sound card file with a past: cards were learned, edited, deleted and added.
struct Box
{
    QByteArray bytes;
    QByteArray journal; // of an unfinished transaction, where there is one
    QList<CardTruth> cards;
    QSet<QByteArray> deletedMarkers;
    int pageSize = 4096;
    // Page numbers by what they are, from 1; the table's root is the first of its interior pages.
    QList<int> tableLeaves, tableInteriors, indexPages, freePages;
    QMap<int, QList<int>> numberLeaves; // the numbers on each leaf page of the index on FrageNr

    // Of the cards, those with every byte as it was.
    QList<const CardTruth *> Untouched(const QByteArray &damaged) const;
};

struct BoxOptions
{
    int cards = 1000;
    int pageSize = 4096;
    bool secureDelete = true;
    bool sums = true; // of the pages
    quint32 seed = 1;
};

// Makes a box in `directory` and takes it into memory.
Box MakeBox(const QString &directory, const BoxOptions &options);
// The same box after one more transaction that moves, edits, deletes and adds cards; and the same box caught
// in the midst of that transaction, with the journal that undoes it.
Box AfterTransaction(const QString &directory, const Box &box, quint32 seed = 7, bool secureDelete = true);
Box AmidTransaction(const QString &directory, const Box &box);

// Digest and marker of every card of a file that the engine reads, until it stops at a fault. A repair may
// give a card back twice.
QMultiHash<QByteArray, QByteArray> ReadDigests(const QString &path); // digest by marker

// Cards 1 to `count`, spread over all compartments.
QList<CardRecord> SomeCards(int count);

void WriteFile(const QString &path, const QByteArray &bytes);
QByteArray ReadFile(const QString &path);

using Random = std::mt19937;
// From 0 to below `below`.
int Pick(Random &random, qint64 below);

} // namespace paukfix
