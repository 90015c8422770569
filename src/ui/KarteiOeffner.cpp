// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "KarteiOeffner.h"

#include "DamagedCards.h"
#include "GivePageSums.h"
#include "JetConversion.h"
#include "Repair.h"
#include "SafeFile.h"
#include "Sicherungsstand.h"
#include "TextHelpers.h"
#include "Zeittext.h"
#include "Zurueckholen.h"

#include <QFileInfo>
#include <QLocale>

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

// What `tun` throws, or nothing.
template <typename Tun>
std::optional<StoreError> FehlerVon(Tun &&tun)
{
    try {
        tun();
        return std::nullopt;
    } catch (const StoreError &fehler) {
        return fehler;
    } catch (const std::exception &fehler) {
        return StoreError(Fehler::ZuWenigSpeicher, ErrorText(fehler));
    }
}

int Kartenzahl(const CardStore &kartei)
{
    return std::accumulate(kartei.FachInfo.begin(), kartei.FachInfo.end(), 0,
                           [](int summe, const Fach &fach) { return summe + fach.Anzahl; });
}

QString Zahl(int zahl)
{
    return QLocale(QLocale::German).toString(zahl);
}

} // namespace

KarteiOeffner::KarteiOeffner(CardStore &kartei, Meldungen &meldungen, const Clock &clock)
    : verzoegerung(clock), kartei_(kartei), meldungen_(meldungen), clock_(clock)
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

void KarteiOeffner::OpenCardFile(QString &fileName)
{
    const SanduhrAn sanduhr(meldungen_);
    meldungen_.SetTitel(u"Merkkasten"_s);
    kartei_.CloseCardFile();
    ResetBoxTable();
    Oeffnung oeffnung = Versuchen(fileName);
    if (oeffnung.ausgang == Ausgang::AltesFormat)
        oeffnung = Umwandeln(fileName, oeffnung);
    if (oeffnung.ausgang == Ausgang::Beschaedigt)
        oeffnung = Reparieren(fileName, oeffnung);
    if (oeffnung.ohnePruefsummen)
        oeffnung = PruefsummenGeben(fileName, oeffnung);
    if (oeffnung.ausgang != Ausgang::Offen) {
        BoxZeichnen();
        fileName.clear();
        meldungen_.Zeigen(oeffnung.fehler->Text() + u" Fcode: "_s +
                          QString::number(oeffnung.fehler->Number()));
        return;
    }
    meldungen_.SetTitel(u"Merkkasten (%1)"_s.arg(fileName));
    BoxZeichnen();
    // While the learner looks at the box: the first answer need not wait for the copy.
    Tagessicherung();
}

void KarteiOeffner::SichernMit(Sicherungen &sicherungen)
{
    sicherungen_ = &sicherungen;
    kartei_.VorAenderung = [this] { Tagessicherung(); };
}

void KarteiOeffner::Tagessicherung()
{
    if (sicherungen_ && kartei_.IsOpen())
        sicherungen_->VorAenderung(kartei_.OffenerPfad(), Kartenzahl(kartei_));
}

void KarteiOeffner::VorEingriff()
{
    if (sicherungen_ && kartei_.IsOpen())
        sicherungen_->VorEingriff(kartei_.OffenerPfad(), Kartenzahl(kartei_));
}

void KarteiOeffner::ResetBoxTable()
{
    kartei_.FachInfo.Leeren();
    kartei_.HighestCardNumber = 0;
    BoxZeichnen();
    verzoegerung.CalibrateDelayLoop();
}

Oeffnung KarteiOeffner::Versuchen(const QString &fileName)
{
    return Oeffnen(kartei_, fileName, clock_,
                   {.pruefung =
                        [this] {
                            return WartenZeigen(
                                u"Die Kartei wird geprüft."_s,
                                u"Die Prüfung wurde abgebrochen; die Kartei ist nicht geöffnet."_s);
                        },
                    .gezaehlt = [this] { BoxZeichnen(); }});
}

