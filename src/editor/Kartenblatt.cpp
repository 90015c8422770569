// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Kartenblatt.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace {

constexpr std::size_t Thema = 8;       // its place among the name fields
constexpr std::size_t Dateinamen = 8;  // slots that name files
constexpr double KleinsteSeite = 10.0; // twips; below, a card does not say where its picture goes

double Zahl(const Field &feld, double vorgabe)
{
    try {
        return feld.IsNull() ? vorgabe : feld.Number();
    } catch (const StoreError &fehler) {
        if (fehler.Number() == Fehler::TypUnvertraeglich)
            return vorgabe;
        throw;
    }
}

bool Kreuz(const Field &feld)
{
    try {
        return feld.Flag();
    } catch (const StoreError &fehler) {
        if (fehler.Number() == Fehler::TypUnvertraeglich)
            return false;
        throw;
    }
}

// The card format keeps 16 bits.
double Twips16(double twips)
{
    constexpr double Grenze = std::numeric_limits<qint16>::max();
    return std::isnan(twips) ? 0 : std::clamp(twips, -Grenze, Grenze);
}

Bildlage LageLesen(const CardFieldHandles &felder)
{
    const Bildlage lage{Zahl(felder.PictureLeft, BildlageVorgabe.links),
                        Zahl(felder.PictureTop, BildlageVorgabe.oben), Zahl(felder.PictureWidth, 0),
                        Zahl(felder.PictureHeight, 0)};
    const bool gesagt = lage.breite >= KleinsteSeite && lage.hoehe >= KleinsteSeite;
    return gesagt ? lage : BildlageVorgabe;
}

Antwortart ArtLesen(const Field &feld)
{
    const double typ = std::nearbyint(Zahl(feld, 0));
    if (typ == 1)
        return Antwortart::Text;
    return typ == 2 ? Antwortart::Ankreuzen : Antwortart::Keine;
}

} // namespace

Kartenblatt BlattLesen(const CardFieldHandles &felder)
{
    Kartenblatt blatt;
    blatt.Frage = felder.Frage.Text();
    blatt.art = ArtLesen(felder.Antworttyp);
    for (std::size_t i = 0; i < AntwortBoxen; ++i) {
        blatt.Antwort[i] = felder.Antwort[i].Text();
        blatt.Antwort_ch[i] = blatt.art == Antwortart::Ankreuzen && Kreuz(felder.Antwort_ch[i]);
    }
    for (std::size_t i = 0; i < Dateinamen; ++i)
        blatt.pictureNames[i] = felder.Picture_name[i].Text();
    blatt.Thema = felder.Picture_name[Thema].Text();
    blatt.lage = LageLesen(felder);
    return blatt;
}

void WriteFields(const Kartenblatt &blatt, CardFieldHandles &felder)
{
    if (!blatt.Frage_gekuerzt) {
        felder.Frage.Set(blatt.Frage);
        felder.Frage_Klartext.Set(blatt.Frage_Klartext);
    }
    for (std::size_t i = 0; i < AntwortBoxen; ++i) {
        if (blatt.Antwort_gekuerzt[i])
            continue;
        felder.Antwort[i].Set(blatt.Antwort[i]);
        if (!blatt.Antwort_Klartext[i].isEmpty())
            felder.Antwort_Klartext[i].Set(blatt.Antwort_Klartext[i]);
    }
    felder.Antworttyp.Set(static_cast<int>(blatt.art));
    if (blatt.art == Antwortart::Ankreuzen) {
        for (std::size_t i = 0; i < AntwortBoxen; ++i)
            felder.Antwort_ch[i].Set(blatt.Antwort_ch[i]);
    }
    felder.PictureTop.Set(Twips16(blatt.lage.oben));
    felder.PictureLeft.Set(Twips16(blatt.lage.links));
    felder.PictureHeight.Set(Twips16(blatt.lage.hoehe));
    felder.PictureWidth.Set(Twips16(blatt.lage.breite));
    for (std::size_t i = 0; i < Dateinamen; ++i) {
        if (!blatt.pictureNames[i].isEmpty())
            felder.Picture_name[i].Set(blatt.pictureNames[i]);
    }
    if (!blatt.Thema.isEmpty())
        felder.Picture_name[Thema].Set(blatt.Thema);
}

void LangesErgaenzen(Kartenblatt &blatt, const CardFieldHandles &felder)
{
    if (std::exchange(blatt.Frage_gekuerzt, false)) {
        blatt.Frage = felder.Frage.Text();
        blatt.Frage_Klartext = felder.Frage_Klartext.Text();
    }
    for (std::size_t i = 0; i < AntwortBoxen; ++i) {
        if (!std::exchange(blatt.Antwort_gekuerzt[i], false))
            continue;
        blatt.Antwort[i] = felder.Antwort[i].Text();
        blatt.Antwort_Klartext[i] = felder.Antwort_Klartext[i].Text();
    }
}

Pruefung BlattPruefen(const Kartenblatt &blatt)
{
    if (blatt.Frage_Klartext.isEmpty())
        return {Mangel::KeineFrage};
    const auto &antworten = blatt.Antwort_Klartext;
    if (std::ranges::all_of(antworten, [](const QString &antwort) { return antwort.isEmpty(); }))
        return {Mangel::KeineAntwort};
    Pruefung pruefung;
    for (std::size_t i = 0; i < AntwortBoxen; ++i) {
        if (blatt.art != Antwortart::Text && blatt.Antwort_ch[i] && antworten[i].isEmpty())
            pruefung = {Mangel::LeereAntwortAngekreuzt, i};
    }
    return pruefung;
}

QString MangelText(Mangel mangel)
{
    switch (mangel) {
    case Mangel::KeineFrage:
        return QStringLiteral("Keine Frage eingegeben");
    case Mangel::KeineAntwort:
        return QStringLiteral("Keine Antwort eingegeben");
    case Mangel::LeereAntwortAngekreuzt:
        return QStringLiteral("Leere Antwort angekreuzt");
    case Mangel::Keiner:
        break;
    }
    return {};
}
