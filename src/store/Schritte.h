// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardChanges.h"
#include "CardFile.h"
#include "Faecher.h"
#include "Sitzung.h"

#include <QString>

#include <deque>
#include <memory>
#include <optional>

namespace paukfix {

class CardStore;
class ChangeRecorder;

// What a box holds besides its file.
struct Boxstand
{
    Faecher faecher;
    Sitzung sitzung;
    qint16 hoechsteNummer = 0;
};

// The steps of the open box: every change of its cards since it was opened, so that it can be taken back
// and done again, the last one first. It follows the engine, so it knows each change, whoever makes it; an
// `Aenderung` gives it its name. Kept in memory: at most 64 MiB and 65,536 steps; the oldest go first, and a
// step that is larger by itself cannot be taken back. Nothing of it is in the card file.
class Schritte
{
public:
    explicit Schritte(CardStore &kartei);
    Schritte(const Schritte &) = delete;
    Schritte &operator=(const Schritte &) = delete;
    ~Schritte();

    // What would be taken back or done again ("Antwort auf Frage 12"); empty where there is nothing.
    QString Zurueckzunehmen() noexcept;
    QString Wiederholbar() noexcept;

    // Whether what would be taken back is too large to be done again then.
    bool IstEndgueltig() noexcept;
    // The last change, where it is too large to be taken back; else empty.
    QString ZuGross() noexcept;

    // Takes the last step back, or does the one again that was taken back last, durably; file, compartments,
    // session and highest number are then as they were. Nothing happens where there is none. Throws
    // StoreError; nothing has changed then, neither in the file nor here, unless the text says otherwise.
    void Zuruecknehmen();
    void Wiederholen();

private:
    friend class Aenderung;
    friend class CardStore;
    friend class SchritteBewahren;

    struct Schritt
    {
        QString was;
        Boxstand stand; // beside `zeilen`
        CardChanges zeilen;
        std::optional<bool> endgueltig{}; // once it was looked at
    };

    enum class Richtung
    {
        Vor, // a new change
        Zurueck,
        Wieder
    };

    // What is being changed and is not yet known to be in the file.
    struct Laufend
    {
        Richtung richtung = Richtung::Vor;
        QString was;
        Boxstand vorher;
        std::optional<Boxstand> danach; // where it is known
    };

    void Folgen(CardFile &datei);
    void Loslassen() noexcept;
    void Leeren() noexcept;
    void Beginnen(const QString &was);
    void Beenden() noexcept;
    bool Klaeren();
    void Ablegen(Laufend laufend);
    void Wenden(std::deque<Schritt> &von, Richtung richtung);
    Boxstand Jetzt() const;

    CardStore &kartei_;
    CardFile *datei_ = nullptr; // while one is open
    CardChanges offen_;         // what the engine has changed since the last step
    std::unique_ptr<ChangeRecorder> schreiber_;
    std::optional<Laufend> laufend_;
    std::deque<Schritt> zurueck_, wieder_; // the next one last
    std::size_t belegt_ = 0;               // bytes of both
    QString zuGross_;                      // what could not be kept, while nothing came behind it
    bool bewahrt_ = false;
    std::optional<CardFile::State> abdruck_; // of the file behind the last step
};

// As long as one lives, what is changed in the open box is one step of its history.
class Aenderung
{
public:
    // `was` names it for the learner: "Antwort auf Frage 12".
    Aenderung(CardStore &kartei, const QString &was);
    Aenderung(const Aenderung &) = delete;
    Aenderung &operator=(const Aenderung &) = delete;
    ~Aenderung();

private:
    Schritte &schritte_;
};

// As long as one lives, the open card file may be closed and opened again without losing its history; another
// file, or one that has changed meanwhile, begins a new one.
class SchritteBewahren
{
public:
    explicit SchritteBewahren(CardStore &kartei);
    SchritteBewahren(const SchritteBewahren &) = delete;
    SchritteBewahren &operator=(const SchritteBewahren &) = delete;
    ~SchritteBewahren();

private:
    Schritte &schritte_;
};

} // namespace paukfix
