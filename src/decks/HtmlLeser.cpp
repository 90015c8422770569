// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "HtmlLeser.h"

#include "HtmlStil.h"

#include <limits>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace paukfix {

using namespace Qt::StringLiterals;
using namespace std::string_view_literals;

namespace {

// Beyond, elements are read without their formats: nobody writes so.
constexpr std::size_t TiefsteSchachtelung = 400;
// So far the element that a tag ends is looked for.
constexpr std::size_t WeitesteSuche = 60;

enum class Art : unsigned char
{
    Fluss,  // in a line
    Block,  // begins and ends a line
    Bruch,  // <br>
    Strich, // <hr>
    Bild,
    Klang,
    Film,
    Stumm // shown by nobody, with all that is in it
};

struct Element
{
    Art art = Art::Fluss;
    unsigned rest = 0;
};

Element ElementVon(std::u16string_view name)
{
    static const std::unordered_map<std::u16string_view, Element> elemente = [] {
        std::unordered_map<std::u16string_view, Element> alle;
        for (const std::u16string_view element :
             {u"address"sv,    u"article"sv, u"aside"sv,  u"blockquote"sv, u"center"sv,  u"dd"sv,
              u"details"sv,    u"dialog"sv,  u"div"sv,    u"dl"sv,         u"dt"sv,      u"fieldset"sv,
              u"figcaption"sv, u"figure"sv,  u"footer"sv, u"form"sv,       u"h1"sv,      u"h2"sv,
              u"h3"sv,         u"h4"sv,      u"h5"sv,     u"h6"sv,         u"header"sv,  u"main"sv,
              u"nav"sv,        u"p"sv,       u"pre"sv,    u"section"sv,    u"summary"sv, u"caption"sv,
              u"body"sv,       u"html"sv})
            alle.emplace(element, Element{Art::Block, 0});
        const auto tabelle = static_cast<unsigned>(HtmlRest::Tabelle);
        for (const std::u16string_view element :
             {u"table"sv, u"tbody"sv, u"td"sv, u"tfoot"sv, u"th"sv, u"thead"sv, u"tr"sv})
            alle.emplace(element, Element{Art::Block, tabelle});
        const auto liste = static_cast<unsigned>(HtmlRest::Liste);
        for (const std::u16string_view element : {u"ul"sv, u"ol"sv, u"li"sv, u"menu"sv})
            alle.emplace(element, Element{Art::Block, liste});
        alle.emplace(u"br"sv, Element{Art::Bruch, 0});
        alle.emplace(u"hr"sv, Element{Art::Strich, 0});
        alle.emplace(u"img"sv, Element{Art::Bild, 0});
        alle.emplace(u"audio"sv, Element{Art::Klang, 0});
        alle.emplace(u"source"sv, Element{Art::Klang, 0});
        alle.emplace(u"a"sv, Element{Art::Fluss, 0});
        for (const std::u16string_view element :
             {u"video"sv, u"iframe"sv, u"object"sv, u"embed"sv, u"canvas"sv})
            alle.emplace(element, Element{Art::Film, static_cast<unsigned>(HtmlRest::Video)});
        alle.emplace(u"script"sv, Element{Art::Stumm, static_cast<unsigned>(HtmlRest::Skript)});
        for (const std::u16string_view element :
             {u"style"sv, u"title"sv, u"template"sv, u"rp"sv, u"noscript"sv, u"svg"sv, u"math"sv})
            alle.emplace(element, Element{Art::Stumm, 0});
        return alle;
    }();
    const auto gefunden = elemente.find(name);
    return gefunden == elemente.end() ? Element() : gefunden->second;
}

bool IstLeer(QChar c)
{
    return c == u' ' || c == u'\t' || c == u'\n' || c == u'\r' || c == u'\f';
}

// Spaces that stand where a blank would be typed.
bool IstAndererLeerraum(QChar c)
{
    return c == QChar(0xA0) || c == QChar(0x2007) || c == QChar(0x2009) || c == QChar(0x202F);
}

// What neither means something nor is white space.
bool IstGewoehnlich(QChar c)
{
    if (c.unicode() >= 0xA0)
        return !IstAndererLeerraum(c);
    return c.unicode() > 0x20 && c != u'<' && c != u'[' && c != u'&';
}

// Collects the text: white space, lines, runs.
class Sammler
{
public:
    Lauftext &Text() { return text_; }

    void Erwarten(qsizetype zeichen) { text_.text.reserve(zeichen); }

    void Zeichen(QChar c, const HtmlStil &stil)
    {
        if (c.unicode() < 0x20 && !IstLeer(c))
            return;
        if (stil.woertlich) {
            if (c == u'\n') {
                woertlichAb_ = std::min(woertlichAb_, text_.text.size());
                Zeile(stil);
                woertlichBis_ = text_.text.size();
            } else if (c != u'\r')
                Setzen(c, stil);
        } else if (IstLeer(c)) {
            if (warten_.isEmpty())
                warten_ = u" "_s;
        } else if (IstAndererLeerraum(c)) {
            warten_ += u' ';
        } else {
            Setzen(c, stil);
        }
    }

