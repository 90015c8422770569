// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Deckkarten.h"

#include "CardRecord.h"
#include "PlainName.h"
#include "SafeFile.h"
#include "Tonwandlung.h"

#include <QFileInfo>
#include <QStringEncoder>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr double Getippt = 1;
constexpr double Angekreuzt = 2;

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
    Setzen(Typ, AntworttypVon(karte_));
    Setzen(Frage, karte_.frage.reich);
    Setzen(FrageKlar, karte_.frage.klar);
    for (std::size_t i = 0; i < 5; ++i) {
        static const Deckkarte::Antwort Keine{.text = {}, .richtig = false};
        const Deckkarte::Antwort &antwort = i < karte_.antworten.size() ? karte_.antworten[i] : Keine;
        Setzen(ErsteAntwort + i, antwort.text.reich);
        Setzen(ErsteAntwortKlar + i, antwort.text.klar);
        Setzen(ErstesKreuz + i, karte_.ankreuzen && antwort.richtig ? 1 : 0);
    }
    Setzen(FrageBild, Ablegen(karte_.frageBild, Art::Bild));
    Setzen(AntwortBild, Ablegen(karte_.antwortBild, Art::Bild));
    Setzen(FrageTon, Ablegen(karte_.frageTon, Art::Ton));
    Setzen(AntwortTon, Ablegen(karte_.antwortTon, Art::Ton));
    Setzen(KartenThema, Thema());
}

void Deckkarten::Setzen(std::size_t platz, const QString &text)
{
    CopiedValue &wert = werte_.at(platz);
    wert.kind = text.isEmpty() ? CopiedValue::Kind::Null : CopiedValue::Kind::Text;
    if (text.isEmpty())
        return;
    QStringEncoder utf8(QStringEncoder::Utf8, QStringEncoder::Flag::Stateless);
    puffer_.resize(utf8.requiredSpace(text.size()));
    char *anfang = puffer_.data();
    wert.text.assign(anfang, utf8.appendToBuffer(anfang, text));
}

void Deckkarten::Setzen(std::size_t platz, double zahl)
{
    CopiedValue &wert = werte_.at(platz);
    wert.kind = CopiedValue::Kind::Number;
    wert.number = zahl;
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
    static const auto plaetze = [this] {
        std::array<std::size_t, CardColumnCount> alle{};
        for (std::size_t platz = 0; platz < Plaetze; ++platz)
            alle.at(static_cast<std::size_t>(Columns().at(platz))) = platz;
        return alle;
    }();
    value = werte_.at(plaetze.at(static_cast<std::size_t>(column)));
}

} // namespace paukfix
