#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include <fuzzer/FuzzedDataProvider.h>

namespace tavrin::fuzz {

// Aborts if a property does not hold; libFuzzer then saves the input.
inline void Require(bool holds, const char* property) {
    if (!holds) {
        std::fprintf(stderr, "does not hold: %s\n", property);
        std::abort();
    }
}

// Decodes bytes to UTF-16 text, possibly with lone surrogates. A byte below 0xC0 is one code unit,
// which keeps the corpus readable. Any other byte is the high half of a code unit and the next byte
// its low half.
inline std::wstring WideText(const std::string& bytes) {
    std::wstring text;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        const bool half = byte >= 0xC0 && i + 1 < bytes.size();
        text +=
            static_cast<wchar_t>(half ? byte << 8 | static_cast<unsigned char>(bytes[++i]) : byte);
    }
    return text;
}

// As WideText, without zeros, which would end a C string.
inline std::wstring ZeroFreeText(const std::string& bytes) {
    std::wstring text = WideText(bytes);
    std::erase(text, L'\0');
    return text;
}

}  // namespace tavrin::fuzz

// Runs one input. libFuzzer's main calls it repeatedly.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
