// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QString>

#include <memory>

namespace paukfix {

// A desktop's session manager for one program: the program tells it that it is there, and is told that the
// session ends. One at a time.
class Sitzungsverwalter
{
public:
    // What programs may ask their users while the session ends.
    enum class Fragen
    {
        Keine,
        NachFehlern,
        Alle
    };

    Sitzungsverwalter();
    Sitzungsverwalter(const Sitzungsverwalter &) = delete;
    Sitzungsverwalter &operator=(const Sitzungsverwalter &) = delete;
    ~Sitzungsverwalter();

    // For the program's environment (SESSION_MANAGER).
    QString Adresse() const;
    // Waits until the program has said that it is there.
    bool Angemeldet() const;

    // Tells the program that the session ends. It answers with Gesichert().
    void Beenden(Fragen fragen);
    bool Gesichert() const;   // it has done what it had to; waits for that
    bool Gelungen() const;    // nothing is lost
    int Gefragt() const;      // how often it wanted to ask its user
    bool Abgebrochen() const; // its user wants the session to go on

    // After Gesichert(): the session ends, or goes on after all.
    void Schluss();
    void DochNicht();

private:
    struct Innen;
    std::unique_ptr<Innen> innen_;
};

} // namespace paukfix
