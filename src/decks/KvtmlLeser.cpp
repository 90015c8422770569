// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "KvtmlLeser.h"

#include "StoreError.h"

#include <QXmlStreamReader>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr int TiefsteLektion = 30;
constexpr qsizetype LaengsterText = 1'000'000;
constexpr int TiefstesElement = 200;
constexpr qsizetype MeisteWahlen = 100;
constexpr int HoechsteStufe = 7;

bool Wahr(const QString &text)
{
    return text == u"true"_s || text == u"1"_s;
}

int AlsStufe(QStringView text)
{
    bool zahl = false;
    const int stufe = text.trimmed().toInt(&zahl);
    return zahl ? qBound(0, stufe, HoechsteStufe) : 0;
}

// The numbers of a document are small and not below 0.
std::optional<qint64> Nummer(QStringView text)
{
    bool zahl = false;
    const qint64 nummer = text.trimmed().toLongLong(&zahl);
    if (!zahl || nummer < 0 || nummer > std::numeric_limits<int>::max())
        return std::nullopt;
    return nummer;
}

// Lines stay, what is around them goes.
QString Bereinigt(const QString &text)
{
    QStringList zeilen = text.split(u'\n');
    for (QString &zeile : zeilen)
        zeile = zeile.trimmed();
    return zeilen.join(u'\n').trimmed();
}

} // namespace

