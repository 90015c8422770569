// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "AbfrageLauf.h"
#include "Flaeche.h"
#include "Kartenbild.h"

#include <QRect>

#include <array>
#include <memory>

class QImage;
class QLabel;
class QLayout;

namespace paukfix {

class AntwortAnsicht;
class KreuzAnsicht;
class RichTextBox;
class TippAnsicht;
class UrteilZeile;

// The card of the query: its head, the question, the answer in one of its forms, the verdict below it, and
// the card's picture over all.
class Kartenflaeche final : public Flaeche
{
public:
    Kartenflaeche(QWidget *eltern, Meldungen &meldungen);

    // A card that has just been asked: nothing of the last one is left.
    void Zeigen(const Abfragekarte &karte);
    // The form of the answer that this card takes.
    AntwortAnsicht &Ansicht() const;
    // Puts the lines of a tick card into an order (KreuzAnsicht).
    void Mischen(const std::array<int, AntwortAnzahl> &folge);

    UrteilZeile &Urteil() const { return *urteil_; }

    QWidget *Frage() const;

    void Faerben(AbfrageLauf::Stand stand);

    // Where the card wants its picture; empty where it has none or does not say. Picture and question are as
    // the card has them again.
    QRect Bildbedarf();
    // Makes the question so high that the picture stays beside it, though by `mehr` pixels at most; where
    // that is not enough, the picture will be smaller rather than lie over the answers.
    void FrageNebenBild(int mehr);
    // Shows a picture until the next one; none for a null image.
    void BildZeigen(const QImage &bild);

protected:
    bool eventFilter(QObject *objekt, QEvent *event) override;

private:
    QLayout *KopfBauen();
    void BildBauen();

    Meldungen &meldungen_;
    std::array<QLabel *, 3> kopf_{}; // what the numbers and the topic are called
    QLabel *MaskFrageNr_ = nullptr;
    QLabel *MaskFachNr_ = nullptr;
    QLabel *MaskThema_ = nullptr;
    RichTextBox *MFrage_ = nullptr;
    Flaeche *strich_ = nullptr; // between question and answer; shows the focus of the question
    TippAnsicht *tippen_ = nullptr;
    KreuzAnsicht *kreuze_ = nullptr;
    UrteilZeile *urteil_ = nullptr;
    std::unique_ptr<Kartenbild> bild_;
    bool ankreuzen_ = false;
    QRect wunsch_; // where the card wants its picture; may be empty
};

} // namespace paukfix
