// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Meldungen.h"

#include <QMargins>
#include <QRect>
#include <QSize>
#include <QString>

class QImage;
class QWidget;

namespace paukfix {

class BildBox;
class RichTextBox;

// The picture of a card on the card's surface: at the place that the card names or, where it names none, over
// the right part of the question; always within the card's edges. The question's text makes room beside it.
// Where both do not fit, the picture is smaller in the query, and lies on the text in the editor, which shows
// what it was given. Places are logical pixels of the surface, whose child the box is.
class Kartenbild final
{
public:
    // How far the picture stays from the edges, and how small it may get where the surface has no room.
    struct Grenzen
    {
        QMargins abstand;
        QSize mindestens{0, 0};
        // Stays within the question, keeps its shape and leaves the text three fifths of the width.
        bool nebenText = false;
    };

    // Question and surface outlive this; the question stands on the surface, at any depth.
    Kartenbild(QWidget *karte, RichTextBox *frage, const Grenzen &grenzen);
    Kartenbild(const Kartenbild &) = delete;
    Kartenbild &operator=(const Kartenbild &) = delete;

    // Hidden at first. Dragged it stays within the edges, and where it is let go is its place from then on.
    BildBox *Box() const { return box_; }

    // Where the card puts the picture; empty where it does not say. What is shown goes there.
    void SetPlatz(const QRect &platz);
    // The text makes room from the start, also while no picture is shown.
    void SetFreihalten(bool freihalten);

    // Shows the picture file that a card names (BildLaden). Without a name, or with a file that cannot be
    // shown, which was told then, it stays as it was and is false.
    bool Zeigen(const QString &name, const QString &verzeichnis, const QString &programmPfad,
                Meldungen &meldungen);
    // The same for one that has been read.
    void Zeigen(const QImage &bild);
    void Verbergen();
    // Puts the picture where it belongs, and the text beside it: surface or question have another size.
    void Platzieren();
    // The text alone, beside the picture as it stands.
    void TextUmBild();

    // The nearest place within the edges, smaller only where there is no room.
    QRect Innerhalb(QRect platz) const;
    // What a picture may take at most where it stands.
    QRect Bildplatz() const;

private:
    QRect Eingepasst() const;
    QRect NebenText(QRect platz) const;
    QRect Frageplatz() const;

    QWidget *karte_;
    RichTextBox *frage_;
    BildBox *box_;
    Grenzen grenzen_;
    QRect platz_; // as the card says, or its learner or writer dragged it; may be empty
    bool freihalten_ = false;
};

} // namespace paukfix
