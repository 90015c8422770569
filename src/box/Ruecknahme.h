// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardStore.h"
#include "Meldungen.h"

#include <QObject>

namespace paukfix {

// Takes the last change of the open box back and does it again, and says what became of it.
class Ruecknahme final : public QObject
{
    Q_OBJECT

public:
    // Both must outlive it.
    Ruecknahme(CardStore &kartei, Meldungen &meldungen, QObject *parent = nullptr);

    // "Antwort auf Frage 12 zurücknehmen"; empty where there is nothing to take back.
    QString Zurueckzunehmen() const;
    // Says so then, and why.
    QString NichtZurueckzunehmen() const;
    // "Antwort auf Frage 12 wiederholen"; empty where there is nothing to do again.
    QString Wiederholbar() const;

    // Asks first where it could not be done again.
    void Zuruecknehmen();
    void Wiederholen();

signals:
    // The box may hold other cards. `getan` says what was done ("Antwort auf Frage 12 zurückgenommen"), and
    // is empty where it failed, of which the learner is told next.
    void BoxGeaendert(const QString &getan);
    // It failed, and the learner is about to be told.
    void Gescheitert();

private:
    void Wenden(void (Schritte::*wenden)(), const QString &getan, const QString &kontext);

    CardStore &kartei_;
    Meldungen &meldungen_;
};

} // namespace paukfix
