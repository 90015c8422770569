// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Zielwahl.h"

#include "Werkbank.h"

#include <QFileInfo>

Zielwahl::Zielwahl(const CardStore &store, Dialoge &dialoge, Meldungen &meldungen)
    : store_(store), dialoge_(dialoge), meldungen_(meldungen)
{
}

QString Zielwahl::Waehlen(const DateiDialog &dialog)
{
    QString ziel = dialoge_.DateiSpeichern(dialog);
    if (!ziel.isEmpty())
        gewaehlt_ = ziel;
    return ziel;
}

bool Zielwahl::DarfErstellen(const QString &ziel)
{
    QFileInfo da;
    if (!Schritt(meldungen_, FehlerKontext(), [&] { da.setFile(ZielPfad(store_, ziel)); }))
        return false;
    return !da.exists() || ziel == gewaehlt_ ||
           meldungen_.Fragen(
               QStringLiteral("Die Datei „%1“ gibt es schon: Soll sie ersetzt werden?").arg(ziel),
               Meldungen::Antwort::Nein) == Meldungen::Antwort::Ja;
}

bool Zielwahl::IstKarteiname(const QString &name)
{
    const bool ist = name.endsWith(QStringLiteral(".pzb"), Qt::CaseInsensitive);
    if (!ist)
        meldungen_.Zeigen(QStringLiteral("Bitte nur .pzb Dateien"));
    return ist;
}
