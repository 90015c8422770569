// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "AntwortAnsicht.h"

class QLabel;

namespace paukfix {

class Flaeche;
class Loesungsfeld;
class Meldungen;
class RichTextBox;
class Tastenkappe;

// The answer typed into a field, above the solution. On a card of an unknown answer type the learner compares
// the two himself.
class TippAnsicht final : public AntwortAnsicht
{
    Q_OBJECT

public:
    // Tells through `meldungen` why a text cannot be pasted.
    TippAnsicht(QWidget *eltern, Meldungen &meldungen);

    void Zeigen(const Abfragekarte &karte) override;
    Antwort Gegeben() const override;
    void Aufloesen(const Abfragekarte &karte, bool vergleichen) override;
    int Hoehe(int breite) const override;
    void SetKompakt(bool kompakt) override;
    QList<QWidget *> Tabfolge() const override;
    QString Hinweise() const override;
    QString Ansage() const override;

protected:
    bool eventFilter(QObject *objekt, QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    QWidget *Erste() const override;
    int Feldhoehe(int breite) const;
    void Anordnen();

    QLabel *titel_ = nullptr;
    Flaeche *feld_ = nullptr;
    RichTextBox *antwort_ = nullptr;
    Tastenkappe *tasten_ = nullptr; // where the solution will be
    Loesungsfeld *loesung_ = nullptr;
    bool selbst_ = false; // the learner judges
    bool kompakt_ = false;
};

} // namespace paukfix
