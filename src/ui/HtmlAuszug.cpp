// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "HtmlAuszug.h"

#include <QHash>
#include <QList>
#include <QStringView>

#include <algorithm>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype MaxZeichen = 32'000'000; // of the HTML
constexpr qsizetype MaxText = 2'000'000;     // outside of tags
constexpr int MaxTags = 200'000;
constexpr qsizetype MaxTiefe = 500;
constexpr int MaxPunkte = 4'000;             // of lists
constexpr qint64 MaxVergleiche = 15'000'000; // each tag with each rule of the style sheets
constexpr qsizetype MaxName = 32;

bool Gleich(QStringView a, QStringView b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

// What is known of an element, as bits.
enum Art : quint32
{
    Leer = 1,        // no content and no end
    Roh = 2,         // its text is no HTML
    EndetAbsatz = 4, // a paragraph ends where it begins
    ErsteFolge = 8   // of three bits each: it begins one of a series, it ends then, it holds the series
};

enum Rolle
{
    Beginnt,
    Endet,
    Haelt
};

constexpr int Folgen = 5; // items, terms, cells, rows, parts of tables

constexpr quint32 InFolge(int folge, Rolle rolle)
{
    return quint32{ErsteFolge} << (3 * folge + rolle);
}

const QHash<QString, quint32> &Arten()
{
    static const QHash<QString, quint32> arten = [] {
        QHash<QString, quint32> neu;
        const auto sind = [&neu](quint32 art, const char *namen) {
            for (const QString &name : QString::fromLatin1(namen).split(u' '))
                neu[name] |= art;
        };
        sind(Leer, "area base br col embed hr img input link meta source track wbr");
        sind(Roh, "script style title textarea");
        sind(EndetAbsatz,
             "address blockquote center div dl dd dt form h1 h2 h3 h4 h5 h6 hr li ol p pre table ul");
        const auto folge = [&](int nummer, const char *beginnt, const char *endet, const char *haelt) {
            sind(InFolge(nummer, Beginnt), beginnt);
            sind(InFolge(nummer, Endet), endet);
            sind(InFolge(nummer, Haelt), haelt);
        };
        folge(0, "li", "li", "ul ol");
        folge(1, "dt dd", "dt dd", "dl");
        folge(2, "td th", "td th", "table");
        folge(3, "tr", "tr td th", "table");
        folge(4, "thead tbody tfoot", "thead tbody tfoot tr td th", "table");
        return neu;
    }();
    return arten;
}

struct Element
{
    int name = 0; // equal for equal names
    quint32 art = 0;
};

bool Verborgen(QStringView stil)
{
    QString dicht = stil.toString().toLower();
    dicht.removeIf([](QChar c) { return c.isSpace(); });
    return dicht.startsWith(u"display:none") || dicht.contains(u";display:none");
}

class Auszug
{
public:
    explicit Auszug(QStringView html) : html_(html) {}

    BereitesHtml Lesen()
    {
        if (html_.size() > MaxZeichen)
            return {.html = {}, .ablehnung = Ablehnung::ZuGross};
        while (ort_ < html_.size()) {
            const qsizetype anfang = ort_;
            einfuegung_.clear();
            if (IstTag())
                Tag();
            else if (html_.mid(ort_).startsWith(u"<!--"))
                Bis(u"-->");
            else if (html_.mid(ort_).startsWith(u"<!") || html_.mid(ort_).startsWith(u"<?"))
                Bis(u">");
            else if (Zeichen(ort_) == u'<')
                Kleinerzeichen();
            else
                Text();
            if (text_ > MaxText)
                return {.html = {}, .ablehnung = Ablehnung::ZuGross};
            if (tags_ > MaxTags || punkte_ > MaxPunkte || offene_.size() > MaxTiefe ||
                regeln_ * tags_ > MaxVergleiche)
                return {.html = {}, .ablehnung = Ablehnung::ZuVerschachtelt};
            if (!schweigt_)
                Ausgeben(anfang);
            schweigt_ = verborgenAb_ >= 0;
        }
        return {.html = aus_};
    }

private:
    QChar Zeichen(qsizetype ort) const { return ort < html_.size() ? html_[ort] : QChar(u' '); }

    static bool IstBuchstabe(QChar c) { return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z'); }

    bool IstTag() const
    {
        if (Zeichen(ort_) != u'<')
            return false;
        return IstBuchstabe(Zeichen(ort_ + 1)) ||
               (Zeichen(ort_ + 1) == u'/' && IstBuchstabe(Zeichen(ort_ + 2)));
    }

    void Bis(QStringView ende)
    {
        const qsizetype gefunden = html_.indexOf(ende, ort_);
        ort_ = gefunden < 0 ? html_.size() : gefunden + ende.size();
    }

    // One that begins no tag, which the reader would take for one.
    void Kleinerzeichen()
    {
        einfuegung_ = u"&lt;"_s;
        einfuegeort_ = ort_++;
        ersetzt_ = 1;
        ++text_;
    }

    void Text()
    {
        const qsizetype ende = html_.indexOf(u'<', ort_);
        text_ += (ende < 0 ? html_.size() : ende) - ort_;
        ort_ = ende < 0 ? html_.size() : ende;
    }

    // As it is, but for what was found instead of its `ersetzt_` characters.
    void Ausgeben(qsizetype anfang)
    {
        if (!einfuegung_.isEmpty()) {
            aus_ += html_.mid(anfang, einfuegeort_ - anfang);
            aus_ += einfuegung_;
            anfang = einfuegeort_ + ersetzt_;
        }
        aus_ += html_.mid(anfang, ort_ - anfang);
    }

    void Tag()
    {
        ++tags_;
        const bool schliesst = Zeichen(++ort_) == u'/';
        if (schliesst)
            ++ort_;
        const qsizetype namensanfang = ort_;
        while (ort_ < html_.size() && !Zeichen(ort_).isSpace() && Zeichen(ort_) != u'>' &&
               Zeichen(ort_) != u'/')
            ++ort_;
        const QStringView name = html_.mid(namensanfang, ort_ - namensanfang);
        const qsizetype namensende = ort_;
        verborgen_ = false;
        start_.clear();
        while (ort_ < html_.size() && Zeichen(ort_) != u'>')
            Attribut();
        ++ort_;
        ort_ = std::min(ort_, html_.size());
        if (schliesst) {
            Schliessen(name);
            return;
        }
        if (!start_.isEmpty() && Gleich(name, u"ol")) {
            bool gueltig = false;
            const int nummer = start_.toInt(&gueltig);
            if (gueltig) {
                einfuegung_ = u" style=\"-qt-list-number-prefix:'%1'\""_s.arg(nummer);
                einfuegeort_ = namensende;
                ersetzt_ = 0;
            }
        }
        punkte_ += Gleich(name, u"li") ? 1 : 0;
        Oeffnen(name);
    }

    void Attribut()
    {
        while (ort_ < html_.size() && (Zeichen(ort_).isSpace() || Zeichen(ort_) == u'/'))
            ++ort_;
        const qsizetype anfang = ort_;
        while (ort_ < html_.size() && !Zeichen(ort_).isSpace() && Zeichen(ort_) != u'=' &&
               Zeichen(ort_) != u'>' && Zeichen(ort_) != u'/')
            ++ort_;
        const QStringView name = html_.mid(anfang, ort_ - anfang);
        while (Zeichen(ort_).isSpace() && ort_ < html_.size())
            ++ort_;
        const QStringView wert = Zeichen(ort_) == u'=' ? Wert() : QStringView();
        if (Gleich(name, u"hidden") || (Gleich(name, u"style") && Verborgen(wert)))
            verborgen_ = true;
        else if (Gleich(name, u"start"))
            start_ = wert.toString();
    }

    QStringView Wert()
    {
        ++ort_; // the equals sign
        while (ort_ < html_.size() && Zeichen(ort_).isSpace())
            ++ort_;
        const QChar zeichen = Zeichen(ort_);
        qsizetype anfang = ort_;
        if (zeichen == u'"' || zeichen == u'\'') {
            ++anfang;
            const qsizetype ende = html_.indexOf(zeichen, anfang);
            ort_ = ende < 0 ? html_.size() : ende + 1;
            return html_.mid(anfang, (ende < 0 ? ort_ : ende) - anfang);
        }
        while (ort_ < html_.size() && !Zeichen(ort_).isSpace() && Zeichen(ort_) != u'>')
            ++ort_;
        return html_.mid(anfang, ort_ - anfang);
    }

    Element Benannt(QStringView name)
    {
        const QString klein = name.left(MaxName).toString().toLower();
        const auto bekannt = namen_.constFind(klein);
        if (bekannt != namen_.constEnd())
            return *bekannt;
        const Element neu{static_cast<int>(namen_.size()), Arten().value(klein)};
        namen_.insert(klein, neu);
        return neu;
    }

    void Oeffnen(QStringView name)
    {
        const Element element = Benannt(name);
        SchonZuEnde(element);
        if (verborgenAb_ < 0)
            schweigt_ = verborgen_; // the hidden one itself is not wanted, the one before may have ended here
        if ((element.art & Leer) != 0)
            return;
        offene_.append(element);
        if (verborgen_ && verborgenAb_ < 0)
            verborgenAb_ = offene_.size() - 1;
        if ((element.art & Roh) != 0) {
            const qsizetype gefunden = html_.indexOf(u"</"_s + name.toString(), ort_, Qt::CaseInsensitive);
            const qsizetype ende = gefunden < 0 ? html_.size() : gefunden;
            regeln_ += html_.mid(ort_, ende - ort_).count(u'{');
            ort_ = ende;
        }
    }

    // What ends without a tag of its own because this one begins.
    void SchonZuEnde(const Element &element)
    {
        if ((element.art & EndetAbsatz) != 0 && !offene_.isEmpty() &&
            offene_.last().name == Benannt(u"p").name)
            Kuerzen(offene_.size() - 1);
        for (int folge = 0; folge < Folgen; ++folge) {
            if ((element.art & InFolge(folge, Beginnt)) == 0)
                continue;
            qsizetype gekuerzt = offene_.size();
            for (qsizetype i = offene_.size() - 1; i >= 0 && (offene_[i].art & InFolge(folge, Haelt)) == 0;
                 --i)
                if ((offene_[i].art & InFolge(folge, Endet)) != 0)
                    gekuerzt = i;
            Kuerzen(gekuerzt);
        }
    }

    void Schliessen(QStringView name)
    {
        const int gesucht = Benannt(name).name;
        const auto passt = [gesucht](const Element &offenes) { return offenes.name == gesucht; };
        const auto gefunden = std::find_if(offene_.crbegin(), offene_.crend(), passt);
        if (gefunden != offene_.crend())
            Kuerzen(offene_.crend() - gefunden - 1);
    }

    void Kuerzen(qsizetype anzahl)
    {
        if (anzahl == offene_.size())
            return;
        // The end of what is hidden is not wanted; an end tag of what lies around it is.
        if (verborgenAb_ >= anzahl) {
            if (verborgenAb_ > anzahl)
                schweigt_ = false;
            verborgenAb_ = -1;
        }
        offene_.resize(anzahl);
    }

    QStringView html_;
    qsizetype ort_ = 0;
    QString aus_;
    qsizetype text_ = 0;
    int tags_ = 0;
    int punkte_ = 0;    // of lists
    qint64 regeln_ = 0; // of style sheets
    QHash<QString, Element> namen_;
    QList<Element> offene_;
    qsizetype verborgenAb_ = -1; // the place of the hidden one among them
    bool schweigt_ = false;      // what was just read is not wanted
    bool verborgen_ = false;     // the tag says so
    QString start_;              // the tag's attribute
    QString einfuegung_;
    qsizetype einfuegeort_ = 0;
    qsizetype ersetzt_ = 0;
};

} // namespace

BereitesHtml HtmlAuszug(const QString &html)
{
    return Auszug(html).Lesen();
}

int Listenanfang(const QString &vorsatz)
{
    bool gueltig = false;
    const int anfang = vorsatz.toInt(&gueltig);
    return gueltig ? anfang : 1;
}

} // namespace paukfix
