// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Kartenbild.h"
#include "Kartenblatt.h"

#include <QObject>

class QKeyEvent;

namespace paukfix {

class Antworten;
class Sizer;

// The card's picture on the editor's form, which its writer moves and sizes with the mouse or the arrow keys.
// It covers no text: what it lies on makes room for it, and where that cannot be it is shown beside the
// question, or beside the one answer of a text card, smaller where it must. What the card says of its place
// stays as it is until its writer takes hold of it.
class Formularbild final : public QObject
{
    Q_OBJECT

public:
    // Form and question outlive this; picture and handle are the form's children.
    Formularbild(QWidget *formular, RichTextBox *frage);

    // What it must not lie on, and the answers, of which a single one makes room for it.
    void SetUmgebung(QList<QWidget *> hindernisse, const Antworten *antworten);
    // Of another card: what was shown goes.
    void SetLage(const Bildlage &lage);
    // The card's first three files: the last one that can be shown stays. One that cannot is told.
    void Zeigen(const Bildnamen &namen, const QString &verzeichnis, const QString &programmPfad,
                Meldungen &meldungen);
    // The form has another size.
    void Platzieren();
    // The handle is no part of the card: it is hidden while the form is printed.
    void SetGriffSichtbar(bool sichtbar);

    // It can be looked at, but no longer be moved or sized.
    void Schuetzen();

    // As the card said, or as its writer has moved and sized the picture since.
    const Bildlage &Lage() const { return lage_; }

    BildBox *Box() const { return bild_.Box(); }

signals:
    void angefasst(); // the writer moves or sizes it

protected:
    bool eventFilter(QObject *objekt, QEvent *event) override;

private:
    void Verbergen();
    void GriffZeigen();
    void Loslassen();
    QRect AufFormular(const QWidget *widget) const;
    bool Frei(const QRect &platz) const;
    QRect Ausweichen(QRect platz) const;
    QList<QWidget *> Textfelder() const;
    bool Darf(const QRect &platz) const;
    void Bewegen(QPoint neu);
    void Ziehen(QPoint griff);
    bool Taste(const QKeyEvent &taste);

    QWidget *formular_;
    RichTextBox *frage_;
    QList<QWidget *> hindernisse_;
    const Antworten *antworten_ = nullptr;
    Kartenbild bild_;
    Sizer *sizer_;
    Bildlage lage_ = BildlageVorgabe;
};

} // namespace paukfix
