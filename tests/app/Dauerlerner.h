// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Boxmodell.h"

#include <QtGlobal>

#include <map>
#include <memory>
#include <random>

namespace paukfix {

// A learner who never stops: asks, writes, takes back, uses the tools, opens the box again and again, and
// lets it be used by processes that are killed, all beside a model of what the box must hold. How each is
// done is up to who derives from it. "scripts/soak" runs it for minutes or hours.
class Dauerlerner
{
public:
    Dauerlerner() = default;
    Dauerlerner(const Dauerlerner &) = delete;
    Dauerlerner &operator=(const Dauerlerner &) = delete;
    virtual ~Dauerlerner() = default;

protected:
    // Makes the box, and takes the seed that was wished for.
    void Anfangen(const QString &pfad);
    // So many steps lie between two reopenings at least, and twice as many at most. Fails the test where the
    // box differs from the model, memory grows or handles stay open.
    void Lernen(int runde);

    // One step of each kind.
    virtual void Urteilen(int fach) = 0;
    virtual void Bearbeiten() = 0;
    virtual void Ansehen() = 0;
    virtual void Einlesen() = 0;
    virtual void AlleZurueck() = 0;
    virtual void ErledigteZurueck() = 0;
    virtual void Zurueck() = 0;
    virtual void Wieder() = 0;

    // The program leaves the box alone, and comes back to it.
    virtual void Weglegen() = 0;
    virtual void Holen() = 0;

    int Wuerfeln(int unter) { return std::uniform_int_distribution(0, unter - 1)(zufall_); }

    bool Selten(int einsIn) { return Wuerfeln(einsIn) == 0; }

    Boxmodell::Texte NeueTexte();
    // Any card but the last one, whose number could be given to another.
    int EineKarte();

    std::unique_ptr<Boxmodell> modell_;
    std::map<QString, qint64> getan_;

private:
    int NaechstesFach();
    void Schritt();
    void Zuruecknehmen();
    void Neuoeffnen();
    void Vergleichen();
    void Toeten();
    void Nachvollziehen(const QList<QByteArray> &worte);

    QString pfad_;
    std::mt19937 zufall_;
    int texte_ = 0; // that were thought up so far
};

} // namespace paukfix
