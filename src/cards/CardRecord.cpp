// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardRecord.h"

#include <QLatin1String>

#include <algorithm>
#include <array>

namespace paukfix {

static constexpr std::array<CardColumn, CardColumnCount> Columns{{
    {"FrageNr", "DOUBLE", &CardRecord::FrageNr},
    {"FachNr", "DOUBLE", &CardRecord::FachNr},
    {"FachLfdNr", "DOUBLE", &CardRecord::FachLfdNr},
    {"Antworttyp", "DOUBLE", &CardRecord::Antworttyp},
    {"Picture_1_Name", "TEXT(250)", &CardRecord::Picture_1_Name},
    {"Picture_2_Name", "TEXT(250)", &CardRecord::Picture_2_Name},
    {"Picture_3_Name", "TEXT(250)", &CardRecord::Picture_3_Name},
    {"Picture_4_Name", "TEXT(250)", &CardRecord::Picture_4_Name},
    {"Picture_5_Name", "TEXT(250)", &CardRecord::Picture_5_Name},
    {"Picture_6_Name", "TEXT(250)", &CardRecord::Picture_6_Name},
    {"Picture_7_Name", "TEXT(250)", &CardRecord::Picture_7_Name},
    {"Picture_8_Name", "TEXT(250)", &CardRecord::Picture_8_Name},
    {"Picture_1_type", "TEXT(250)", &CardRecord::Picture_1_type},
    {"Picture_2_type", "TEXT(250)", &CardRecord::Picture_2_type},
    {"Picture_3_type", "TEXT(250)", &CardRecord::Picture_3_type},
    {"Picture_4_type", "TEXT(250)", &CardRecord::Picture_4_type},
    {"Picture_5_type", "TEXT(250)", &CardRecord::Picture_5_type},
    {"Picture_6_type", "TEXT(250)", &CardRecord::Picture_6_type},
    {"Picture_7_type", "TEXT(250)", &CardRecord::Picture_7_type},
    {"Picture_8_type", "TEXT(250)", &CardRecord::Picture_8_type},
    {"Picture_9_type", "TEXT(250)", &CardRecord::Picture_9_type},
    {"Picture_9_Name", "TEXT(250)", &CardRecord::Picture_9_Name},
    {"Picture_1_endlos", "BOOLEAN", &CardRecord::Picture_1_endlos},
    {"Picture_2_endlos", "BOOLEAN", &CardRecord::Picture_2_endlos},
    {"Picture_3_endlos", "BOOLEAN", &CardRecord::Picture_3_endlos},
    {"Picture_4_endlos", "BOOLEAN", &CardRecord::Picture_4_endlos},
    {"Picture_5_endlos", "BOOLEAN", &CardRecord::Picture_5_endlos},
    {"Picture_6_endlos", "BOOLEAN", &CardRecord::Picture_6_endlos},
    {"Picture_7_endlos", "BOOLEAN", &CardRecord::Picture_7_endlos},
    {"Picture_8_endlos", "BOOLEAN", &CardRecord::Picture_8_endlos},
    {"Picture_9_endlos", "BOOLEAN", &CardRecord::Picture_9_endlos},
    {"PictureTop", "DOUBLE", &CardRecord::PictureTop},
    {"Pictureheight", "DOUBLE", &CardRecord::Pictureheight},
    {"Pictureleft", "DOUBLE", &CardRecord::Pictureleft},
    {"Picturewidth", "DOUBLE", &CardRecord::Picturewidth},
    {"Frage", "LONGTEXT", &CardRecord::Frage},
    {"Frage_Klartext", "LONGTEXT", &CardRecord::Frage_Klartext},
    {"Antwort_1", "LONGTEXT", &CardRecord::Antwort_1},
    {"Antwort_2", "LONGTEXT", &CardRecord::Antwort_2},
    {"Antwort_3", "LONGTEXT", &CardRecord::Antwort_3},
    {"Antwort_4", "LONGTEXT", &CardRecord::Antwort_4},
    {"Antwort_5", "LONGTEXT", &CardRecord::Antwort_5},
    {"Antwort_ch_1", "BOOLEAN", &CardRecord::Antwort_ch_1},
    {"Antwort_ch_2", "BOOLEAN", &CardRecord::Antwort_ch_2},
    {"Antwort_ch_3", "BOOLEAN", &CardRecord::Antwort_ch_3},
    {"Antwort_ch_4", "BOOLEAN", &CardRecord::Antwort_ch_4},
    {"Antwort_ch_5", "BOOLEAN", &CardRecord::Antwort_ch_5},
    {"Antwort_1_Klartext", "LONGTEXT", &CardRecord::Antwort_1_Klartext},
    {"Antwort_2_Klartext", "LONGTEXT", &CardRecord::Antwort_2_Klartext},
    {"Antwort_3_Klartext", "LONGTEXT", &CardRecord::Antwort_3_Klartext},
    {"Antwort_4_Klartext", "LONGTEXT", &CardRecord::Antwort_4_Klartext},
    {"Antwort_5_Klartext", "LONGTEXT", &CardRecord::Antwort_5_Klartext},
}};

std::span<const CardColumn> CardColumns()
{
    return Columns;
}

int CardColumnIndex(QStringView name)
{
    const auto found = std::ranges::find_if(Columns, [&](const CardColumn &column) {
        return name.compare(QLatin1String(column.name), Qt::CaseInsensitive) == 0;
    });
    return found == Columns.end() ? -1 : static_cast<int>(found - Columns.begin());
}

} // namespace paukfix
