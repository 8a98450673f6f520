#include "text.h"

#include <windows.h>

#include <cwctype>
#include <locale.h>

#include <optional>

namespace native {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool IsSurrogate(char32_t unit) {
    return unit >= 0xD800 && unit < 0xE000;
}

bool IsPair(char32_t high, char32_t low) {
    return high >= 0xD800 && high < 0xDC00 && low >= 0xDC00 && low < 0xE000;
}

void AppendUtf8(std::string& out, char32_t code) {
    const auto put = [&out](char32_t byte) { out.push_back(static_cast<char>(byte)); };
    constexpr char32_t kLeads[] = {0x00, 0xC0, 0xE0, 0xF0};
    const int trails = code < 0x80 ? 0 : code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;
    put(kLeads[trails] | code >> (6 * trails));
    for (int i = trails - 1; i >= 0; --i)
        put(0x80 | (code >> (6 * i) & 0x3F));
}

struct Utf8Text {
    std::string bytes;
    bool wellFormed = true;
};

Utf8Text Encode(std::wstring_view wide) {
    Utf8Text text;
    for (std::size_t i = 0; i < wide.size(); ++i) {
        auto code = static_cast<char32_t>(wide[i]);
        if (i + 1 < wide.size() && IsPair(code, static_cast<char32_t>(wide[i + 1]))) {
            ++i;
            code = 0x10000 + ((code - 0xD800) << 10) + (static_cast<char32_t>(wide[i]) - 0xDC00);
        }
        text.wellFormed = text.wellFormed && !IsSurrogate(code);
        AppendUtf8(text.bytes, IsSurrogate(code) ? kReplacement : code);
    }
    return text;
}

// Removes the first character and returns it. An ill-formed byte yields U+FFFD.
char32_t TakeCharacter(std::string_view& bytes) {
    const auto lead = static_cast<unsigned char>(bytes.front());
    bytes.remove_prefix(1);
    if (lead < 0x80)
        return lead;
    const std::size_t trails = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
    if (lead < 0xC2 || lead > 0xF4 || bytes.size() < trails)
        return kReplacement;
    char32_t code = lead & (0x3FU >> trails);
    for (const char trail : bytes.substr(0, trails)) {
        if ((static_cast<unsigned char>(trail) & 0xC0U) != 0x80U)
            return kReplacement;
        code = code << 6 | (static_cast<unsigned char>(trail) & 0x3FU);
    }
    bytes.remove_prefix(trails);
    return code;
}

}  // namespace

std::string ToUtf8(std::wstring_view wide) {
    return Encode(wide).bytes;
}

std::wstring ToWide(std::string_view utf8) {
    std::wstring wide;
    while (!utf8.empty()) {
        const char32_t code = TakeCharacter(utf8);
        if (code < 0x10000) {
            wide += static_cast<wchar_t>(code);
        } else {
            wide += static_cast<wchar_t>(0xD800 + ((code - 0x10000) >> 10));
            wide += static_cast<wchar_t>(0xDC00 + ((code - 0x10000) & 0x3FF));
        }
    }
    return wide;
}

unsigned ReturnText(std::wstring_view text, wchar_t* buffer, unsigned room) {
    const auto length = static_cast<unsigned>(text.size());
    if (length >= room)
        return length + 1;
    buffer[text.copy(buffer, length)] = L'\0';
    return length;
}

}  // namespace native

namespace {

// Copies a converted text. If `room` is 0, only returns its length.
template <typename Text, typename Unit>
int HandOver(const Text& text, Unit* out, int room) {
    const int size = static_cast<int>(text.size());
    if (room == 0)
        return size;
    if (room < size) {
        SetLastError(ERROR_INSUFFICIENT_BUFFER);
        return 0;
    }
    text.copy(out, text.size());
    return size;
}

}  // namespace

int WideCharToMultiByte(UINT, DWORD flags, LPCWSTR wide, int units, LPSTR bytes, int room, LPCSTR,
                        LPBOOL) {
    const native::Utf8Text text =
        native::Encode(std::wstring_view(wide, static_cast<std::size_t>(units)));
    if ((flags & WC_ERR_INVALID_CHARS) != 0 && !text.wellFormed) {
        SetLastError(ERROR_NO_UNICODE_TRANSLATION);
        return 0;
    }
    return HandOver(text.bytes, bytes, room);
}

int MultiByteToWideChar(UINT, DWORD, LPCSTR bytes, int count, LPWSTR wide, int room) {
    return HandOver(native::ToWide(std::string_view(bytes, static_cast<std::size_t>(count))), wide,
                    room);
}

DWORD CharLowerBuffW(LPWSTR text, DWORD units) {
    static const locale_t locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    for (DWORD i = 0; i < units; ++i)
        text[i] = static_cast<wchar_t>(towlower_l(static_cast<wint_t>(text[i]), locale));
    return units;
}
