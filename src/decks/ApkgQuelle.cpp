// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "ApkgQuelle.h"

#include "Ankreuztyp.h"
#include "HtmlLeser.h"
#include "Mediennamen.h"
#include "StoreError.h"

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 ImmerErlaubt = 100'000'000; // characters that all templates together may make
constexpr qint64 MeisteMale = 100;           // of the collection's size

constexpr qint64 Lernend = 1;
constexpr qint64 Wiederholend = 2;
constexpr qint64 Neulernend = 3;

int Fach(const Sammlungszeile &zeile)
{
    if (zeile.art == Lernend || zeile.art == Neulernend)
        return 1;
    return zeile.art == Wiederholend ? FachAusTagen(zeile.tage) : 0;
}

bool HatFormel(const QString &text)
{
    return (text.contains(u'[') && (text.contains(u"[latex]"_s) || text.contains(u"[$"_s))) ||
           (text.contains(u'\\') && (text.contains(u"\\("_s) || text.contains(u"\\["_s)));
}

// Whether the tag <hr> that `attribute` are of is the line between front and back.
bool TrenntSeiten(QStringView attribute)
{
    QString wert = attribute.toString().toLower();
    wert.remove(u'"').remove(u'\'').remove(u' ');
    return wert.contains(u"id=answer"_s);
}

// What stands behind the line between front and back; all where there is none.
QString BehindDemStrich(const QString &html)
{
    constexpr QStringView Strich = u"<hr";
    const QStringView alles(html);
    for (qsizetype von = alles.indexOf(u'<'); von >= 0; von = alles.indexOf(u'<', von + 1)) {
        if (!alles.mid(von).startsWith(Strich, Qt::CaseInsensitive))
            continue;
        const qsizetype ende = alles.indexOf(u'>', von);
        if (ende < 0)
            return html;
        if (TrenntSeiten(alles.mid(von + Strich.size(), ende - von - Strich.size())))
            return html.mid(ende + 1);
        von = ende;
    }
    return html;
}

void RestMelden(unsigned rest, const QString &beispiel, Deckbericht &bericht)
{
    constexpr std::array Arten{std::pair(HtmlRest::Hintergrund, Deckrest::Hintergrund),
                               std::pair(HtmlRest::Verweis, Deckrest::Verweis),
                               std::pair(HtmlRest::Video, Deckrest::Video),
                               std::pair(HtmlRest::Tabelle, Deckrest::Tabelle),
                               std::pair(HtmlRest::Liste, Deckrest::Liste),
                               std::pair(HtmlRest::Skript, Deckrest::Skript)};
    if (rest == 0)
        return;
    for (const auto &[html, deck] : Arten)
        if ((rest & static_cast<unsigned>(html)) != 0)
            bericht.Melden(deck, beispiel);
}

} // namespace

struct ApkgQuelle::Seite
{
    QString html;
    QStringList bilder, toene;
    unsigned rest = 0;
};

int FachAusTagen(qint64 tage)
{
    if (tage >= 365)
        return 6;
    if (tage >= 90)
        return 5;
    if (tage >= 21)
        return 4;
    if (tage >= 4)
        return 3;
    return tage >= 1 ? 2 : 1;
}

ApkgQuelle::ApkgQuelle(const QString &pfad) : paket_(pfad), sammlung_(paket_.Sammlung(), paket_.Groesse())
{
    VonVorn();
}

void ApkgQuelle::VonVorn()
{
    sammlung_.VonVorn();
    gelesen_ = 0;
    fertig_ = false;
    frei_ = ImmerErlaubt + paket_.Groesse() * MeisteMale;
}

Deckinhalt ApkgQuelle::Inhalt() const
{
    return {.titel = {},
            .art = u"Anki-Paket"_s,
            .karten = sammlung_.Karten(),
            .stapel = sammlung_.Stapelnamen(),
            .medien = paket_.Medien()};
}

bool ApkgQuelle::Naechste(Deckkarte &karte, Deckbericht &bericht)
{
    if (fertig_)
        return false;
    if (gelesen_ == 0 && !paket_.MedienlisteGut())
        bericht.Melden(Deckrest::Medienliste);
    Sammlungszeile zeile;
    while (sammlung_.Naechste(zeile)) {
        ++gelesen_;
        karte = {};
        if (Bauen(zeile, karte, bericht))
            return true;
    }
    fertig_ = true;
    if (const int fehlen = sammlung_.Karten() - gelesen_; fehlen > 0) // their notes are not there
        bericht.Melden(Deckrest::Unlesbar, {}, fehlen);
    return false;
}

