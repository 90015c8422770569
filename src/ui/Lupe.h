// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QPaintDevice>
#include <QtGlobal>

namespace paukfix {

// What a text is measured for to be seen larger than its sizes say: a device of finer resolution than the one
// it is shown on. Nothing is painted on it.
class Lupe final : public QPaintDevice
{
public:
    // Shows on `schirm`, which outlives this.
    explicit Lupe(const QPaintDevice &schirm) : schirm_(schirm) {}

    void SetFaktor(double faktor) { faktor_ = faktor; }

    double Faktor() const { return faktor_; }

    QPaintEngine *paintEngine() const override { return nullptr; }

protected:
    int metric(PaintDeviceMetric was) const override
    {
        if (was == PdmDpiX)
            return qRound(schirm_.logicalDpiX() * faktor_);
        if (was == PdmDpiY)
            return qRound(schirm_.logicalDpiY() * faktor_);
        return QPaintDevice::metric(was);
    }

private:
    const QPaintDevice &schirm_;
    double faktor_ = 1;
};

} // namespace paukfix
