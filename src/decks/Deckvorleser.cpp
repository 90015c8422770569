// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Deckvorleser.h"

namespace paukfix {

namespace {

// A thread that is woken may have to find a processor first: each of the two goes on for long without the
// other, and the reader, where it has to wait, until half of what waits is given out.
constexpr std::size_t MeisteKarten = 256;    // read together
constexpr qsizetype MeisteZeichen = 200'000; // of them, but for the last one
constexpr std::size_t MeisteSchuebe = 8;     // that wait

qsizetype Zeichen(const Deckkarte &karte)
{
    qsizetype zahl = karte.frage.reich.size();
    for (const Deckkarte::Antwort &antwort : karte.antworten)
        zahl += antwort.text.reich.size();
    return zahl;
}

} // namespace

Deckvorleser::Deckvorleser(Deckquelle &quelle) : quelle_(quelle), leser_([this] { Lesen(); }) {}

Deckvorleser::~Deckvorleser()
{
    {
        const std::lock_guard lock(sperre_);
        halt_ = true;
    }
    geaendert_.notify_all();
    leser_.join();
}

bool Deckvorleser::Naechste(Deckkarte &karte, Deckbericht &bericht)
{
    while (platz_ == schub_.karten.size()) {
        if (schub_.fehler)
            std::rethrow_exception(schub_.fehler);
        if (schub_.letzter)
            return false;
        std::unique_lock lock(sperre_);
        gelesene_.push_back(std::move(schub_.karten));
        geaendert_.wait(lock, [this] { return !fertige_.empty(); });
        schub_ = std::move(fertige_.front());
        fertige_.pop_front();
        const bool halbleer = fertige_.size() == MeisteSchuebe / 2;
        lock.unlock();
        if (halbleer)
            geaendert_.notify_all();
        platz_ = 0;
        bericht.Dazu(schub_.rest);
    }
    std::swap(karte, schub_.karten[platz_++]);
    return true;
}

void Deckvorleser::Lesen()
{
    for (bool weiter = true; weiter;) {
        Schub schub = Sammeln();
        weiter = !schub.letzter;
        std::vector<std::vector<Deckkarte>> gelesene; // goes without the lock
        std::unique_lock lock(sperre_);
        gelesene.swap(gelesene_);
        geaendert_.wait(lock, [this] { return halt_ || fertige_.size() < MeisteSchuebe; });
        if (halt_)
            return;
        fertige_.push_back(std::move(schub));
        const bool warLeer = fertige_.size() == 1;
        lock.unlock();
        if (warLeer)
            geaendert_.notify_all();
    }
}

Deckvorleser::Schub Deckvorleser::Sammeln()
{
    Schub schub;
    schub.karten.reserve(MeisteKarten);
    try {
        for (qsizetype zeichen = 0; schub.karten.size() < MeisteKarten && zeichen < MeisteZeichen;) {
            Deckkarte karte;
            if (!quelle_.Naechste(karte, schub.rest)) {
                schub.letzter = true;
                break;
            }
            zeichen += Zeichen(karte);
            schub.karten.push_back(std::move(karte));
        }
    } catch (...) {
        schub.fehler = std::current_exception();
        schub.letzter = true;
    }
    return schub;
}

} // namespace paukfix
