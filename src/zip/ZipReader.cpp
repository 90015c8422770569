// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "ZipReader.h"

#include "Libzip.h"
#include "StoreError.h"

#include <algorithm>
#include <array>
#include <sys/stat.h>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

// A text packs to a tenth, an empty database to a hundredth; what goes beyond was made to harm.
constexpr qint64 MostTimes = 200;
constexpr qint64 AlwaysAllowed = qint64{64} << 20; // bytes
constexpr qint64 MostUnpacked = qint64{8} << 30;   // bytes, of all entries together
constexpr zip_int64_t MostEntries = 300'000;

[[noreturn]] void ThrowNoZip(const QString &path)
{
    throw StoreError(Fehler::FormatUnbekannt,
                     u"Die Datei „%1“ ist kein Paket (Zip-Datei), oder sie ist beschädigt."_s.arg(path));
}

[[noreturn]] void ThrowDamaged(const QString &path)
{
    throw StoreError(Fehler::Beschaedigt, u"Das Paket „%1“ ist beschädigt."_s.arg(path));
}

[[noreturn]] void ThrowTooLarge(const QString &path)
{
    throw StoreError(
        Fehler::NichtErlaubt,
        u"Das Paket „%1“ würde sich auf ein Vielfaches seiner Größe entpacken und wird darum nicht gelesen."_s
            .arg(path));
}

bool IsRegular(zip *archive, zip_uint64_t index, const zip_stat_t &info)
{
    if ((info.valid & ZIP_STAT_ENCRYPTION_METHOD) != 0 && info.encryption_method != ZIP_EM_NONE)
        return false;
    zip_uint8_t system = 0;
    zip_uint32_t attributes = 0;
    if (LoadLibzip().file_get_external_attributes(archive, index, 0, &system, &attributes) != 0)
        return false;
    const auto kind = static_cast<mode_t>((attributes >> 16U) & S_IFMT);
    return system != ZIP_OPSYS_UNIX || kind == 0 || kind == S_IFREG;
}

struct CloseFile
{
    void operator()(zip_file_t *file) const { LoadLibzip().fclose(file); }
};

} // namespace

void ZipReader::Close::operator()(zip *archive) const
{
    LoadLibzip().discard(archive);
}

ZipReader::ZipReader(const QString &path) : path_(path)
{
    const FileHandle file = OpenRegular(path);
    const Libzip &library = LoadLibzip();
    const int own = dup(file.Get());
    if (own < 0)
        throw StoreError(Fehler::ZuVieleDateien, u"Es sind zu viele Dateien geöffnet."_s);
    int error = 0;
    zip_.reset(library.fdopen(own, 0, &error));
    if (!zip_) {
        close(own);
        ThrowNoZip(path);
    }
    Survey();
}

ZipReader::~ZipReader() = default;

void ZipReader::Survey()
{
    const zip_int64_t count = LoadLibzip().get_num_entries(zip_.get(), 0);
    if (count > MostEntries)
        throw StoreError(Fehler::NichtErlaubt, u"Das Paket „%1“ enthält zu viele Dateien."_s.arg(path_));
    qint64 packed = 0;
    qint64 unpacked = 0;
    entries_.reserve(static_cast<std::size_t>(count));
    for (zip_uint64_t index = 0; index < static_cast<zip_uint64_t>(count); ++index) {
        zip_stat_t info;
        constexpr zip_uint64_t Needed = ZIP_STAT_NAME | ZIP_STAT_SIZE | ZIP_STAT_COMP_SIZE;
        if (LoadLibzip().stat_index(zip_.get(), index, 0, &info) != 0 || (info.valid & Needed) != Needed)
            ThrowDamaged(path_);
        if (info.size > static_cast<zip_uint64_t>(MostUnpacked) ||
            info.comp_size > static_cast<zip_uint64_t>(MostUnpacked))
            ThrowTooLarge(path_);
        Entry entry{.name = QString::fromUtf8(info.name),
                    .packed = static_cast<qint64>(info.comp_size),
                    .unpacked = static_cast<qint64>(info.size),
                    .regular = IsRegular(zip_.get(), index, info)};
        packed += entry.packed;
        unpacked += entry.unpacked;
        if (unpacked > MostUnpacked)
            ThrowTooLarge(path_);
        if (places_.contains(entry.name))
            throw StoreError(Fehler::Beschaedigt,
                             u"Das Paket „%1“ enthält zwei Dateien gleichen Namens."_s.arg(path_));
        places_.insert(entry.name, entries_.size());
        entries_.push_back(std::move(entry));
    }
    // Entries may lie in each other: what counts is the file, not what they say of themselves.
    const FileHandle file = OpenRegular(path_);
    packed = std::min(packed, static_cast<qint64>(SizeOf(file, path_)));
    if (unpacked > AlwaysAllowed + packed * MostTimes)
        ThrowTooLarge(path_);
}

std::optional<std::size_t> ZipReader::Find(const QString &name) const
{
    const auto found = places_.constFind(name);
    return found == places_.constEnd() ? std::nullopt : std::optional(*found);
}

void ZipReader::Unpack(std::size_t entry, const std::function<void(Bytes piece)> &take) const
{
    const Entry &meant = entries_.at(entry);
    if (!meant.regular)
        throw StoreError(Fehler::NichtErlaubt,
                         u"Das Paket „%1“ enthält mit „%2“ etwas, das keine gewöhnliche Datei ist."_s.arg(
                             path_, meant.name));
    const std::unique_ptr<zip_file_t, CloseFile> file(LoadLibzip().fopen_index(zip_.get(), entry, 0));
    if (!file)
        ThrowDamaged(path_);
    std::array<std::uint8_t, 65536> piece{};
    qint64 sum = 0;
    for (;;) {
        const zip_int64_t got = LoadLibzip().fread(file.get(), piece.data(), piece.size());
        if (got < 0)
            ThrowDamaged(path_);
        if (got == 0)
            break;
        sum += got;
        if (sum > meant.unpacked)
            ThrowDamaged(path_);
        take({piece.data(), static_cast<std::size_t>(got)});
    }
    if (sum != meant.unpacked)
        ThrowDamaged(path_);
}

QByteArray ZipReader::Read(std::size_t entry, qint64 limit) const
{
    const Entry &meant = entries_.at(entry);
    if (meant.unpacked > limit)
        throw StoreError(Fehler::ZuWenigSpeicher,
                         u"Die Datei „%1“ im Paket „%2“ ist zu groß."_s.arg(meant.name, path_));
    QByteArray content;
    content.reserve(meant.unpacked);
    Unpack(entry, [&](Bytes piece) {
        content.append(reinterpret_cast<const char *>(piece.data()), static_cast<qsizetype>(piece.size()));
    });
    return content;
}

} // namespace paukfix
