// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Karteianhaengen.h"

#include "Anhaengen.h"

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
    int anzahl = 0;
    Ausfuehren(
        [&](const Werkbank &bank) { ausgang = KarteiAnhaengen(bank, lblDateiname_->text(), &anzahl); });
    if (!Store().IsOpen()) {
        accept(); // there is nothing left to append to
        return;
    }
    ergebnis_->clear();
    if (ausgang == Ausgang::Gescheitert)
        return;
    ergebnis_->setText(KartenText(anzahl) +
                       (ausgang == Ausgang::Gelungen ? u" angehängt"_s : u" angehängt, aber nicht alles"_s));
    SetOKErlaubt(false);
    VorhabenZeigen({});
    lblDateiname_->setFocus();
}

void Karteianhängen::NeuGewaehlt()
{
    ergebnis_->clear();
    SetOKErlaubt(true);
    const auto karten = KartenIn(Store(), lblDateiname_->text());
    VorhabenZeigen(karten ? Kommen(*karten) + u" ins Fach Neu."_s : QString());
}

} // namespace paukfix
