// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Abfrage.h"

#include "FirstCard.h"
#include "TextHelpers.h"
#include "Twips.h"

#include <algorithm>
#include <cmath>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

double Zahl(const Field &feld)
{
    return feld.IsNull() ? 0 : feld.Number();
}

Antworttyp TypVon(double zahl)
{
    const double typ = std::nearbyint(zahl);
    if (typ == 1)
        return Antworttyp::Getippt;
    return typ == 2 ? Antworttyp::Ankreuzen : Antworttyp::Keiner;
}

} // namespace

Abfragekarte KarteLesen(const CardFieldHandles &felder)
{
    Abfragekarte karte;
    karte.FrageNr = QString::number(Zahl(felder.FrageNr), 'g', 15);
    karte.FachNr = felder.FachNr.Integer();
    karte.typ = TypVon(Zahl(felder.Antworttyp));
    for (std::size_t slot = 1; slot <= 8; ++slot)
        karte.Medium[slot] = felder.Picture_name[slot - 1].Text();
    karte.Thema = felder.Picture_name[8].Text();
    karte.Bildplatz = PixelVonTwips(Zahl(felder.PictureLeft), Zahl(felder.PictureTop),
                                    Zahl(felder.PictureWidth), Zahl(felder.PictureHeight));
    karte.Frage = felder.Frage.Text();
    for (std::size_t i = 0; i < AntwortAnzahl; ++i) {
        karte.Antwort[i] = felder.Antwort[i].Text();
        karte.Antwort_ch[i] = felder.Antwort_ch[i].Flag();
    }
    karte.Antwort_1_Klartext = felder.Antwort_Klartext[0].Text();
    return karte;
}

std::optional<Abfragekarte> KarteVorauslesen(CardRecordset &karten, int fach)
{
    const std::optional<CardRecord> erste = FirstCard(karten, fach);
    if (!erste)
        return std::nullopt;
    Abfragekarte karte;
    karte.FrageNr = QString::number(erste->FrageNr, 'g', 15);
    karte.FachNr = static_cast<qint16>(fach);
    karte.typ = TypVon(erste->Antworttyp);
    karte.Medium = {QString(),
                    erste->Picture_1_Name,
                    erste->Picture_2_Name,
                    erste->Picture_3_Name,
                    erste->Picture_4_Name,
                    erste->Picture_5_Name,
                    erste->Picture_6_Name,
                    erste->Picture_7_Name,
                    erste->Picture_8_Name};
    karte.Thema = erste->Picture_9_Name;
    karte.Bildplatz =
        PixelVonTwips(erste->Pictureleft, erste->PictureTop, erste->Picturewidth, erste->Pictureheight);
    karte.Frage = erste->Frage;
    karte.Antwort = {erste->Antwort_1, erste->Antwort_2, erste->Antwort_3, erste->Antwort_4,
                     erste->Antwort_5};
    karte.Antwort_ch = {erste->Antwort_ch_1, erste->Antwort_ch_2, erste->Antwort_ch_3, erste->Antwort_ch_4,
                        erste->Antwort_ch_5};
    karte.Antwort_1_Klartext = erste->Antwort_1_Klartext;
    return karte;
}

QString Referenztext(const QString &klartext)
{
    const QString text = ZeilenumbruchEntfernen(klartext);
    const qsizetype hinweis = text.indexOf("Hinweis:"_L1);
    return hinweis < 0 ? text : Trimmed(text.left(hinweis));
}

bool GetippteAntwortRichtig(const QString &klartext, const QString &eingabe)
{
    const QString referenz = Referenztext(klartext);
    // An umlaut of one character and one of letter and dots are the same to everyone who sees them.
    const auto zusammengesetzt = [](const QString &text) {
        return text.normalized(QString::NormalizationForm_C);
    };
    return referenz == "Joker"_L1 ||
           zusammengesetzt(ZeilenumbruchEntfernen(Trimmed(eingabe))) == zusammengesetzt(referenz);
}

bool KreuzeRichtig(const Kreuze &kreuze, const Kreuze &loesung)
{
    return kreuze == loesung;
}

std::array<int, AntwortAnzahl> AntwortenMischen(Zufall &zufall)
{
    std::array<int, AntwortAnzahl> folge{};
    for (auto platz = folge.begin(); platz != folge.end(); ++platz)
        do
            *platz = static_cast<int>(zufall.Rnd() * AntwortAnzahl);
        while (std::find(folge.begin(), platz, *platz) != platz);
    return folge;
}

QString Wohin(int fach, bool richtig)
{
    constexpr int Erledigt = 6;
    const int ziel = ZielFach(fach, richtig);
    if (ziel == Erledigt)
        return u"Die Karte ist vorerst erledigt."_s;
    if (ziel == fach)
        return u"Die Karte bleibt in Fach %1."_s.arg(ziel);
    return richtig ? u"Die Karte steigt in Fach %1 auf."_s.arg(ziel)
                   : u"Die Karte geht in Fach %1."_s.arg(ziel);
}

const QString &BildNachUrteil(const Abfragekarte &karte, bool richtig)
{
    return richtig || karte.Medium[3].isEmpty() ? karte.Medium[2] : karte.Medium[3];
}

const QString &KlangNachUrteil(const Abfragekarte &karte, bool richtig)
{
    return richtig || karte.Medium[8].isEmpty() ? karte.Medium[7] : karte.Medium[8];
}

} // namespace paukfix
