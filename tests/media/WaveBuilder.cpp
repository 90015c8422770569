// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "WaveBuilder.h"

#include <QtEndian>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace paukfix {

namespace {

qint16 Clamped(int value)
{
    return static_cast<qint16>(
        std::clamp<int>(value, std::numeric_limits<qint16>::min(), std::numeric_limits<qint16>::max()));
}

// One channel of an IMA encoder, which knows what the decoder will make of its codes.
class ImaChannel
{
public:
    int index = 0;
    int predicted = 0;

    int Encode(int sample)
    {
        const int step = Steps.at(static_cast<size_t>(index));
        int rest = sample - predicted;
        int code = rest < 0 ? 8 : 0;
        rest = std::abs(rest);
        int change = step >> 3;
        for (int bit = 4, part = step; bit > 0; bit >>= 1, part >>= 1) {
            if (rest >= part) {
                code |= bit;
                rest -= part;
                change += part;
            }
        }
        predicted = Clamped(predicted + ((code & 8) != 0 ? -change : change));
        static constexpr std::array<int, 8> IndexChange = {-1, -1, -1, -1, 2, 4, 6, 8};
        index = std::clamp(index + IndexChange.at(static_cast<size_t>(code & 7)), 0, 88);
        return code;
    }

private:
    static constexpr std::array<int, 89> Steps = {
        7,    8,     9,     10,    11,    12,    13,    14,    16,    17,    19,    21,    23,    25,   28,
        31,   34,    37,    41,    45,    50,    55,    60,    66,    73,    80,    88,    97,    107,  118,
        130,  143,   157,   173,   190,   209,   230,   253,   279,   307,   337,   371,   408,   449,  494,
        544,  598,   658,   724,   796,   876,   963,   1060,  1166,  1282,  1411,  1552,  1707,  1878, 2066,
        2272, 2499,  2749,  3024,  3327,  3660,  4026,  4428,  4871,  5358,  5894,  6484,  7132,  7845, 8630,
        9493, 10442, 11487, 12635, 13899, 15289, 16818, 18500, 20350, 22385, 24623, 27086, 29794, 32767};
};

} // namespace

QByteArray Le16(int value)
{
    QByteArray bytes(2, '\0');
    qToLittleEndian(static_cast<quint16>(value), bytes.data());
    return bytes;
}

QByteArray Le32(quint32 value)
{
    QByteArray bytes(4, '\0');
    qToLittleEndian(value, bytes.data());
    return bytes;
}

QByteArray Chunk(const char *name, const QByteArray &data, qint64 declared, bool padded)
{
    QByteArray chunk = name + Le32(static_cast<quint32>(declared < 0 ? data.size() : declared)) + data;
    if (padded && data.size() % 2 == 1)
        chunk += '\0';
    return chunk;
}

QByteArray Riff(const QByteArray &chunks, qint64 declared)
{
    return "RIFF" + Le32(static_cast<quint32>(declared < 0 ? chunks.size() + 4 : declared)) + "WAVE" + chunks;
}

QByteArray FormatChunk(const WaveFormat &format)
{
    return Chunk("fmt ", Le16(format.tag) + Le16(format.channels) + Le32(format.rate) +
                             Le32(format.rate * format.blockAlign) + Le16(format.blockAlign) +
                             Le16(format.bits) + format.extra);
}

QByteArray PlainWave(const WaveFormat &format, const QByteArray &data)
{
    return Riff(FormatChunk(format) + Chunk("data", data));
}

QList<qint16> Melody(int count, int pitch)
{
    QList<qint16> samples;
    for (int i = 0; i < count; ++i)
        samples.append(
            static_cast<qint16>(std::lround(12000 * std::sin(i * 0.03 * pitch) + 4000 * std::sin(i * 0.2))));
    return samples;
}

QByteArray Bytes(const QList<qint16> &samples)
{
    QByteArray bytes;
    for (const qint16 sample : samples)
        bytes += Le16(sample);
    return bytes;
}

BuiltWave Pcm(int bits, int channels, int frames)
{
    const WaveFormat format{.channels = static_cast<quint16>(channels),
                            .blockAlign = static_cast<quint16>(channels * bits / 8),
                            .bits = static_cast<quint16>(bits),
                            .extra = {}};
    QByteArray data, heard;
    for (const qint16 sample : Melody(frames * channels)) {
        const QByteArray low = Le16(sample * 7); // something in the lower bytes as well
        switch (bits) {
        case 8:
            data += static_cast<char>(sample / 256 + 128);
            break;
        case 16:
            data += Le16(sample);
            break;
        case 24:
            data += low.first(1) + Le16(sample);
            heard += '\0' + low.first(1) + Le16(sample); // 24 bits are played as the upper ones of 32
            break;
        default:
            data += low + Le16(sample);
        }
    }
    return {PlainWave(format, data), heard.isEmpty() ? data : heard};
}

