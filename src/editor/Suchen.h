// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardStore.h"
#include "Meldungen.h"
#include "SearchHit.h"

#include <QDialog>

class QKeyEvent;
class QLineEdit;

namespace paukfix {

// The search dialog: looks for a term from the current card on. Accepted when the recordset was walked; the
// hit, if there is one, is in the search state.
class Suchen final : public QDialog
{
public:
    Suchen(CardStore &kartei, Meldungen &meldungen, SearchHit &treffer, QWidget *parent = nullptr);

    void done(int ergebnis) override;

protected:
    bool eventFilter(QObject *objekt, QEvent *event) override;

private:
    void Form_Load();
    void Form_Unload();
    // Tells whether the key was used.
    bool suchtext_KeyPress(const QKeyEvent &taste);
    void COK_Click();
    void CAbbruch_Click();

    CardStore &kartei_;
    Meldungen &meldungen_;
    SearchHit &treffer_;
    QLineEdit *suchtext_ = nullptr;
};

} // namespace paukfix
