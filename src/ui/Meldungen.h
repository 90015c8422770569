// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QString>
#include <QStringList>

namespace paukfix {

using namespace Qt::StringLiterals;

// All that a lower floor says to the user: modal messages, yes/no questions and the waiting pointer.
// Message boxes carry the application title of the moment they are shown.
class Meldungen
{
public:
    enum class Symbol
    {
        Keins,
        Ausruf
    };
    enum class Antwort
    {
        Ja,
        Nein
    };

    Meldungen() = default;
    Meldungen(const Meldungen &) = delete;
    Meldungen &operator=(const Meldungen &) = delete;
    virtual ~Meldungen() = default;

    // Shows `text` with the OK button only and waits until it is closed.
    virtual void Zeigen(const QString &text, Symbol symbol = Symbol::Keins) = 0;
    // Asks `text` with Yes and No and the question icon; closing the box without a choice is No.
    virtual Antwort Fragen(const QString &text, Antwort vorgabe = Antwort::Ja) = 0;
    // Asks `text` with a button for each of `knoepfe`, the first of which answers Enter. Returns which was
    // chosen; closing the box is `abbruch`, which may be none of them.
    virtual qsizetype Waehlen(const QString &text, const QStringList &knoepfe, qsizetype abbruch) = 0;
    // A longer text to be read, under `titel`, until it is closed.
    virtual void Bericht(const QString &titel, const QString &text) = 0;
    // The hourglass pointer; it does not count calls: `false` restores the default pointer.
    virtual void Sanduhr(bool an) = 0;

    const QString &Titel() const { return titel_; }

    void SetTitel(const QString &titel) { titel_ = titel; }

private:
    QString titel_ = u"Merkkasten"_s;
};

} // namespace paukfix
