// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "AImport.h"

#include "AsciiTausch.h"

#include <QComboBox>
#include <QLineEdit>

AImport::AImport(KarteiOeffner &oeffner, const Dienste &dienste, QWidget *parent)
    : Werkzeugfenster(oeffner, dienste, QStringLiteral("AImport"), QStringLiteral("ASCII-Import"),
                      QStringLiteral("ASCII - Import"), parent)
{
    Erklaeren(
        {QStringLiteral("Durch diese Funktion werden einfache Fragen aus einer ASCII-Datei eingelesen und "
                        "in das Fach Neu der aktuellen Kartei abgelegt. "),
         QStringLiteral("Hierdurch können Daten aus anderen Anwendungen, z.B. MS-Excel oder MS-Access "
                        "übernommen werden.")});
    cmbTrennzeichen_ = TrennzeichenBauen();
    lblDateiname_ = DateinameBauen({}, [this] { cmdDateiname_Click(); });
    HinweisBauen(QStringLiteral("Hinweis: Die Datei muß folgenden Aufbau haben:"));
    HinweisBauen(QStringLiteral("Frage  Trennzeichen   Antwort   [ Trennzeichen Thema ]"));
    KnoepfeBauen([this] { cmdOK_Click(); });
}

void AImport::cmdDateiname_Click()
{
    lblDateiname_->setText(
        Dienst().dialoge.DateiOeffnen(TextdateiDialog(QStringLiteral("ASCII import"), Store().KarteiPfad)));
}

void AImport::cmdOK_Click()
{
    const auto trennzeichen = Trennzeichen(Dienst().meldungen, cmbTrennzeichen_->currentText());
    if (!trennzeichen)
        return;
    const QString datei = lblDateiname_->text();
    Ausgang ausgang{};
    Zugang zugang;
    Ausfuehren(
        [&](const Werkbank &bank) { ausgang = AsciiImportieren(bank, datei, *trennzeichen, &zugang); });
    if (ausgang == Ausgang::Gelungen)
        Dienst().meldungen.Zeigen(datei + QStringLiteral(" erfolgreich eingelesen"));
    else if (ausgang == Ausgang::Teilweise)
        Dienst().meldungen.Zeigen(TeilweiseEingelesen(zugang));
    if (ausgang != Ausgang::Gescheitert || !Store().IsOpen())
        accept();
}
