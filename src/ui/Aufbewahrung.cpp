// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Aufbewahrung.h"

#include "FehlerVon.h"
#include "Fortsetzung.h"
#include "Karteititel.h"

#include <QFileInfo>

namespace paukfix {

using namespace Qt::StringLiterals;

Aufbewahrung::Aufbewahrung(CardStore &kartei, Meldungen &meldungen, Dialoge &dialoge)
    : kartei_(kartei), meldungen_(meldungen), dialoge_(dialoge)
{
}

bool Aufbewahrung::IstStoerung(const StoreError &fehler)
{
    switch (fehler.Number()) {
    case Fehler::Ueberlauf:
    case Fehler::IndexAusserhalb:
    case Fehler::TypUnvertraeglich:
    case Fehler::NullUngueltig:
    case Fehler::KeinEdit:
    case Fehler::KeinDatensatz:
    case Fehler::DoppelterSchluessel:
    case Fehler::TextZuLang:
    case Fehler::FeldFehlt:
        return false;
    default:
        return true;
    }
}

Aufbewahrung::Ausgang Aufbewahrung::Speichern(const Sache &sache)
{
    const auto fehler = FehlerVon(sache.speichern);
    if (!fehler)
        return Ausgang::Gespeichert;
    if (!IstStoerung(*fehler))
        throw *fehler;
    return Entscheiden(sache, *fehler);
}

Aufbewahrung::Ausgang Aufbewahrung::Entscheiden(const Sache &sache, const StoreError &fehler)
{
    constexpr qsizetype NochEinmal = 0, Sichern = 1, Verwerfen = 2, Vertagen = -1;
    QString pfad = kartei_.IsOpen() ? kartei_.OffenerPfad() : kartei_.CardPath(kartei_.CurrentFileName);
    const Sitzung sitzung = kartei_.sitzung; // a file that cannot be opened again would take it along
    QString was = sache.kontext + fehler.Text();
    for (;;) {
        sache.gescheitert();
        std::optional<StoreError> neuer;
        switch (meldungen_.Waehlen(u"%1\n\n%2 Was soll geschehen?"_s.arg(was, sache.trost),
                                   {u"&noch einmal"_s, u"&unter anderem Namen sichern"_s, u"&verwerfen"_s},
                                   sache.vertagbar ? Vertagen : NochEinmal)) {
        case NochEinmal:
            neuer = FehlerVon([&] {
                WiederOeffnen(kartei_, pfad, sitzung);
                sache.speichern();
            });
            break;
        case Sichern: {
            const QString ziel = ZielWaehlen();
            if (ziel.isEmpty())
                continue;
            if (const auto grund = FehlerVon([&] { Umziehen(ziel); })) {
                was = u"Die Kartei konnte nicht unter anderem Namen gesichert werden: "_s + grund->Text();
                continue;
            }
            pfad = kartei_.OffenerPfad();
            neuer = FehlerVon(sache.speichern);
            break;
        }
        case Verwerfen:
            return Ausgang::Verworfen;
        default:
            return Ausgang::Vertagt;
        }
        if (!neuer)
            return Ausgang::Gespeichert;
        was = sache.kontext + neuer->Text();
    }
}

// Empty where the learner has chosen none.
QString Aufbewahrung::ZielWaehlen()
{
    DateiDialog dialog = KarteiDialog(u"Kartei unter anderem Namen sichern"_s, kartei_.KarteiPfad);
    dialog.vorgabe = QFileInfo(kartei_.CurrentFileName).completeBaseName() + u" gesichert.pzb"_s;
    QString ziel = dialoge_.DateiSpeichern(dialog);
    if (ziel.isEmpty() || ziel.endsWith(u".pzb"_s, Qt::CaseInsensitive))
        return ziel;
    meldungen_.Zeigen(u"Bitte nur .pzb Dateien"_s);
    return {};
}

void Aufbewahrung::Umziehen(const QString &ziel)
{
    if (!kartei_.IsOpen())
        throw StoreError(Fehler::NichtsOffen, u"Sie lässt sich nicht mehr lesen. Sobald die Datei wieder zu "
                                              u"öffnen ist, hilft „noch einmal“."_s);
    meldungen_.Sanduhr(true);
    const auto fehler = FehlerVon([&] { paukfix::Umziehen(kartei_, ziel); });
    meldungen_.Sanduhr(false);
    if (fehler)
        throw *fehler;
    meldungen_.SetTitel(Karteititel(kartei_));
    umgezogen(ziel);
}

} // namespace paukfix
