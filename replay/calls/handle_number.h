#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include <windows.h>

namespace replay::calls {

// A handle is its running number above the index of its slot in the handle table.
constexpr unsigned kSlotBits = 22;
constexpr std::size_t kMostSlots = std::size_t{1} << kSlotBits;

inline HANDLE MakeHandle(std::uint64_t number, std::size_t slot) {
    return reinterpret_cast<HANDLE>(static_cast<std::uintptr_t>((number << kSlotBits) | slot));
}

// The running number; 0 if the handle cannot be one of this service.
inline std::uint64_t NumberOf(HANDLE handle) {
    return static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(handle)) >> kSlotBits;
}

inline std::size_t SlotOf(HANDLE handle) {
    return reinterpret_cast<std::uintptr_t>(handle) % kMostSlots;
}

// A handle as "#12", or NULL.
std::wstring DescribeHandle(HANDLE handle);

}  // namespace replay::calls
