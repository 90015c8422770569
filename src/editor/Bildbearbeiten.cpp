// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Bildbearbeiten.h"

#include "Bild.h"
#include "Fensterbau.h"
#include "Slotkarte.h"
#include "Slotvorschau.h"

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr QSize GroessteVorschau{800, 600}; // pixels: usual pictures are shown whole

SlotTexte Texte()
{
    return {Medienart::Bild,
            u"Bildbearbeiten"_s,
            u"Bild bearbeiten"_s,
            u"Bild anzeigen bei:"_s,
            u"Bilddatei öffnen"_s,
            u"Bitmaps (*.bmp)|*.bmp|JPEG (*.jpg)|*.jpg"_s,
            u"JPEG und Bitmaps"_s,
            u"Bitte nur Bilder aus dem gleichen Verzeichnis wie die Merkkasten"_s,
            u"Fehler beim Bildöffnen: "_s,
            ErsterBildplatz};
}

} // namespace

Bildbearbeiten::Bildbearbeiten(const CardStore &kartei, const Dienste &dienste, Kartendateien dateien,
                               QWidget *parent)
    : Slotdialog(kartei, dienste, std::move(dateien), Texte(), parent),
      Picture1_(Benannt(new Slotvorschau(Symbole::Bild, u"lässt sich nicht zeigen"_s, this), u"Picture1"_s,
                        u"Vorschau"_s))
{
    Aufbauen();
}

// A picture that is too large loses its edges.
void Bildbearbeiten::Vorschau(const QString &pfad)
{
    const QImage bild = BildLesen(pfad);
    bild_ = bild.size();
    Picture1_->SetBild(QPixmap::fromImage(bild.copy(QRect({}, bild_.boundedTo(GroessteVorschau)))));
}

// The whole picture, small; why it cannot be shown is told when the slot is chosen.
void Bildbearbeiten::Belegen(Slotkarte &karte, const QString &pfad)
{
    Slotvorschau &vorschau = *karte.Vorschau();
    vorschau.clear();
    vorschau.SetHinweis({});
    if (pfad.isEmpty())
        return;
    try {
        vorschau.SetBild(QPixmap::fromImage(BildLesen(pfad, GroessteVorschau)));
    } catch (const StoreError &) {
        vorschau.SetHinweis(u"lässt sich nicht zeigen"_s);
    }
}

void Bildbearbeiten::VorschauLeeren()
{
    Picture1_->SetBild({});
}

void Bildbearbeiten::Annehmen(const QString &pfad)
{
    Vorschau(pfad);
}

void Bildbearbeiten::Angenommen(const QString &)
{
    for (const bool zuGross :
         {bild_.height() > GroessteVorschau.height(), bild_.width() > GroessteVorschau.width()})
        if (zuGross)
            Dienst().meldungen.Zeigen(u"Das Bild ist zu groß, Ränder werden abgeschnitten"_s);
}

} // namespace paukfix
