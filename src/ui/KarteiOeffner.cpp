// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "KarteiOeffner.h"

#include "DamagedCards.h"
#include "FehlerVon.h"
#include "GivePageSums.h"
#include "JetConversion.h"
#include "Karteititel.h"
#include "Repair.h"
#include "Sicherungsstand.h"
#include "Zahltext.h"
#include "Zurueckholen.h"

#include <QFileInfo>

#include <numeric>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

using Ausgang = Oeffnung::Ausgang;

const QString Beschaedigt = u".beschädigt"_s; // behind the name of a damaged file that is kept

// The hourglass as long as it lives; the default pointer comes back whatever happens.
class SanduhrAn
{
public:
    explicit SanduhrAn(Meldungen &meldungen) : meldungen_(meldungen) { meldungen_.Sanduhr(true); }

    SanduhrAn(const SanduhrAn &) = delete;
    SanduhrAn &operator=(const SanduhrAn &) = delete;

    ~SanduhrAn() { meldungen_.Sanduhr(false); }

private:
    Meldungen &meldungen_;
};

int Kartenzahl(const CardStore &kartei)
{
    return std::accumulate(kartei.FachInfo.begin(), kartei.FachInfo.end(), 0,
                           [](int summe, const Fach &fach) { return summe + fach.Anzahl; });
}

} // namespace

KarteiOeffner::KarteiOeffner(CardStore &kartei, Meldungen &meldungen, const Clock &clock)
    : verzoegerung(clock), kartei_(kartei), meldungen_(meldungen), fragen_(meldungen), clock_(clock)
{
}

void KarteiOeffner::CreateCardFile(QString &fileName)
{
    if (fileName.isEmpty())
        return;
    const SanduhrAn sanduhr(meldungen_);
    KarteiAnlegen(kartei_, fileName);
    OpenCardFile(fileName);
}

void KarteiOeffner::OpenCardFile(QString &fileName, Vertrauen vertrauen)
{
    const SanduhrAn sanduhr(meldungen_);
    meldungen_.SetTitel(u"Merkkasten"_s);
    kartei_.CloseCardFile();
    ResetBoxTable();
    Oeffnung oeffnung = Versuchen(fileName, vertrauen);
    if (oeffnung.ausgang == Ausgang::AltesFormat)
        oeffnung = Umwandeln(fileName, oeffnung);
    if (oeffnung.ausgang == Ausgang::Beschaedigt)
        oeffnung = Reparieren(fileName, oeffnung);
    if (oeffnung.ohnePruefsummen)
        oeffnung = PruefsummenGeben(fileName, oeffnung);
    if (oeffnung.ausgang != Ausgang::Offen) {
        Scheitern(*oeffnung.fehler);
        if (!IstAnsehbar(kartei_, fileName, *oeffnung.fehler) ||
            !fragen_.Ansehen(kartei_.CardPath(fileName))) {
            fileName.clear();
            return;
        }
        oeffnung = ZumAnsehenOeffnen(kartei_, fileName, clock_, Melder());
    }
    if (oeffnung.ausgang != Ausgang::Offen) {
        Scheitern(*oeffnung.fehler);
        fileName.clear();
        return;
    }
    meldungen_.SetTitel(Karteititel(kartei_));
    BoxZeichnen();
    if (oeffnung.unfertig)
        meldungen_.Zeigen(
            u"Ein anderes Programm hat eine Änderung an der Datei „%1“ nicht abgeschlossen. "
            u"Gezeigt wird der Stand davor; an der Datei wurde nichts geändert."_s.arg(fileName));
    // While the learner looks at the box: the first answer need not wait for the copy.
    Tagessicherung();
}

// Nothing is open; why, is told.
void KarteiOeffner::Scheitern(const StoreError &fehler)
{
    BoxZeichnen();
    meldungen_.Zeigen(fehler.Text() + u" Fcode: "_s + QString::number(fehler.Number()));
}

void KarteiOeffner::SichernMit(Sicherungen &sicherungen)
{
    sicherungen_ = &sicherungen;
    kartei_.VorAenderung = [this] { Tagessicherung(); };
}

void KarteiOeffner::Tagessicherung()
{
    if (sicherungen_ && kartei_.IsOpen() && !kartei_.NurAnsehen())
        sicherungen_->VorAenderung(kartei_.OffenerPfad(), Kartenzahl(kartei_));
}

void KarteiOeffner::VorEingriff()
{
    if (sicherungen_ && kartei_.IsOpen() && !kartei_.NurAnsehen())
        sicherungen_->VorEingriff(kartei_.OffenerPfad(), Kartenzahl(kartei_));
}

void KarteiOeffner::ResetBoxTable()
{
    kartei_.FachInfo.Leeren();
    kartei_.HighestCardNumber = 0;
    BoxZeichnen();
    verzoegerung.CalibrateDelayLoop();
}

Oeffnungsmelder KarteiOeffner::Melder()
{
    return {.pruefung =
                [this] {
                    return WartenZeigen(u"Die Kartei wird geprüft."_s,
                                        u"Die Prüfung wurde abgebrochen; die Kartei ist nicht geöffnet."_s);
                },
            .gezaehlt = [this] { BoxZeichnen(); }};
}

