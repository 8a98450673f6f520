#include "replay/api/output_buffer.h"

namespace replay::api {

DWORD FitInto(std::size_t needed, DWORD available, const void* buffer, DWORD* used) {
    if (used != nullptr) {
        *used = static_cast<DWORD>(needed);
    }
    return buffer == nullptr || needed > available ? ERROR_INSUFFICIENT_BUFFER : ERROR_SUCCESS;
}

DWORD ReturnText(std::wstring_view text, DWORD available, wchar_t* buffer, DWORD* used) {
    const DWORD error = FitInto(text.size() + 1, available, buffer, used);
    if (error != ERROR_SUCCESS) {
        return error;
    }
    buffer[text.copy(buffer, text.size())] = L'\0';
    return ERROR_SUCCESS;
}

}  // namespace replay::api
