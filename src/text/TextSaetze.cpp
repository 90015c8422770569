// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "TextSaetze.h"

#include "StoreError.h"

#include <algorithm>
#include <utility>

namespace paukfix {

using namespace Qt::StringLiterals;

TextSaetze::TextSaetze(Textinhalt inhalt, const Textform &form, std::size_t hoechstens)
    : inhalt_(std::move(inhalt)),
      trennzeichen_(form.trennzeichen.toLatin1()),
      anfuehrung_(form.anfuehrung),
      hoechstens_(hoechstens),
      stelle_(inhalt_.anfang)
{
}

bool TextSaetze::Naechster(std::vector<Textfeld> &felder)
{
    const QByteArray &bytes = inhalt_.bytes;
    if (stelle_ >= bytes.size())
        return false;
    zeile_ = zaehler_.Zeile();
    std::size_t zahl = 0;
    while (true) {
        if (felder.size() <= zahl)
            felder.emplace_back();
        ++zahl;
        Feld(felder[zahl - 1], zahl == hoechstens_);
        if (stelle_ >= bytes.size() || bytes[stelle_] != trennzeichen_)
            break;
        ++stelle_;
    }
    felder.resize(zahl);
    Zeilenende();
    return true;
}

void TextSaetze::Feld(Textfeld &feld, bool letztes)
{
    const QByteArray &bytes = inhalt_.bytes;
    feld.inAnfuehrung = anfuehrung_ && stelle_ < bytes.size() && bytes[stelle_] == '"';
    if (feld.inAnfuehrung)
        InAnfuehrung();
    const qsizetype ende = Feldende(letztes);
    const QByteArrayView rest(bytes.constData() + stelle_, ende - stelle_);
    stelle_ = ende;
    if (!feld.inAnfuehrung) {
        feld.text = TextAus(rest, inhalt_.utf8);
        return;
    }
    if (!rest.isEmpty()) {
        unsauber_ = true;
        puffer_.append(rest);
    }
    feld.text = TextAus(puffer_, inhalt_.utf8);
}

void TextSaetze::InAnfuehrung()
{
    const QByteArray &bytes = inhalt_.bytes;
    const int zeile = zaehler_.Zeile();
    puffer_.resize(0);
    ++stelle_;
    while (true) {
        const qsizetype ende = bytes.indexOf('"', stelle_);
        if (ende < 0)
            throw StoreError(Fehler::TypUnvertraeglich,
                             u"In Zeile %1 beginnt ein Anführungszeichen, das nirgends endet."_s.arg(zeile));
        const char *const von = bytes.constData() + stelle_;
        zaehler_.Weiter(von, bytes.constData() + ende);
        puffer_.append(von, ende - stelle_);
        stelle_ = ende + 1;
        if (stelle_ >= bytes.size() || bytes[stelle_] != '"')
            return;
        puffer_ += '"';
        ++stelle_;
    }
}

qsizetype TextSaetze::Feldende(bool letztes) const
{
    const QByteArray &bytes = inhalt_.bytes;
    const auto endet = [&](char c) { return c == '\r' || c == '\n' || (c == trennzeichen_ && !letztes); };
    const char *const schluss = bytes.constData() + bytes.size();
    return std::find_if(bytes.constData() + stelle_, schluss, endet) - bytes.constData();
}

void TextSaetze::Zeilenende()
{
    const QByteArray &bytes = inhalt_.bytes;
    const qsizetype von = stelle_;
    if (stelle_ < bytes.size())
        stelle_ += bytes[stelle_] == '\r' && stelle_ + 1 < bytes.size() && bytes[stelle_ + 1] == '\n' ? 2 : 1;
    zaehler_.Weiter(bytes.constData() + von, bytes.constData() + stelle_);
}

QString InAnfuehrungszeichen(QString text)
{
    return u'"' + text.replace(u'"', u"\"\""_s) + u'"';
}

} // namespace paukfix
