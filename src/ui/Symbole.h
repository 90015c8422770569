// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QColor>
#include <QIcon>
#include <QRectF>

class QPainter;

namespace paukfix {

// The program's own icons: lines in one colour, drawn for 20 x 20 pixels and sharp at every size.
enum class Symbole
{
    Fett,
    Kursiv,
    Unterstrichen,
    Hochgestellt,
    Normalstellung,
    Tiefgestellt,
    Schrift,
    Farbe,
    Standardschrift,
    Bild,
    Ton,
    Suchen,
    Drucken,
    Kopieren,
    Loeschen,
    Abspielen,
    Schnellzurueck, // <<
    Zurueck,        // <
    Vor,            // >
    Schnellvor,     // >>
    AnsEnde,        // >>|
    AnsAnfang,      // |<<
    Hinauf,         // to the folder above
    Haken,
    Karte,
    Frage,   // of message boxes
    Ausruf,  //
    Hinweis, //
    Leeren,  // a cross: empties a field
    NeuerOrdner,
    Kacheln,      // of a list of files
    Einzelheiten, //
    Vergroessern, // of a preview of pages
    Verkleinern,
    Seitenbreite,
    GanzeSeite,
    Hochformat,
    Querformat,
    EineSeite,
    ZweiSeiten,
    AlleSeiten,
    SeiteEinrichten,
};

// As an icon in the text colour of the application's buttons, whatever it is when it is painted.
QIcon Symbol(Symbole welches);

// Painted into the largest square in the middle of `flaeche`.
void SymbolMalen(QPainter &maler, const QRectF &flaeche, Symbole welches, const QColor &farbe);

} // namespace paukfix
