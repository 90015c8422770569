// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QByteArray>
#include <QList>

namespace paukfix {

// Builds wave files, right ones and careless ones, byte by byte.

struct WaveFormat
{
    quint16 tag = 1; // 1 PCM, 3 float, 2 MS ADPCM, 17 IMA ADPCM
    quint16 channels = 1;
    quint32 rate = 22050;
    quint16 blockAlign = 2;
    quint16 bits = 16;
    QByteArray extra; // what follows the 16 bytes of the plain format
};

// A file together with what a device gets to hear of it.
struct BuiltWave
{
    QByteArray file;
    QByteArray heard; // raw samples, little endian
};

QByteArray Le16(int value);
QByteArray Le32(quint32 value);

// `declared` stands in the header where it is not negative.
QByteArray Chunk(const char *name, const QByteArray &data, qint64 declared = -1, bool padded = true);
QByteArray Riff(const QByteArray &chunks, qint64 declared = -1);
QByteArray FormatChunk(const WaveFormat &format);
QByteArray PlainWave(const WaveFormat &format, const QByteArray &data);

// A mono melody of `count` samples, 16 bits each.
QList<qint16> Melody(int count, int pitch = 1);
QByteArray Bytes(const QList<qint16> &samples);

BuiltWave Pcm(int bits, int channels, int frames);
BuiltWave Float(int frames);
// Whole blocks of ADPCM, each of `blockAlign` bytes.
BuiltWave ImaAdpcm(int channels, int blocks, int blockAlign = 256);
BuiltWave MsAdpcm(int blocks, int blockAlign = 256);

} // namespace paukfix