bool ApkgQuelle::Bauen(const Sammlungszeile &zeile, Deckkarte &karte, Deckbericht &bericht)
{
    const Notiztyp *typ = sammlung_.Typ(zeile.notiztyp);
    // What a report calls the card.
    const auto erstes = [&] { return HtmlOhneTags(zeile.felder.front().left(300)); };
    const auto vorlage =
        typ ? typ->vorlagen.find(typ->luecken ? 0 : zeile.vorlage) : decltype(typ->vorlagen.find(0)){};
    if (!typ || vorlage == typ->vorlagen.end() || zeile.vorlage < 0) {
        bericht.Melden(Deckrest::Unlesbar, erstes());
        return false;
    }
    karte.schlagwoerter = zeile.schlagwoerter;
    if (const auto thema = EigenesThema(typ->felder, zeile.felder))
        karte.schlagwoerter = thema->isEmpty() ? QStringList() : QStringList{*thema};
    karte.stapel = sammlung_.Stapel(zeile.stapel);
    karte.fach = Fach(zeile);
    if (IstAnkreuztyp(typ->felder)) {
        if (!AnkreuzkarteBauen(*typ, zeile, karte, bericht))
            return false;
    } else {
        Seite frage;
        Seite antwort;
        if (!Fuellen(*typ, vorlage->second, zeile, frage, antwort, bericht))
            return false;
        auto frageText = Lesen(frage);
        auto antwortText = Lesen(antwort);
        if (!frageText || !antwortText) {
            bericht.Melden(Deckrest::ZuLang, erstes());
            return false;
        }
        if (frageText->klar.isEmpty() && frage.bilder.isEmpty() && frage.toene.isEmpty()) {
            bericht.Melden(Deckrest::OhneFrage, erstes());
            return false;
        }
        const QString beispiel = frageText->klar.isEmpty() ? antwortText->klar : frageText->klar;
        karte.frageBild = Waehlen(frage.bilder, Deckrest::WeitereBilder, beispiel, bericht);
        karte.frageTon = Waehlen(frage.toene, Deckrest::WeitereToene, beispiel, bericht);
        karte.antwortBild = Waehlen(antwort.bilder, Deckrest::WeitereBilder, beispiel, bericht);
        karte.antwortTon = Waehlen(antwort.toene, Deckrest::WeitereToene, beispiel, bericht);
        RestMelden(frage.rest | antwort.rest, beispiel, bericht);
        if (HatFormel(frageText->klar) || HatFormel(antwortText->klar))
            bericht.Melden(Deckrest::Formel, beispiel);
        if (antwortText->klar.isEmpty() && !karte.antwortBild && !karte.antwortTon)
            bericht.Melden(Deckrest::OhneAntwort, beispiel);
        karte.frage = std::move(*frageText);
        karte.antworten.push_back({.text = std::move(*antwortText)});
    }
    if (zeile.lage < 0)
        bericht.Melden(Deckrest::Ausgesetzt, karte.frage.klar);
    if (zeile.markierung != 0)
        bericht.Melden(Deckrest::Markierung, karte.frage.klar);
    if (zeile.wiederholungen > 0)
        bericht.Melden(Deckrest::Lernverlauf);
    return true;
}

