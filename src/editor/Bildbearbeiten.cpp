// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Bildbearbeiten.h"

#include "Bild.h"
#include "Fensterbau.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QScreen>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

// Pixels: usual pictures are shown whole where the screen has room for them.
constexpr QSize GroessteVorschau{800, 600};
constexpr QSize KleinsteVorschau{400, 300};

SlotTexte Texte()
{
    return {u"Bildbearbeiten"_s,
            u"Bild bearbeiten"_s,
            u"Bild anzeigen bei:"_s,
            u"Bilddatei öffnen"_s,
            u"Bitmaps (*.bmp)|*.bmp|JPEG (*.jpg)|*.jpg"_s,
            u"Bitte nur Bilder aus dem gleichen Verzeichnis wie die Merkkasten"_s,
            u"Fehler beim Bildöffnen: "_s,
            1};
}

} // namespace

Bildbearbeiten::Bildbearbeiten(const CardStore &kartei, const Dienste &dienste, Kartendateien dateien,
                               QWidget *parent)
    : Slotdialog(kartei, dienste, std::move(dateien), Texte(), parent)
{
    Picture1_ = Benannt(new QLabel(this), u"Picture1"_s, u"Vorschau"_s);
    const QSize schirm = (parent ? parent->screen() : screen())->availableGeometry().size();
    const int fensterrahmen = fontMetrics().height() * 3;
    const QMargins rand = layout()->contentsMargins();
    const QSize daneben(sizeHint().width() + Gitter()->horizontalSpacing() + fensterrahmen,
                        rand.top() + rand.bottom() + fensterrahmen);
    Picture1_->setFixedSize(GroessteVorschau.boundedTo(schirm - daneben).expandedTo(KleinsteVorschau));
    Picture1_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    Picture1_->setBackgroundRole(QPalette::Base);
    Picture1_->setAutoFillBackground(true);
    Gitter()->addWidget(Picture1_, 0, 1, 4, 1, Qt::AlignTop);
}

// A picture that is too large loses its edges.
void Bildbearbeiten::Vorschau(const QString &pfad)
{
    const QImage bild = BildLesen(pfad);
    bild_ = bild.size();
    Picture1_->setPixmap(QPixmap::fromImage(bild.copy(QRect({}, bild_.boundedTo(Picture1_->maximumSize())))));
}

void Bildbearbeiten::VorschauLeeren()
{
    Picture1_->clear();
}

void Bildbearbeiten::Annehmen(const QString &pfad)
{
    Vorschau(pfad);
}

void Bildbearbeiten::Angenommen(const QString &)
{
    for (const bool zuGross :
         {bild_.height() > Picture1_->maximumHeight(), bild_.width() > Picture1_->maximumWidth()})
        if (zuGross)
            Dienst().meldungen.Zeigen(u"Das Bild ist zu groß, Ränder werden abgeschnitten"_s);
}

} // namespace paukfix
