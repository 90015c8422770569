// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Befehlszeile.h"

#include <QUrl>

namespace {

const QString Aufruf =
    QStringLiteral("Aufruf: paukfix [KARTEI.pzb]\n"
                   "\n"
                   "Paukfix ist ein Karteikasten zum Lernen. Ohne KARTEI fragt es nach einer.\n"
                   "\n"
                   "  -h, --help     zeigt diese Hilfe\n"
                   "  -v, --version  zeigt die Version\n"
                   "  --             dahinter steht ein Dateiname, auch mit - am Anfang\n");

QString Pfad(const QString &argument)
{
    if (!argument.startsWith(QLatin1String("file:/"), Qt::CaseInsensitive))
        return argument;
    QUrl adresse(argument, QUrl::StrictMode);
    if (adresse.host() == QLatin1String("localhost"))
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
                            !argument.endsWith(QLatin1String(".pzb"), Qt::CaseInsensitive);
        if (!option) {
            if (!argument.isEmpty())
                dateien << Pfad(argument);
        } else if (argument == QLatin1String("--")) {
            optionen = false;
        } else if (argument == QLatin1String("--help") || argument == QLatin1String("-h")) {
            return {.art = Befehlszeile::Art::Auskunft, .kartei = {}, .weitere = {}, .text = Aufruf};
        } else if (argument == QLatin1String("--version") || argument == QLatin1String("-v")) {
            return {.art = Befehlszeile::Art::Auskunft,
                    .kartei = {},
                    .weitere = {},
                    .text = QStringLiteral("Paukfix " PAUKFIX_VERSION "\n")};
        } else if (befehl.art == Befehlszeile::Art::Starten) {
            befehl.art = Befehlszeile::Art::Fehler;
            befehl.text = QStringLiteral("paukfix: unbekannte Option „%1“\n\n").arg(argument) + Aufruf;
        }
    }
    befehl.kartei = dateien.value(0);
    befehl.weitere = dateien.mid(1);
    return befehl;
}
