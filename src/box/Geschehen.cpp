// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Geschehen.h"

#include "CardRecordset.h"

#include <algorithm>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

QString Weg(const Bewegung &bewegung)
{
    const QString karte = u"Karte %1"_s.arg(bewegung.frageNr);
    if (!bewegung.nach)
        return karte + u" wurde gelöscht"_s;
    const QString urteil = bewegung.richtig ? u"Richtig: "_s : u"Falsch: "_s;
    if (bewegung.nach == FachErledigt)
        return urteil + karte + u" ist erledigt"_s;
    if (bewegung.nach == bewegung.von)
        return urteil + karte + u" bleibt in "_s + Fachname(bewegung.von);
    return urteil + karte + u" ging von %1 nach %2"_s.arg(Fachname(bewegung.von), Fachname(*bewegung.nach));
}

} // namespace

QString Fachname(int fach)
{
    return fach == FachNeu ? u"Neu"_s : fach == FachErledigt ? u"erledigt"_s : u"Fach %1"_s.arg(fach);
}

QString Geschehen(const Bewegung &bewegung, const FachTabelle &danach)
{
    const bool leer =
        bewegung.nach != bewegung.von && danach.at(static_cast<std::size_t>(bewegung.von)).Anzahl == 0;
    return Weg(bewegung) + (leer ? u" · %1 ist jetzt leer"_s.arg(Fachname(bewegung.von)) : QString());
}

QString GeschehenKurz(const Bewegung &bewegung)
{
    const QString karte = u"Karte %1: "_s.arg(bewegung.frageNr);
    if (!bewegung.nach)
        return karte + u"gelöscht"_s;
    return bewegung.nach == bewegung.von
               ? karte + u"bleibt in "_s + Fachname(bewegung.von)
               : karte + u"%1 → %2"_s.arg(Fachname(bewegung.von), Fachname(*bewegung.nach));
}

void Bilanz::Zaehlen(const Bewegung &bewegung, const Sitzung &sitzung)
{
    if (sitzung.Beginn() != beginn_)
        karten_.clear();
    beginn_ = sitzung.Beginn();
    if (!bewegung.nach) {
        karten_.remove(bewegung.frageNr);
        return;
    }
    const int anfangs = karten_.value(bewegung.frageNr, {bewegung.von, 0}).first;
    karten_.insert(bewegung.frageNr, {anfangs, *bewegung.nach});
}

void Bilanz::Nachsehen(CardRecordset &karten)
{
    const QString vorher = karten.Index();
    try {
        const Field fachNr = karten[u"FachNr"];
        karten.SetIndex(u"FrageNr");
        for (auto karte = karten_.begin(); karte != karten_.end();) {
            karten.Seek(CardRecordset::Comparison::Equal, karte.key());
            if (karten.NoMatch()) {
                karte = karten_.erase(karte);
            } else {
                karte->second = fachNr.Integer();
                ++karte;
            }
        }
        karten.SetIndex(vorher);
    } catch (const StoreError &) { // whoever reads next says what is wrong
        karten_.clear();
    }
}

QString Bilanz::Text(const Sitzung &sitzung) const
{
    if (sitzung.RichtigZaehler() == 0 && sitzung.FalschZaehler() == 0)
        return {};
    // A new card that was answered wrong stands in compartment 1, but has not moved up.
    const auto aufgestiegen =
        sitzung.Beginn() != beginn_ ? 0 : std::count_if(karten_.begin(), karten_.end(), [](const auto &fach) {
            return fach.second > std::max<int>(fach.first, FachFalsch);
        });
    return u"%1 richtig, %2 falsch, %3 aufgestiegen"_s.arg(sitzung.RichtigZaehler())
        .arg(sitzung.FalschZaehler())
        .arg(aufgestiegen);
}

QString Bilanz::Kurz(const Sitzung &sitzung)
{
    if (sitzung.RichtigZaehler() == 0 && sitzung.FalschZaehler() == 0)
        return {};
    return u"%1 richtig, %2 falsch"_s.arg(sitzung.RichtigZaehler()).arg(sitzung.FalschZaehler());
}

QString Bilanz::Seither(const Sitzung &sitzung, const QDate &heute)
{
    if (sitzung.RichtigZaehler() == 0 && sitzung.FalschZaehler() == 0)
        return {};
    const bool istHeute = sitzung.Beginn().date() == heute;
    return u"%1: %2 richtig, %3 falsch"_s
        .arg(sitzung.Beginn().toString(istHeute ? u"'heute seit 'H:mm"_s : u"'seit 'd.M., H:mm"_s))
        .arg(sitzung.RichtigZaehler())
        .arg(sitzung.FalschZaehler());
}

} // namespace paukfix
