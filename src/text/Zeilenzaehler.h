// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

namespace paukfix {

// Counts the lines of a text that comes piece by piece: they end at CR LF, LF or CR.
class Zeilenzaehler
{
public:
    template <typename Zeichen>
    void Weiter(const Zeichen *von, const Zeichen *bis)
    {
        for (; von != bis; ++von) {
            if (*von == '\r' || (*von == '\n' && !nachCr_))
                ++zeile_;
            nachCr_ = *von == '\r';
        }
    }

    // In which the next character stands, from 1.
    int Zeile() const { return zeile_; }

private:
    int zeile_ = 1;
    bool nachCr_ = false;
};

} // namespace paukfix
