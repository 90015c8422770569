// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QObject>

#include <optional>

class QWidget;

namespace paukfix {

// Two buttons in one place, the second of which comes when the first is clicked: a hand that clicks twice has
// meant the first. For 0.4 s by the mouse's own clock the second takes no click; keys it takes at once.
class Klickschutz final : public QObject
{
public:
    // Belongs to the first.
    Klickschutz(QWidget &erster, QWidget &zweiter);

protected:
    bool eventFilter(QObject *objekt, QEvent *event) override;

private:
    QWidget &erster_;
    std::optional<quint64> geklickt_; // ms, as the events count them
};

} // namespace paukfix