    // Words with one blank between them.
    void Worte(QStringView worte, const HtmlStil &stil)
    {
        Setzen(worte.front(), stil);
        text_.text += worte.mid(1);
        if (stil.woertlich)
            woertlichBis_ = text_.text.size();
    }

    // Ends the line, be it empty.
    void Zeile(const HtmlStil &stil)
    {
        Anfangen(stil);
        warten_.clear();
        text_.text += u'\n';
        zeileLeer_ = true;
    }

    // Ends the line where something stands in it.
    void Kante(const HtmlStil &stil)
    {
        if (zeileLeer_)
            warten_.clear();
        else
            Zeile(stil);
    }

    Lauftext Fertig()
    {
        qsizetype ende = text_.text.size();
        while (ende > woertlichBis_ && text_.text[ende - 1] == u'\n')
            --ende;
        text_.text.truncate(ende);
        qsizetype vorn = 0;
        while (vorn < ende && vorn < woertlichAb_ && text_.text[vorn] == u'\n')
            ++vorn;
        if (vorn > 0)
            Verschieben(vorn);
        while (!text_.laeufe.empty() && text_.laeufe.back().von >= text_.text.size())
            text_.laeufe.pop_back();
        while (!text_.absaetze.empty() && text_.absaetze.back().von > text_.text.size())
            text_.absaetze.pop_back();
        return std::move(text_);
    }

private:
    void Setzen(QChar c, const HtmlStil &stil)
    {
        Anfangen(stil);
        if (!warten_.isEmpty()) {
            if (!zeileLeer_)
                text_.text += warten_;
            warten_.clear();
        }
        if (text_.laeufe.empty())
            text_.laeufe.push_back({0, text_.text.isEmpty() ? stil.format : Laufformat()});
        if (text_.laeufe.back().format != stil.format)
            text_.laeufe.push_back({text_.text.size(), stil.format});
        if (stil.woertlich) {
            woertlichAb_ = std::min(woertlichAb_, text_.text.size());
            woertlichBis_ = text_.text.size() + 1;
        }
        text_.text += c;
        zeileLeer_ = false;
    }

    // The first character of a line tells where the line stands.
    void Anfangen(const HtmlStil &stil)
    {
        if (!zeileLeer_)
            return;
        const Ausrichtung bisher =
            text_.absaetze.empty() ? Ausrichtung::Links : text_.absaetze.back().ausrichtung;
        if (stil.ausrichtung != bisher)
            text_.absaetze.push_back({text_.text.size(), stil.ausrichtung});
    }

    void Verschieben(qsizetype vorn)
    {
        text_.text.remove(0, vorn);
        for (Lauftext::Lauf &lauf : text_.laeufe)
            lauf.von = std::max<qsizetype>(0, lauf.von - vorn);
        for (Lauftext::Absatz &absatz : text_.absaetze)
            absatz.von = std::max<qsizetype>(0, absatz.von - vorn);
    }

