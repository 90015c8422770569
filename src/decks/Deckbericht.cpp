// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Deckbericht.h"

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype MeisteBeispiele = 8;
constexpr qsizetype LaengstesBeispiel = 70;

QString Satz(Deckrest rest)
{
    switch (rest) {
    case Deckrest::OhneFrage:
        return u"Karten bleiben weg, weil ihre Frageseite leer ist"_s;
    case Deckrest::ZuLang:
        return u"Karten bleiben weg, weil ihr Text länger ist, als eine Karte fassen kann"_s;
    case Deckrest::Unlesbar:
        return u"Karten bleiben weg, weil ihnen Text oder Vorlage fehlt"_s;
    case Deckrest::OhneAntwort:
        return u"Karten haben keine Antwort; sie kommen ohne"_s;
    case Deckrest::WeitereBilder:
        return u"Bilder bleiben weg, weil eine Kartenseite nur eines zeigt"_s;
    case Deckrest::WeitereToene:
        return u"Töne bleiben weg, weil eine Kartenseite nur einen spielt"_s;
    case Deckrest::MediumFehlt:
        return u"Bilder und Töne sind genannt, aber nicht dabei"_s;
    case Deckrest::MediumUnlesbar:
        return u"Bilder und Töne lassen sich nicht lesen (unbekannte Art, beschädigt oder zu groß)"_s;
    case Deckrest::MediumFern:
        return u"Bilder und Töne liegen im Internet und werden nicht geholt"_s;
    case Deckrest::Video:
        return u"Karten enthalten Filme oder eingebettete Seiten; sie bleiben weg"_s;
    case Deckrest::WeitereThemen:
        return u"Karten haben mehr Schlagwörter, als in ein Thema passen"_s;
    case Deckrest::WeitereAntworten:
        return u"Ankreuzkarten haben mehr als fünf Antworten; die übrigen falschen bleiben weg"_s;
    case Deckrest::MehrereRichtig:
        return u"Ankreuzkarten haben nicht genau eine richtige Antwort; die richtigen stehen in einem Text"_s;
    case Deckrest::Hinweis:
        return u"Karten haben einen aufklappbaren Hinweis; er bleibt weg"_s;
    case Deckrest::Ausgesetzt:
        return u"Karten sind ausgesetzt oder zurückgestellt; sie kommen wie alle anderen"_s;
    case Deckrest::Vorlage:
        return u"Karten haben eine fehlerhafte Vorlage; sie zeigen ihre Felder der Reihe nach"_s;
    case Deckrest::Hintergrund:
        return u"Kartenseiten haben Hintergrundfarben; sie bleiben weg"_s;
    case Deckrest::Verweis:
        return u"Kartenseiten haben Verweise ins Internet; ihr Text bleibt, ihr Ziel nicht"_s;
    case Deckrest::Tabelle:
        return u"Kartenseiten haben Tabellen; ihre Zellen stehen untereinander"_s;
    case Deckrest::Liste:
        return u"Kartenseiten haben Aufzählungen; ihre Punkte stehen ohne Zeichen untereinander"_s;
    case Deckrest::Skript:
        return u"Kartenseiten haben Skripte; sie bleiben weg"_s;
    case Deckrest::Formel:
        return u"Kartenseiten haben Formeln; sie kommen als Text"_s;
    case Deckrest::Wortangabe:
        return u"Angaben zu Wörtern (Aussprache, Beispiele, Formen, Bemerkungen) haben auf einer Karte keinen Platz"_s;
    case Deckrest::WeitereSprache:
        return u"Übersetzungen in weitere Sprachen bleiben weg"_s;
    case Deckrest::Markierung:
        return u"Karten sind farbig markiert; die Markierung bleibt weg"_s;
    case Deckrest::Lernverlauf:
        return u"Angaben zum Lernverlauf (Termine, Wiederholungen, Fehler) bleiben weg"_s;
    case Deckrest::Format:
        return u"Texte verlieren ihre Formatierung"_s;
    case Deckrest::Bildlage:
        return u"Bilder verlieren ihren Platz und ihre Größe auf der Karte"_s;
    case Deckrest::FalschMedium:
        return u"Bilder und Töne für falsche Antworten bleiben weg"_s;
    case Deckrest::Zeichen:
        return u"Texte enthalten Zeichen, die das Format nicht kennt; sie bleiben weg"_s;
    case Deckrest::Medienliste:
        return u"Die Liste der Bilder und Töne ist beschädigt; die Karten kommen ohne sie"_s;
    case Deckrest::FalscherZeichensatz:
        return u"Zeilen der Datei sind nicht in ihrem Zeichensatz geschrieben; sie wurden als Windows-1252 gelesen"_s;
    default:
        return {};
    }
}

QString Kurz(QString beispiel)
{
    beispiel = beispiel.left(LaengstesBeispiel * 4).simplified();
    if (beispiel.size() <= LaengstesBeispiel)
        return beispiel;
    return beispiel.left(LaengstesBeispiel - 1) + u'…';
}

} // namespace

void Deckbericht::Melden(Deckrest rest, const QString &beispiel, int mal)
{
    Eintrag &eintrag = eintraege_[static_cast<std::size_t>(rest)];
    eintrag.zahl += mal;
    if (!beispiel.isEmpty() && !eintrag.weitere)
        Aufnehmen(eintrag, Kurz(beispiel));
}

void Deckbericht::Aufnehmen(Eintrag &eintrag, const QString &beispiel)
{
    if (beispiel.isEmpty() || eintrag.beispiele.contains(beispiel))
        return;
    if (eintrag.beispiele.size() < MeisteBeispiele)
        eintrag.beispiele << beispiel;
    else
        eintrag.weitere = true;
}

void Deckbericht::Dazu(const Deckbericht &spaeter)
{
    for (std::size_t i = 0; i < eintraege_.size(); ++i) {
        Eintrag &eintrag = eintraege_[i];
        eintrag.zahl += spaeter.eintraege_[i].zahl;
        eintrag.weitere |= spaeter.eintraege_[i].weitere;
        for (const QString &beispiel : spaeter.eintraege_[i].beispiele)
            Aufnehmen(eintrag, beispiel);
    }
}

int Deckbericht::Zahl(Deckrest rest) const
{
    return eintraege_[static_cast<std::size_t>(rest)].zahl;
}

int Deckbericht::Summe() const
{
    int summe = 0;
    for (const Eintrag &eintrag : eintraege_)
        summe += eintrag.zahl;
    return summe;
}

QString Deckbericht::Text() const
{
    QStringList absaetze;
    for (std::size_t i = 0; i < eintraege_.size(); ++i) {
        const Eintrag &eintrag = eintraege_[i];
        if (eintrag.zahl == 0)
            continue;
        QString absatz = Satz(static_cast<Deckrest>(i)) + u": %1"_s.arg(eintrag.zahl);
        for (const QString &beispiel : eintrag.beispiele)
            absatz += u"\n    "_s + beispiel;
        if (eintrag.weitere)
            absatz += u"\n    …"_s;
        absaetze << absatz;
    }
    return absaetze.join(u"\n\n"_s);
}

} // namespace paukfix
