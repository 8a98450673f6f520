#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include <windows.h>

namespace replay::calls {

// One argument of a call. Describe converts it to text on demand.
struct Argument {
    enum class Kind { kHandle, kText, kNumber, kSigned, kFlags, kTimeout, kPointer };

    std::wstring_view name;
    Kind kind = Kind::kNumber;
    const void* pointer = nullptr;
    std::uint64_t number = 0;
};

using Arguments = std::span<const Argument>;

inline Argument HandleArgument(std::wstring_view name, HANDLE handle) {
    return {name, Argument::Kind::kHandle, handle, 0};
}
inline Argument TextArgument(std::wstring_view name, const wchar_t* text) {
    return {name, Argument::Kind::kText, text, 0};
}
inline Argument NumberArgument(std::wstring_view name, std::uint64_t number) {
    return {name, Argument::Kind::kNumber, nullptr, number};
}
inline Argument SignedArgument(std::wstring_view name, std::int64_t number) {
    return {name, Argument::Kind::kSigned, nullptr, static_cast<std::uint64_t>(number)};
}
inline Argument FlagsArgument(std::wstring_view name, std::uint32_t flags) {
    return {name, Argument::Kind::kFlags, nullptr, flags};
}
inline Argument TimeoutArgument(std::wstring_view name, std::uint32_t milliseconds) {
    return {name, Argument::Kind::kTimeout, nullptr, milliseconds};
}
inline Argument PointerArgument(std::wstring_view name, const void* pointer) {
    return {name, Argument::Kind::kPointer, pointer, 0};
}

// Returns a text such as "Path=\"System\", Flags=0x201". Texts are quoted and escaped. Handles of
// this service appear by number, other pointers as NULL or set.
std::wstring Describe(Arguments arguments);

}  // namespace replay::calls
