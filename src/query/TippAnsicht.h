// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "AntwortAnsicht.h"

class QLabel;

namespace paukfix {

class Flaeche;
class Meldungen;
class RichTextBox;

// The answer typed into a field, beside one for the solution. On a card of an unknown answer type the learner
// compares the two himself.
class TippAnsicht final : public AntwortAnsicht
{
    Q_OBJECT

public:
    // Tells through `meldungen` why a text cannot be pasted.
    TippAnsicht(QWidget *eltern, Meldungen &meldungen);

    void Zeigen(const Abfragekarte &karte) override;
    Antwort Gegeben() const override;
    void Aufloesen(const Abfragekarte &karte) override;
    QList<QWidget *> Tabfolge() const override;
    void Faerben(AbfrageLauf::Stand stand) override;
    QStringList Hinweise() const override;

protected:
    bool eventFilter(QObject *objekt, QEvent *event) override;

private:
    // One of the two, under its label.
    struct Feld
    {
        QLabel *titel = nullptr;
        Flaeche *flaeche = nullptr;
        RichTextBox *text = nullptr;
    };

    QWidget *Erste() const override;
    Feld FeldBauen(std::size_t nummer, const QString &titel);

    Feld antwort_, loesung_;
    bool selbst_ = false; // the learner judges
};

} // namespace paukfix
