// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "AExport.h"

#include "AsciiTausch.h"
#include "CardFacts.h"

#include <QComboBox>
#include <QLineEdit>

namespace paukfix {

using namespace Qt::StringLiterals;

AExport::AExport(KarteiOeffner &oeffner, const Dienste &dienste, QWidget *parent)
    : Werkzeugfenster(oeffner, dienste, u"AExport"_s, u"ASCII-Export"_s, u"ASCII - Export"_s, parent)
{
    Erklaeren({u"Durch diese Funktion werden alle einfachen Fragen in eine ASCII-Datei ausgegeben "
               u"(Keine Ankreuzfragen und keine Bilder). "_s,
               u"Diese ASCII-Datei kann dann von anderen Programmen (z.B. MS-Excel oder "
               u"MS-Word-Serienbriefmanager) importiert werden. "_s});
    cmbTrennzeichen_ = TrennzeichenBauen();
    lblDateiname_ = DateinameBauen({}, [this] { cmdDateiname_Click(); });
    HinweisBauen(u"Hinweis: Für MS-Excel sollten Sie <Tab> als Trennzeichen benutzen. "
                 u"Für MS-Word Semikolon (;)."_s);
    Step(dienste.meldungen, FehlerKontext(), [this] {
        const CardKinds arten = KindsOfCards(Store().Karten());
        QString text = KartenText(arten.typed);
        if (arten.typedWithMedia > 0)
            text += u", %1 davon ohne Bild und Ton"_s.arg(arten.typedWithMedia);
        if (arten.others > 0)
            text += u"; %1 zum Ankreuzen %2 aus"_s.arg(arten.others)
                        .arg(arten.others == 1 ? u"bleibt"_s : u"bleiben"_s);
        VorhabenZeigen(text + u'.');
    });
    KnoepfeBauen([this] { cmdOK_Click(); });
}

void AExport::cmdDateiname_Click()
{
    lblDateiname_->setText(Ziel().Waehlen(TextdateiDialog(u"ASCII export"_s, Store().KarteiPfad, u"txt"_s)));
}

void AExport::cmdOK_Click()
{
    const auto trennzeichen = Trennzeichen(Dienst().meldungen, cmbTrennzeichen_->currentText());
    if (!trennzeichen)
        return;
    const QString datei = lblDateiname_->text();
    if (!Ziel().DarfErstellen(datei))
        return;
    Ausgang ausgang{};
    Ausfuehren([&](const Werkbank &bank) { ausgang = AsciiExportieren(bank, datei, *trennzeichen); });
    if (ausgang == Ausgang::Gescheitert)
        return;
    if (ausgang == Ausgang::Gelungen)
        Dienst().meldungen.Zeigen(datei + u" erfolgreich geschrieben"_s);
    accept();
}

} // namespace paukfix