// Opens the file where the learner has it converted; else gives `oeffnung` back.
Oeffnung KarteiOeffner::Umwandeln(const QString &fileName, Oeffnung oeffnung)
{
    const QString path = kartei_.CardPath(fileName);
    if (meldungen_.Fragen(u"Die Kartei „%1“ hat noch das alte Dateiformat – soll sie umgewandelt werden (die "
                          u"alte Datei bleibt als „%2“ daneben erhalten)?"_s.arg(
                              QFileInfo(path).fileName(),
                              QFileInfo(ConversionNames(path).oldFile).fileName())) != Meldungen::Antwort::Ja)
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
    switch (RettungWaehlen(path, sicherung)) {
    case Rettung::Keine:
        return oeffnung;
    case Rettung::Sicherung:
        return Zurueckholen(fileName, *sicherung);
    case Rettung::Reparatur:
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
    if (!result.summary.isEmpty())
        meldungen_.Zeigen(result.summary);
    if (meldungen_.Waehlen(u"Datei wurde repariert"_s, {u"&OK"_s, u"&Bericht lesen"_s}, 0) == 1)
        BerichtZeigen(result.report);
    return Versuchen(fileName);
}

KarteiOeffner::Rettung KarteiOeffner::RettungWaehlen(const QString &path,
                                                     const std::optional<Sicherung> &sicherung)
{
    const QString frage = u"Diese Datei ist beschädigt Reparaturversuch ?"_s;
    if (!sicherung)
        return meldungen_.Fragen(frage) == Meldungen::Antwort::Ja ? Rettung::Reparatur : Rettung::Keine;
    QString reparatur = u"nichts zu retten"_s;
    FehlerVon([&] {
        const RepairOutlook aussicht = LookAtDamaged(
            path, WartenZeigen(u"Die Kartei wird geprüft."_s, u"Die Prüfung wurde abgebrochen."_s));
        if (aussicht.saved > 0)
            reparatur = u"%1 von %2 Karten"_s.arg(Zahl(aussicht.saved), Zahl(aussicht.known));
    });
    QString gesichert = u"beschädigt"_s;
    FehlerVon([&] { gesichert = Zahl(KarteiZaehlen(sicherung->datei).karten) + u" Karten"_s; });
    const QString wahl = u"%1\n\nReparatur: %2\nSicherung von %3: %4"_s.arg(
        frage, reparatur, ZeitText(sicherung->zeit, clock_.Now().date()), gesichert);
    constexpr qsizetype Abbruch = 1;
    switch (
        meldungen_.Waehlen(wahl, {u"&Ja, reparieren"_s, u"&Nein"_s, u"&Sicherung zurückholen"_s}, Abbruch)) {
    case 0:
        return Rettung::Reparatur;
    case 2:
        return Rettung::Sicherung;
    default:
        return Rettung::Keine;
    }
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

void KarteiOeffner::BerichtZeigen(const QString &datei)
{
    constexpr qint64 Laengster = 8 << 20; // bytes
    if (const auto fehler = FehlerVon([&] {
            meldungen_.Bericht(QFileInfo(datei).fileName(), TextFromUtf8(ReadFile(datei, Laengster)));
        }))
        meldungen_.Zeigen(fehler->Text());
}

// Gives the open file the sums of its pages where the learner agrees; else gives `oeffnung` back. Where that
// fails, the file is opened as it was.
Oeffnung KarteiOeffner::PruefsummenGeben(const QString &fileName, Oeffnung oeffnung)
{
    const QString path = kartei_.CardPath(fileName);
    const QString datei = QFileInfo(path).canonicalFilePath();
    if (ohnePruefsummen_.contains(datei))
        return oeffnung;
    ohnePruefsummen_.insert(datei);
    if (meldungen_.Fragen(
            u"Die Kartei „%1“ stammt von einer älteren Version und hat noch keine Prüfsummen, an "
            u"denen jede Beschädigung zu erkennen ist – soll sie welche bekommen (ältere Versionen "
            u"von Paukfix öffnen sie dann nicht mehr)?"_s.arg(QFileInfo(path).fileName())) !=
        Meldungen::Antwort::Ja)
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
