// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Importprobe.h"

#include <QWidget>

#include <array>
#include <functional>

class QCheckBox;
class QComboBox;
class QTableWidget;

namespace paukfix {

// Shows the first cards of a file as they would come in, and lets the learner say which columns they are made
// of.
class Importtafel final : public QWidget
{
public:
    explicit Importtafel(QWidget *eltern);

    // The columns and the heading that are chosen now.
    void Anwenden(Aufbau &aufbau) const;
    // Chooses them, without telling; `erste` is what the first line has in its fields.
    void Vorschlagen(const Aufbau &aufbau, const QStringList &erste);
    void Zeigen(const Importvorschau &vorschau);

    // The learner has chosen other ones.
    std::function<void()> gewaehlt = [] {};

private:
    std::array<QComboBox *, 3> cmbSpalte_{}; // question, answer, topic; entry 0: none
    QCheckBox *chkUeberschrift_;
    QWidget *zeile_; // of the columns
    QTableWidget *tblVorschau_;
    bool alleFelder_ = false;
};

} // namespace paukfix
