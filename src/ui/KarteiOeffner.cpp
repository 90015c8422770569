// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "KarteiOeffner.h"

#include "GivePageSums.h"
#include "JetConversion.h"
#include "Repair.h"

#include <QFileInfo>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

using Ausgang = Oeffnung::Ausgang;

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
    QString report;
    if (const auto fehler = FehlerVon([&] { report = ConvertJetFile(path); }))
        return {Ausgang::Gescheitert, fehler};
    if (!report.isEmpty())
        meldungen_.Zeigen(u"Nicht jede Karte ließ sich unverändert übernehmen. Was geändert wurde, "
                          u"steht in „%1“."_s.arg(QFileInfo(report).fileName()));
    return Versuchen(fileName);
}

// Opens the file where the learner has it repaired; else gives `oeffnung` back.
Oeffnung KarteiOeffner::Reparieren(const QString &fileName, Oeffnung oeffnung)
{
    if (meldungen_.Fragen(u"Diese Datei ist beschädigt Reparaturversuch ?"_s) != Meldungen::Antwort::Ja)
        return oeffnung;
    RepairResult result;
    const auto fehler = FehlerVon([&] {
        result = RepairDatabase(kartei_.CardPath(fileName),
                                WartenZeigen(u"Die Kartei wird repariert."_s,
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
    meldungen_.Zeigen(u"Datei wurde repariert"_s);
    return Versuchen(fileName);
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
