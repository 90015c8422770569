// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardTransaction.h"

#include "CardCursor.h"

namespace paukfix {

CardTransaction::CardTransaction(CardRecordset &cards) : cards_(cards)
{
    CardCursor &cursor = *cards.cursor_;
    cursor.Guarded([&] {
        cursor.scan.Stop();
        // A journal must not come to lie beside another file that stands in this one's place by now.
        cursor.file.CheckUnchanged();
        cursor.database.exec("BEGIN IMMEDIATE");
        cursor.inTransaction = true;
    });
}

CardTransaction::~CardTransaction()
{
    try {
        if (IsOpen())
            Rollback();
    } catch (const StoreError &) { // the cursor's next step says what is wrong
    }
}

void CardTransaction::Commit()
{
    CardCursor &cursor = *cards_.cursor_;
    cursor.Guarded([&] {
        cursor.scan.Stop();
        cursor.file.CheckStillInPlace();
        cursor.database.exec("COMMIT");
        cursor.inTransaction = false;
        cursor.file.NoteState();
    });
}

void CardTransaction::Rollback()
{
    CardCursor &cursor = *cards_.cursor_;
    cursor.Guarded([&] {
        cursor.scan.Stop();
        cursor.file.ForgetState();
        if (IsOpen())
            cursor.database.exec("ROLLBACK");
        cursor.inTransaction = false;
        cursor.buffer.reset();
        cursor.FindCardAgain();
    });
}

bool CardTransaction::IsOpen() const
{
    const CardCursor &cursor = *cards_.cursor_;
    return cursor.inTransaction && sqlite3_get_autocommit(cursor.database.getHandle()) == 0;
}

} // namespace paukfix
