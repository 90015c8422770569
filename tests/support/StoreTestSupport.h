// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardFile.h"
#include "CardRecordset.h"
#include "Clock.h"
#include "Meldungen.h"

#include <QList>
#include <QStringList>
#include <QTemporaryDir>

#include <deque>
#include <functional>

namespace paukfix {

// What tests of all floors need: a directory of their own, cards, answers to questions, a clock that does not
// wait.

// Records every message with the title it carried; a question takes the next answer that was set, else No.
class TestMeldungen final : public Meldungen
{
public:
    struct Gezeigt
    {
        QString text, titel;
        bool frage = false;
        Symbol symbol = Symbol::Keins;
    };

    void Zeigen(const QString &text, Symbol symbol = Symbol::Keins) override
    {
        gezeigt.append({text, Titel(), false, symbol});
    }

    Antwort Fragen(const QString &text, Antwort vorgabe = Antwort::Ja) override
    {
        gezeigt.append({text, Titel(), true, Symbol::Keins});
        vorgaben.append(vorgabe);
        beiFrage();
        if (antworten.empty())
            return Antwort::Nein;
        const Antwort antwort = antworten.front();
        antworten.pop_front();
        return antwort;
    }

    // Takes the next choice that was set, else `abbruch`.
    qsizetype Waehlen(const QString &text, const QStringList &knoepfe, qsizetype abbruch) override
    {
        gezeigt.append({text, Titel(), true, Symbol::Keins});
        knopfreihen.append(knoepfe);
        if (knopfreihen.size() > 1000)
            qFatal("asked for ever: %s", qPrintable(text));
        beiFrage();
        if (wahlen.empty())
            return abbruch;
        const qsizetype wahl = wahlen.front();
        wahlen.pop_front();
        return wahl;
    }

    void Bericht(const QString &titel, const QString &text) override
    {
        berichte.append(titel + u'\n' + text);
    }

    void Sanduhr(bool an) override
    {
        sanduhr = an;
        if (an)
            beiSanduhr();
    }

    QStringList Texte() const
    {
        QStringList texte;
        for (const Gezeigt &meldung : gezeigt)
            texte << meldung.text;
        return texte;
    }

    QList<Gezeigt> gezeigt;
    QList<Antwort> vorgaben;
    std::deque<Antwort> antworten;
    std::deque<qsizetype> wahlen;
    QList<QStringList> knopfreihen; // of the choices that were asked for
    QStringList berichte;
    bool sanduhr = false;
    std::function<void()> beiSanduhr = [] {}; // when the hourglass appears
    std::function<void()> beiFrage = [] {};   // while a question is read
};

// A clock whose second changes after `perSecond` readings.
class TestClock final : public Clock
{
public:
    qint64 Second() const override { return readings++ / perSecond; }

    QDateTime Now() const override { return jetzt; }

    mutable qint64 readings = 0;
    qint64 perSecond = 1000;
    QDateTime jetzt{{2026, 11, 21}, {9, 30}};
};

// A typed-answer card at its place in the box, with different texts in every field that holds one.
CardRecord MakeCard(int frageNr, int fachNr, int fachLfdNr);

// Makes a card file with these cards at `path`, through the store's own format and recordset.
void MakeCardFile(const QString &path, const QList<CardRecord> &cards);

// The same in the format from before the sums of pages.
void MakeFormerCardFile(const QString &path, const QList<CardRecord> &cards);

// Makes an empty card file at `path`, with pages of that size, with sums or in the format from before them.
void MakeEmptyCardFile(const QString &path, int pageSize, bool sums);

// All cards of the file at `path`, in box order, read with a recordset of its own.
QList<CardRecord> ReadCards(const QString &path);

// What is wrong with the card file at `path`: what the engine finds, or cards that table and indexes do not
// agree on. Empty for a sound file. The file must not be open.
QString FaultIn(const QString &path);

// Whether a message is one that users can read: a whole German sentence, nothing of the engine's own English.
bool IsGermanMessage(const QString &text);

} // namespace paukfix
