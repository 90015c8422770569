// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "ZipWriter.h"

#include "Libzip.h"
#include "SafeFile.h"
#include "StoreError.h"

#include <QFile>

#include <cerrno>
#include <exception>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

[[noreturn]] void ThrowZipError(const zip_error_t &error, const QString &path)
{
    if (LoadLibzip().error_system_type(&error) == ZIP_ET_SYS && LoadLibzip().error_code_system(&error) != 0)
        ThrowFileError(LoadLibzip().error_code_system(&error), path);
    throw StoreError(Fehler::GeraeteFehler, u"Die Datei „%1“ konnte nicht geschrieben werden."_s.arg(path));
}

// What libzip's callbacks share: they are C and must not throw.
struct Watch
{
    const Progress &progress;
    std::exception_ptr thrown = nullptr;
};

} // namespace

void ZipWriter::Close::operator()(zip *archive) const
{
    LoadLibzip().discard(archive);
}

ZipWriter::ZipWriter(const QString &path) : path_(path)
{
    int code = 0;
    zip_.reset(LoadLibzip().open(QFile::encodeName(path).constData(), ZIP_CREATE | ZIP_EXCL, &code));
    if (!zip_) {
        const int system = errno;
        zip_error_t error;
        LoadLibzip().error_init_with_code(&error, code);
        if (LoadLibzip().error_system_type(&error) == ZIP_ET_SYS)
            ThrowFileError(system, path);
        ThrowZipError(error, path);
    }
}

ZipWriter::~ZipWriter() = default;

void ZipWriter::AddSource(const QString &name, zip_source *source, Packing packing)
{
    if (!source)
        throw StoreError(Fehler::ZuWenigSpeicher, u"Nicht genügend Speicher."_s);
    const zip_int64_t index =
        LoadLibzip().file_add(zip_.get(), name.toUtf8().constData(), source, ZIP_FL_ENC_UTF_8);
    if (index < 0) {
        LoadLibzip().source_free(source);
        throw StoreError(Fehler::DoppelterSchluessel,
                         u"Die Datei „%1“ lässt sich nicht in das Paket legen."_s.arg(name));
    }
    const zip_int32_t method = packing == Packing::Store ? ZIP_CM_STORE : ZIP_CM_DEFLATE;
    LoadLibzip().set_file_compression(zip_.get(), static_cast<zip_uint64_t>(index), method, 0);
}

void ZipWriter::Add(const QString &name, const QByteArray &content, Packing packing)
{
    contents_.push_back(content);
    AddSource(name,
              LoadLibzip().source_buffer(zip_.get(), contents_.back().constData(),
                                         static_cast<std::size_t>(content.size()), 0),
              packing);
}

void ZipWriter::AddFile(const QString &name, const QString &path, Packing packing)
{
    AddSource(name, LoadLibzip().source_file(zip_.get(), QFile::encodeName(path).constData(), 0, -1),
              packing);
}

void ZipWriter::Finish(const Progress &progress)
{
    Watch watch{progress};
    if (progress) {
        LoadLibzip().register_progress_callback_with_state(
            zip_.get(), 0.001,
            [](zip *, double done, void *state) {
                auto *told = static_cast<Watch *>(state);
                try {
                    if (!told->thrown)
                        told->progress(static_cast<int>(done * 1000), 1000);
                } catch (...) {
                    told->thrown = std::current_exception();
                }
            },
            nullptr, &watch);
        LoadLibzip().register_cancel_callback_with_state(
            zip_.get(), [](zip *, void *state) { return static_cast<Watch *>(state)->thrown ? 1 : 0; },
            nullptr, &watch);
    }
    const int failed = LoadLibzip().close(zip_.get());
    if (failed == 0)
        static_cast<void>(zip_.release()); // closed
    if (watch.thrown)
        std::rethrow_exception(watch.thrown);
    if (failed != 0)
        ThrowZipError(*LoadLibzip().get_error(zip_.get()), path_);
}

} // namespace paukfix
