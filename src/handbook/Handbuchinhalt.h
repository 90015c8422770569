// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QList>
#include <QString>

namespace paukfix {

// A page of the handbook.
struct Handbuchkapitel
{
    QString datei; // its name in the handbook's directory: "lernen.html"
    QString titel;
};

// The pages that the first page, "index.html", leads to, in its order, and itself before them; empty where
// `ordner` has no handbook.
QList<Handbuchkapitel> HandbuchinhaltLesen(const QString &ordner);

} // namespace paukfix
