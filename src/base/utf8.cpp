#include "base/utf8.h"

#include <stdexcept>

#include <windows.h>

namespace tavrin::base {
namespace {

// Returns the number of bytes written, or needed if room is 0.
int Convert(std::wstring_view text, char* bytes, int room) {
    const int count =
        WideCharToMultiByte(CP_UTF8, WC_ERR_INVALID_CHARS, text.data(),
                            static_cast<int>(text.size()), bytes, room, nullptr, nullptr);
    if (count == 0) {
        throw std::runtime_error("WideCharToMultiByte failed");
    }
    return count;
}

}  // namespace

std::string ToUtf8(std::wstring_view text) {
    if (text.empty()) {
        return {};
    }
    std::string bytes(static_cast<std::size_t>(Convert(text, nullptr, 0)), '\0');
    Convert(text, bytes.data(), static_cast<int>(bytes.size()));
    return bytes;
}

}  // namespace tavrin::base
