#include "replay/text/utf8.h"

#include <cstdint>

namespace replay::text {
namespace {

bool IsContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

// Length of the sequence with this lead byte, or 0 if it is no lead byte.
std::size_t SequenceLength(unsigned char lead) {
    if (lead < 0x80U) {
        return 1;
    }
    if (lead >= 0xC2U && lead <= 0xDFU) {
        return 2;
    }
    if (lead >= 0xE0U && lead <= 0xEFU) {
        return 3;
    }
    if (lead >= 0xF0U && lead <= 0xF4U) {
        return 4;
    }
    return 0;
}

std::uint32_t CodePoint(const char* bytes, std::size_t length) {
    const auto byte = [bytes](std::size_t i) {
        return static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[i]));
    };
    switch (length) {
        case 1: return byte(0);
        case 2: return ((byte(0) & 0x1FU) << 6) | (byte(1) & 0x3FU);
        case 3: return ((byte(0) & 0x0FU) << 12) | ((byte(1) & 0x3FU) << 6) | (byte(2) & 0x3FU);
        default:
            return ((byte(0) & 0x07U) << 18) | ((byte(1) & 0x3FU) << 12) |
                   ((byte(2) & 0x3FU) << 6) | (byte(3) & 0x3FU);
    }
}

// Length of the well-formed sequence at the start of the bytes, or 0 if there is none.
std::size_t ValidSequence(std::string_view bytes) {
    const std::size_t length = SequenceLength(static_cast<unsigned char>(bytes.front()));
    if (length == 0 || length > bytes.size()) {
        return 0;
    }
    for (std::size_t i = 1; i < length; ++i) {
        if (!IsContinuation(bytes[i])) {
            return 0;
        }
    }
    const std::uint32_t code = CodePoint(bytes.data(), length);
    constexpr std::uint32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
    return code >= kLeast[length] && code <= 0x10FFFF ? length : 0;
}

void AppendUtf8(std::string& out, std::uint32_t code) {
    const auto put = [&out](std::uint32_t byte) { out.push_back(static_cast<char>(byte)); };
    if (code < 0x80) {
        put(code);
    } else if (code < 0x800) {
        put(0xC0U | (code >> 6));
        put(0x80U | (code & 0x3FU));
    } else if (code < 0x10000) {
        put(0xE0U | (code >> 12));
        put(0x80U | ((code >> 6) & 0x3FU));
        put(0x80U | (code & 0x3FU));
    } else {
        put(0xF0U | (code >> 18));
        put(0x80U | ((code >> 12) & 0x3FU));
        put(0x80U | ((code >> 6) & 0x3FU));
        put(0x80U | (code & 0x3FU));
    }
}

bool IsHighSurrogate(wchar_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}

bool IsLowSurrogate(wchar_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

}  // namespace

std::wstring ToWide(std::string_view utf8) {
    std::wstring wide(utf8.size(), L'\0');
    wide.resize(static_cast<std::size_t>(CopyWide(utf8, wide.data()) - wide.data()));
    return wide;
}

std::string ToUtf8(std::wstring_view wide) {
    std::string utf8;
    utf8.reserve(wide.size());
    for (std::size_t i = 0; i < wide.size(); ++i) {
        std::uint32_t code = wide[i];
        if (IsHighSurrogate(wide[i]) && i + 1 < wide.size() && IsLowSurrogate(wide[i + 1])) {
            code = 0x10000U + ((code - 0xD800U) << 10) + (wide[i + 1] - 0xDC00U);
            ++i;
        }
        AppendUtf8(utf8, code);
    }
    return utf8;
}

std::size_t WideLength(std::string_view utf8) {
    std::size_t units = 0;
    for (const char byte : utf8) {
        if (!IsContinuation(byte)) {
            ++units;
        }
        if (static_cast<unsigned char>(byte) >= 0xF0U) {
            ++units;
        }
    }
    return units;
}

wchar_t* CopyWide(std::string_view utf8, wchar_t* out) {
    for (std::size_t i = 0; i < utf8.size();) {
        const auto lead = static_cast<unsigned char>(utf8[i]);
        if (lead < 0x80U) {
            *out++ = lead;
            ++i;
            continue;
        }
        const std::size_t length = ValidSequence(utf8.substr(i));
        if (length == 0) {
            *out++ = L'\xFFFD';
            ++i;
            continue;
        }
        const std::uint32_t code = CodePoint(utf8.data() + i, length);
        if (code >= 0x10000) {
            *out++ = static_cast<wchar_t>(0xD800U + ((code - 0x10000U) >> 10));
            *out++ = static_cast<wchar_t>(0xDC00U + ((code - 0x10000U) & 0x3FFU));
        } else {
            *out++ = static_cast<wchar_t>(code);
        }
        i += length;
    }
    return out;
}

std::size_t FindInvalidUtf8(std::string_view bytes) {
    for (std::size_t i = 0; i < bytes.size();) {
        if (static_cast<unsigned char>(bytes[i]) < 0x80U) {
            ++i;
            continue;
        }
        const std::size_t length = ValidSequence(bytes.substr(i));
        if (length == 0) {
            return i;
        }
        i += length;
    }
    return std::string_view::npos;
}

}  // namespace replay::text
