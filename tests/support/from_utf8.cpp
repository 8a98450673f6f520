#include "support/from_utf8.h"

#include <windows.h>

namespace tavrin::test {

std::wstring FromUtf8(std::string_view bytes) {
    if (bytes.empty()) {
        return {};
    }
    const int size = static_cast<int>(bytes.size());
    const int units = MultiByteToWideChar(CP_UTF8, 0, bytes.data(), size, nullptr, 0);
    std::wstring text(static_cast<std::size_t>(units), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, bytes.data(), size, text.data(), units);
    return text;
}

}  // namespace tavrin::test
