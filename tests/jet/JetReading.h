// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "JetCards.h"
#include "JetLab.h"

#include <QList>
#include <QStringList>
#include <QTemporaryDir>

namespace paukfix {

// What tests of the reader of the former engine's card files have in common.

// Column of the question.
inline constexpr int frage = 35;

// All that a file yields.
struct Found
{
    QList<SalvagedCard> cards;
    QList<CardPlan> plans;
    std::uint32_t lost = 0;
};

QString Put(const QTemporaryDir &directory, const QByteArray &bytes);
// Throws StoreError as JetCards does.
Found Read(const QByteArray &bytes);
QStringList Remarks(const SalvagedCard &card);
QStringList Numbers(const Found &found);
// A file with the cards 1 to 3.
JetLab Three(int version);

} // namespace paukfix