BuiltWave Float(int frames)
{
    QByteArray data;
    for (const qint16 sample : Melody(frames)) {
        const float value = static_cast<float>(sample) / 32768;
        data.append(reinterpret_cast<const char *>(&value), sizeof value);
    }
    return {PlainWave({.tag = 3, .blockAlign = 4, .bits = 32, .extra = {}}, data), data};
}

BuiltWave ImaAdpcm(int channels, int blocks, int blockAlign)
{
    const int groups = (blockAlign - 4 * channels) / (4 * channels); // of 8 samples
    const int framesPerBlock = groups * 8 + 1;
    const QList<qint16> melody = Melody(blocks * framesPerBlock);
    QByteArray data, heard;
    QList<ImaChannel> encoders(channels);
    for (int block = 0; block < blocks; ++block) {
        // The second channel hears the melody turned round.
        const auto sample = [&](int frame, int channel) {
            const int value = melody.at(block * framesPerBlock + frame);
            return channel == 0 ? value : -value;
        };
        QList<QList<qint16>> decoded(channels);
        for (int c = 0; c < channels; ++c) {
            encoders[c].predicted = sample(0, c);
            decoded[c].append(static_cast<qint16>(sample(0, c)));
            data += Le16(sample(0, c)) + static_cast<char>(encoders[c].index) + '\0';
        }
        for (int group = 0; group < groups; ++group) {
            for (int c = 0; c < channels; ++c) {
                for (int i = 0; i < 8; i += 2) {
                    const int low = encoders[c].Encode(sample(1 + group * 8 + i, c));
                    decoded[c].append(static_cast<qint16>(encoders[c].predicted));
                    const int high = encoders[c].Encode(sample(2 + group * 8 + i, c));
                    decoded[c].append(static_cast<qint16>(encoders[c].predicted));
                    data += static_cast<char>(high << 4 | low);
                }
            }
        }
        for (int frame = 0; frame < framesPerBlock; ++frame)
            for (int c = 0; c < channels; ++c)
                heard += Le16(decoded.at(c).at(frame));
    }
    const WaveFormat format{.tag = 17,
                            .channels = static_cast<quint16>(channels),
                            .blockAlign = static_cast<quint16>(blockAlign),
                            .bits = 4,
                            .extra = Le16(2) + Le16(framesPerBlock)};
    return {PlainWave(format, data), heard};
}

BuiltWave MsAdpcm(int blocks, int blockAlign)
{
    static constexpr std::array<int, 14> Coefficients = {256, 0,   512, -256, 0,    0,   192,
                                                         64,  240, 0,   460,  -208, 392, -232};
    static constexpr std::array<int, 16> Adaptation = {230, 230, 230, 230, 307, 409, 512, 614,
                                                       768, 614, 512, 409, 307, 230, 230, 230};
    const int framesPerBlock = 2 + (blockAlign - 7) * 2;
    const QList<qint16> melody = Melody(blocks * framesPerBlock);
    QByteArray data, heard;
    for (int block = 0; block < blocks; ++block) {
        const int start = block * framesPerBlock;
        const size_t set = static_cast<size_t>(block % 2); // the two sets without rounding
        int older = melody.at(start), newer = melody.at(start + 1), delta = 64;
        data += static_cast<char>(set) + Le16(delta) + Le16(newer) + Le16(older);
        heard += Le16(older) + Le16(newer);
        const auto encode = [&](int sample) {
            const int predicted =
                (newer * Coefficients.at(set * 2) + older * Coefficients.at(set * 2 + 1)) / 256;
            const int code = std::clamp((sample - predicted) / delta, -8, 7);
            older = newer;
            newer = Clamped(predicted + code * delta);
            heard += Le16(newer);
            delta = std::max(16, delta * Adaptation.at(static_cast<size_t>(code & 15)) / 256);
            return code & 15;
        };
        for (int i = 2; i < framesPerBlock; i += 2) {
            const int high = encode(melody.at(start + i));
            data += static_cast<char>(high << 4 | encode(melody.at(start + i + 1)));
        }
    }
    QByteArray extra = Le16(32) + Le16(framesPerBlock) + Le16(7);
    for (const int coefficient : Coefficients)
        extra += Le16(coefficient);
    const WaveFormat format{
        .tag = 2, .blockAlign = static_cast<quint16>(blockAlign), .bits = 4, .extra = extra};
    return {PlainWave(format, data), heard};
}

} // namespace paukfix
