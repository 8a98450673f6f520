#include "window/harness/text_encoding.h"

#include <windows.h>

namespace tavrin::test {
namespace {

bool IsSurrogate(wchar_t unit) {
    return unit >= 0xD800 && unit <= 0xDFFF;
}

bool IsPair(std::wstring_view text, std::size_t at) {
    return text[at] <= 0xDBFF && at + 1 < text.size() && text[at + 1] >= 0xDC00 &&
           text[at + 1] <= 0xDFFF;
}

void AppendLoneSurrogate(std::string& bytes, wchar_t unit) {
    bytes += static_cast<char>(0xE0 | (unit >> 12));
    bytes += static_cast<char>(0x80 | ((unit >> 6) & 0x3F));
    bytes += static_cast<char>(0x80 | (unit & 0x3F));
}

void AppendCharacters(std::string& bytes, std::wstring_view text) {
    if (text.empty()) {
        return;
    }
    const int units = static_cast<int>(text.size());
    const int size =
        WideCharToMultiByte(CP_UTF8, 0, text.data(), units, nullptr, 0, nullptr, nullptr);
    std::string converted(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), units, converted.data(), size, nullptr, nullptr);
    bytes += converted;
}

}  // namespace

std::string ToUtf8(std::wstring_view text) {
    std::string bytes;
    std::size_t start = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (!IsSurrogate(text[at])) {
            continue;
        }
        if (IsPair(text, at)) {
            ++at;
            continue;
        }
        AppendCharacters(bytes, text.substr(start, at - start));
        AppendLoneSurrogate(bytes, text[at]);
        start = at + 1;
    }
    AppendCharacters(bytes, text.substr(start));
    return bytes;
}

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
