// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "AExport.h"

#include "AsciiTausch.h"
#include "Fensterbau.h"

#include <QComboBox>
#include <QLineEdit>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

// The entries of the box of forms.
enum Formwahl
{
    EinfacheZeilen,
    Csv,
    CsvMitKomma,
    AlleFelder
};

} // namespace

AExport::AExport(KarteiOeffner &oeffner, const Dienste &dienste, QWidget *parent)
    : Werkzeugfenster(oeffner, dienste, u"AExport"_s, u"ASCII-Export"_s, u"ASCII - Export"_s, parent)
{
    Erklaeren({u"Durch diese Funktion werden alle einfachen Fragen in eine ASCII-Datei ausgegeben "
               u"(Keine Ankreuzfragen und keine Bilder). "_s,
               u"Diese ASCII-Datei kann dann von anderen Programmen (z.B. MS-Excel oder "
               u"MS-Word-Serienbriefmanager) importiert werden. "_s});
    cmbForm_ = Benannt(new QComboBox(this), u"cmbForm"_s, u"Form"_s);
    cmbForm_->addItems({u"einfache Zeilen"_s, u"CSV"_s, u"CSV mit Komma"_s, u"alle Felder"_s});
    cmbForm_->setToolTip(u"CSV: mit Anführungszeichen, Zeilenumbrüche bleiben erhalten. "
                         u"Alle Felder: jede Karte ganz, zum Wiedereinlesen"_s);
    cmbZeichensatz_ = Benannt(new QComboBox(this), u"cmbZeichensatz"_s, u"Zeichensatz"_s);
    cmbZeichensatz_->addItems({u"Windows-1252"_s, u"UTF-8"_s});
    cmbTrennzeichen_ = TrennzeichenBauen({{u"&Form:"_s, cmbForm_}, {u"Zei&chensatz:"_s, cmbZeichensatz_}});
    lblDateiname_ = DateinameBauen({}, [this] { cmdDateiname_Click(); });
    HinweisBauen(u"Hinweis: Für MS-Excel sollten Sie <Tab> als Trennzeichen benutzen. "
                 u"Für MS-Word Semikolon (;)."_s);
    connect(cmbForm_, &QComboBox::currentIndexChanged, this, &AExport::FormGewaehlt);
    Step(dienste.meldungen, FehlerKontext(), [this] { arten_ = KindsOfCards(Store().Karten()); });
    FormGewaehlt();
    KnoepfeBauen([this] { cmdOK_Click(); });
}

void AExport::FormGewaehlt()
{
    const bool alleFelder = cmbForm_->currentIndex() == AlleFelder;
    cmbTrennzeichen_->setEnabled(cmbForm_->currentIndex() < CsvMitKomma);
    cmbZeichensatz_->setEnabled(!alleFelder);
    if (!arten_)
        return;
    QString text;
    if (alleFelder) {
        text = KartenText(arten_->typed + arten_->others) +
               u" mit Fächern, Formaten, Haken, Themen und den Namen der Bilder und Töne"_s;
    } else {
        text = KartenText(arten_->typed);
        if (arten_->typedWithMedia > 0)
            text += u", %1 davon ohne ihre Bilder und Töne"_s.arg(arten_->typedWithMedia);
        if (arten_->others > 0)
            text += u"; %1 zum Ankreuzen %2 aus"_s.arg(arten_->others)
                        .arg(arten_->others == 1 ? u"bleibt"_s : u"bleiben"_s);
    }
    VorhabenZeigen(text + u'.');
}

void AExport::cmdDateiname_Click()
{
    const bool tabelle = cmbForm_->currentIndex() != EinfacheZeilen;
    lblDateiname_->setText(Ziel().Waehlen(
        TextdateiDialog(u"ASCII export"_s, Store().KarteiPfad, tabelle ? u"csv"_s : u"txt"_s)));
}

void AExport::cmdOK_Click()
{
    const int form = cmbForm_->currentIndex();
    Exportwahl wahl(form == CsvMitKomma ? u',' : u';');
    if (form < CsvMitKomma) {
        const auto gewaehlt = Trennzeichen(Dienst().meldungen, cmbTrennzeichen_->currentText());
        if (!gewaehlt)
            return;
        wahl.form.trennzeichen = *gewaehlt;
    }
    wahl.form.anfuehrung = form != EinfacheZeilen;
    wahl.alleFelder = form == AlleFelder;
    wahl.utf8 = cmbZeichensatz_->currentIndex() > 0;
    const QString datei = lblDateiname_->text();
    if (!Ziel().DarfErstellen(datei))
        return;
    Ausgang ausgang{};
    Ausfuehren([&](const Werkbank &bank) { ausgang = AsciiExportieren(bank, datei, wahl); });
    if (ausgang == Ausgang::Gescheitert)
        return;
    if (ausgang == Ausgang::Gelungen)
        Dienst().meldungen.Zeigen(datei + u" erfolgreich geschrieben"_s);
    accept();
}

} // namespace paukfix
