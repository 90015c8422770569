// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Libzip.h"

#include "LateLibrary.h"
#include "StoreError.h"

#include <optional>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

std::optional<Libzip> Load()
{
    LateLibrary library("libzip.so.4");
    Libzip zip;
    library.Find(zip.close, "zip_close");
    library.Find(zip.discard, "zip_discard");
    library.Find(zip.error_code_system, "zip_error_code_system");
    library.Find(zip.error_init_with_code, "zip_error_init_with_code");
    library.Find(zip.error_system_type, "zip_error_system_type");
    library.Find(zip.fclose, "zip_fclose");
    library.Find(zip.fdopen, "zip_fdopen");
    library.Find(zip.file_add, "zip_file_add");
    library.Find(zip.file_get_external_attributes, "zip_file_get_external_attributes");
    library.Find(zip.fopen_index, "zip_fopen_index");
    library.Find(zip.fread, "zip_fread");
    library.Find(zip.get_error, "zip_get_error");
    library.Find(zip.get_num_entries, "zip_get_num_entries");
    library.Find(zip.open, "zip_open");
    library.Find(zip.register_cancel_callback_with_state, "zip_register_cancel_callback_with_state");
    library.Find(zip.register_progress_callback_with_state, "zip_register_progress_callback_with_state");
    library.Find(zip.set_file_compression, "zip_set_file_compression");
    library.Find(zip.source_buffer, "zip_source_buffer");
    library.Find(zip.source_file, "zip_source_file");
    library.Find(zip.source_free, "zip_source_free");
    library.Find(zip.stat_index, "zip_stat_index");
    return library.IsComplete() ? std::optional(zip) : std::nullopt;
}

} // namespace

const Libzip &LoadLibzip()
{
    static const std::optional<Libzip> zip = Load();
    if (!zip)
        throw StoreError(Fehler::NichtErlaubt,
                         u"Pakete lassen sich nicht lesen und schreiben: Auf diesem Rechner fehlt libzip."_s);
    return *zip;
}

} // namespace paukfix