// Fills both sides. False where there is nothing to ask, or too much.
bool ApkgQuelle::Fuellen(const Notiztyp &typ, const Kartenvorlage &vorlage, const Sammlungszeile &zeile,
                         Seite &frage, Seite &antwort, Deckbericht &bericht)
{
    const QString &erstes = zeile.felder.front();
    if (!vorlage.frage || !vorlage.antwort) {
        bericht.Melden(Deckrest::Vorlage, HtmlOhneTags(erstes.left(300)));
        frage.html = erstes;
        for (std::size_t i = 1; i < zeile.felder.size(); ++i)
            antwort.html += (i > 1 ? u"<br>"_s : QString()) + zeile.felder[i];
        return true;
    }
    Vorlagenwerte werte;
    werte.felder = zeile.felder;
    werte.schlagwoerter = zeile.schlagwoerter.join(u' ');
    werte.stapel = sammlung_.Stapel(zeile.stapel);
    werte.notiztyp = typ.name;
    werte.karte = vorlage.name;
    werte.luecke = static_cast<int>(std::min<qint64>(zeile.vorlage, 1'000'000)) + 1;
    QStringList hinweise;
    auto ergebnis = vorlage.frage->Fuellen(werte, frage.html, hinweise);
    if (ergebnis == Vorlage::Ergebnis::Gut) {
        werte.antwort = true;
        QStringList hinten;
        ergebnis = vorlage.antwort->Fuellen(werte, antwort.html, hinten);
        hinweise << hinten;
    }
    Beimessen(frage.html.size() + antwort.html.size());
    if (ergebnis != Vorlage::Ergebnis::Gut) {
        const bool gross = ergebnis == Vorlage::Ergebnis::ZuGross;
        bericht.Melden(gross ? Deckrest::ZuLang : Deckrest::OhneFrage, HtmlOhneTags(erstes.left(300)));
        return false;
    }
    antwort.html = BehindDemStrich(antwort.html);
    for (const QString &hinweis : hinweise)
        bericht.Melden(Deckrest::Hinweis, hinweis);
    return true;
}

bool ApkgQuelle::AnkreuzkarteBauen(const Notiztyp &typ, const Sammlungszeile &zeile, Deckkarte &karte,
                                   Deckbericht &bericht)
{
    const Ankreuzfelder felder = AnkreuzfelderLesen(typ.felder, zeile.felder);
    Seite frage{.html = felder.frage, .bilder = {}, .toene = {}};
    auto frageText = Lesen(frage);
    QStringList antwortBilder;
    QStringList antwortToene;
    karte.ankreuzen = true;
    for (const auto &[html, richtig] : felder.antworten) {
        Seite seite{.html = html, .bilder = {}, .toene = {}};
        auto text = Lesen(seite);
        if (!text || !frageText) {
            bericht.Melden(Deckrest::ZuLang, HtmlOhneTags(felder.frage.left(300)));
            return false;
        }
        karte.antworten.push_back({std::move(*text), richtig});
    }
    Seite medien{.html = felder.medien, .bilder = {}, .toene = {}};
    Lesen(medien);
    karte.frage = std::move(*frageText);
    karte.frageBild = Waehlen(frage.bilder, Deckrest::WeitereBilder, karte.frage.klar, bericht);
    karte.frageTon = Waehlen(frage.toene, Deckrest::WeitereToene, karte.frage.klar, bericht);
    karte.antwortBild = Waehlen(medien.bilder, Deckrest::WeitereBilder, karte.frage.klar, bericht);
    karte.antwortTon = Waehlen(medien.toene, Deckrest::WeitereToene, karte.frage.klar, bericht);
    return true;
}

std::optional<Kartentext> ApkgQuelle::Lesen(Seite &seite)
{
    GelesenesHtml gelesen = HtmlLesen(seite.html);
    seite.bilder = gelesen.bilder;
    seite.toene = gelesen.toene;
    seite.rest |= gelesen.rest;
    return AlsKartentext(gelesen.text);
}

// The first one that is there; the others are told.
std::optional<Deckmedium> ApkgQuelle::Waehlen(const QStringList &namen, Deckrest weitere,
                                              const QString &beispiel, Deckbericht &bericht) const
{
    std::optional<Deckmedium> gewaehlt;
    QStringList schon;
    for (const QString &name : namen) {
        if (schon.contains(name))
            continue;
        schon << name;
        Medienbezug bezug =
            MedienbezugLesen(name, [this](const QString &gesucht) { return paket_.HatMedium(gesucht); });
        if (bezug.art == Medienbezug::Art::Fern)
            bericht.Melden(Deckrest::MediumFern, name);
        else if (bezug.art == Medienbezug::Art::Fehlt)
            bericht.Melden(Deckrest::MediumFehlt, name);
        else if (bezug.art == Medienbezug::Art::Unlesbar)
            bericht.Melden(Deckrest::MediumUnlesbar, beispiel);
        else if (gewaehlt)
            bericht.Melden(weitere, beispiel);
        else
            gewaehlt = std::move(bezug.medium);
    }
    return gewaehlt;
}

void ApkgQuelle::Beimessen(qsizetype zeichen)
{
    frei_ -= zeichen;
    if (frei_ < 0)
        throw StoreError(
            Fehler::NichtErlaubt,
            u"Die Vorlagen des Pakets vervielfachen seine Texte; es wird darum nicht gelesen."_s);
}

} // namespace paukfix
