// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <utility>
#include <vector>

namespace paukfix {

// The note types by which a package holds our cards. They are known by their fields. A card to be ticked has
// the question, five answers, the numbers of the right ones ("1 3"), the media of the answer and the topic.

// Of the usual card of ours: question, answer and topic.
const QStringList &Tippfeldnamen();
// The topic that a note of one of our types has; nothing for any other.
std::optional<QString> EigenesThema(const QStringList &felder, const std::vector<QString> &werte);

const QStringList &Ankreuzfeldnamen();
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
