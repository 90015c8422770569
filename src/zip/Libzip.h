// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <zip.h>

namespace paukfix {

// libzip, loaded with its cryptography at the first package. Each member is the function of libzip of that
// name.
struct Libzip
{
    decltype(&zip_close) close = nullptr;
    decltype(&zip_discard) discard = nullptr;
    decltype(&zip_error_code_system) error_code_system = nullptr;
    decltype(&zip_error_init_with_code) error_init_with_code = nullptr;
    decltype(&zip_error_system_type) error_system_type = nullptr;
    decltype(&zip_fclose) fclose = nullptr;
    decltype(&zip_fdopen) fdopen = nullptr;
    decltype(&zip_file_add) file_add = nullptr;
    decltype(&zip_file_get_external_attributes) file_get_external_attributes = nullptr;
    decltype(&zip_fopen_index) fopen_index = nullptr;
    decltype(&zip_fread) fread = nullptr;
    decltype(&zip_get_error) get_error = nullptr;
    decltype(&zip_get_num_entries) get_num_entries = nullptr;
    decltype(&zip_open) open = nullptr;
    decltype(&zip_register_cancel_callback_with_state) register_cancel_callback_with_state = nullptr;
    decltype(&zip_register_progress_callback_with_state) register_progress_callback_with_state = nullptr;
    decltype(&zip_set_file_compression) set_file_compression = nullptr;
    decltype(&zip_source_buffer) source_buffer = nullptr;
    decltype(&zip_source_file) source_file = nullptr;
    decltype(&zip_source_free) source_free = nullptr;
    decltype(&zip_stat_index) stat_index = nullptr;
};

// Throws StoreError where the machine has no libzip.
const Libzip &LoadLibzip();

} // namespace paukfix
