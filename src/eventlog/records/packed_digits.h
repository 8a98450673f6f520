#pragma once

#include <cstdint>
#include <string_view>

namespace tavrin::eventlog {

// The digits of a short text, four bits each.
using PackedDigits = std::uint64_t;

// 0x05032024070903 for "05/03/2024 07:09:03".
PackedDigits PackTime(std::wstring_view timeText);

// 0xffff4711 for "4711": 32 bits.
PackedDigits PackProcess(std::wstring_view processText);

// The text does not fit: a year below 1000 or above 9999, a process id of more than eight digits.
inline constexpr PackedDigits kNoTimeDigits = 0xFFFFFFFFFFFFFFFF;
inline constexpr PackedDigits kNoProcessDigits = 0xFFFFFFFF;

}  // namespace tavrin::eventlog
