// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "TextDatei.h"
#include "Zeilenzaehler.h"

#include <QChar>
#include <QString>

#include <vector>

namespace paukfix {

// How the fields of a text's records are parted.
struct Textform
{
    QChar trennzeichen = u'\t'; // an ASCII character
    // As in CSV: a field in quotes may hold separators and line breaks, and quotes that are doubled.
    bool anfuehrung = false;

    bool operator==(const Textform &) const = default;
};

struct Textfeld
{
    QString text;
    bool inAnfuehrung = false;
};

// The records of a text, one a line, or several lines where quotes hold line breaks. A line ends at CR LF, LF
// or CR, the last one also at the end of the file.
class TextSaetze
{
public:
    // Fields beyond `hoechstens` stay part of the last one with all their separators; 0: as many as there
    // are.
    TextSaetze(Textinhalt inhalt, const Textform &form, std::size_t hoechstens = 0);

    // False where there is no further record. A line without a separator is one field. Throws StoreError 13
    // with the line in which quotes begin that nothing ends.
    bool Naechster(std::vector<Textfeld> &felder);

    // The first line of the record that was read last, from 1.
    int Zeile() const { return zeile_; }

    // Whether something has stood behind the end of quotes, which then belongs to the field.
    bool Unsauber() const { return unsauber_; }

    // How far the text has been read, in bytes.
    int Gelesen() const { return static_cast<int>(stelle_); }

    int Gesamt() const { return static_cast<int>(inhalt_.bytes.size()); }

private:
    void Feld(Textfeld &feld, bool letztes);
    void InAnfuehrung();
    qsizetype Feldende(bool letztes) const;
    void Zeilenende();

    Textinhalt inhalt_;
    char trennzeichen_;
    bool anfuehrung_;
    std::size_t hoechstens_;
    qsizetype stelle_;
    QByteArray puffer_; // of a field in quotes
    Zeilenzaehler zaehler_;
    int zeile_ = 0;
    bool unsauber_ = false;
};

// A field as such a text holds it, in quotes.
QString InAnfuehrungszeichen(QString text);

} // namespace paukfix
