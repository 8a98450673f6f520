#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include <windows.h>

namespace replay::api {

// Parses "{555908d1-a6d7-4695-8e1e-26931d2012f4}", with or without braces.
std::optional<GUID> ParseGuid(std::string_view text);

constexpr std::size_t kMostSubAuthorities = 15;

// A SID in binary form.
struct BinarySid {
    std::array<std::uint8_t, 8 + 4 * kMostSubAuthorities> bytes{};
    std::size_t size = 0;
};

// Parses a SID such as "S-1-5-18".
std::optional<BinarySid> ParseSid(std::string_view text);

}  // namespace replay::api
