// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Unterschied.h"

#include <QStringList>
#include <QTextBoundaryFinder>

#include <algorithm>
#include <array>
#include <limits>
#include <vector>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype MaxZeichen = 400; // of each text: the table has their product

struct Zeichen
{
    QString form; // as it is compared
    QString klein;
    Stelle stelle;
};

using Text = std::vector<Zeichen>;

enum class Art
{
    Gleich,
    Grossschreibung,
    Anders,
    Fehlt,    // in what was typed
    ZuViel,   // in what was typed
    Getauscht // two letters beside each other
};

// One step of the way from one text to the other.
struct Schritt
{
    Art art = Art::Gleich;
    std::size_t eingabe = 0, loesung = 0; // where it begins
};

bool IstUmbruch(QChar c)
{
    return c == u'\r' || c == u'\n' || c == QChar::LineSeparator || c == QChar::ParagraphSeparator;
}

Text Zerlegt(QStringView text)
{
    Text zeichen;
    QTextBoundaryFinder grenzen(QTextBoundaryFinder::Grapheme, text.data(), text.size());
    qsizetype anfang = 0;
    for (qsizetype ende = grenzen.toNextBoundary(); ende > 0; ende = grenzen.toNextBoundary()) {
        if (!IstUmbruch(text.at(anfang))) {
            const QString form =
                text.mid(anfang, ende - anfang).toString().normalized(QString::NormalizationForm_C);
            zeichen.push_back({form, form.toCaseFolded(), {anfang, ende - anfang}});
        }
        anfang = ende;
    }
    return zeichen;
}

// What it costs to take one letter for the other: a slip of the shift key is the smallest.
int Preis(const Zeichen &eines, const Zeichen &anderes)
{
    if (eines.form == anderes.form)
        return 0;
    return eines.klein == anderes.klein ? 1 : 3;
}

constexpr int PreisEinzeln = 2; // one too many, or one missing
constexpr int PreisTausch = 3;

// The cheapest way from one text to the other, in order (optimal string alignment).
std::vector<Schritt> Weg(const Text &eingabe, const Text &loesung)
{
    const std::size_t n = eingabe.size(), m = loesung.size();
    std::vector<int> tafel((n + 1) * (m + 1));
    const auto feld = [&](std::size_t i, std::size_t j) -> int & { return tafel[i * (m + 1) + j]; };
    const auto getauscht = [&](std::size_t i, std::size_t j) { // the two letters before
        return i > 1 && j > 1 && eingabe[i - 1].klein == loesung[j - 2].klein &&
               eingabe[i - 2].klein == loesung[j - 1].klein && eingabe[i - 1].klein != eingabe[i - 2].klein;
    };
    const auto tauschpreis = [&](std::size_t i, std::size_t j) {
        return PreisTausch + Preis(eingabe[i - 1], loesung[j - 2]) + Preis(eingabe[i - 2], loesung[j - 1]);
    };
    for (std::size_t i = 0; i <= n; ++i)
        for (std::size_t j = 0; j <= m; ++j) {
            if (i == 0 || j == 0) {
                feld(i, j) = static_cast<int>(i + j) * PreisEinzeln;
                continue;
            }
            int preis = feld(i - 1, j - 1) + Preis(eingabe[i - 1], loesung[j - 1]);
            preis = std::min({preis, feld(i - 1, j) + PreisEinzeln, feld(i, j - 1) + PreisEinzeln});
            if (getauscht(i, j))
                preis = std::min(preis, feld(i - 2, j - 2) + tauschpreis(i, j));
            feld(i, j) = preis;
        }

    std::vector<Schritt> weg;
    for (std::size_t i = n, j = m; i > 0 || j > 0;) {
        const int preis = feld(i, j);
        if (getauscht(i, j) && preis == feld(i - 2, j - 2) + tauschpreis(i, j)) {
            i -= 2;
            j -= 2;
            weg.push_back({Art::Getauscht, i, j});
        } else if (i > 0 && j > 0 && preis == feld(i - 1, j - 1) + Preis(eingabe[i - 1], loesung[j - 1])) {
            const int fuerDas = Preis(eingabe[--i], loesung[--j]);
            weg.push_back({fuerDas == 0   ? Art::Gleich
                           : fuerDas == 1 ? Art::Grossschreibung
                                          : Art::Anders,
                           i, j});
        } else if (i > 0 && preis == feld(i - 1, j) + PreisEinzeln) {
            weg.push_back({Art::ZuViel, --i, j});
        } else {
            weg.push_back({Art::Fehlt, i, --j});
        }
    }
    std::reverse(weg.begin(), weg.end());
    return weg;
}

// Letters that stand beside each other are one mark.
void Markieren(QList<Stelle> &marken, const Zeichen &zeichen)
{
    if (!marken.isEmpty() && marken.last().anfang + marken.last().laenge == zeichen.stelle.anfang)
        marken.last().laenge += zeichen.stelle.laenge;
    else
        marken << zeichen.stelle;
}

// What the letters in question are called, for one and for several.
struct Wort
{
    QString einzahl, mehrzahl;
};

