// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Kartenblatt.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>

namespace paukfix {

using namespace Qt::StringLiterals;

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

// The stored bytes, whatever they are.
QVariant Roh(const Field &feld)
{
    return feld.IsNull() ? QVariant() : QVariant(feld.Utf8().toByteArray());
}

// A name that nobody changed is not checked again either: another program may have made it too long.
void NameSetzen(Field &feld, const QString &name)
{
    if (!name.isEmpty() && name != feld.Text())
        feld.Set(name);
}

Antwortart ArtLesen(const Field &feld)
{
    const double typ = std::nearbyint(Zahl(feld, 0));
    if (typ == 1)
        return Antwortart::Text;
    return typ == 2 ? Antwortart::Ankreuzen : Antwortart::Keine;
}

} // namespace

QString Moment(std::size_t welcher)
{
    static const std::array<QString, Momente> namen{u"Frage"_s, u"Antwort"_s, u"falscher Antwort"_s};
    return namen.at(welcher);
}

Kartenblatt BlattLesen(const CardFieldHandles &felder)
{
    Kartenblatt blatt;
    blatt.Frage = felder.Frage.Text();
    blatt.art = ArtLesen(felder.Antworttyp);
    for (std::size_t i = 0; i < AntwortBoxen; ++i) {
        blatt.Antwort[i] = felder.Antwort[i].Text();
        blatt.Antwort_ch[i] = Kreuz(felder.Antwort_ch[i]);
    }
    for (std::size_t i = 0; i < Dateinamen; ++i)
        blatt.pictureNames[i] = felder.Picture_name[i].Text();
    blatt.Thema = felder.Picture_name[Thema].Text();
    blatt.lage = LageLesen(felder);
    return blatt;
}

void WriteFields(const Kartenblatt &blatt, CardFieldHandles &felder)
{
    if (blatt.Frage_bearbeitet) {
        felder.Frage.Set(blatt.Frage);
        felder.Frage_Klartext.Set(blatt.Frage_Klartext);
    }
    for (std::size_t i = 0; i < AntwortBoxen; ++i) {
        if (!blatt.Antwort_bearbeitet[i])
            continue;
        felder.Antwort[i].Set(blatt.Antwort[i]);
        if (!blatt.Antwort_Klartext[i].isEmpty())
            felder.Antwort_Klartext[i].Set(blatt.Antwort_Klartext[i]);
    }
    felder.Antworttyp.Set(static_cast<int>(blatt.art));
    if (blatt.art == Antwortart::Ankreuzen)
        for (std::size_t i = 0; i < AntwortBoxen; ++i)
            felder.Antwort_ch[i].Set(blatt.Antwort_ch[i]);
    felder.PictureTop.Set(Twips16(blatt.lage.oben));
    felder.PictureLeft.Set(Twips16(blatt.lage.links));
    felder.PictureHeight.Set(Twips16(blatt.lage.hoehe));
    felder.PictureWidth.Set(Twips16(blatt.lage.breite));
    for (std::size_t i = 0; i < Dateinamen; ++i)
        NameSetzen(felder.Picture_name[i], blatt.pictureNames[i]);
    NameSetzen(felder.Picture_name[Thema], blatt.Thema);
}

Rohtexte RohtexteLesen(const CardFieldHandles &felder)
{
    Rohtexte texte{Roh(felder.Frage), Roh(felder.Frage_Klartext), {}, {}};
    for (std::size_t i = 0; i < AntwortBoxen; ++i) {
        texte.Antwort[i] = Roh(felder.Antwort[i]);
        texte.Antwort_Klartext[i] = Roh(felder.Antwort_Klartext[i]);
    }
    return texte;
}

void RohtexteSchreiben(const Rohtexte &texte, const Kartenblatt &blatt, CardFieldHandles &felder)
{
    if (!blatt.Frage_bearbeitet) {
        felder.Frage.Set(texte.Frage);
        felder.Frage_Klartext.Set(texte.Frage_Klartext);
    }
    for (std::size_t i = 0; i < AntwortBoxen; ++i) {
        if (blatt.Antwort_bearbeitet[i])
            continue;
        felder.Antwort[i].Set(texte.Antwort[i]);
        felder.Antwort_Klartext[i].Set(texte.Antwort_Klartext[i]);
    }
}

Pruefung BlattPruefen(const Kartenblatt &blatt)
{
    if (blatt.Frage_Klartext.isEmpty() && !blatt.Frage_unsichtbar)
        return {Mangel::KeineFrage};
    std::array<bool, AntwortBoxen> leer{};
    for (std::size_t i = 0; i < AntwortBoxen; ++i)
        leer[i] = blatt.Antwort_Klartext[i].isEmpty() && !blatt.Antwort_unsichtbar[i];
    if (std::ranges::all_of(leer, std::identity()))
        return {Mangel::KeineAntwort};
    Pruefung pruefung;
    for (std::size_t i = 0; i < AntwortBoxen; ++i)
        if (blatt.art == Antwortart::Ankreuzen && blatt.Antwort_ch[i] && leer[i])
            pruefung = {Mangel::LeereAntwortAngekreuzt, i};
    return pruefung;
}

QString MangelText(Mangel mangel)
{
    switch (mangel) {
    case Mangel::KeineFrage:
        return u"Keine Frage eingegeben"_s;
    case Mangel::KeineAntwort:
        return u"Keine Antwort eingegeben"_s;
    case Mangel::LeereAntwortAngekreuzt:
        return u"Leere Antwort angekreuzt"_s;
    case Mangel::Keiner:
        break;
    }
    return {};
}

} // namespace paukfix
