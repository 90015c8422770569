// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Textform.h"

#include "StoreError.h"

#include <QHash>
#include <QSet>

#include <algorithm>
#include <map>
#include <utility>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype Probe = qsizetype{256} * 1024; // bytes that are looked at

// The beginning, whole lines.
Textinhalt Anfang(Textinhalt inhalt)
{
    if (inhalt.bytes.size() <= Probe)
        return inhalt;
    const qsizetype ende =
        std::max(inhalt.bytes.lastIndexOf('\n', Probe), inhalt.bytes.lastIndexOf('\r', Probe));
    inhalt.bytes.truncate(ende > 0 ? ende : Probe);
    return inhalt;
}

// What the records are like in one form.
struct Eindruck
{
    int saetze = 0;  // that are not empty
    int mehrere = 0; // of more than one field
    int gleiche = 0; // of as many fields as most
    int felder = 0;  // that are not empty
    int inAnfuehrung = 0;
    int noetige = 0; // quotes that hold what needs them
    bool sauber = true;

    // Quotes that stand about single words may be meant as they are.
    bool BrauchtAnfuehrung() const
    {
        return sauber && (noetige > 0 || (inAnfuehrung > 0 && inAnfuehrung * 2 >= felder));
    }

    double Guete() const { return saetze == 0 ? 0 : (2.0 * gleiche + mehrere) / (3.0 * saetze); }
};

Eindruck Ansehen(const Textinhalt &inhalt, const Textform &form)
{
    Eindruck eindruck;
    std::map<std::size_t, int> breiten;
    std::vector<Textfeld> felder;
    TextSaetze saetze(inhalt, form);
    try {
        while (saetze.Naechster(felder)) {
            if (felder.size() == 1 && felder[0].text.isEmpty())
                continue;
            ++eindruck.saetze;
            if (felder.size() > 1) {
                ++eindruck.mehrere;
                eindruck.gleiche = std::max(eindruck.gleiche, ++breiten[felder.size()]);
            }
            for (const Textfeld &feld : felder) {
                eindruck.felder += feld.text.isEmpty() ? 0 : 1;
                if (!feld.inAnfuehrung)
                    continue;
                ++eindruck.inAnfuehrung;
                const auto braucht = [&](QChar c) {
                    return c == form.trennzeichen || c == u'"' || c == u'\n' || c == u'\r';
                };
                eindruck.noetige += std::any_of(feld.text.begin(), feld.text.end(), braucht) ? 1 : 0;
            }
        }
        eindruck.sauber = !saetze.Unsauber();
    } catch (const StoreError &) { // quotes that nothing ends; what was cut off may end them
        eindruck.sauber = inhalt.bytes.size() >= Probe / 2 && !saetze.Unsauber();
    }
    return eindruck;
}

enum class Rolle
{
    Frage,
    Antwort,
    Thema,
    Sprache
};

const QHash<QString, Rolle> &Woerter()
{
    static const QHash<QString, Rolle> alle = [] {
        QHash<QString, Rolle> woerter;
        const auto dazu = [&](Rolle rolle, const QString &liste) {
            for (const QString &wort : liste.split(u' '))
                woerter.insert(wort, rolle);
        };
        dazu(Rolle::Frage, u"frage fragen question front vorderseite begriff wort vokabel term word"_s);
        dazu(Rolle::Antwort, u"antwort antworten answer back rückseite definition bedeutung meaning "
                             u"übersetzung translation lösung"_s);
        dazu(Rolle::Thema, u"thema topic kategorie category kapitel chapter lektion lesson unit deck tags "
                           u"gruppe fach"_s);
        dazu(Rolle::Sprache, u"deutsch german englisch english französisch french français spanisch spanish "
                             u"español italienisch italian latein latin russisch russian polnisch polish "
                             u"türkisch turkish"_s);
        return woerter;
    }();
    return alle;
}

} // namespace

std::optional<Textform> TextformRaten(const Textinhalt &inhalt)
{
    const Textinhalt anfang = Anfang(inhalt);
    // Where two are as good, the one that texts themselves have more rarely.
    constexpr double Tab = 0.06, Semikolon = 0.03, Andere = 0, Noetig = 0.3;
    const std::pair<char16_t, double> trennzeichen[] = {
        {u'\t', Tab}, {u';', Semikolon}, {u',', Andere}, {u'#', Andere}};
    std::optional<Textform> beste;
    double guete = 0;
    for (const auto &[zeichen, vorzug] : trennzeichen) {
        Textform form{.trennzeichen = zeichen, .anfuehrung = true};
        Eindruck eindruck = Ansehen(anfang, form);
        form.anfuehrung = eindruck.mehrere > 0 && eindruck.BrauchtAnfuehrung();
        if (!form.anfuehrung)
            eindruck = Ansehen(anfang, form);
        if (eindruck.mehrere == 0)
            continue;
        // Sentences have commas.
        if (zeichen == u',' && !form.anfuehrung && eindruck.mehrere * 2 < eindruck.saetze)
            continue;
        const double diese =
            eindruck.Guete() + vorzug + (form.anfuehrung && eindruck.noetige > 0 ? Noetig : 0);
        if (!beste || diese > guete) {
            beste = form;
            guete = diese;
        }
    }
    return beste;
}

std::optional<Spalten> UeberschriftRaten(const std::vector<Textfeld> &felder)
{
    int bekannte = 0;
    Spalten spalten{.frage = -1, .antwort = -1, .thema = -1};
    for (int i = 0; i < static_cast<int>(felder.size()); ++i) {
        const auto wort = Woerter().constFind(felder[static_cast<std::size_t>(i)].text.trimmed().toLower());
        if (wort == Woerter().constEnd())
            continue;
        ++bekannte;
        int *ziel = *wort == Rolle::Frage     ? &spalten.frage
                    : *wort == Rolle::Antwort ? &spalten.antwort
                    : *wort == Rolle::Thema   ? &spalten.thema
                                              : nullptr;
        if (ziel && *ziel < 0)
            *ziel = i;
    }
    if (bekannte < 2)
        return std::nullopt;
    if (spalten.frage < 0 || spalten.antwort < 0)
        return Spalten();
    return spalten;
}

} // namespace paukfix
