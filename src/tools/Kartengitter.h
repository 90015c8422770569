// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QTableView>

class QLabel;

namespace paukfix {

class KartenModell;

// The grid of all cards, several of which can be selected. A click on a column's head sorts, Ctrl and the
// column's number too; the current card stays the current one. The numbers get the room that their heads
// need, question, answer and topic share the rest.
class Kartengitter final : public QTableView
{
public:
    explicit Kartengitter(QWidget *parent);

    // Shows the cards of `modell`, which must outlive the grid, and stands on the first one.
    void Zeigen(KartenModell &modell);
    // Lies over the grid where there are no cards.
    void SetHinweis(const QString &text, bool sichtbar);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void SortierenVerbinden();
    void Einteilen();

    QLabel *leer_;
};

} // namespace paukfix
