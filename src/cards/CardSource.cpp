// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardSource.h"

#include "CardRecord.h"

#include <array>

namespace paukfix {

const std::vector<int> &CopiedColumns()
{
    static const std::vector<int> columns = [] {
        constexpr std::array Names{
            "Antworttyp",         "Picture_1_Name",     "Picture_2_Name",
            "Picture_3_Name",     "Picture_4_Name",     "Picture_5_Name",
            "Picture_6_Name",     "Picture_7_Name",     "Picture_8_Name",
            "Picture_9_Name",     "PictureTop",         "Pictureleft",
            "Pictureheight",      "Picturewidth",       "Frage",
            "Frage_Klartext",     "Antwort_1",          "Antwort_2",
            "Antwort_3",          "Antwort_4",          "Antwort_5",
            "Antwort_ch_1",       "Antwort_ch_2",       "Antwort_ch_3",
            "Antwort_ch_4",       "Antwort_ch_5",       "Antwort_1_Klartext",
            "Antwort_2_Klartext", "Antwort_3_Klartext", "Antwort_4_Klartext",
            "Antwort_5_Klartext",
        };
        std::vector<int> found;
        found.reserve(Names.size());
        for (const char *name : Names)
            found.push_back(CardColumnIndex(QString::fromLatin1(name)));
        return found;
    }();
    return columns;
}

} // namespace paukfix
