// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Sitzungsfolge.h"

#include <algorithm>

namespace paukfix {

void Sitzungsfolge::Sehen(const QDateTime &beginn, const QDate &heute, int richtig, int falsch,
                          const Kartenzahlen &karten)
{
    const auto gesehen = std::ranges::find(glieder_, beginn, &Glied::beginn);
    const auto stelle = static_cast<std::size_t>(gesehen - glieder_.begin());
    if (gesehen == glieder_.end()) {
        // What was taken back before can no longer be done again.
        if (!glieder_.empty()) {
            glieder_.resize(jetzt_ + 1);
            glieder_.back().richtig = richtig_;
            glieder_.back().falsch = falsch_;
        }
        glieder_.push_back({beginn, {}, 0, 0});
        jetzt_ = glieder_.size() - 1;
    } else if (stelle != jetzt_) {
        jetzt_ = stelle;
        for (std::size_t i = 0; i < glieder_.size(); ++i) {
            Glied &glied = glieder_[i];
            if (i != jetzt_)
                glied.mitschrift.Sehen(heute, i < jetzt_ ? glied.richtig : 0, i < jetzt_ ? glied.falsch : 0,
                                       karten);
        }
    }
    richtig_ = richtig;
    falsch_ = falsch;
    glieder_[jetzt_].mitschrift.Sehen(heute, richtig, falsch, karten);
}

Tagesaenderungen Sitzungsfolge::Abholen()
{
    Tagesaenderungen alle;
    for (Glied &glied : glieder_)
        Zusammenfassen(alle, glied.mitschrift.Abholen());
    return alle;
}

} // namespace paukfix
