// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QString>
#include <QStringList>

#include <utility>
#include <vector>

namespace paukfix {

// The note type by which a package holds a card to be ticked: its fields are the question, five answers, the
// numbers of the right ones ("1 3"), and the media of the answer. It is known by its fields.

QStringList Ankreuzfeldnamen();
bool IstAnkreuztyp(const QStringList &felder);

struct Ankreuzfelder
{
    QString frage;
    std::vector<std::pair<QString, bool>> antworten; // 5: the text and whether it is right
    QString medien;
};

// `werte` in the order of `felder`.
Ankreuzfelder AnkreuzfelderLesen(const QStringList &felder, const std::vector<QString> &werte);

} // namespace paukfix