Wort WortFuer(const std::vector<const Zeichen *> &zeichen)
{
    const auto alle = [&](auto bedingung) {
        return std::all_of(zeichen.begin(), zeichen.end(),
                           [&](const Zeichen *z) { return bedingung(z->form.at(0)); });
    };
    if (alle([](QChar c) { return c.isSpace(); }))
        return {u"Leerzeichen"_s, u"Leerzeichen"_s};
    if (alle([](QChar c) { return c.isLetter() || c.isSurrogate(); }))
        return {u"Buchstabe"_s, u"Buchstaben"_s};
    if (alle([](QChar c) { return c.isDigit(); }))
        return {u"Ziffer"_s, u"Ziffern"_s};
    return {u"Zeichen"_s, u"Zeichen"_s};
}

QString Anzahl(const std::vector<const Zeichen *> &zeichen)
{
    const Wort wort = WortFuer(zeichen);
    if (zeichen.size() > 1)
        return u"%1 %2"_s.arg(zeichen.size()).arg(wort.mehrzahl);
    return (wort.einzahl == u"Ziffer" ? u"eine "_s : u"ein "_s) + wort.einzahl;
}

QString Worte(const std::vector<Schritt> &weg, const Text &eingabe, const Text &loesung)
{
    std::vector<const Zeichen *> anders, fehlt, zuViel, getauscht;
    bool gross = false, klein = false;
    const auto schreibung = [&](const Zeichen &getippt, const Zeichen &richtig) {
        if (getippt.form != richtig.form)
            (richtig.form == richtig.klein ? klein : gross) = true;
    };
    for (const Schritt &schritt : weg) {
        switch (schritt.art) {
        case Art::Gleich:
            break;
        case Art::Grossschreibung:
            schreibung(eingabe[schritt.eingabe], loesung[schritt.loesung]);
            break;
        case Art::Anders:
            anders.push_back(&loesung[schritt.loesung]);
            break;
        case Art::Fehlt:
            fehlt.push_back(&loesung[schritt.loesung]);
            break;
        case Art::ZuViel:
            zuViel.push_back(&eingabe[schritt.eingabe]);
            break;
        case Art::Getauscht:
            getauscht.push_back(&loesung[schritt.loesung]);
            getauscht.push_back(&loesung[schritt.loesung + 1]);
            schreibung(eingabe[schritt.eingabe], loesung[schritt.loesung + 1]);
            schreibung(eingabe[schritt.eingabe + 1], loesung[schritt.loesung]);
            break;
        }
    }
    QStringList worte;
    if (gross || klein)
        worte << (gross && klein ? u"Groß- und Kleinschreibung"_s
                  : gross        ? u"Großschreibung"_s
                                 : u"Kleinschreibung"_s);
    if (!getauscht.empty()) {
        const QString was = WortFuer(getauscht).mehrzahl;
        const std::size_t male = getauscht.size() / 2;
        worte << (male == 1 ? u"zwei %1 haben den Platz getauscht"_s.arg(was)
                            : u"%1-mal haben zwei %2 den Platz getauscht"_s.arg(male).arg(was));
    }
    if (!anders.empty())
        worte << Anzahl(anders) + (anders.size() > 1 ? u" sind anders"_s : u" ist anders"_s);
    if (!fehlt.empty())
        worte << Anzahl(fehlt) + (fehlt.size() > 1 ? u" fehlen"_s : u" fehlt"_s);
    if (!zuViel.empty())
        worte << Anzahl(zuViel) + u" zu viel"_s;
    return worte.join(u"; "_s);
}

} // namespace

Unterschied UnterschiedVon(QStringView eingabe, QStringView loesung)
{
    // A letter has few units: what is longer than this need not be looked at.
    if (eingabe.size() > 8 * MaxZeichen || loesung.size() > 8 * MaxZeichen)
        return {};
    const Text getippt = Zerlegt(eingabe), richtig = Zerlegt(loesung);
    if (getippt.empty() || richtig.empty() || getippt.size() > MaxZeichen || richtig.size() > MaxZeichen)
        return {};
    const std::vector<Schritt> weg = Weg(getippt, richtig);
    Unterschied unterschied;
    std::size_t gemeinsam = 0;
    for (const auto &[art, i, j] : weg) {
        if (art == Art::Getauscht)
            gemeinsam += 2;
        else if (art == Art::Gleich || art == Art::Grossschreibung)
            ++gemeinsam;
        if (art == Art::Gleich)
            continue;
        const std::size_t anzahl = art == Art::Getauscht ? 2 : 1;
        for (std::size_t k = 0; k < anzahl; ++k) {
            if (art != Art::Fehlt)
                Markieren(unterschied.inEingabe, getippt[i + k]);
            if (art != Art::ZuViel)
                Markieren(unterschied.inLoesung, richtig[j + k]);
        }
    }
    // Where most letters differ the marks would hide what they are to show.
    if (2 * gemeinsam < std::max(getippt.size(), richtig.size()))
        return {};
    unterschied.worte = Worte(weg, getippt, richtig);
    return unterschied;
}

} // namespace paukfix
