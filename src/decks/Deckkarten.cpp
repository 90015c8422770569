// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Deckkarten.h"

#include "PlainName.h"
#include "SafeFile.h"
#include "Tonwandlung.h"

#include <QFileInfo>

#include <array>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr double Getippt = 1;
constexpr double Angekreuzt = 2;

constexpr std::array Antworttexte{&CardRecord::Antwort_1, &CardRecord::Antwort_2, &CardRecord::Antwort_3,
                                  &CardRecord::Antwort_4, &CardRecord::Antwort_5};
constexpr std::array Klartexte{&CardRecord::Antwort_1_Klartext, &CardRecord::Antwort_2_Klartext,
                               &CardRecord::Antwort_3_Klartext, &CardRecord::Antwort_4_Klartext,
                               &CardRecord::Antwort_5_Klartext};
constexpr std::array Kreuze{&CardRecord::Antwort_ch_1, &CardRecord::Antwort_ch_2, &CardRecord::Antwort_ch_3,
                            &CardRecord::Antwort_ch_4, &CardRecord::Antwort_ch_5};

} // namespace

double AntworttypVon(const Deckkarte &karte)
{
    return karte.ankreuzen ? Angekreuzt : Getippt;
}

Deckkarten::Deckkarten(Deckquelle &quelle, const Deckwahl &wahl, Beilagen &beilagen, Deckbericht &bericht)
    : quelle_(quelle),
      wahl_(wahl),
      beilagen_(beilagen),
      bericht_(bericht),
      anzahl_(quelle.Inhalt().karten),
      vorleser_(quelle)
{
}

bool Deckkarten::Next()
{
    if (hindernis_)
        return false;
    try {
        if (!vorleser_.Naechste(karte_, bericht_))
            return false;
        Eintragen();
        return true;
    } catch (const StoreError &fehler) {
        hindernis_ = fehler;
        return false;
    }
}

void Deckkarten::Eintragen()
{
    satz_ = {};
    satz_.Antworttyp = AntworttypVon(karte_);
    satz_.Frage = karte_.frage.reich;
    satz_.Frage_Klartext = karte_.frage.klar;
    for (std::size_t i = 0; i < karte_.antworten.size() && i < Antworttexte.size(); ++i) {
        satz_.*Antworttexte[i] = karte_.antworten[i].text.reich;
        satz_.*Klartexte[i] = karte_.antworten[i].text.klar;
        satz_.*Kreuze[i] = karte_.ankreuzen && karte_.antworten[i].richtig;
    }
    satz_.Picture_1_Name = Ablegen(karte_.frageBild, Art::Bild);
    satz_.Picture_2_Name = Ablegen(karte_.antwortBild, Art::Bild);
    satz_.Picture_6_Name = Ablegen(karte_.frageTon, Art::Ton);
    satz_.Picture_7_Name = Ablegen(karte_.antwortTon, Art::Ton);
    satz_.Picture_9_Name = Thema();
}

QString Deckkarten::Thema()
{
    if (wahl_.thema == Deckthema::Keines)
        return {};
    if (wahl_.thema == Deckthema::Stapel) {
        if (karte_.stapel.size() > MaxTextLength)
            bericht_.Melden(Deckrest::WeitereThemen, karte_.frage.klar);
        return karte_.stapel.left(MaxTextLength);
    }
    QString thema;
    for (const QString &wort : karte_.schlagwoerter) {
        const QString laenger = thema.isEmpty() ? wort : thema + u", "_s + wort;
        if (laenger.size() > MaxTextLength) {
            bericht_.Melden(Deckrest::WeitereThemen, karte_.frage.klar);
            break;
        }
        thema = laenger;
    }
    return thema;
}

// The name by which the card calls it; none where it cannot be read.
QString Deckkarten::Ablegen(const std::optional<Deckmedium> &medium, Art art)
{
    if (!medium)
        return {};
    const bool eigenes = !medium->inhalt.isEmpty(); // in the card itself
    const QString schluessel = (art == Art::Bild ? u'b' : u't') + medium->name;
    const auto schon = abgelegt_.constFind(schluessel);
    if (!eigenes && schon != abgelegt_.constEnd())
        return *schon;
    QString name = Wandeln(*medium, art);
    if (name.isEmpty())
        bericht_.Melden(Deckrest::MediumUnlesbar, eigenes ? karte_.frage.klar : medium->name);
    if (!eigenes)
        abgelegt_.insert(schluessel, name);
    return name;
}

QString Deckkarten::Wandeln(const Deckmedium &medium, Art art)
{
    const auto inhalt = medium.inhalt.isEmpty() ? quelle_.Medium(medium.name) : std::optional(medium.inhalt);
    const auto fertig = !inhalt            ? std::nullopt
                        : art == Art::Bild ? AlsKartenbild(*inhalt)
                                           : AlsKartenton(*inhalt);
    if (!fertig)
        return {};
    QString stamm = QFileInfo(medium.name).completeBaseName();
    if (!IsPlainName(stamm))
        stamm = art == Art::Bild ? u"Bild"_s : u"Ton"_s;
    return beilagen_.Machen(stamm + u'.' + fertig->endung,
                            [&](const QString &pfad) { WriteFileSynced(pfad, fertig->inhalt); });
}

// What Eintragen can fill; half of what a card has.
const std::vector<int> &Deckkarten::Columns() const
{
    static const std::vector<int> spalten = [] {
        std::vector<int> alle{CardColumnIndex(u"Antworttyp"), CardColumnIndex(u"Frage"),
                              CardColumnIndex(u"Frage_Klartext")};
        for (const int nummer : {1, 2, 6, 7, 9})
            alle.push_back(CardColumnIndex(u"Picture_%1_Name"_s.arg(nummer)));
        for (const QString &name : {u"Antwort_%1"_s, u"Antwort_%1_Klartext"_s, u"Antwort_ch_%1"_s})
            for (int nummer = 1; nummer <= 5; ++nummer)
                alle.push_back(CardColumnIndex(name.arg(nummer)));
        return alle;
    }();
    return spalten;
}

void Deckkarten::Read(int column, CopiedValue &value)
{
    const auto &member = CardColumns()[static_cast<std::size_t>(column)].member;
    value.kind = CopiedValue::Kind::Null;
    if (const auto *text = std::get_if<QString CardRecord::*>(&member)) {
        const QString &wert = satz_.**text;
        if (wert.isEmpty())
            return;
        const QByteArray utf8 = wert.toUtf8();
        value.text.assign(utf8.constData(), static_cast<std::size_t>(utf8.size()));
        value.kind = CopiedValue::Kind::Text;
    } else if (const auto *zahl = std::get_if<double CardRecord::*>(&member)) {
        if (satz_.**zahl == 0)
            return;
        value.number = satz_.**zahl;
        value.kind = CopiedValue::Kind::Number;
    } else {
        value.number = satz_.*std::get<bool CardRecord::*>(member) ? 1 : 0;
        value.kind = CopiedValue::Kind::Number;
    }
}

} // namespace paukfix
