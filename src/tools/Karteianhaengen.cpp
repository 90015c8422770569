// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Karteianhaengen.h"

#include "Anhaengen.h"

#include <QLineEdit>

Karteianhängen::Karteianhängen(WerkzeugUmgebung umgebung, QWidget *parent)
    : Werkzeugfenster(umgebung, QStringLiteral("Karteianhängen"), QStringLiteral("Kartei anhängen"),
                      QStringLiteral("Kartei anhängen"), parent)
{
    Erklären(
        {QStringLiteral("Durch diese Funtion werden die Karten aus einer anderen Datei in die aktuelle "
                        "Datei hineinkopiert. "),
         QStringLiteral("Anders als beim ASCII-Import werden auch Ankreuzfragen und Schriftformatierungen "
                        "mit übernommen."),
         QStringLiteral("Textdateien können mit dieser Funktion nicht übernommen werden. "
                        "(siehe ASCII-Import)")});
    lblDateiname_ = DateinameBauen({}, [this] { cmdDateiname_Click(); });
    KnöpfeBauen([this] { cmdOK_Click(); });
}

void Karteianhängen::cmdDateiname_Click()
{
    KarteinameÜbernehmen(lblDateiname_,
                         Umgebung().dialoge.DateiOeffnen(KarteiDialog(QStringLiteral("Merkkasten anhängen"),
                                                                      Umgebung().konfig.ProgrammPfad)));
}

void Karteianhängen::cmdOK_Click()
{
    Ausführen([&](const Werkbank &bank) { KarteiAnhängen(bank, lblDateiname_->text()); });
    if (!Umgebung().store.IsOpen())
        accept(); // there is nothing left to append to
}
