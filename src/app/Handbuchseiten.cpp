// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Handbuchseiten.h"

#include <QWidget>

namespace paukfix {

using namespace Qt::StringLiterals;

const QHash<QString, QString> &Handbuchseiten()
{
    static const QHash<QString, QString> Seiten{
        {u"Intro"_s, u"anfang.html"_s},
        {u"LBOX"_s, u"lernen.html"_s},
        {u"CommonDialog1"_s, u"dateien.html#oeffnen"_s},
        {u"Datausw"_s, u"dateien.html#wechseln"_s},
        {u"Statistik"_s, u"lernen.html#statistik"_s},
        {u"Verlauf"_s, u"lernen.html#verlauf"_s},
        {u"über"_s, u"index.html"_s},
        {u"PFUse"_s, u"antworten.html"_s},
        {u"PFÄndern"_s, u"karten.html"_s},
        {u"Suchen"_s, u"karten.html#suchen"_s},
        {u"Schriftdialog"_s, u"karten.html#schrift"_s},
        {u"Bildbearbeiten"_s, u"medien.html#bilder"_s},
        {u"Soundbearbeiten"_s, u"medien.html#toene"_s},
        {u"Uebersicht"_s, u"dateien.html#uebersicht"_s},
        {u"Sicherungen"_s, u"hilfe.html#sicherungen"_s},
        {u"Themaausfiltern"_s, u"dateien.html#ausfiltern"_s},
        {u"Karteianhängen"_s, u"dateien.html#anhaengen"_s},
        {u"Karteispiegeln"_s, u"dateien.html#spiegeln"_s},
        {u"Karteipacken"_s, u"dateien.html#packen"_s},
        {u"AlleNull"_s, u"dateien.html#neu"_s},
        {u"ErlNull"_s, u"dateien.html#neu"_s},
        {u"AExport"_s, u"umsteigen.html#export"_s},
        {u"AImport"_s, u"umsteigen.html#import"_s},
        {u"FremdeKartei"_s, u"umsteigen.html#einlesen"_s},
        {u"Karteiausgeben"_s, u"umsteigen.html#ausgeben"_s},
        {u"Bericht"_s, u"hilfe.html#bericht"_s},
    };
    return Seiten;
}

QString HandbuchseiteZu(const QWidget *fenster)
{
    for (; fenster; fenster = fenster->parentWidget() ? fenster->parentWidget()->window() : nullptr)
        if (const auto seite = Handbuchseiten().constFind(fenster->objectName());
            seite != Handbuchseiten().cend())
            return *seite;
    return u"index.html"_s;
}

} // namespace paukfix