KvtmlLeser::KvtmlLeser(QXmlStreamReader &xml, KvtmlInhalt &inhalt) : xml_(xml), inhalt_(inhalt)
{
    xml_.setEntityExpansionLimit(2'000);
}

void KvtmlLeser::FehlerPruefen() const
{
    if (!xml_.hasError())
        return;
    throw StoreError(
        Fehler::Beschaedigt,
        u"Die Datei ist kein gültiges KVTML, oder sie ist beschädigt (Zeile %1)."_s.arg(xml_.lineNumber()));
}

// The next element inside the one that is open; false at its end.
bool KvtmlLeser::Naechstes()
{
    const bool da = xml_.readNextStartElement();
    FehlerPruefen();
    return da;
}

void KvtmlLeser::Ueberspringen()
{
    for (int tiefe = 1; tiefe > 0;) {
        const auto art = xml_.readNext();
        FehlerPruefen();
        if (art == QXmlStreamReader::StartElement)
            ++tiefe;
        else if (art == QXmlStreamReader::EndElement)
            --tiefe;
        if (tiefe > TiefstesElement)
            throw StoreError(Fehler::Beschaedigt,
                             u"Die Datei ist endlos in sich geschachtelt und wird darum nicht gelesen."_s);
    }
}

// The text of the open element, without that of elements in it.
QString KvtmlLeser::Text()
{
    const bool woertlich = xml_.attributes().value(u"xml:space"_s) == u"preserve";
    QString text;
    for (;;) {
        const auto art = xml_.readNext();
        FehlerPruefen();
        if (art == QXmlStreamReader::EndElement)
            return woertlich ? text : Bereinigt(text);
        if (art == QXmlStreamReader::StartElement)
            Ueberspringen();
        else if (art == QXmlStreamReader::Characters)
            text += xml_.text();
        if (text.size() > LaengsterText)
            throw StoreError(Fehler::TextZuLang,
                             u"Ein Text in der Datei ist länger, als eine Karte fassen kann; sie wird "
                             u"darum nicht gelesen."_s);
    }
}

void KvtmlLeser::Lesen()
{
    if (!Naechstes() || xml_.name() != u"kvtml")
        throw StoreError(Fehler::FormatUnbekannt, u"Die Datei ist kein KVTML."_s);
    const QString fassung = xml_.attributes().value(u"version"_s).toString();
    if (fassung.startsWith(u'2'))
        Lesen2();
    else
        Lesen1();
    while (!xml_.atEnd()) { // what follows must be sound too
        xml_.readNext();
        FehlerPruefen();
    }
}

void KvtmlLeser::Lesen1()
{
    inhalt_.art = u"KVTML 1"_s;
    inhalt_.titel = xml_.attributes().value(u"title"_s).toString();
    while (Naechstes()) {
        if (xml_.name() == u"lesson")
            Lektionen1();
        else if (xml_.name() == u"e")
            Eintrag1();
        else
            Ueberspringen();
    }
}

void KvtmlLeser::Lektionen1()
{
    while (Naechstes()) {
        if (xml_.name() == u"desc")
            inhalt_.lektionen << Text();
        else
            Ueberspringen();
    }
}

void KvtmlLeser::Eintrag1()
{
    KvtmlEintrag eintrag;
    const auto lektion = Nummer(xml_.attributes().value(u"m"_s));
    eintrag.ruht = xml_.attributes().value(u"i"_s) == u"1";
    if (lektion && *lektion > 0 && *lektion <= inhalt_.lektionen.size())
        eintrag.lektionen << inhalt_.lektionen.at(*lektion - 1);
    bool schon = false;
    while (Naechstes()) {
        if (xml_.name() == u"o") {
            Wort1(eintrag.frage);
        } else if (xml_.name() == u"t" && !schon) {
            schon = true;
            Wort1(eintrag.antwort);
        } else {
            eintrag.weitere += xml_.name() == u"t" ? 1 : 0;
            Ueberspringen();
        }
    }
    eintrag.nummer = static_cast<qint64>(inhalt_.eintraege.size());
    inhalt_.eintraege.push_back(std::move(eintrag));
}

void KvtmlLeser::Wort1(KvtmlWort &wort)
{
    const QXmlStreamAttributes attribute = xml_.attributes();
    wort.bemerkung = attribute.value(u"r"_s).toString();
    // "from;to": how well the second language is known when asked in the first, and the other way.
    const QStringView stufen = attribute.value(u"g"_s);
    wort.stufe = AlsStufe(stufen.left(stufen.contains(u';') ? stufen.indexOf(u';') : stufen.size()));
    for (const QString &angabe : {u"r"_s, u"p"_s, u"x"_s, u"h"_s, u"y"_s, u"a"_s, u"ff"_s, u"tf"_s})
        wort.angaben += attribute.value(angabe).isEmpty() ? 0 : 1;
    QString text;
    for (;;) {
        const auto art = xml_.readNext();
        FehlerPruefen();
        if (art == QXmlStreamReader::EndElement)
            break;
        if (art == QXmlStreamReader::Characters)
            text += xml_.text();
        if (text.size() > LaengsterText)
            FehlerPruefen();
        if (art != QXmlStreamReader::StartElement)
            continue;
        if (xml_.name() == u"multiplechoice") {
            Auswahl(wort);
        } else {
            ++wort.angaben;
            Ueberspringen();
        }
    }
    wort.text = text.simplified();
}

void KvtmlLeser::Auswahl(KvtmlWort &wort)
{
    while (Naechstes()) {
        const QString text = Text();
        if (!text.isEmpty() && wort.falsche.size() < MeisteWahlen)
            wort.falsche << text;
    }
}

void KvtmlLeser::Lesen2()
{
    inhalt_.art = u"KVTML 2"_s;
    while (Naechstes()) {
        if (xml_.name() == u"information") {
            while (Naechstes()) {
                if (xml_.name() == u"title")
                    inhalt_.titel = Text();
                else
                    Ueberspringen();
            }
        } else if (xml_.name() == u"entries") {
            Eintraege2();
        } else if (xml_.name() == u"lessons") {
            Lektionen2({}, 0);
        } else {
            Ueberspringen();
        }
    }
}

void KvtmlLeser::Eintraege2()
{
    while (Naechstes()) {
        if (xml_.name() == u"entry")
            Eintrag2();
        else
            Ueberspringen();
    }
}

void KvtmlLeser::Eintrag2()
{
    KvtmlEintrag eintrag;
    const auto nummer = Nummer(xml_.attributes().value(u"id"_s));
    while (Naechstes()) {
        if (xml_.name() == u"inactive" || xml_.name() == u"deactivated") {
            eintrag.ruht |= Wahr(Text());
        } else if (xml_.name() == u"translation") {
            const auto sprache = Nummer(xml_.attributes().value(u"id"_s));
            KvtmlWort weiteres;
            Wort2(sprache == 0 ? eintrag.frage : sprache == 1 ? eintrag.antwort : weiteres, sprache == 1);
            eintrag.weitere += weiteres.text.isEmpty() ? 0 : 1;
        } else {
            Ueberspringen();
        }
    }
    if (nummer && !plaetze_.contains(*nummer))
        plaetze_.insert(*nummer, inhalt_.eintraege.size());
    eintrag.nummer = nummer.value_or(-1);
    inhalt_.eintraege.push_back(std::move(eintrag));
}

void KvtmlLeser::Wort2(KvtmlWort &wort, bool antwort)
{
    while (Naechstes()) {
        const QStringView name = xml_.name();
        if (name == u"text") {
            const QString text = Text();
            if (wort.text.isEmpty())
                wort.text = text;
        } else if (name == u"image") {
            wort.bild = Text();
        } else if (name == u"sound") {
            wort.ton = Text();
        } else if (name == u"multiplechoice") {
            Auswahl(wort);
        } else if (name == u"grade") {
            const bool hierher = antwort && Nummer(xml_.attributes().value(u"fromid"_s)) == 0;
            const int stufe = Stufe2();
            if (hierher)
                wort.stufe = stufe;
        } else if (name == u"comment") {
            wort.bemerkung = Text();
            wort.angaben += wort.bemerkung.isEmpty() ? 0 : 1;
        } else {
            ++wort.angaben;
            Ueberspringen();
        }
    }
}

int KvtmlLeser::Stufe2()
{
    int stufe = 0;
    while (Naechstes()) {
        if (xml_.name() == u"currentgrade")
            stufe = AlsStufe(Text());
        else
            Ueberspringen();
    }
    return stufe;
}

// Lessons lie in each other, in the older documents beside each other.
void KvtmlLeser::Lektionen2(const QString &darueber, int tiefe)
{
    if (tiefe > TiefsteLektion)
        throw StoreError(Fehler::Beschaedigt,
                         u"Die Lektionen der Datei sind endlos in sich geschachtelt; sie wird darum nicht "
                         u"gelesen."_s);
    QString hier = darueber;
    while (Naechstes()) {
        if (xml_.name() == u"container" || xml_.name() == u"lesson") {
            Lektionen2(hier, tiefe + 1);
        } else if (xml_.name() == u"name" && tiefe > 0) {
            const QString name = Text().simplified();
            hier = darueber.isEmpty() ? name : darueber + u"::"_s + name;
            inhalt_.lektionen << hier;
        } else if (xml_.name() == u"entry") {
            if (const auto nummer = Nummer(xml_.attributes().value(u"id"_s)))
                Zuordnen(*nummer, hier);
            Ueberspringen();
        } else if (xml_.name() == u"entryid") {
            if (const auto nummer = Nummer(Text()))
                Zuordnen(*nummer, hier);
        } else {
            Ueberspringen();
        }
    }
}

void KvtmlLeser::Zuordnen(qint64 nummer, const QString &lektion)
{
    const auto platz = plaetze_.constFind(nummer);
    if (platz == plaetze_.constEnd() || lektion.isEmpty())
        return;
    QStringList &lektionen = inhalt_.eintraege[*platz].lektionen;
    if (!lektionen.contains(lektion) && lektionen.size() < MeisteWahlen)
        lektionen << lektion;
}

} // namespace paukfix
