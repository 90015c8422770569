// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Meldungen.h"
#include "Progress.h"

#include <QElapsedTimer>
#include <QList>
#include <QObject>

class QProgressBar;
class QWidget;

namespace paukfix {

// Work that may take long, as long as it lives: shows the hourglass and takes no keys and clicks; what comes
// of these meanwhile is lost. The progress appears when the work has taken a third of a second, or at once
// where nobody knows how long the rest takes. While a
// message is open over the window, the work rests: the window looks as it does without any.
class LangeArbeit final : public QObject
{
public:
    LangeArbeit(Meldungen &meldungen, QWidget &inhalt, QProgressBar &balken);
    LangeArbeit(const LangeArbeit &) = delete;
    LangeArbeit &operator=(const LangeArbeit &) = delete;
    ~LangeArbeit() override;

    // Must not outlive the work.
    Progress Melder();

protected:
    bool eventFilter(QObject *objekt, QEvent *event) override;

private:
    void Zeigen(int erledigt, int gesamt);
    void Sperren();
    void Freigeben();

    Meldungen &meldungen_;
    QWidget &inhalt_;
    QProgressBar &balken_;
    QWidget *fokus_;
    QList<QWidget *> gesperrt_; // fields and buttons of `inhalt`
    bool verwerfen_ = false;
    QElapsedTimer seit_;
    qint64 zuletzt_ = 0; // when the progress was last shown, in ms
};

} // namespace paukfix
