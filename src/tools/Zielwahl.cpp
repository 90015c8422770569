// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Zielwahl.h"

#include "Werkbank.h"

#include <QFileInfo>

namespace paukfix {

using namespace Qt::StringLiterals;

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
    if (!Step(meldungen_, FehlerKontext(), [&] { da.setFile(ZielPfad(store_, ziel)); }))
        return false;
    return !da.exists() || ziel == gewaehlt_ ||
           meldungen_.Fragen(u"Die Datei „%1“ gibt es schon: Soll sie ersetzt werden?"_s.arg(ziel),
                             Meldungen::Antwort::Nein) == Meldungen::Antwort::Ja;
}

bool Zielwahl::IstKarteiname(const QString &name)
{
    const bool ist = name.endsWith(u".pzb"_s, Qt::CaseInsensitive);
    if (!ist)
        meldungen_.Zeigen(u"Bitte nur .pzb Dateien"_s);
    return ist;
}

} // namespace paukfix
