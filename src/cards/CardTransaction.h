// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardRecordset.h"

namespace paukfix {

// One change of an open card file that may touch many cards: nothing is kept until Commit, and what was not
// committed when it goes is rolled back. One at a time on a recordset, which must outlive it. All methods
// throw StoreError.
class CardTransaction
{
public:
    explicit CardTransaction(CardRecordset &cards);
    CardTransaction(const CardTransaction &) = delete;
    CardTransaction &operator=(const CardTransaction &) = delete;
    ~CardTransaction(); // an error of the rollback is ignored: closing the file rolls back

    void Commit();
    void Rollback();
    // False once it has ended, which the engine may have done itself at an error: it has rolled back then.
    bool IsOpen() const;

private:
    CardRecordset &cards_;
};

} // namespace paukfix
