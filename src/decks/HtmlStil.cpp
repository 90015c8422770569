// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "HtmlStil.h"

#include "HtmlLeser.h"

#include <QColor>
#include <QStringTokenizer>

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

namespace paukfix {

using namespace Qt::StringLiterals;
using namespace std::string_view_literals;

namespace {

constexpr std::size_t MeisteAttribute = 50;
constexpr qsizetype MeisteSchriften = 50;
constexpr int KleinsteSchrift = 8;   // half-points
constexpr int GroessteSchrift = 288; // half-points

// What follows is asked of every tag of every card: it copies nothing, and compares without a call.
char16_t Klein(QChar c)
{
    return static_cast<char16_t>(c.unicode() + (c >= u'A' && c <= u'Z' ? u'a' - u'A' : 0));
}

// `klein` is in small letters.
bool Ist(QStringView text, std::u16string_view klein)
{
    return static_cast<std::size_t>(text.size()) == klein.size() &&
           std::equal(text.begin(), text.end(), klein.begin(),
                      [](QChar c, char16_t anderes) { return Klein(c) == anderes; });
}

bool IstLeer(QChar c)
{
    return c == u' ' || c == u'\t' || c == u'\n' || c == u'\r' || c == u'\f';
}

// "#rrggbb", as most have it.
std::optional<QRgb> Hexfarbe(QStringView text)
{
    if (text.size() != 7 || text[0] != u'#')
        return std::nullopt;
    QRgb farbe = 0xFF;
    for (const QChar c : text.mid(1)) {
        const char16_t klein = Klein(c);
        const bool ziffer = klein >= u'0' && klein <= u'9';
        if (!ziffer && (klein < u'a' || klein > u'f'))
            return std::nullopt;
        farbe = farbe << 4 | static_cast<QRgb>(ziffer ? klein - u'0' : klein - u'a' + 10);
    }
    return farbe;
}

std::optional<QRgb> Farbe(QStringView text)
{
    if (const auto farbe = Hexfarbe(text.trimmed()))
        return farbe;
    const QString wert = text.trimmed().toString().toLower();
    if (wert.startsWith(u"rgb"_s)) {
        const qsizetype auf = wert.indexOf(u'(');
        const QStringList teile = wert.mid(auf + 1).remove(u')').split(u',');
        if (auf < 0 || teile.size() < 3)
            return std::nullopt;
        std::array<int, 3> farben{};
        for (std::size_t i = 0; i < farben.size(); ++i) {
            bool gut = false;
            farben[i] = qBound(0, teile[static_cast<qsizetype>(i)].trimmed().toInt(&gut), 255);
            if (!gut)
                return std::nullopt;
        }
        return qRgb(farben[0], farben[1], farben[2]);
    }
    if (wert.size() > 30 || !QColor::isValidColor(wert) || wert == u"transparent")
        return std::nullopt;
    return QColor(wert).rgb();
}

// In half-points; 0 where the size is not given by itself.
int Groesse(QStringView text)
{
    const QStringView wert = text.trimmed();
    qsizetype ziffern = 0;
    while (ziffern < wert.size() && (wert[ziffern].isDigit() || wert[ziffern] == u'.'))
        ++ziffern;
    bool gut = false;
    const double zahl = wert.left(ziffern).toDouble(&gut);
    const QStringView mass = wert.mid(ziffern);
    double punkte = 0;
    if (gut && Ist(mass, u"pt"))
        punkte = zahl;
    else if (gut && Ist(mass, u"px"))
        punkte = zahl * 0.75;
    if (punkte <= 0)
        return 0;
    return std::clamp(static_cast<int>(std::lround(std::min(punkte, 1000.0) * 2)), KleinsteSchrift,
                      GroessteSchrift);
}

// The sizes 1 to 7 of the old <font>.
int AlteGroesse(const QString &wert)
{
    constexpr std::array<int, 7> HalbePunkte{15, 20, 24, 27, 36, 48, 72};
    bool gut = false;
    const int zahl = wert.toInt(&gut);
    if (!gut || wert.startsWith(u'+') || wert.startsWith(u'-') || zahl < 1 || zahl > 7)
        return 0;
    return HalbePunkte[static_cast<std::size_t>(zahl - 1)];
}

void Schrift(HtmlStil &stil, QStringView liste, QStringList &schriften)
{
    QString name = liste.left(liste.contains(u',') ? liste.indexOf(u',') : liste.size()).toString();
    name.remove(u'"').remove(u'\'').remove(u';');
    name = name.trimmed();
    static const QStringList allgemeine{u"serif"_s,   u"sans-serif"_s, u"monospace"_s,
                                        u"cursive"_s, u"fantasy"_s,    u"inherit"_s,
                                        u"initial"_s, u"unset"_s,      u"system-ui"_s};
    if (name.isEmpty() || name.size() > 60 || allgemeine.contains(name.toLower()))
        return;
    qsizetype platz = schriften.indexOf(name);
    if (platz < 0) {
        if (schriften.size() >= MeisteSchriften)
            return;
        platz = schriften.size();
        schriften << name;
    }
    stil.format.schrift = static_cast<int>(platz);
}

void Ausrichten(HtmlStil &stil, QStringView wert)
{
    const QStringView wo = wert.trimmed();
    if (Ist(wo, u"center"))
        stil.ausrichtung = Ausrichtung::Mitte;
    else if (Ist(wo, u"right") || Ist(wo, u"end"))
        stil.ausrichtung = Ausrichtung::Rechts;
    else if (Ist(wo, u"justify"))
        stil.ausrichtung = Ausrichtung::Block;
    else if (Ist(wo, u"left") || Ist(wo, u"start"))
        stil.ausrichtung = Ausrichtung::Links;
}

void HochTief(Laufformat &format, QStringView wert)
{
    constexpr double GroessterVersatz = 1000; // twips
    format.lage = static_cast<signed char>(Ist(wert, u"super") ? 1 : Ist(wert, u"sub") ? -1 : 0);
    bool zahl = false;
    const double punkte = wert.endsWith(u"pt", Qt::CaseInsensitive) ? wert.chopped(2).toDouble(&zahl) : 0;
    format.versatz = static_cast<short>(
        zahl ? std::lround(std::clamp(punkte * 20, -GroessterVersatz, GroessterVersatz)) : 0);
}

// One property of a style; true for a background.
bool Eigenschaft(HtmlStil &stil, QStringView name, QStringView text, QStringList &schriften)
{
    const QStringView wert = text.trimmed();
    if (Ist(name, u"font-weight")) {
        bool zahl = false;
        const int staerke = wert.toInt(&zahl);
        stil.format.fett = zahl ? staerke >= 600 : Ist(wert, u"bold") || Ist(wert, u"bolder");
    } else if (Ist(name, u"font-style")) {
        stil.format.kursiv = Ist(wert, u"italic") || Ist(wert, u"oblique");
    } else if (Ist(name, u"text-decoration") || Ist(name, u"text-decoration-line")) {
        stil.format.unterstrichen = wert.contains(u"underline", Qt::CaseInsensitive);
        stil.format.durchgestrichen = wert.contains(u"line-through", Qt::CaseInsensitive);
    } else if (Ist(name, u"color")) {
        if (const auto farbe = Farbe(text))
            stil.format.farbe = farbe;
    } else if (Ist(name, u"font-size")) {
        if (const int halbe = Groesse(text))
            stil.format.halbpunkte = static_cast<short>(halbe);
    } else if (Ist(name, u"font-family")) {
        Schrift(stil, text, schriften);
    } else if (Ist(name, u"vertical-align")) {
        HochTief(stil.format, wert);
    } else if (Ist(name, u"text-align")) {
        Ausrichten(stil, text);
    } else if (Ist(name, u"white-space")) {
        stil.woertlich = wert.startsWith(u"pre", Qt::CaseInsensitive) && !Ist(wert, u"pre-line");
    } else if (Ist(name, u"display") && Ist(wert, u"none")) {
        stil.verborgen = true;
    } else if (Ist(name, u"background") || Ist(name, u"background-color")) {
        return !Ist(wert, u"transparent") && !Ist(wert, u"none") && !Ist(wert, u"inherit") &&
               !Ist(wert, u"initial");
    }
    return false;
}

// What the name alone says.
void NameAnwenden(HtmlStil &stil, std::u16string_view name)
{
    Laufformat &format = stil.format;
    if (name == u"b"sv || name == u"strong"sv || name == u"th"sv ||
        (name.size() == 2 && name[0] == u'h' && name[1] >= u'0' && name[1] <= u'9'))
        format.fett = true;
    else if (name == u"i"sv || name == u"em"sv || name == u"cite"sv || name == u"dfn"sv || name == u"var"sv)
        format.kursiv = true;
    else if (name == u"u"sv || name == u"ins"sv)
        format.unterstrichen = true;
    else if (name == u"s"sv || name == u"strike"sv || name == u"del"sv)
        format.durchgestrichen = true;
    else if (name == u"sub"sv)
        format.lage = -1;
    else if (name == u"sup"sv)
        format.lage = 1;
    else if (name == u"center"sv)
        stil.ausrichtung = Ausrichtung::Mitte;
    else if (name == u"pre"sv)
        stil.woertlich = true;
}

} // namespace

bool HtmlTag::Hat(QStringView attribut) const
{
    return std::any_of(attribute.begin(), attribute.end(), [&](const auto &paar) {
        return paar.first.compare(attribut, Qt::CaseInsensitive) == 0;
    });
}

QString HtmlTag::Wert(QStringView attribut) const
{
    for (const auto &[eines, wert] : attribute)
        if (eines.compare(attribut, Qt::CaseInsensitive) == 0)
            return HtmlAttribut(wert);
    return {};
}

QString HtmlAttribut(QStringView wert)
{
    if (!wert.contains(u'&'))
        return wert.toString();
    QString text;
    text.reserve(wert.size());
    for (qsizetype i = 0; i < wert.size(); ++i) {
        if (wert[i] == u'&') {
            const qsizetype ende = wert.mid(i, 12).indexOf(u';');
            const QString zeichen = ende > 1 ? HtmlEntity(wert.mid(i + 1, ende - 1)) : QString();
            if (!zeichen.isEmpty()) {
                text += zeichen;
                i += ende;
                continue;
            }
        }
        text += wert[i];
    }
    return text;
}

HtmlTag HtmlTagLesen(QStringView text)
{
    HtmlTag tag;
    qsizetype i = 0;
    const qsizetype ende = text.size();
    const auto bis = [&](auto halt) {
        const qsizetype von = i;
        while (i < ende && !halt(text[i]))
            ++i;
        return text.mid(von, i - von);
    };
    for (const QChar c : bis([](QChar c) { return IstLeer(c) || c == u'>' || c == u'/'; }).left(30))
        tag.name += Klein(c);
    while (i < ende && text[i] != u'>') {
        if (IstLeer(text[i]) || text[i] == u'/') {
            tag.leer = text[i] == u'/' && i + 1 < ende && text[i + 1] == u'>';
            ++i;
            continue;
        }
        const QStringView name =
            bis([](QChar c) { return IstLeer(c) || c == u'=' || c == u'>' || c == u'/'; });
        qsizetype weiter = i;
        while (weiter < ende && IstLeer(text[weiter]))
            ++weiter;
        QStringView wert;
        if (weiter < ende && text[weiter] == u'=') {
            i = weiter + 1;
            while (i < ende && IstLeer(text[i]))
                ++i;
            if (i < ende && (text[i] == u'"' || text[i] == u'\'')) {
                const QChar klammer = text[i++];
                wert = bis([&](QChar c) { return c == klammer; });
                if (i < ende)
                    ++i;
            } else {
                wert = bis([](QChar c) { return IstLeer(c) || c == u'>'; });
            }
        } else if (name.isEmpty()) {
            ++i; // a stray "="
        }
        if (!name.isEmpty() && tag.attribute.size() < MeisteAttribute)
            tag.attribute.emplace_back(name, wert);
    }
    tag.laenge = std::min(i + 1, ende);
    return tag;
}

bool StilAnwenden(HtmlStil &stil, const HtmlTag &tag, QStringList &schriften)
{
    NameAnwenden(stil, tag.name);
    bool hintergrund = tag.name == u"mark"sv;
    for (const auto &[name, roh] : tag.attribute) {
        if (Ist(name, u"style")) {
            const QString wert = HtmlAttribut(roh);
            for (const QStringView teil : qTokenize(QStringView(wert), u';')) {
                const qsizetype punkt = teil.indexOf(u':');
                if (punkt > 0)
                    hintergrund |=
                        Eigenschaft(stil, teil.left(punkt).trimmed(), teil.mid(punkt + 1), schriften);
            }
        } else if (Ist(name, u"align")) {
            Ausrichten(stil, roh);
        } else if (Ist(name, u"hidden")) {
            stil.verborgen = true;
        } else if (tag.name == u"font"sv) {
            if (Ist(name, u"color")) {
                if (const auto farbe = Farbe(HtmlAttribut(roh)))
                    stil.format.farbe = farbe;
            } else if (Ist(name, u"face")) {
                Schrift(stil, HtmlAttribut(roh), schriften);
            } else if (Ist(name, u"size")) {
                if (const int halbe = AlteGroesse(roh.toString()))
                    stil.format.halbpunkte = static_cast<short>(halbe);
            }
        }
    }
    return hintergrund;
}

} // namespace paukfix
