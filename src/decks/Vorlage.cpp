// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Vorlage.h"

#include "HtmlLeser.h"

#include <QHash>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype GroessteVorlage = 1'000'000; // characters
constexpr std::size_t TiefsteVorlage = 100;

// "c12" gives 12; 0 for anything else.
int Lueckennummer(QStringView name)
{
    if (name.size() < 2 || name.size() > 6 || name[0] != u'c')
        return 0;
    for (const QChar c : name.mid(1))
        if (c < u'0' || c > u'9')
            return 0;
    return name.mid(1).toInt();
}

// Without comments: a template may hide parts of itself in them.
QString OhneKommentare(const QString &text)
{
    QString ohne;
    qsizetype von = 0;
    for (;;) {
        const qsizetype anfang = text.indexOf(u"<!--"_s, von);
        if (anfang < 0)
            return ohne + text.mid(von);
        ohne += QStringView(text).mid(von, anfang - von);
        const qsizetype ende = text.indexOf(u"-->"_s, anfang + 4);
        if (ende < 0)
            return ohne;
        von = ende + 3;
    }
}

} // namespace

std::optional<Vorlage> Vorlage::Lesen(const QString &roh, const QStringList &felder)
{
    if (roh.size() > GroessteVorlage)
        return std::nullopt;
    const QString text = OhneKommentare(roh);
    Vorlage vorlage;
    std::vector<std::size_t> offen;
    const auto schreiben = [&](QStringView stueck) {
        if (!stueck.isEmpty())
            vorlage.schritte_.push_back({.art = Art::Text, .text = stueck.toString(), .filter = {}});
    };
    qsizetype von = 0;
    for (;;) {
        const qsizetype anfang = text.indexOf(u"{{"_s, von);
        if (anfang < 0)
            break;
        const qsizetype ende = text.indexOf(u"}}"_s, anfang + 2);
        if (ende < 0)
            return std::nullopt;
        schreiben(QStringView(text).mid(von, anfang - von));
        QString name = text.mid(anfang + 2, ende - anfang - 2);
        while (name.startsWith(u'{')) // "{{{Feld}}}" is one of the old spellings
            name.remove(0, 1);
        name = name.trimmed();
        von = ende + 2;
        while (von < text.size() && text[von] == u'}')
            ++von;
        const QChar zeichen = name.isEmpty() ? QChar() : name.front();
        if (zeichen == u'/') {
            if (offen.empty() || vorlage.schritte_[offen.back()].text != name.mid(1).trimmed())
                return std::nullopt;
            vorlage.schritte_[offen.back()].weiter = vorlage.schritte_.size();
            offen.pop_back();
        } else if (zeichen == u'#' || zeichen == u'^') {
            if (offen.size() >= TiefsteVorlage)
                return std::nullopt;
            Schritt schritt = Bezug(name.mid(1).trimmed(), felder);
            schritt.text = name.mid(1).trimmed();
            schritt.art = zeichen == u'#' ? Art::Wenn : Art::WennNicht;
            offen.push_back(vorlage.schritte_.size());
            vorlage.schritte_.push_back(schritt);
        } else if (!name.isEmpty()) {
            vorlage.schritte_.push_back(Bezug(name, felder));
        }
    }
    if (!offen.empty())
        return std::nullopt;
    schreiben(QStringView(text).mid(von));
    return vorlage;
}

Vorlage::Schritt Vorlage::Bezug(const QString &name, const QStringList &felder)
{
    Schritt schritt;
    schritt.art = Art::Feld;
    schritt.feld = static_cast<int>(felder.indexOf(name));
    if (schritt.feld >= 0)
        return schritt;
    QStringList teile = name.split(u':');
    const QString eigentlich = teile.takeLast().trimmed();
    schritt.feld = static_cast<int>(felder.indexOf(eigentlich));
    for (QString &filter : teile)
        filter = filter.trimmed();
    schritt.filter = teile;
    if (schritt.feld >= 0)
        return schritt;
    static const QHash<QString, Besonders> besondere{
        {u"Tags"_s, Besonders::Schlagwoerter},  {u"Deck"_s, Besonders::Stapel},
        {u"Subdeck"_s, Besonders::Unterstapel}, {u"Type"_s, Besonders::Notiztyp},
        {u"Card"_s, Besonders::Karte},          {u"FrontSide"_s, Besonders::Vorderseite}};
    schritt.besonders = besondere.value(eigentlich, Besonders::Keines);
    if (const int nummer = Lueckennummer(eigentlich); schritt.besonders == Besonders::Keines && nummer > 0) {
        schritt.besonders = Besonders::Luecke;
        schritt.nummer = nummer;
    }
    return schritt;
}

