// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Karteispiegeln.h"

#include "NeueKartei.h"

#include <QLineEdit>

Karteispiegeln::Karteispiegeln(KarteiOeffner &oeffner, const Dienste &dienste, QWidget *parent)
    : Werkzeugfenster(oeffner, dienste, QStringLiteral("Karteispiegeln"),
                      QStringLiteral("Thema ausfiltern"), // the caption that this window has always had
                      QStringLiteral("Kartei spiegeln"), parent)
{
    Erklaeren({QStringLiteral("In der neuen Datei sind Frage und Antwort vertauscht.  "),
               QStringLiteral("(Ankreuzfragen bleiben so wie sie sind)  "),
               QStringLiteral("Aus einer Vokabelsammlung Deutsch/Englisch wird so eine Vokabelsammlung "
                              "Englisch/Deutsch.")});
    lblDateiname_ = DateinameBauen(QStringLiteral("Hier bitte den Namen der zu erstellenden Datei eingeben"),
                                   [this] { cmdDateiname_Click(); });
    HinweisBauen(
        QStringLiteral("Hinweis: Mit der Funktion \"Kartei anhängen\" können Sie dann eine gemischte "
                       "Datei erstellen."));
    KnoepfeBauen([this] { cmdOK_Click(); });
}

void Karteispiegeln::cmdDateiname_Click()
{
    KarteinameUebernehmen(lblDateiname_, Ziel().Waehlen(KarteiDialog(QStringLiteral("Merkkasten Spiegeln"),
                                                                     Store().KarteiPfad)));
}

void Karteispiegeln::cmdOK_Click()
{
    NeueKarteiErstellen(lblDateiname_, KarteiSpiegeln);
}
