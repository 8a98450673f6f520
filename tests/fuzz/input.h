#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include <fuzzer/FuzzedDataProvider.h>

namespace tavrin::fuzz {

// Ends the run, with the input kept, when a property does not hold.
inline void Require(bool holds, const char* property) {
    if (!holds) {
        std::fprintf(stderr, "does not hold: %s\n", property);
        std::abort();
    }
}

// Any UTF-16 text, lone surrogates included: bytes below 0xC0 are a unit each, so that texts in
// a corpus can be read; another one is the upper half of a unit.
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

// The same without zeros: such a text ends at the first.
inline std::wstring ZeroFreeText(const std::string& bytes) {
    std::wstring text = WideText(bytes);
    std::erase(text, L'\0');
    return text;
}

}  // namespace tavrin::fuzz

// One run. libFuzzer's main calls it with one input after another.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
