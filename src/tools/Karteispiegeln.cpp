// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Karteispiegeln.h"

#include "CardFacts.h"
#include "Medienwahl.h"
#include "NeueKartei.h"

#include <QLineEdit>

namespace paukfix {

using namespace Qt::StringLiterals;

Karteispiegeln::Karteispiegeln(KarteiOeffner &oeffner, const Dienste &dienste, QWidget *parent)
    : Werkzeugfenster(oeffner, dienste, u"Karteispiegeln"_s,
                      u"Thema ausfiltern"_s, // the caption that this window has always had
                      u"Kartei spiegeln"_s, parent)
{
    Erklaeren({u"In der neuen Datei sind Frage und Antwort vertauscht.  "_s,
               u"(Ankreuzfragen bleiben so wie sie sind)  "_s,
               u"Aus einer Vokabelsammlung Deutsch/Englisch wird so eine Vokabelsammlung "
               u"Englisch/Deutsch."_s});
    lblDateiname_ = DateinameBauen(u"Hier bitte den Namen der zu erstellenden Datei eingeben"_s,
                                   [this] { cmdDateiname_Click(); });
    chkMedien_ = MedienBauen();
    HinweisBauen(u"Hinweis: Mit der Funktion \"Kartei anhängen\" können Sie dann eine gemischte "
                 u"Datei erstellen."_s);
    Step(dienste.meldungen, FehlerKontext(), [this] {
        const CardKinds arten = KindsOfCards(Store().Karten());
        QString text = KartenText(arten.typed) + u" mit vertauschten Seiten"_s;
        if (arten.others > 0)
            text += u"; %1 zum Ankreuzen unverändert"_s.arg(arten.others);
        VorhabenZeigen(text + u'.');
        MedienAnbieten(chkMedien_, MediaNames(Store().Karten()), lblDateiname_);
    });
    KnoepfeBauen([this] { cmdOK_Click(); });
}

void Karteispiegeln::cmdDateiname_Click()
{
    KarteinameUebernehmen(lblDateiname_,
                          Ziel().Waehlen(KarteiDialog(u"Merkkasten Spiegeln"_s, Store().KarteiPfad)));
}

void Karteispiegeln::cmdOK_Click()
{
    NeueKarteiErstellen(lblDateiname_, [this](const Werkbank &bank, const QString &ziel) {
        return KarteiSpiegeln(bank, ziel, chkMedien_->Wahl());
    });
}

} // namespace paukfix
