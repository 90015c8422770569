// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Tonwandlung.h"

#include "LateLibrary.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <sndfile.h>
#include <vector>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 GroessterTon = qint64{128} << 20; // bytes of samples: what is played at most
constexpr int MeisteKanaele = 8;
constexpr sf_count_t Stueck = 16384; // frames

// libsndfile, loaded with its decoders at the first sound that is converted: its functions.
struct Tonbibliothek
{
    decltype(&sf_open_virtual) open_virtual = nullptr;
    decltype(&sf_close) close = nullptr;
    decltype(&sf_command) command = nullptr;
    decltype(&sf_readf_short) readf_short = nullptr;
    decltype(&sf_writef_short) writef_short = nullptr;
    bool da = false; // the machine has it

    Tonbibliothek()
    {
        LateLibrary bibliothek("libsndfile.so.1");
        bibliothek.Find(open_virtual, "sf_open_virtual");
        bibliothek.Find(close, "sf_close");
        bibliothek.Find(command, "sf_command");
        bibliothek.Find(readf_short, "sf_readf_short");
        bibliothek.Find(writef_short, "sf_writef_short");
        da = bibliothek.IsComplete();
    }
};

const Tonbibliothek &Sndfile()
{
    static const Tonbibliothek bibliothek;
    return bibliothek;
}

// Bytes in memory as a file.
struct Speicher
{
    QByteArray bytes;
    sf_count_t platz = 0;
};

sf_count_t Laenge(void *von)
{
    return static_cast<Speicher *>(von)->bytes.size();
}

sf_count_t Suchen(sf_count_t wohin, int ab, void *von)
{
    auto *speicher = static_cast<Speicher *>(von);
    const sf_count_t basis = ab == SEEK_CUR ? speicher->platz : ab == SEEK_END ? Laenge(von) : 0;
    const sf_count_t ziel = basis + wohin;
    if (ziel < 0 || ziel > GroessterTon + 65536)
        return -1;
    speicher->platz = ziel;
    return ziel;
}

sf_count_t Lesen(void *ziel, sf_count_t zahl, void *von)
{
    auto *speicher = static_cast<Speicher *>(von);
    const sf_count_t da =
        std::clamp<sf_count_t>(Laenge(von) - speicher->platz, 0, std::max<sf_count_t>(zahl, 0));
    if (da > 0)
        std::memcpy(ziel, speicher->bytes.constData() + speicher->platz, static_cast<std::size_t>(da));
    speicher->platz += da;
    return da;
}

sf_count_t Schreiben(const void *quelle, sf_count_t zahl, void *nach)
{
    auto *speicher = static_cast<Speicher *>(nach);
    if (speicher->platz + zahl > speicher->bytes.size())
        speicher->bytes.resize(speicher->platz + zahl);
    std::memcpy(speicher->bytes.data() + speicher->platz, quelle, static_cast<std::size_t>(zahl));
    speicher->platz += zahl;
    return zahl;
}

sf_count_t Platz(void *von)
{
    return static_cast<Speicher *>(von)->platz;
}

struct Schluss
{
    void operator()(SNDFILE *datei) const { Sndfile().close(datei); }
};

using Datei = std::unique_ptr<SNDFILE, Schluss>;

Datei Oeffnen(Speicher &speicher, int wie, SF_INFO &info)
{
    static SF_VIRTUAL_IO wege{Laenge, Suchen, Lesen, Schreiben, Platz};
    return Datei(Sndfile().open_virtual(&wege, wie, &info, &speicher));
}

// What the program plays by itself.
bool IstSpielbareWelle(int format)
{
    constexpr std::array Arten{SF_FORMAT_PCM_16, SF_FORMAT_PCM_24,    SF_FORMAT_PCM_32,
                               SF_FORMAT_PCM_U8, SF_FORMAT_FLOAT,     SF_FORMAT_ULAW,
                               SF_FORMAT_ALAW,   SF_FORMAT_IMA_ADPCM, SF_FORMAT_MS_ADPCM};
    const int huelle = format & SF_FORMAT_TYPEMASK;
    return (huelle == SF_FORMAT_WAV || huelle == SF_FORMAT_WAVEX) &&
           std::find(Arten.begin(), Arten.end(), format & SF_FORMAT_SUBMASK) != Arten.end();
}

} // namespace

std::optional<Kartenmedium> AlsKartenton(const QByteArray &inhalt)
{
    if (!Sndfile().da)
        return std::nullopt;
    Speicher von{inhalt};
    SF_INFO info{};
    const Datei quelle = Oeffnen(von, SFM_READ, info);
    if (!quelle || info.channels < 1 || info.channels > MeisteKanaele || info.samplerate < 1)
        return std::nullopt;
    if (IstSpielbareWelle(info.format))
        return Kartenmedium{inhalt, u"wav"_s};
    Speicher nach;
    SF_INFO ziel{};
    ziel.channels = info.channels;
    ziel.samplerate = info.samplerate;
    ziel.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
    Datei welle = Oeffnen(nach, SFM_WRITE, ziel);
    if (!welle)
        return std::nullopt;
    Sndfile().command(quelle.get(), SFC_SET_SCALE_FLOAT_INT_READ, nullptr, SF_TRUE);
    std::vector<short> stueck(static_cast<std::size_t>(Stueck * info.channels));
    qint64 gesamt = 0;
    while (const sf_count_t gelesen = Sndfile().readf_short(quelle.get(), stueck.data(), Stueck)) {
        gesamt += gelesen * info.channels * 2;
        if (gelesen < 0 || gesamt > GroessterTon ||
            Sndfile().writef_short(welle.get(), stueck.data(), gelesen) != gelesen)
            return std::nullopt;
    }
    welle.reset();
    if (gesamt == 0)
        return std::nullopt;
    return Kartenmedium{std::move(nach.bytes), u"wav"_s};
}

} // namespace paukfix
