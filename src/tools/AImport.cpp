// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "AImport.h"

#include "AsciiTausch.h"

#include <QComboBox>
#include <QLineEdit>

namespace paukfix {

using namespace Qt::StringLiterals;

AImport::AImport(KarteiOeffner &oeffner, const Dienste &dienste, QWidget *parent)
    : Werkzeugfenster(oeffner, dienste, u"AImport"_s, u"ASCII-Import"_s, u"ASCII - Import"_s, parent)
{
    Erklaeren({u"Durch diese Funktion werden einfache Fragen aus einer ASCII-Datei eingelesen und "
               u"in das Fach Neu der aktuellen Kartei abgelegt. "_s,
               u"Hierdurch können Daten aus anderen Anwendungen, z.B. MS-Excel oder MS-Access "
               u"übernommen werden."_s});
    cmbTrennzeichen_ = TrennzeichenBauen();
    lblDateiname_ = DateinameBauen({}, [this] { cmdDateiname_Click(); });
    HinweisBauen(u"Hinweis: Die Datei muß folgenden Aufbau haben:"_s);
    HinweisBauen(u"Frage  Trennzeichen   Antwort   [ Trennzeichen Thema ]"_s);
    connect(cmbTrennzeichen_, &QComboBox::currentTextChanged, this, &AImport::ZugangZeigen);
    connect(lblDateiname_, &QLineEdit::textChanged, this, &AImport::ZugangZeigen);
    KnoepfeBauen([this] { cmdOK_Click(); });
}

void AImport::ZugangZeigen()
{
    const auto trennzeichen = Trennzeichen(cmbTrennzeichen_->currentText());
    const auto zahl =
        trennzeichen ? ZeilenZaehlen(Store(), lblDateiname_->text(), *trennzeichen) : std::nullopt;
    QString text;
    if (zahl) {
        text = Kommen(zahl->karten) + u" ins Fach Neu"_s;
        if (zahl->andere > 0)
            text += zahl->andere == 1 ? u"; 1 Zeile ohne Trennzeichen bleibt aus"_s
                                      : u"; %1 Zeilen ohne Trennzeichen bleiben aus"_s.arg(zahl->andere);
        text += u'.';
    }
    VorhabenZeigen(text);
}

void AImport::cmdDateiname_Click()
{
    lblDateiname_->setText(
        Dienst().dialoge.DateiOeffnen(TextdateiDialog(u"ASCII import"_s, Store().KarteiPfad)));
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
        Dienst().meldungen.Zeigen(datei + u" erfolgreich eingelesen"_s);
    else if (ausgang == Ausgang::Teilweise)
        Dienst().meldungen.Zeigen(TeilweiseEingelesen(zugang));
    if (ausgang != Ausgang::Gescheitert || !Store().IsOpen())
        accept();
}

} // namespace paukfix
