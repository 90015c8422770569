// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "AbfrageLauf.h"
#include "Kartenbild.h"

#include <QRect>
#include <QWidget>

#include <array>
#include <memory>

class QImage;
class QScrollArea;
class QVariantAnimation;

namespace paukfix {

class AntwortAnsicht;
class BildBox;
class Fragetext;
class Kartenkopf;
class KreuzAnsicht;
class RichTextBox;
class TippAnsicht;
class UrteilZeile;
class Urteilskante;

// The card of the query on its pile: its head, the question on paper, and a tinted zone, as high from the
// start as it will have to be, for the answer in one of its forms and the verdict. The picture stands beside
// the question.
class Kartenflaeche final : public QWidget
{
    Q_OBJECT

public:
    static constexpr int Radius = 8; // of its corners

    Kartenflaeche(QWidget *eltern, Meldungen &meldungen);

    // A card that has just been asked: nothing of the last one is left. `uebrig`: the other cards of its
    // compartment, which it lies on.
    void Zeigen(const Abfragekarte &karte, int uebrig);
    // The form of the answer that this card takes.
    AntwortAnsicht &Ansicht() const;
    // Puts the lines of a tick card into an order (KreuzAnsicht).
    void Mischen(const std::array<int, AntwortAnzahl> &folge);

    UrteilZeile &Urteil() const { return *urteil_; }

    RichTextBox *Frage() const;
    BildBox *Bild() const;

    int Uebrig() const { return uebrig_; }

    // The desktop's colours are others.
    void Faerben();
    // Colours edge and row; the first verdict appears softly where that is wanted.
    void UrteilZeigen(bool richtig, const QString &gesicht, const QString &satz, bool weich);

    // The size at which the picture stands where the card wants it; empty where it has none or does not say.
    QSize Bildbedarf() const;
    // How large a picture is shown, in pixels of the screen.
    QSize Bildgroesse() const;
    // Shows the picture of the file `name` until the next one; none for a null image.
    void BildZeigen(const QImage &bild, const QString &name);

    QSize minimumSizeHint() const override;

signals:
    void BildAngeklickt();
    void Umgelegt(); // it has another size

protected:
    bool eventFilter(QObject *objekt, QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void BildBauen();
    void Anordnen();
    bool Anordnen(bool kompakt);
    int Kopfhoehe() const;

    Meldungen &meldungen_;
    Kartenkopf *kopf_ = nullptr;
    Fragetext *MFrage_ = nullptr;
    QScrollArea *rolle_ = nullptr; // the forms, where the window is too small for them
    TippAnsicht *tippen_ = nullptr;
    KreuzAnsicht *kreuze_ = nullptr;
    UrteilZeile *urteil_ = nullptr;
    Urteilskante *Frame1_ = nullptr;
    std::unique_ptr<Kartenbild> bild_;
    QVariantAnimation *blende_ = nullptr;
    bool ankreuzen_ = false;
    bool mitBild_ = false;
    bool kompakt_ = false;
    int uebrig_ = 0;
    int zone_ = 0; // where the answer's zone begins
    QRect wunsch_; // where the card wants its picture; may be empty
};

} // namespace paukfix