Oeffnung KarteiOeffner::Versuchen(const QString &fileName, Vertrauen vertrauen)
{
    return Oeffnen(kartei_, fileName, clock_, Melder(), vertrauen);
}

// Opens the file where the learner has it converted; else gives `oeffnung` back.
Oeffnung KarteiOeffner::Umwandeln(const QString &fileName, Oeffnung oeffnung)
{
    const QString path = kartei_.CardPath(fileName);
    if (!fragen_.Umwandeln(path))
        return oeffnung;
    if (sicherungen_)
        sicherungen_->Aufheben(path, u".altes-Format"_s);
    QString report;
    if (const auto fehler = FehlerVon([&] { report = ConvertJetFile(path); }))
        return {Ausgang::Gescheitert, fehler};
    if (!report.isEmpty())
        meldungen_.Zeigen(u"Nicht jede Karte ließ sich unverändert übernehmen. Was geändert wurde, "
                          u"steht in „%1“."_s.arg(QFileInfo(report).fileName()));
    return Versuchen(fileName);
}

// Opens the file where the learner has it repaired, or has a backup take its place; else gives `oeffnung`
// back.
Oeffnung KarteiOeffner::Reparieren(const QString &fileName, Oeffnung oeffnung)
{
    const QString path = kartei_.CardPath(fileName);
    const auto sicherung = sicherungen_ ? sicherungen_->NeuesteGute(path) : std::nullopt;
    switch (fragen_.Retten(sicherung ? std::optional(Aussicht(path, *sicherung)) : std::nullopt,
                           clock_.Now().date())) {
    case Oeffnungsfragen::Rettung::Keine:
        return oeffnung;
    case Oeffnungsfragen::Rettung::Sicherung:
        return Zurueckholen(fileName, *sicherung);
    case Oeffnungsfragen::Rettung::Reparatur:
        break;
    }
    if (sicherungen_)
        sicherungen_->Aufheben(path, Beschaedigt);
    RepairResult result;
    const auto fehler = FehlerVon([&] {
        result =
            RepairDatabase(path, WartenZeigen(u"Die Kartei wird repariert."_s,
                                              u"Die Reparatur wurde abgebrochen; an der Datei wurde nichts "
                                              u"geändert."_s));
    });
    if (fehler) {
        if (fehler->Number() != Fehler::Abgebrochen)
            meldungen_.Zeigen(u"Datei kann nicht repariert werden !"_s);
        return {Ausgang::Gescheitert, fehler};
    }
    fragen_.Repariert(result.summary, result.report);
    return Versuchen(fileName);
}

Oeffnungsfragen::Aussicht KarteiOeffner::Aussicht(const QString &path, const Sicherung &sicherung)
{
    Oeffnungsfragen::Aussicht aussicht{u"nichts zu retten"_s, u"beschädigt"_s, sicherung.zeit};
    int gerettet = 0;
    FehlerVon([&] {
        const RepairOutlook rettbar = LookAtDamaged(
            path, WartenZeigen(u"Die Kartei wird geprüft."_s, u"Die Prüfung wurde abgebrochen."_s));
        gerettet = rettbar.saved;
        if (rettbar.saved > 0)
            aussicht.reparatur = u"%1 von %2 Karten"_s.arg(Zahltext(rettbar.saved), Zahltext(rettbar.known));
    });
    FehlerVon([&] {
        const int gesichert = KarteiZaehlen(sicherung.datei).karten;
        aussicht.sicherung = Zahltext(gesichert) + u" Karten"_s;
        aussicht.sicherungHatMehr = gesichert > gerettet;
    });
    return aussicht;
}

// The damaged file is kept among the backups.
Oeffnung KarteiOeffner::Zurueckholen(const QString &fileName, const Sicherung &sicherung)
{
    const QString path = kartei_.CardPath(fileName);
    if (!sicherungen_->Aufheben(path, Beschaedigt))
        return {Ausgang::Gescheitert,
                StoreError(Fehler::DatentraegerVoll,
                           u"Die beschädigte Datei konnte nicht aufgehoben werden; an ihr wurde nichts "
                           u"geändert."_s)};
    if (const auto fehler = FehlerVon([&] { paukfix::Zurueckholen(kartei_, sicherung.datei, path); }))
        return {Ausgang::Gescheitert, fehler};
    return Versuchen(fileName);
}

// Gives the open file the sums of its pages where the learner agrees; else gives `oeffnung` back. Where that
// fails, the file is opened as it was.
Oeffnung KarteiOeffner::PruefsummenGeben(const QString &fileName, Oeffnung oeffnung)
{
    const QString path = kartei_.CardPath(fileName);
    if (!fragen_.PruefsummenGeben(path))
        return oeffnung;
    VorEingriff();
    kartei_.CloseCardFile();
    const auto fehler = FehlerVon([&] {
        GivePageSums(path, WartenZeigen(u"Die Kartei bekommt Prüfsummen."_s,
                                        u"Das wurde abgebrochen; an der Datei wurde nichts geändert."_s));
    });
    if (fehler)
        meldungen_.Zeigen(fehler->Text() + u" Die Kartei bleibt ohne Prüfsummen."_s);
    return Versuchen(fileName);
}

} // namespace paukfix
