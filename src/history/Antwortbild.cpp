// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Diagramm.h"
#include "Farben.h"
#include "Hausfarben.h"

#include <QPainter>

#include <algorithm>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

const QString Keine = u"In dieser Zeit wurde noch keine Frage beantwortet."_s;

// The answers of some days, which one bar shows.
struct Balken
{
    int von = 0, bis = 0; // days; `bis` is the day behind the last
    int richtig = 0, falsch = 0;
};

// The last bar ends today, the first one may be short of days.
std::vector<Balken> Zusammenzaehlen(const Verlaufswerte &werte, int tageJe)
{
    const int tage = static_cast<int>(werte.tage.size());
    std::vector<Balken> alle;
    for (int bis = tage; bis > 0; bis -= tageJe) {
        Balken balken{.von = std::max(0, bis - tageJe), .bis = bis};
        for (int tag = balken.von; tag < bis; ++tag)
            if (const auto &stand = werte.tage[static_cast<std::size_t>(tag)]) {
                balken.richtig += stand->richtig;
                balken.falsch += stand->falsch;
            }
        alle.push_back(balken);
    }
    return alle;
}

} // namespace

QString Antwortbild::Titel() const
{
    const int tageJe = Tage().TageJeBalken();
    return tageJe == 1 ? u"Antworten am Tag"_s : u"Antworten in je %1 Tagen"_s.arg(tageJe);
}

QString Antwortbild::InWorten() const
{
    const bool keine = std::ranges::none_of(
        Werte().tage, [](const auto &stand) { return stand && stand->richtig + stand->falsch > 0; });
    return (keine ? Keine + u' ' : QString()) + AntwortenInWorten(Werte());
}

QString Antwortbild::TagInWorten(int tag) const
{
    const auto &stand = Werte().tage[static_cast<std::size_t>(tag)];
    return u"%1: %2 richtig, %3 falsch"_s.arg(Tagname(Werte().von.addDays(tag), Werte().heute))
        .arg(stand ? stand->richtig : 0)
        .arg(stand ? stand->falsch : 0);
}

void Antwortbild::Malen(QPainter &maler, const QRectF &feld) const
{
    const Hausfarben &farben = Farbsatz();
    const std::vector<Balken> alle = Zusammenzaehlen(Werte(), Tage().TageJeBalken());
    const int richtig = std::ranges::max(alle, {}, &Balken::richtig).richtig;
    const int falsch = std::ranges::max(alle, {}, &Balken::falsch).falsch;
    if (richtig + falsch == 0) {
        maler.setPen(farben.leiseTinte);
        maler.drawText(feld, Qt::AlignCenter | Qt::TextWordWrap, Keine);
        return;
    }
    const Wertachse achse = Wertachse::Fuer(richtig, falsch, MeisteMarken(feld));
    SkalaMalen(maler, feld, achse);

    const double null = achse.Y(0, feld);
    maler.setPen(Qt::NoPen);
    for (const Balken &balken : alle) {
        const double links = Tage().X(balken.von, feld);
        const double platz = Tage().X(balken.bis, feld) - links;
        const double breite = std::max(1.0, platz * 0.68);
        const double ecke = breite > 6 ? 2 : 0;
        const auto saeule = [&](int anzahl, const QColor &farbe) {
            if (anzahl == 0)
                return;
            // A single answer among hundreds is still to be seen.
            double hoehe = null - achse.Y(anzahl, feld);
            hoehe = hoehe > 0 ? std::max(2.0, hoehe) : std::min(-2.0, hoehe);
            maler.setBrush(farbe);
            maler.drawRoundedRect(
                QRectF(links + (platz - breite) / 2, null - hoehe, breite, hoehe).normalized(), ecke, ecke);
        };
        saeule(balken.richtig, farben.faecher[FachErledigt]);
        saeule(-balken.falsch, farben.faecher[FachFalsch]);
    }
    maler.setPen(QPen(farben.umriss, 1.5));
    maler.drawLine(QPointF(feld.left(), null), QPointF(feld.right(), null));

    // Today's, each on its side of the line.
    const Balken &heute = alle.front();
    const double halb = QFontMetricsF(maler.font()).height() / 2;
    QFont fett = maler.font();
    fett.setWeight(QFont::DemiBold);
    maler.setFont(fett);
    NameMalen(maler, feld, std::min(null - halb, achse.Y(heute.richtig / 2.0, feld)),
              u"%1 richtig"_s.arg(heute.richtig), Farben::Lesbar(farben.richtigText, farben.karte));
    NameMalen(maler, feld, std::max(null + halb, achse.Y(-heute.falsch / 2.0, feld)),
              u"%1 falsch"_s.arg(heute.falsch), Farben::Lesbar(farben.falschText, farben.karte));
    fett.setWeight(QFont::Normal);
    maler.setFont(fett);
}

} // namespace paukfix
