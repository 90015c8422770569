// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Kartenbild.h"
#include "Kartenblatt.h"

#include <QObject>

class QKeyEvent;

namespace paukfix {

class Sizer;

// The card's picture on the editor's form, which its writer moves and sizes with the mouse or the arrow keys.
// What the card says of its place stays as it is until then, also where the window is too small to show it
// so.
class Formularbild final : public QObject
{
    Q_OBJECT

public:
    // Form and question outlive this; picture and handle are the form's children.
    Formularbild(QWidget *formular, RichTextBox *frage);

    // Of another card: what was shown goes.
    void SetLage(const Bildlage &lage);
    // The card's first three files: the last one that can be shown stays. One that cannot is told.
    void Zeigen(const Bildnamen &namen, const QString &verzeichnis, const QString &programmPfad,
                Meldungen &meldungen);
    // The form has another size.
    void Platzieren();
    // The handle is no part of the card: it is hidden while the form is printed.
    void SetGriffSichtbar(bool sichtbar);

    // As the card said, or as its writer has moved and sized the picture since.
    const Bildlage &Lage() const { return lage_; }

    BildBox *Box() const { return bild_.Box(); }

signals:
    void gezeigt();   // it now lies on top of all
    void angefasst(); // the writer moves or sizes it

protected:
    bool eventFilter(QObject *objekt, QEvent *event) override;

private:
    void Verbergen();
    void GriffZeigen();
    bool Darf(const QRect &platz) const;
    void Bewegen(QPoint neu);
    void Ziehen(QPoint griff);
    bool Taste(const QKeyEvent &taste);

    QWidget *formular_;
    RichTextBox *frage_;
    Kartenbild bild_;
    Sizer *sizer_;
    Bildlage lage_ = BildlageVorgabe;
};

} // namespace paukfix
