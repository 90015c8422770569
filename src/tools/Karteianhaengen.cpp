// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Karteianhaengen.h"

#include "Anhaengen.h"
#include "Fensterbau.h"
#include "Medienwahl.h"
#include "Vorhandenenwahl.h"

#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>

namespace paukfix {

using namespace Qt::StringLiterals;

Karteianhängen::Karteianhängen(KarteiOeffner &oeffner, const Dienste &dienste, QWidget *parent)
    : Werkzeugfenster(oeffner, dienste, u"Karteianhängen"_s, u"Kartei anhängen"_s, u"Kartei anhängen"_s,
                      parent)
{
    Erklaeren({u"Durch diese Funtion werden die Karten aus einer anderen Datei in die aktuelle "
               u"Datei hineinkopiert. "_s,
               u"Anders als beim ASCII-Import werden auch Ankreuzfragen und Schriftformatierungen "
               u"mit übernommen."_s,
               u"Textdateien können mit dieser Funktion nicht übernommen werden. "
               u"(siehe ASCII-Import)"_s});
    lblDateiname_ = DateinameBauen({}, [this] { cmdDateiname_Click(); });
    connect(lblDateiname_, &QLineEdit::textChanged, this, [this] { NeuGewaehlt(); });
    chkMedien_ = MedienBauen();
    vorhandene_ = new Vorhandenenwahl(this);
    FlaecheBauen(vorhandene_);
    PlatzHalten(vorhandene_); // or the texts above would give way when it comes
    ergebnis_ = HinweisBauen({});
    ergebnis_->setObjectName(u"Ergebnis"_s);
    ergebnis_->setMinimumHeight(fontMetrics().height()); // nothing jumps when it appears
    KnoepfeBauen([this] { cmdOK_Click(); });
}

void Karteianhängen::cmdDateiname_Click()
{
    if (KarteinameUebernehmen(lblDateiname_, Dienst().dialoge.DateiOeffnen(KarteiDialog(
                                                 u"Merkkasten anhängen"_s, Dienst().konfig.ProgrammPfad))))
        NeuGewaehlt(); // the same file too
}

void Karteianhängen::cmdOK_Click()
{
    Ausgang ausgang = Ausgang::Gescheitert;
    Angehaengt angehaengt;
    Ausfuehren([&](const Werkbank &bank) {
        ausgang = KarteiAnhaengen(bank, lblDateiname_->text(), chkMedien_->Wahl(), &angehaengt,
                                  vorhandene_->Wahl());
    });
    if (!Store().IsOpen()) {
        accept(); // there is nothing left to append to
        return;
    }
    ergebnis_->clear();
    if (ausgang == Ausgang::Gescheitert)
        return;
    const QString medien = angehaengt.medien == 0   ? QString()
                           : angehaengt.medien == 1 ? u", 1 Datei kopiert"_s
                                                    : u", %1 Dateien kopiert"_s.arg(angehaengt.medien);
    QString schon;
    if (angehaengt.ausgelassen > 0)
        schon += u", %1 schon da"_s.arg(angehaengt.ausgelassen);
    if (angehaengt.erneuert > 0)
        schon += u", %1 mit neuer Antwort"_s.arg(angehaengt.erneuert);
    ergebnis_->setText(KartenText(angehaengt.karten) + u" angehängt"_s + schon + medien +
                       (ausgang == Ausgang::Gelungen ? QString() : u", aber nicht alles"_s));
    SetOKErlaubt(false);
    VorhabenZeigen({});
    vorhandene_->Anbieten(0, 0);
    lblDateiname_->setFocus();
}

void Karteianhängen::NeuGewaehlt()
{
    ergebnis_->clear();
    SetOKErlaubt(true);
    const QString quelle = lblDateiname_->text();
    const auto anhang = AnhangIn(Store(), quelle);
    VorhabenZeigen(anhang ? Kommen(anhang->karten) + u" ins Fach Neu."_s : QString());
    vorhandene_->Anbieten(anhang ? anhang->bekannt : 0, anhang ? anhang->andereAntwort : 0);
    chkMedien_->NichtsAnbieten();
    // Of a file that is to be mended or converted nobody knows yet what its cards name.
    if (anhang || QFileInfo(quelle).isFile())
        chkMedien_->Anbieten(anhang ? std::optional(anhang->medien) : std::nullopt,
                             QFileInfo(VollerPfad(Store(), quelle)).absolutePath(), Store().KarteiPfad);
}

} // namespace paukfix
