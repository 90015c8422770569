// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "WaveFile.h"

#include "Sdl.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <utility>

namespace paukfix {

namespace {

constexpr size_t MaxFormatBytes = 4096;
constexpr size_t MaxHeaderBytes = size_t{1024} * 1024; // chunks before the samples
constexpr int MinRate = 1000, MaxRate = 400'000;       // samples per second
constexpr Uint16 PcmTag = 1, FloatTag = 3, ExtensibleTag = 0xFFFE;

struct Range
{
    size_t start = 0;
    size_t length = 0;
};

// Finds the chunks of a wave file that count, whatever the lengths in the headers claim.
class Chunks
{
public:
    explicit Chunks(const std::vector<Uint8> &file) : file_(file) {}

    Range format, data;

    // False when there are no samples or no format before the end.
    bool Find()
    {
        if (file_.size() < 12 || Name(0) != "RIFF" || Name(8) != "WAVE")
            return false;
        size_t position = 12;
        while (file_.size() - position >= 8 && (format.length == 0 || data.length == 0)) {
            const size_t start = position + 8;
            const size_t declared = Number(position + 4);
            const size_t length = std::min(declared, file_.size() - start);
            if (format.length == 0 && Name(position) == "fmt ") {
                format = {start, std::min(length, MaxFormatBytes)};
            } else if (data.length == 0 && Name(position) == "data") {
                // A recorder that could not go back to its header leaves 0 there.
                const bool unknown = declared == 0 && !IsHeader(start);
                data = {start, unknown ? file_.size() - start : length};
            }
            position = Next(start, length);
        }
        return format.length > 0 && data.length > 0;
    }

private:
    std::string_view Name(size_t at) const { return {reinterpret_cast<const char *>(file_.data()) + at, 4}; }

    size_t Number(size_t at) const
    {
        return size_t{file_[at]} | size_t{file_[at + 1]} << 8 | size_t{file_[at + 2]} << 16 |
               size_t{file_[at + 3]} << 24;
    }

    bool IsHeader(size_t at) const
    {
        return file_.size() - at >= 8 &&
               std::ranges::all_of(Name(at), [](char c) { return c >= ' ' && c <= '~'; }) &&
               Number(at + 4) <= file_.size() - at - 8;
    }

    // A chunk of odd length is followed by a padding byte, which some writers forget.
    size_t Next(size_t start, size_t length) const
    {
        const size_t end = start + length;
        const bool padded = length % 2 == 1 && end < file_.size() && (!IsHeader(end) || IsHeader(end + 1));
        return padded ? end + 1 : end;
    }

    const std::vector<Uint8> &file_;
};

void Append(std::vector<Uint8> &out, std::string_view name, size_t length)
{
    out.insert(out.end(), name.begin(), name.end());
    for (int shift = 0; shift < 32; shift += 8)
        out.push_back(static_cast<Uint8>(length >> shift & 0xFF));
}

// How many bytes of samples one byte of the file becomes at most.
size_t Expansion(const std::vector<Uint8> &format)
{
    const auto word = [&](size_t at) {
        return at + 1 < format.size() ? static_cast<Uint16>(format[at] | format[at + 1] << 8) : Uint16{0};
    };
    const Uint16 tag = word(0) == ExtensibleTag ? word(24) : word(0);
    return tag == PcmTag || tag == FloatTag ? 1 : 4;
}

auto At(std::vector<Uint8> &file, size_t position)
{
    return file.begin() + static_cast<std::ptrdiff_t>(position);
}

// As much of it as can be played; `path` in UTF-8. Nothing where there is no such file.
std::optional<std::vector<Uint8>> ReadFile(const std::string &path)
{
    const std::filesystem::path name(std::u8string(path.begin(), path.end()));
    std::error_code error;
    if (path.find('\0') != std::string::npos || !std::filesystem::is_regular_file(name, error))
        return std::nullopt;
    const auto size = std::filesystem::file_size(name, error);
    std::ifstream stream(name, std::ios::binary);
    if (error || !stream)
        return std::nullopt;
    std::vector<Uint8> file(
        static_cast<size_t>(std::min<std::uintmax_t>(size, MaxWaveBytes + MaxHeaderBytes)));
    stream.read(reinterpret_cast<char *>(file.data()), static_cast<std::streamsize>(file.size()));
    file.resize(static_cast<size_t>(stream.gcount()));
    return file;
}

} // namespace

double Seconds(const Wave &wave)
{
    const int frame = SDL_AUDIO_BITSIZE(wave.spec.format) / 8 * wave.spec.channels;
    const double bytesPerSecond = static_cast<double>(frame) * wave.spec.freq;
    return bytesPerSecond > 0 ? static_cast<double>(wave.length) / bytesPerSecond : 0;
}

void Wave::Release::operator()(Uint8 *wave) const
{
    LoadSdl()->FreeWAV(wave);
}

std::optional<Wave> DecodeWave(std::vector<Uint8> file)
{
    Chunks chunks(file);
    const Sdl *sdl = LoadSdl();
    if (!chunks.Find() || sdl == nullptr)
        return std::nullopt;
    // SDL reserves what a header claims before it reads, so it gets a header that tells the truth.
    const std::vector<Uint8> format(At(file, chunks.format.start),
                                    At(file, chunks.format.start + chunks.format.length));
    file.erase(file.begin(), At(file, chunks.data.start));
    file.resize(std::min(chunks.data.length, MaxWaveBytes / Expansion(format)));
    const size_t padding = format.size() % 2;
    std::vector<Uint8> header;
    Append(header, "RIFF", 4 + 8 + format.size() + padding + 8 + file.size());
    Append(header, "WAVEfmt ", format.size());
    header.insert(header.end(), format.begin(), format.end());
    header.resize(header.size() + padding);
    Append(header, "data", file.size());
    file.insert(file.begin(), header.begin(), header.end());

    // A last block that is cut short plays as far as it goes.
    sdl->SetHint(SDL_HINT_WAVE_TRUNCATION, "dropframe");
    Wave wave;
    Uint8 *samples = nullptr;
    Uint32 length = 0;
    if (!sdl->LoadWAV_RW(sdl->RWFromConstMem(file.data(), static_cast<int>(file.size())), 1, &wave.spec,
                         &samples, &length))
        return std::nullopt;
    wave.samples.reset(samples);
    wave.length = length;
    // SDL takes any rate and any number of channels from the header, but cannot play them all.
    if (length == 0 || wave.spec.freq < MinRate || wave.spec.freq > MaxRate || wave.spec.channels > 8)
        return std::nullopt;
    return wave;
}

std::optional<Wave> LoadWave(const std::string &path)
{
    std::optional<std::vector<Uint8>> file = ReadFile(path);
    return file ? DecodeWave(std::move(*file)) : std::nullopt;
}

bool IsWave(const std::string &path)
{
    std::optional<std::vector<Uint8>> file = ReadFile(path);
    if (!file)
        return false;
    return LoadSdl() == nullptr ? Chunks(*file).Find() : DecodeWave(std::move(*file)).has_value();
}

} // namespace paukfix
