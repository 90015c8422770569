// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Befehlszeile.h"

#include "Deckquelle.h"

#include <QUrl>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

const QString Aufruf =
    u"Aufruf: paukfix [KARTEI.pzb]\n"
    u"        paukfix --weiter\n"
    u"\n"
    u"Paukfix ist ein Karteikasten zum Lernen. Ohne KARTEI fragt es nach einer.\n"
    u"Für KARTEI kann ein Paket stehen (.pzbz, „Extras › Kartei packen“): Es wird neben sich\n"
    u"in einen Ordner ausgepackt. Auch eine fremde Kartei (.apkg, .colpkg, .kvtml) kann dort\n"
    u"stehen: Sie wird eingelesen.\n"
    u"\n"
    u"  -w, --weiter   öffnet die zuletzt verwendete Kartei\n"
    u"  -h, --help     zeigt diese Hilfe\n"
    u"  -v, --version  zeigt die Version\n"
    u"  --             dahinter steht ein Dateiname, auch mit - am Anfang\n"_s;

QString Pfad(const QString &argument)
{
    if (!argument.startsWith("file:/"_L1, Qt::CaseInsensitive))
        return argument;
    QUrl adresse(argument, QUrl::StrictMode);
    if (adresse.host() == "localhost"_L1)
        adresse.setHost(QString());
    const QString pfad = adresse.host().isEmpty() ? adresse.toLocalFile() : QString();
    return pfad.isEmpty() ? argument : pfad;
}

} // namespace

Befehlszeile BefehlszeileLesen(const QStringList &argumente)
{
    Befehlszeile befehl;
    QStringList dateien;
    bool optionen = true;
    for (const QString &argument : argumente.mid(1)) {
        const bool option = optionen && argument.startsWith(u'-') && argument.size() > 1 &&
                            !argument.endsWith(".pzb"_L1, Qt::CaseInsensitive) &&
                            !argument.endsWith(".pzbz"_L1, Qt::CaseInsensitive) && !IstDeckname(argument);
        if (!option) {
            if (!argument.isEmpty())
                dateien << Pfad(argument);
        } else if (argument == "--"_L1) {
            optionen = false;
        } else if (argument == "--weiter"_L1 || argument == "-w"_L1) {
            befehl.weiter = true;
        } else if (argument == "--help"_L1 || argument == "-h"_L1) {
            return {.art = Befehlszeile::Art::Auskunft, .kartei = {}, .weitere = {}, .text = Aufruf};
        } else if (argument == "--version"_L1 || argument == "-v"_L1) {
            return {.art = Befehlszeile::Art::Auskunft,
                    .kartei = {},
                    .weitere = {},
                    .text = u"Paukfix " PAUKFIX_VERSION u"\n"_s};
        } else if (befehl.art == Befehlszeile::Art::Starten) {
            befehl.art = Befehlszeile::Art::Fehler;
            befehl.text = u"paukfix: unbekannte Option „%1“\n\n"_s.arg(argument) + Aufruf;
        }
    }
    if (befehl.weiter && !dateien.isEmpty() && befehl.art == Befehlszeile::Art::Starten) {
        befehl.art = Befehlszeile::Art::Fehler;
        befehl.text =
            u"paukfix: „--weiter“ öffnet die zuletzt verwendete Kartei, keine genannte\n\n"_s + Aufruf;
    }
    befehl.kartei = dateien.value(0);
    befehl.weitere = dateien.mid(1);
    return befehl;
}

} // namespace paukfix
