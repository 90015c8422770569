// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "KarteiOeffner.h"

#include "JetConversion.h"
#include "Repair.h"

#include <QFileInfo>

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

KarteiOeffner::KarteiOeffner(CardStore &kartei, Meldungen &meldungen, const Uhr &uhr)
    : verzoegerung(uhr), kartei_(kartei), meldungen_(meldungen), uhr_(uhr)
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
    meldungen_.SetTitel(QStringLiteral("Merkkasten"));
    kartei_.CloseCardFile();
    ResetBoxTable();
    Oeffnung oeffnung = Versuchen(fileName);
    if (oeffnung.ausgang == Ausgang::AltesFormat)
        oeffnung = Umwandeln(fileName, oeffnung);
    if (oeffnung.ausgang == Ausgang::Beschaedigt)
        oeffnung = Reparieren(fileName, oeffnung);
    if (oeffnung.ausgang != Ausgang::Offen) {
        BoxZeichnen();
        fileName.clear();
        meldungen_.Zeigen(oeffnung.fehler->Text() + QStringLiteral(" Fcode: ") +
                          QString::number(oeffnung.fehler->Number()));
        return;
    }
    meldungen_.SetTitel(QStringLiteral("Merkkasten (%1)").arg(fileName));
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
    return Oeffnen(
        kartei_, fileName, uhr_,
        {.pruefung =
             [this] {
                 return WartenZeigen(
                     QStringLiteral("Die Kartei wird geprüft."),
                     QStringLiteral("Die Prüfung wurde abgebrochen; die Kartei ist nicht geöffnet."));
             },
         .gezaehlt = [this] { BoxZeichnen(); }});
}

// Opens the file where the learner has it converted; else gives `oeffnung` back.
Oeffnung KarteiOeffner::Umwandeln(const QString &fileName, Oeffnung oeffnung)
{
    const QString path = kartei_.CardPath(fileName);
    if (meldungen_.Fragen(
            QStringLiteral("Die Kartei „%1“ hat noch das alte Dateiformat – soll sie umgewandelt werden (die "
                           "alte Datei bleibt als „%2“ daneben erhalten)?")
                .arg(QFileInfo(path).fileName(), QFileInfo(ConversionNames(path).oldFile).fileName())) !=
        Meldungen::Antwort::Ja)
        return oeffnung;
    QString report;
    if (const auto fehler = FehlerVon([&] { report = ConvertJetFile(path); }))
        return {Ausgang::Gescheitert, fehler};
    if (!report.isEmpty())
        meldungen_.Zeigen(
            QStringLiteral("Nicht jede Karte ließ sich unverändert übernehmen. Was geändert wurde, "
                           "steht in „%1“.")
                .arg(QFileInfo(report).fileName()));
    return Versuchen(fileName);
}

// Opens the file where the learner has it repaired; else gives `oeffnung` back.
Oeffnung KarteiOeffner::Reparieren(const QString &fileName, Oeffnung oeffnung)
{
    if (meldungen_.Fragen(QStringLiteral("Diese Datei ist beschädigt Reparaturversuch ?")) !=
        Meldungen::Antwort::Ja)
        return oeffnung;
    RepairResult result;
    const auto fehler = FehlerVon([&] {
        result = RepairDatabase(
            kartei_.CardPath(fileName),
            WartenZeigen(QStringLiteral("Die Kartei wird repariert."),
                         QStringLiteral("Die Reparatur wurde abgebrochen; an der Datei wurde nichts "
                                        "geändert.")));
    });
    if (fehler) {
        if (fehler->Number() != Fehler::Abgebrochen)
            meldungen_.Zeigen(QStringLiteral("Datei kann nicht repariert werden !"));
        return {Ausgang::Gescheitert, fehler};
    }
    if (!result.summary.isEmpty())
        meldungen_.Zeigen(result.summary);
    meldungen_.Zeigen(QStringLiteral("Datei wurde repariert"));
    return Versuchen(fileName);
}
