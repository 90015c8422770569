// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Karteianhaengen.h"

#include "Anhaengen.h"

#include <QLabel>
#include <QLineEdit>

Karteianhängen::Karteianhängen(KarteiOeffner &oeffner, const Dienste &dienste, QWidget *parent)
    : Werkzeugfenster(oeffner, dienste, QStringLiteral("Karteianhängen"), QStringLiteral("Kartei anhängen"),
                      QStringLiteral("Kartei anhängen"), parent)
{
    Erklaeren(
        {QStringLiteral("Durch diese Funtion werden die Karten aus einer anderen Datei in die aktuelle "
                        "Datei hineinkopiert. "),
         QStringLiteral("Anders als beim ASCII-Import werden auch Ankreuzfragen und Schriftformatierungen "
                        "mit übernommen."),
         QStringLiteral("Textdateien können mit dieser Funktion nicht übernommen werden. "
                        "(siehe ASCII-Import)")});
    lblDateiname_ = DateinameBauen({}, [this] { cmdDateiname_Click(); });
    connect(lblDateiname_, &QLineEdit::textChanged, this, [this] { NeuGewaehlt(); });
    ergebnis_ = HinweisBauen({});
    ergebnis_->setObjectName(QStringLiteral("Ergebnis"));
    ergebnis_->setMinimumHeight(fontMetrics().height()); // nothing jumps when it appears
    KnoepfeBauen([this] { cmdOK_Click(); });
}

void Karteianhängen::cmdDateiname_Click()
{
    if (KarteinameUebernehmen(
            lblDateiname_, Dienst().dialoge.DateiOeffnen(KarteiDialog(QStringLiteral("Merkkasten anhängen"),
                                                                      Dienst().konfig.ProgrammPfad))))
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
    ergebnis_->setText(KartenText(anzahl) + (ausgang == Ausgang::Gelungen
                                                 ? QStringLiteral(" angehängt")
                                                 : QStringLiteral(" angehängt, aber nicht alles")));
    SetOKErlaubt(false);
    lblDateiname_->setFocus();
}

void Karteianhängen::NeuGewaehlt()
{
    ergebnis_->clear();
    SetOKErlaubt(true);
}
