// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Oeffnungsfragen.h"

#include "FehlerVon.h"
#include "JetConversion.h"
#include "SafeFile.h"
#include "TextHelpers.h"
#include "Zeittext.h"

#include <QFileInfo>

#include <algorithm>
#include <array>

namespace paukfix {

using namespace Qt::StringLiterals;

bool Oeffnungsfragen::Umwandeln(const QString &pfad)
{
    return meldungen_.Fragen(
               u"Die Kartei „%1“ hat noch das alte Dateiformat – soll sie umgewandelt werden (die "
               u"alte Datei bleibt als „%2“ daneben erhalten)?"_s.arg(
                   QFileInfo(pfad).fileName(), QFileInfo(ConversionNames(pfad).oldFile).fileName())) ==
           Meldungen::Antwort::Ja;
}

Oeffnungsfragen::Rettung Oeffnungsfragen::Retten(const std::optional<Aussicht> &aussicht, const QDate &heute)
{
    const QString frage = u"Diese Datei ist beschädigt Reparaturversuch ?"_s;
    if (!aussicht)
        return meldungen_.Fragen(frage) == Meldungen::Antwort::Ja ? Rettung::Reparatur : Rettung::Keine;
    const QString wahl = u"%1\n\nReparatur: %2\n%3: %4"_s.arg(
        frage, aussicht->reparatur, SicherungVon(aussicht->gesichert, heute), aussicht->sicherung);
    // The first one leads and answers Enter: what brings back most.
    QStringList knoepfe{u"&Ja, reparieren"_s, u"&Nein"_s, u"&Sicherung zurückholen"_s};
    std::array folge{Rettung::Reparatur, Rettung::Keine, Rettung::Sicherung};
    if (aussicht->sicherungHatMehr) {
        std::ranges::reverse(knoepfe);
        std::ranges::reverse(folge);
    }
    constexpr qsizetype Abbruch = 1;
    return folge.at(static_cast<std::size_t>(meldungen_.Waehlen(wahl, knoepfe, Abbruch)));
}

void Oeffnungsfragen::Repariert(const QString &ergebnis, const QString &bericht)
{
    if (!ergebnis.isEmpty())
        meldungen_.Zeigen(ergebnis);
    if (meldungen_.Waehlen(u"Datei wurde repariert"_s, {u"&OK"_s, u"&Bericht lesen"_s}, 0) == 1)
        BerichtZeigen(bericht);
}

void Oeffnungsfragen::BerichtZeigen(const QString &datei)
{
    constexpr qint64 Laengster = 8 << 20; // bytes
    if (const auto fehler = FehlerVon([&] {
            meldungen_.Bericht(QFileInfo(datei).fileName(), TextFromUtf8(ReadFile(datei, Laengster)));
        }))
        meldungen_.Zeigen(fehler->Text());
}

bool Oeffnungsfragen::PruefsummenGeben(const QString &pfad)
{
    const QString datei = QFileInfo(pfad).canonicalFilePath();
    if (ohnePruefsummen_.contains(datei))
        return false;
    ohnePruefsummen_.insert(datei);
    return meldungen_.Fragen(
               u"Die Kartei „%1“ stammt von einer älteren Version und hat noch keine Prüfsummen, an "
               u"denen jede Beschädigung zu erkennen ist – soll sie welche bekommen (ältere Versionen "
               u"von Paukfix öffnen sie dann nicht mehr)?"_s.arg(QFileInfo(pfad).fileName())) ==
           Meldungen::Antwort::Ja;
}

bool Oeffnungsfragen::Ansehen(const QString &pfad)
{
    return meldungen_.Fragen(
               u"Soll die Kartei „%1“ nur zum Ansehen geöffnet werden? Sie zeigt dann, was jetzt in der "
               u"Datei steht; Karten werden nicht abgefragt, und nichts wird geändert."_s.arg(
                   QFileInfo(pfad).fileName())) == Meldungen::Antwort::Ja;
}

} // namespace paukfix
