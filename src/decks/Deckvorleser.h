// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Deckquelle.h"

#include <condition_variable>
#include <deque>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

namespace paukfix {

// The cards of a deck from where it stands, read ahead by a thread of its own: what they are made of takes as
// long as storing them. As long as it lives nobody else may read cards of the deck; media may be read.
class Deckvorleser
{
public:
    explicit Deckvorleser(Deckquelle &quelle);
    Deckvorleser(const Deckvorleser &) = delete;
    Deckvorleser &operator=(const Deckvorleser &) = delete;
    ~Deckvorleser();

    // As Deckquelle::Naechste, which throws here what it has thrown there. What is left behind is told with
    // the first of some cards that were read together. What `karte` held before is given back by the thread.
    bool Naechste(Deckkarte &karte, Deckbericht &bericht);

private:
    struct Schub
    {
        std::vector<Deckkarte> karten;
        Deckbericht rest;
        std::exception_ptr fehler; // behind them
        bool letzter = false;
    };

    void Lesen();
    Schub Sammeln();

    Deckquelle &quelle_;
    Schub schub_; // that is being given out
    std::size_t platz_ = 0;
    std::mutex sperre_; // of all below
    std::condition_variable geaendert_;
    std::deque<Schub> fertige_;
    // Cards that were given out and have come back: who has taken memory gives it back most cheaply.
    std::vector<std::vector<Deckkarte>> gelesene_;
    bool halt_ = false;
    std::thread leser_;
};

} // namespace paukfix
