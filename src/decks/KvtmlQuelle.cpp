// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "KvtmlQuelle.h"

#include "Mediennamen.h"
#include "SafeFile.h"
#include "StoreError.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <array>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 GroessteDatei = qint64{64} << 20;
constexpr std::size_t MeisteAntworten = 5;

std::optional<Kartentext> Einfach(const QString &text)
{
    Lauftext lauf;
    lauf.text = text;
    return AlsKartentext(lauf);
}

} // namespace

int FachAusStufe(int stufe)
{
    constexpr std::array<int, 8> Faecher{0, 1, 2, 3, 4, 5, 5, 6};
    return Faecher[static_cast<std::size_t>(std::clamp(stufe, 0, 7))];
}

int StufeAusFach(int fach)
{
    return fach == 6 ? 7 : fach;
}

KvtmlQuelle::KvtmlQuelle(const QString &pfad)
    : verzeichnis_(QFileInfo(QFileInfo(pfad).absoluteFilePath()).absolutePath()),
      inhalt_(KvtmlLesen(ReadFile(pfad, GroessteDatei)))
{
    einsprachig_ = std::none_of(inhalt_.eintraege.begin(), inhalt_.eintraege.end(),
                                [](const KvtmlEintrag &eintrag) { return !eintrag.antwort.text.isEmpty(); });
}

Deckinhalt KvtmlQuelle::Inhalt() const
{
    int medien = 0;
    for (const KvtmlEintrag &eintrag : inhalt_.eintraege)
        for (const KvtmlWort *wort : {&eintrag.frage, &eintrag.antwort})
            medien += (wort->bild.isEmpty() ? 0 : 1) + (wort->ton.isEmpty() ? 0 : 1);
    return {.titel = inhalt_.titel,
            .art = inhalt_.art,
            .karten = static_cast<int>(inhalt_.eintraege.size()),
            .stapel = inhalt_.lektionen,
            .medien = medien};
}

bool KvtmlQuelle::Naechste(Deckkarte &karte, Deckbericht &bericht)
{
    if (gelesen_ == 0 && inhalt_.fremdeZeilen > 0)
        bericht.Melden(Deckrest::FalscherZeichensatz, {}, inhalt_.fremdeZeilen);
    while (gelesen_ < inhalt_.eintraege.size()) {
        karte = {};
        if (Bauen(inhalt_.eintraege[gelesen_++], karte, bericht))
            return true;
    }
    return false;
}

bool KvtmlQuelle::Bauen(const KvtmlEintrag &eintrag, Deckkarte &karte, Deckbericht &bericht) const
{
    const bool umgekehrt = einsprachig_ && !eintrag.frage.bemerkung.isEmpty();
    const QString &frage = umgekehrt ? eintrag.frage.bemerkung : eintrag.frage.text;
    const QString &antwort = umgekehrt ? eintrag.frage.text : eintrag.antwort.text;
    karte.frageBild = Bezug(eintrag.frage.bild, bericht);
    karte.frageTon = Bezug(eintrag.frage.ton, bericht);
    karte.antwortBild = Bezug(eintrag.antwort.bild, bericht);
    karte.antwortTon = Bezug(eintrag.antwort.ton, bericht);
    if (frage.isEmpty() && !karte.frageBild && !karte.frageTon) {
        bericht.Melden(Deckrest::OhneFrage, antwort);
        return false;
    }
    auto frageText = Einfach(frage);
    auto antwortText = Einfach(antwort);
    if (!frageText || !antwortText) {
        bericht.Melden(Deckrest::ZuLang, frage.left(300));
        return false;
    }
    if (antwort.isEmpty() && !karte.antwortBild && !karte.antwortTon)
        bericht.Melden(Deckrest::OhneAntwort, frage);
    karte.frage = std::move(*frageText);
    karte.antworten.push_back({.text = std::move(*antwortText)});
    for (const QString &falsche : eintrag.antwort.falsche) {
        auto text = Einfach(falsche);
        if (karte.antworten.size() >= MeisteAntworten || !text) {
            bericht.Melden(Deckrest::WeitereAntworten, frage);
            break;
        }
        karte.ankreuzen = true;
        karte.antworten.push_back({std::move(*text), false});
    }
    karte.fach = FachAusStufe(eintrag.antwort.stufe);
    if (!eintrag.lektionen.isEmpty()) {
        karte.stapel = eintrag.lektionen.front();
        karte.schlagwoerter = eintrag.lektionen;
    }
    if (eintrag.lektionen.size() > 1)
        bericht.Melden(Deckrest::WeitereThemen, frage);
    if (eintrag.ruht)
        bericht.Melden(Deckrest::Ausgesetzt, frage);
    if (eintrag.weitere > 0)
        bericht.Melden(Deckrest::WeitereSprache, frage, eintrag.weitere);
    if (const int angaben = eintrag.frage.angaben + eintrag.antwort.angaben - (umgekehrt ? 1 : 0);
        angaben > 0)
        bericht.Melden(Deckrest::Wortangabe, frage, angaben);
    return true;
}

// The file that a name leads to; empty where it does not lie in the document's directory or below.
QString KvtmlQuelle::Ort(const QString &name) const
{
    const QFileInfo datei(QDir(verzeichnis_).filePath(name));
    QString wirklich = datei.canonicalFilePath();
    const QString innen = QFileInfo(verzeichnis_).canonicalFilePath();
    if (QDir::isAbsolutePath(name) || wirklich.isEmpty() || !datei.isFile() ||
        !wirklich.startsWith(innen + u'/'))
        return {};
    return wirklich;
}

std::optional<Deckmedium> KvtmlQuelle::Bezug(const QString &adresse, Deckbericht &bericht) const
{
    if (adresse.isEmpty())
        return std::nullopt;
    Medienbezug bezug =
        MedienbezugLesen(adresse, [this](const QString &name) { return !Ort(name).isEmpty(); });
    switch (bezug.art) {
    case Medienbezug::Art::Da:
        return std::move(bezug.medium);
    case Medienbezug::Art::Fern:
        bericht.Melden(Deckrest::MediumFern, adresse);
        break;
    case Medienbezug::Art::Unlesbar:
        bericht.Melden(Deckrest::MediumUnlesbar, adresse);
        break;
    default:
        bericht.Melden(Deckrest::MediumFehlt, adresse);
    }
    return std::nullopt;
}

std::optional<QByteArray> KvtmlQuelle::Medium(const QString &name)
{
    const QString ort = Ort(name);
    if (ort.isEmpty())
        return std::nullopt;
    try {
        return ReadFile(ort, GroesstesMedium);
    } catch (const StoreError &) { // told as one that cannot be read
        return std::nullopt;
    }
}

} // namespace paukfix
