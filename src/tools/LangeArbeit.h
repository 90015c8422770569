// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Meldungen.h"
#include "Progress.h"

#include <QElapsedTimer>
#include <QList>
#include <QObject>

class QProgressBar;
class QPushButton;
class QWidget;

namespace paukfix {

// Work that may take long, as long as it lives: shows the hourglass and takes no keys and clicks but those
// that end it; what comes of others meanwhile is lost. The progress appears when the work has taken a third
// of a second, or at once where nobody knows how long the rest takes. While a message is open over the
// window, the work rests: the window looks as it does without any.
class LangeArbeit final : public QObject
{
public:
    // `abbrechen` stands beside the bar as long as the work can be ended; Escape does the same. Without one
    // it cannot.
    LangeArbeit(Meldungen &meldungen, QWidget &inhalt, QProgressBar &balken,
                QPushButton *abbrechen = nullptr);
    LangeArbeit(const LangeArbeit &) = delete;
    LangeArbeit &operator=(const LangeArbeit &) = delete;
    ~LangeArbeit() override;

    // Must not outlive the work. Throws StoreError 3059, once, when the work is to end.
    Progress Melder();
    // From now on the work cannot be ended.
    void Unwiderruflich();

protected:
    bool eventFilter(QObject *objekt, QEvent *event) override;

private:
    void Zeigen(int erledigt, int gesamt);
    bool Durchlassen(QObject *objekt, QEvent *event);
    void KnopfZeigen(bool zeigen);
    void Sperren();
    void Freigeben();

    Meldungen &meldungen_;
    QWidget &inhalt_;
    QProgressBar &balken_;
    QPushButton *abbrechen_;
    QWidget *fokus_;
    QList<QWidget *> gesperrt_; // fields and buttons of `inhalt`
    bool ruht_ = false;         // under a message
    bool endbar_;
    bool beenden_ = false; // the learner wants it
    bool verwerfen_ = false;
    QElapsedTimer seit_;
    qint64 zuletzt_ = 0; // when the progress was last shown, in ms
};

} // namespace paukfix
