// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QtGlobal>

#include <array>
#include <cstdint>
#include <string_view>
#include <unordered_map>

namespace SQLite {
class Database;
}

namespace paukfix {

// What becomes of a new card whose question the box knows.
enum class Vorhandene
{
    Uebernehmen, // it is added all the same; nobody looks
    Auslassen,   // it is left out where its answer is known too
    Erneuern     // as before; a card with another answer gets the new one and stays where it lies
};

// What of a card tells whether another one is the same, as UTF-8: its plain texts (where there is none, the
// formatted one), and what its question shows and plays. They must last as long as this.
struct Karteninhalt
{
    double typ = 1; // of a typed answer only the first counts
    std::string_view frage, bild, ton;
    std::array<std::string_view, 5> antworten;
    std::array<bool, 5> richtig{};
};

// The same for two cards that a learner takes for the same: letters count, blanks and line breaks only as
// one blank between words, formats not at all.
struct Kartenkennung
{
    using Abdruck = std::array<quint64, 2>;

    explicit Kartenkennung(const Karteninhalt &inhalt);

    Abdruck frage{};
    Abdruck antwort{};
    Abdruck medien{}; // 0 where the question shows and plays nothing
};

// The cards of a box by their question, to find those that are there already. Of two cards of one question
// both with a picture or sound, other names make another question.
class Kartenabgleich
{
public:
    enum class Befund
    {
        Neu,
        Bekannt,       // question and answer are there
        AndereAntwort, // there is one card of this question, with another answer, which has not been met yet
    };

    struct Fund
    {
        Befund befund = Befund::Neu;
        std::int64_t zeile = 0; // the row of the card that is there
    };

    // Reads every card; throws SQLite::Exception.
    explicit Kartenabgleich(SQLite::Database &database);

    // A card that is told of as Bekannt or AndereAntwort is met: no other card takes its answer away.
    Fund Suchen(const Kartenkennung &neue);
    // It is in the box now, by itself or as the answer that a card has got.
    void Aufnehmen(const Kartenkennung &neue, std::int64_t zeile);

private:
    struct Karte
    {
        Kartenkennung::Abdruck antwort;
        Kartenkennung::Abdruck medien;
        std::int64_t zeile;
        bool getroffen;
    };

    struct Streuung
    {
        std::size_t operator()(const Kartenkennung::Abdruck &abdruck) const noexcept { return abdruck[0]; }
    };

    std::unordered_multimap<Kartenkennung::Abdruck, Karte, Streuung> karten_;
};

} // namespace paukfix
