// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "WaveFile.h"

#include <cstdlib>

using namespace paukfix;

// Any bytes are no wave, or a wave of bounded length whose every sample can be read.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const auto wave = DecodeWave({data, data + size});
    if (!wave)
        return 0;
    if (wave->spec.freq <= 0 || wave->spec.channels == 0 || wave->length > MaxWaveBytes)
        std::abort();
    volatile unsigned sum = 0;
    for (std::size_t i = 0; i < wave->length; ++i)
        sum = sum + wave->samples.get()[i];
    return 0;
}
