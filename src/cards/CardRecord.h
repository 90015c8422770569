// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QString>

#include <span>
#include <variant>

namespace paukfix {

// One row of table "Lernkarten" in memory, a member per column in column order. Null reads as 0, "" or false.
struct CardRecord
{
    double FrageNr = 0;
    double FachNr = 0;
    double FachLfdNr = 0;
    double Antworttyp = 0; // 1 typed answer, 2 ticking
    QString Picture_1_Name, Picture_2_Name, Picture_3_Name,
        Picture_4_Name; // pictures: question, right, wrong
    QString Picture_5_Name, Picture_6_Name, Picture_7_Name, Picture_8_Name; // 6 to 8 sounds, same moments
    QString Picture_1_type, Picture_2_type, Picture_3_type, Picture_4_type, Picture_5_type;
    QString Picture_6_type, Picture_7_type, Picture_8_type, Picture_9_type;
    QString Picture_9_Name; // the card's topic
    bool Picture_1_endlos = false, Picture_2_endlos = false, Picture_3_endlos = false;
    bool Picture_4_endlos = false, Picture_5_endlos = false, Picture_6_endlos = false;
    bool Picture_7_endlos = false, Picture_8_endlos = false, Picture_9_endlos = false;
    double PictureTop = 0, Pictureheight = 0, Pictureleft = 0, Picturewidth = 0; // twips
    QString Frage, Frage_Klartext;
    QString Antwort_1, Antwort_2, Antwort_3, Antwort_4, Antwort_5;
    bool Antwort_ch_1 = false, Antwort_ch_2 = false, Antwort_ch_3 = false, Antwort_ch_4 = false,
         Antwort_ch_5 = false;
    QString Antwort_1_Klartext, Antwort_2_Klartext, Antwort_3_Klartext, Antwort_4_Klartext,
        Antwort_5_Klartext;

    bool operator==(const CardRecord &) const = default;
};

// One column of the table: its name, the type it is declared with and the member that holds it.
struct CardColumn
{
    const char *name;
    const char *declaredType; // DOUBLE, TEXT(250), LONGTEXT or BOOLEAN
    std::variant<double CardRecord::*, QString CardRecord::*, bool CardRecord::*> member;
};

// The 52 columns in the order of the table.
std::span<const CardColumn> CardColumns();
inline constexpr int CardColumnCount = 52;
// Longest text of a TEXT(250) column, in characters.
inline constexpr int MaxTextLength = 250;

// Column number (0 to 51) of `name` without regard to case, -1 when there is none.
int CardColumnIndex(QStringView name);

} // namespace paukfix
