// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Klangpruefung.h"

#include "StoreError.h"
#include "WaveFile.h"

#include <QFileInfo>

#include <cmath>

namespace paukfix {

using namespace Qt::StringLiterals;

void KlangPruefen(const QString &pfad)
{
    if (!QFileInfo(pfad).isFile())
        throw StoreError(Fehler::DateiNichtGefunden, u"Datei nicht gefunden: „%1“"_s.arg(pfad));
    if (!IsWave(pfad.toStdString()))
        throw StoreError(Fehler::UngueltigerKlang, u"Keine WAV-Datei: „%1“"_s.arg(pfad));
}

QString Klanglaenge(const QString &pfad)
{
    const auto wave = LoadWave(pfad.toStdString());
    if (!wave)
        return {};
    const int sekunden = static_cast<int>(std::ceil(Seconds(*wave)));
    return u"%1:%2"_s.arg(sekunden / 60).arg(sekunden % 60, 2, 10, QChar(u'0'));
}

} // namespace paukfix
