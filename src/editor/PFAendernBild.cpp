// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Bildbearbeiten.h"
#include "Formularbild.h"
#include "KartenTextBox.h"
#include "PFAendern.h"
#include "Soundbearbeiten.h"

#include <QDir>
#include <QLabel>
#include <QPushButton>

void PFÄndern::BildBauen()
{
    bild_ = new Formularbild(formular_, MFrage_);
    connect(bild_, &Formularbild::angefasst, this, [this] { Geaendert(); });
    // On a small window a picture must not lie on what one works with.
    connect(bild_, &Formularbild::gezeigt, this, [this] {
        for (QWidget *widget : NichtGedruckt())
            widget->raise();
    });
}

// By bare name from the current directory, then from the program's; the card file's own directory is where
// the dialog looks, not the form.
void PFÄndern::BilderZeigen(const Bildlage &lage)
{
    bild_->Zeigen(pictureNames_, lage, QDir::currentPath(), umgebung_.konfig.ProgrammPfad,
                  umgebung_.meldungen);
}

void PFÄndern::MBilder_Click()
{
    Bildbearbeiten fenster(
        {umgebung_.kartei, umgebung_.meldungen, umgebung_.dialoge, pictureNames_, [this] { Geaendert(); }},
        kopf_.FrageNr, this);
    fenster.exec();
    BilderZeigen(bild_->Lage());
}

void PFÄndern::MTon_Click()
{
    Soundbearbeiten fenster(
        {umgebung_.kartei, umgebung_.meldungen, umgebung_.dialoge, pictureNames_, [this] { Geaendert(); }},
        umgebung_.klang, kopf_.FrageNr, this);
    fenster.exec();
    umgebung_.stille();
}