QString Vorlage::Wert(const Schritt &schritt, const Vorlagenwerte &werte)
{
    if (schritt.feld >= 0)
        return static_cast<std::size_t>(schritt.feld) < werte.felder.size()
                   ? werte.felder[static_cast<std::size_t>(schritt.feld)]
                   : QString();
    switch (schritt.besonders) {
    case Besonders::Schlagwoerter:
        return HtmlMaskiert(werte.schlagwoerter);
    case Besonders::Stapel:
        return HtmlMaskiert(werte.stapel);
    case Besonders::Unterstapel:
        return HtmlMaskiert(werte.stapel.mid(werte.stapel.lastIndexOf(u"::"_s) + 2).isEmpty() ||
                                    !werte.stapel.contains(u"::"_s)
                                ? werte.stapel
                                : werte.stapel.mid(werte.stapel.lastIndexOf(u"::"_s) + 2));
    case Besonders::Notiztyp:
        return HtmlMaskiert(werte.notiztyp);
    case Besonders::Karte:
        return HtmlMaskiert(werte.karte);
    default: // the front is not shown again with the answer
        return {};
    }
}

bool Vorlage::Leer(const Schritt &schritt, const Vorlagenwerte &werte)
{
    if (schritt.besonders == Besonders::Luecke)
        return schritt.nummer != werte.luecke;
    return IstLeeresFeld(Wert(schritt, werte));
}

Vorlage::Ergebnis Vorlage::Fuellen(const Vorlagenwerte &werte, QString &html, QStringList &hinweise) const
{
    Ergebnis ergebnis = Ergebnis::Gut;
    for (std::size_t i = 0; i < schritte_.size(); ++i) {
        const Schritt &schritt = schritte_[i];
        switch (schritt.art) {
        case Art::Text:
            html += schritt.text;
            break;
        case Art::Wenn:
        case Art::WennNicht:
            if (Leer(schritt, werte) == (schritt.art == Art::Wenn))
                i = schritt.weiter - 1; // the loop steps on
            break;
        default:
            if (const Ergebnis dieses = Einsetzen(schritt, werte, html, hinweise); dieses != Ergebnis::Gut)
                ergebnis = dieses;
        }
        if (html.size() > GroessteSeite)
            return Ergebnis::ZuGross;
    }
    return ergebnis;
}

Vorlage::Ergebnis Vorlage::Einsetzen(const Schritt &schritt, const Vorlagenwerte &werte, QString &html,
                                     QStringList &hinweise)
{
    QString wert = Wert(schritt, werte);
    // The one next to the field comes first.
    for (qsizetype i = schritt.filter.size(); i > 0; --i) {
        const QString &filter = schritt.filter[i - 1];
        if (filter == u"cloze") {
            QString fertig;
            if (!LueckenFuellen(wert, werte.luecke, werte.antwort, fertig))
                return Ergebnis::OhneLuecke;
            wert = fertig;
        } else if (filter == u"text") {
            wert = HtmlMaskiert(HtmlOhneTags(wert));
        } else if (filter == u"hint") {
            if (const QString hinweis = HtmlOhneTags(wert); !hinweis.isEmpty())
                hinweise << hinweis;
            return Ergebnis::Gut;
        } else if (filter == u"type") {
            if (!werte.antwort)
                return Ergebnis::Gut;
        } else if (filter.startsWith(u"tts"_s)) {
            return Ergebnis::Gut;
        }
    }
    html += wert;
    return Ergebnis::Gut;
}

bool IstLeeresFeld(const QString &html)
{
    const QStringView text(html);
    qsizetype i = 0;
    while (i < text.size()) {
        const QChar c = text[i];
        if (c == u' ' || c == u'\t' || c == u'\n' || c == u'\r' || c == u'\f') {
            ++i;
            continue;
        }
        const qsizetype ende = c == u'<' ? text.mid(i, 200).indexOf(u'>') : -1;
        if (ende < 0)
            return false;
        QStringView name = text.mid(i + 1, ende - 1);
        if (name.startsWith(u'/'))
            name = name.mid(1);
        const QStringView wort = name.left(3);
        const bool br = wort.left(2).compare(u"br", Qt::CaseInsensitive) == 0 &&
                        (name.size() == 2 || !name[2].isLetterOrNumber());
        const bool div = wort.compare(u"div", Qt::CaseInsensitive) == 0 &&
                         (name.size() == 3 || !name[3].isLetterOrNumber());
        if (!br && !div)
            return false;
        i += ende + 1;
    }
    return true;
}

} // namespace paukfix
