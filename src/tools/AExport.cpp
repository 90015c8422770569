// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "AExport.h"

#include "AsciiTausch.h"

#include <QComboBox>
#include <QLineEdit>

AExport::AExport(KarteiOeffner &oeffner, const Dienste &dienste, QWidget *parent)
    : Werkzeugfenster(oeffner, dienste, QStringLiteral("AExport"), QStringLiteral("ASCII-Export"),
                      QStringLiteral("ASCII - Export"), parent)
{
    Erklaeren(
        {QStringLiteral("Durch diese Funktion werden alle einfachen Fragen in eine ASCII-Datei ausgegeben "
                        "(Keine Ankreuzfragen und keine Bilder). "),
         QStringLiteral("Diese ASCII-Datei kann dann von anderen Programmen (z.B. MS-Excel oder "
                        "MS-Word-Serienbriefmanager) importiert werden. ")});
    cmbTrennzeichen_ = TrennzeichenBauen();
    lblDateiname_ = DateinameBauen({}, [this] { cmdDateiname_Click(); });
    HinweisBauen(QStringLiteral("Hinweis: Für MS-Excel sollten Sie <Tab> als Trennzeichen benutzen. "
                                "Für MS-Word Semikolon (;)."));
    KnoepfeBauen([this] { cmdOK_Click(); });
}

void AExport::cmdDateiname_Click()
{
    lblDateiname_->setText(Ziel().Waehlen(
        TextdateiDialog(QStringLiteral("ASCII export"), Store().KarteiPfad, QStringLiteral("txt"))));
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
        Dienst().meldungen.Zeigen(datei + QStringLiteral(" erfolgreich geschrieben"));
    accept();
}
