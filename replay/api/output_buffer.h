#pragma once

#include "replay/api/variant_writer.h"

#include <cstddef>
#include <string_view>

#include <windows.h>

namespace replay::api {

// Stores the required size in `used`. Returns 122 if the buffer is too small or null, otherwise 0.
DWORD FitInto(std::size_t needed, DWORD available, const void* buffer, DWORD* used);

// Copies a text with its terminator. Sizes are in UTF-16 code units. Returns as FitInto.
DWORD ReturnText(std::wstring_view text, DWORD available, wchar_t* buffer, DWORD* used);

// Copies the variants that `write` writes. Sizes are in bytes. Returns as FitInto.
template <typename Write>
DWORD ReturnVariants(std::size_t count, Write&& write, DWORD available, void* buffer, DWORD* used) {
    VariantWriter measure(nullptr, count);
    write(measure);
    const DWORD error = FitInto(measure.Size(), available, buffer, used);
    if (error != ERROR_SUCCESS) {
        return error;
    }
    VariantWriter writer(buffer, count);
    write(writer);
    return ERROR_SUCCESS;
}

}  // namespace replay::api
