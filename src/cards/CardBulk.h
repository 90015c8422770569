// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardRecordset.h"
#include "Progress.h"

#include <QString>

#include <array>
#include <functional>
#include <optional>

namespace SQLite {
class Database;
}

namespace paukfix {

// Changes to many cards of an open card file at once. All want an open transaction of the recordset and leave
// part of their work behind when they throw (StoreError): the transaction is to be rolled back then. They
// reach each card that is meant exactly once, however the index order shifts under the work, in time that
// grows with the cards.

// Closes up the running numbers of compartment `fachNr`: its cards keep their order and get 1 to n. The card
// of the number `zuletzt`, wherever it lies, goes to their back. Returns n; throws 6 where it passes 16 bits.
// `database` is the one of the recordset, within CardRecordset::Past.
int CloseUpCompartment(SQLite::Database &database, int fachNr, std::optional<double> zuletzt = {});

// How many cards lie where: adding cards and moving some to compartment 0 changes it.
using BoxState = std::array<double, 3>;
BoxState StateOfBox(CardRecordset &cards);

// All cards go to compartment 0 with the running numbers 1 to n in the order of their card numbers; returns
// n. Throws 6 where n passes 16 bits.
int MoveAllToNew(CardRecordset &cards, const Progress &progress = {});

// The cards of compartment 6 go to compartment 0 in their order, with running numbers from `lfdMax` + 1;
// where these would pass 16 bits, compartment 0 is closed up first. Returns how many. Throws 6 where
// compartment 0 cannot take them all.
int MoveDoneToNew(CardRecordset &cards, int lfdMax, const Progress &progress = {});

// Exchanges question and first answer, formatted and plain, of every card with a typed answer. Returns how
// many.
int SwapQuestionAndAnswer(CardRecordset &cards, const Progress &progress = {});

// Deletes every card whose topic `keep` does not want (null is asked as ""). Returns how many.
int DeleteByTopic(CardRecordset &cards, const std::function<bool(const QString &topic)> &keep,
                  const Progress &progress = {});

} // namespace paukfix