    Lauftext text_;
    QString warten_; // white space that only counts between two words
    bool zeileLeer_ = true;
    qsizetype woertlichAb_ = std::numeric_limits<qsizetype>::max();
    qsizetype woertlichBis_ = 0;
};

class Leser
{
public:
    explicit Leser(QStringView html) : html_(html)
    {
        sammler_.Erwarten(std::min<qsizetype>(html.size(), 10'000));
    }

    GelesenesHtml Lesen()
    {
        while (place_ < html_.size()) {
            if (html_[place_] == u'<' && Tag())
                continue;
            if (html_[place_] == u'[' && Klangmarke())
                continue;
            if (html_[place_] == u'&' && Entity())
                continue;
            if (const qsizetype ende = EndeDerWorte(); ende > place_) {
                if (!stil_.verborgen)
                    sammler_.Worte(html_.mid(place_, ende - place_), stil_);
                place_ = ende;
                continue;
            }
            if (!stil_.verborgen)
                sammler_.Zeichen(html_[place_], stil_);
            ++place_;
        }
        ergebnis_.text = sammler_.Fertig();
        return std::move(ergebnis_);
    }

private:
    struct Offenes
    {
        std::u16string name;
        Art art{};
        HtmlStil vorher;
    };

    qsizetype EndeDerWorte() const
    {
        const auto gewoehnlich = [this](qsizetype i) { return i < html_.size() && IstGewoehnlich(html_[i]); };
        qsizetype ende = place_;
        while (gewoehnlich(ende)) {
            ++ende;
            if (ende < html_.size() && html_[ende] == u' ' && gewoehnlich(ende + 1))
                ++ende;
        }
        return ende;
    }

    bool Entity()
    {
        const qsizetype ende = html_.mid(place_, 12).indexOf(u';');
        if (ende < 2)
            return false;
        const QString zeichen = HtmlEntity(html_.mid(place_ + 1, ende - 1));
        if (zeichen.isEmpty())
            return false;
        if (!stil_.verborgen)
            for (const QChar c : zeichen)
                sammler_.Zeichen(c, stil_);
        place_ += ende + 1;
        return true;
    }

    bool Klangmarke()
    {
        constexpr QStringView Anfang = u"[sound:";
        if (!html_.mid(place_).startsWith(Anfang))
            return false;
        const qsizetype ende = html_.mid(place_, 1000).indexOf(u']');
        if (ende < 0)
            return false;
        if (!stil_.verborgen)
            ergebnis_.toene << HtmlAttribut(html_.mid(place_ + Anfang.size(), ende - Anfang.size()));
        place_ += ende + 1;
        return true;
    }

    // A tag or a comment; false where the "<" is one that was written as a text.
    bool Tag()
    {
        const QStringView rest = html_.mid(place_);
        if (rest.size() < 2)
            return false;
        if (rest[1] == u'!' && rest.startsWith(u"<!--")) {
            const qsizetype ende = rest.indexOf(u"-->", 4);
            place_ = ende < 0 ? html_.size() : place_ + ende + 3;
            return true;
        }
        if (rest[1] == u'!' || rest[1] == u'?') {
            const qsizetype ende = rest.indexOf(u'>');
            place_ = ende < 0 ? html_.size() : place_ + ende + 1;
            return true;
        }
        const bool schliesst = rest[1] == u'/';
        const qsizetype name = schliesst ? 2 : 1;
        if (rest.size() <= name || rest[name].unicode() > 0x7f || !rest[name].isLetter())
            return false;
        const HtmlTag tag = HtmlTagLesen(rest.mid(name));
        place_ += name + tag.laenge;
        if (schliesst)
            Schliessen(tag.name);
        else
            Oeffnen(tag);
        return true;
    }

    void Oeffnen(const HtmlTag &tag)
    {
        const Element element = ElementVon(tag.name);
        if (!stil_.verborgen)
            ergebnis_.rest |= element.rest;
        switch (element.art) {
        case Art::Bruch:
            if (!stil_.verborgen)
                sammler_.Zeile(stil_);
            return;
        case Art::Strich:
            sammler_.Kante(stil_);
            return;
        case Art::Bild:
            Medium(tag, ergebnis_.bilder);
            return;
        case Art::Klang:
            Medium(tag, ergebnis_.toene);
            return;
        case Art::Stumm:
            Ueberlesen(tag);
            return;
        default:
            break;
        }
        if (element.art == Art::Block)
            sammler_.Kante(stil_);
        if (tag.name == u"a"sv && tag.Hat(u"href"))
            ergebnis_.rest |= static_cast<unsigned>(HtmlRest::Verweis);
        if (tag.leer || offen_.size() >= TiefsteSchachtelung)
            return;
        offen_.push_back({tag.name, element.art, stil_});
        if (StilAnwenden(stil_, tag, sammler_.Text().schriften))
            ergebnis_.rest |= static_cast<unsigned>(HtmlRest::Hintergrund);
        if (tag.name == u"rt"sv && !stil_.verborgen)
            sammler_.Zeichen(u'(', stil_);
    }

    void Schliessen(std::u16string_view name)
    {
        if (name == u"rt"sv && !stil_.verborgen)
            sammler_.Zeichen(u')', stil_);
        const Element element = ElementVon(name);
        if (element.art == Art::Block)
            sammler_.Kante(stil_);
        const std::size_t grenze = offen_.size() > WeitesteSuche ? offen_.size() - WeitesteSuche : 0;
        for (std::size_t i = offen_.size(); i > grenze; --i) {
            if (offen_[i - 1].name == name) {
                stil_ = offen_[i - 1].vorher;
                offen_.resize(i - 1);
                return;
            }
            // What is in a line does not end the block around it.
            if (element.art == Art::Fluss && offen_[i - 1].art == Art::Block)
                return;
        }
    }

    void Medium(const HtmlTag &tag, QStringList &namen)
    {
        const QString name = tag.Wert(u"src");
        if (!stil_.verborgen && !name.isEmpty())
            namen << name;
    }

    void Ueberlesen(const HtmlTag &tag)
    {
        if (tag.leer)
            return;
        const QString ende = u"</"_s.append(QStringView(tag.name));
        const qsizetype gefunden = html_.indexOf(ende, place_, Qt::CaseInsensitive);
        if (gefunden < 0) {
            place_ = html_.size();
            return;
        }
        const qsizetype schluss = html_.indexOf(u'>', gefunden);
        place_ = schluss < 0 ? html_.size() : schluss + 1;
    }

    QStringView html_;
    qsizetype place_ = 0;
    HtmlStil stil_;
    std::vector<Offenes> offen_;
    Sammler sammler_;
    GelesenesHtml ergebnis_;
};

} // namespace

GelesenesHtml HtmlLesen(const QString &html)
{
    return Leser(html).Lesen();
}

QString HtmlOhneTags(const QString &html)
{
    return HtmlLesen(html).text.text.replace(u'\n', u' ');
}

QString HtmlMaskiert(const QString &text)
{
    return text.toHtmlEscaped();
}

} // namespace paukfix
