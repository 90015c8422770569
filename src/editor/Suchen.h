// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardStore.h"
#include "Meldungen.h"
#include "SearchHit.h"

#include <QDialog>

class QLineEdit;

// The search dialog: looks for a term from the current card on. Accepted when the recordset was walked; the
// hit, if there is one, is in the search state.
class Suchen final : public QDialog
{
public:
    Suchen(CardStore &kartei, Meldungen &meldungen, SearchHit &treffer, QWidget *parent = nullptr);

    void done(int ergebnis) override;

private:
    void COK_Click();

    CardStore &kartei_;
    Meldungen &meldungen_;
    SearchHit &treffer_;
    QLineEdit *suchtext_ = nullptr;
};
