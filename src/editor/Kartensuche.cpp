// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Kartensuche.h"

#include <QTextDocument>

#include <algorithm>
#include <cmath>
#include <optional>

namespace paukfix {

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

// Letters that no other character but their own capital folds to; "k" and "s" are not (Kelvin sign, long s).
bool NurAscii(QChar c)
{
    return c.unicode() < 0x80 && c != u'k' && c != u's';
}

// A term that is looked for without regard to letter case. Most texts of a large box do not hold it: they are
// sorted out by its longest plain part, byte by byte, before any text is decoded.
class Suchmuster
{
public:
    explicit Suchmuster(const QString &begriff) : begriff_(begriff)
    {
        QString gefaltet = begriff;
        for (QChar &c : gefaltet)
            c = c.toCaseFolded(); // one for one, as the comparison does
        for (auto anfang = gefaltet.begin(); anfang != gefaltet.end();) {
            const auto ende = std::find_if_not(anfang, gefaltet.end(), NurAscii);
            if (ende - anfang > kern_.size())
                kern_ = QString(anfang, ende - anfang).toLatin1();
            anfang = ende == gefaltet.end() ? ende : ende + 1;
        }
        sprung_.fill(kern_.size());
        for (qsizetype i = 0; i + 1 < kern_.size(); ++i)
            sprung_[static_cast<uchar>(kern_[i])] = kern_.size() - 1 - i;
    }

    // Where the term first occurs, in characters, -1 where it does not.
    qsizetype IndexIn(QByteArrayView utf8) const
    {
        if (!kern_.isEmpty() && !HatKern(utf8))
            return -1;
        return QString::fromUtf8(utf8).indexOf(begriff_, 0, Qt::CaseInsensitive);
    }

private:
    static uchar Klein(char byte)
    {
        return static_cast<uchar>(byte >= 'A' && byte <= 'Z' ? byte - 'A' + 'a' : byte);
    }

    bool HatKern(QByteArrayView utf8) const
    {
        const qsizetype laenge = kern_.size();
        for (qsizetype anfang = 0; anfang + laenge <= utf8.size();) {
            const uchar letztes = Klein(utf8[anfang + laenge - 1]);
            if (letztes == static_cast<uchar>(kern_.back()) &&
                std::equal(kern_.begin(), kern_.end(), utf8.begin() + anfang,
                           [](char kern, char byte) { return static_cast<uchar>(kern) == Klein(byte); }))
                return true;
            anfang += sprung_[letztes];
        }
        return false;
    }

    QString begriff_;
    QByteArray kern_;
    std::array<qsizetype, 256> sprung_{}; // by the byte that stands under the end of kern_
};

class Suchgang
{
public:
    Suchgang(CardStore &kartei, SearchHit &treffer, const QString &begriff)
        : karten_(kartei.Karten()), felder_(kartei.Felder()), treffer_(treffer), muster_(begriff)
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
        for (std::size_t i = 1; i < FeldAntwort.size(); ++i)
            if (ImFeld(felder_.Antwort_Klartext[i], FeldAntwort[i]))
                return true;
        return false;
    }

    bool ZumAnkreuzen() const
    {
        try {
            return std::nearbyint(felder_.Antworttyp.Value().toDouble()) == 2;
        } catch (const StoreError &) {
            return false;
        }
    }

    bool ImFeld(const Field &feld, const Suchfeld &suchfeld)
    {
        qsizetype stelle = -1;
        try {
            stelle = muster_.IndexIn(feld.Utf8());
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
    Suchmuster muster_;
};

} // namespace

Suchergebnis KarteSuchen(CardStore &kartei, SearchHit &treffer, const QString &begriff)
{
    const CardRecordset &karten = kartei.Karten();
    if (karten.AtBOF() && karten.AtEOF())
        return Suchergebnis::OhneKarten;
    if (begriff.isEmpty())
        return Suchergebnis::NichtGefunden;
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

} // namespace paukfix
