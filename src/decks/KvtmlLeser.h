// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "KvtmlDatei.h"

#include <QHash>

class QXmlStreamReader;

namespace paukfix {

// Takes a vocabulary document apart, as one run over its elements. Throws StoreError.
class KvtmlLeser
{
public:
    KvtmlLeser(QXmlStreamReader &xml, KvtmlInhalt &inhalt);

    void Lesen();

private:
    void Lesen1();
    void Lektionen1();
    void Eintrag1();
    void Wort1(KvtmlWort &wort);
    void Lesen2();
    void Eintraege2();
    void Eintrag2();
    void Wort2(KvtmlWort &wort, bool antwort);
    int Stufe2();
    void Auswahl(KvtmlWort &wort);
    void Lektionen2(const QString &darueber, int tiefe);
    void Zuordnen(qint64 nummer, const QString &lektion);
    QString Text();
    void Ueberspringen();
    bool Naechstes();
    void FehlerPruefen() const;

    QXmlStreamReader &xml_;
    KvtmlInhalt &inhalt_;
    QHash<qint64, std::size_t> plaetze_; // of the entries, by their numbers
};

} // namespace paukfix
