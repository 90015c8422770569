// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Kartensuche.h"

#include <QStringMatcher>
#include <QTextDocument>

#include <cmath>
#include <optional>

namespace {

struct Suchfeld
{
    double code;
    qint16 nummer;
};

constexpr Suchfeld FeldThema{10'000'000, 1};
constexpr Suchfeld FeldFrage{20'000'000, 2};
// Answer 5 carries the code of answer 4.
constexpr std::array<Suchfeld, 5> FeldAntwort{
    {{70'000'000, 7}, {80'000'000, 8}, {90'000'000, 9}, {100'000'000, 10}, {100'000'000, 11}}};

class Suchgang
{
public:
    Suchgang(CardStore &kartei, SearchHit &treffer, const QString &begriff)
        : karten_(kartei.Karten()),
          felder_(kartei.Felder()),
          treffer_(treffer),
          muster_(begriff, Qt::CaseInsensitive)
    {
    }

    bool Suchen()
    {
        if (karten_.AtBOF())
            karten_.MoveNext();
        const std::optional<double> start = Marke();
        treffer_.feld = 0;
        treffer_.position = 0;
        // From behind the last card the walk begins with the first one.
        if (!start)
            VonVorn();
        while (!AufKarteGefunden()) {
            karten_.MoveNext();
            if (Marke() == start)
                return false;
            if (karten_.AtEOF()) {
                VonVorn();
                if (Marke() == start)
                    return false;
            }
        }
        return true;
    }

private:
    // What tells where the walk began: the card's number, nothing past the last card.
    std::optional<double> Marke() const
    {
        if (karten_.AtEOF())
            return std::nullopt;
        return felder_.FrageNr.Number();
    }

    void VonVorn()
    {
        treffer_.letzterSchluessel = 0;
        karten_.MoveFirst();
    }

    bool AufKarteGefunden()
    {
        if (ImFeld(felder_.Picture_name[8], FeldThema) || ImFeld(felder_.Frage_Klartext, FeldFrage) ||
            ImFeld(felder_.Antwort_Klartext[0], FeldAntwort[0]))
            return true;
        if (!ZumAnkreuzen())
            return false;
        for (std::size_t i = 1; i < FeldAntwort.size(); ++i) {
            if (ImFeld(felder_.Antwort_Klartext[i], FeldAntwort[i]))
                return true;
        }
        return false;
    }

    bool ZumAnkreuzen() const
    {
        try {
            return !felder_.Antworttyp.IsNull() && std::nearbyint(felder_.Antworttyp.Number()) == 2;
        } catch (const StoreError &) {
            return false;
        }
    }

    bool ImFeld(const Field &feld, const Suchfeld &suchfeld)
    {
        qsizetype stelle = -1;
        try {
            stelle = muster_.indexIn(feld.Text());
        } catch (const StoreError &) {
            return false;
        }
        if (stelle < 0)
            return false;
        const double nummer = felder_.FrageNr.Number();
        const auto position = static_cast<double>(stelle) + 1;
        const double schluessel = nummer * 1e12 + suchfeld.code + position * 1e5;
        if (!(schluessel > treffer_.letzterSchluessel))
            return false;
        treffer_.letzterSchluessel = schluessel;
        treffer_.position = position;
        treffer_.feld = suchfeld.nummer;
        treffer_.FrageNr = nummer;
        return true;
    }

    CardRecordset &karten_;
    const CardFieldHandles &felder_;
    SearchHit &treffer_;
    QStringMatcher muster_;
};

} // namespace

Suchergebnis KarteSuchen(CardStore &kartei, SearchHit &treffer, const QString &begriff)
{
    const CardRecordset &karten = kartei.Karten();
    if (karten.AtBOF() && karten.AtEOF())
        return Suchergebnis::OhneKarten;
    return Suchgang(kartei, treffer, begriff).Suchen() ? Suchergebnis::Gefunden : Suchergebnis::NichtGefunden;
}

int DokumentStelle(const QTextDocument &dokument, qsizetype stelle)
{
    const QString roh = dokument.toRawText();
    qsizetype text = 0;
    qsizetype ort = 0;
    while (ort < roh.size() && text < stelle) {
        const QChar c = roh[ort++];
        if (c == QChar::ParagraphSeparator || c == QChar::LineSeparator || c == u'\uFDD0' || c == u'\uFDD1')
            text += 2;
        else if (c != QChar::ObjectReplacementCharacter)
            ++text;
    }
    return static_cast<int>(ort);
}
