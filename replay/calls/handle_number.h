#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include <windows.h>

namespace replay::calls {

// A handle's upper bits are its serial number, its lower kSlotBits the index of its slot in the
// table.
constexpr unsigned kSlotBits = 22;
constexpr std::size_t kMostSlots = std::size_t{1} << kSlotBits;

inline HANDLE MakeHandle(std::uint64_t number, std::size_t slot) {
    return reinterpret_cast<HANDLE>(static_cast<std::uintptr_t>((number << kSlotBits) | slot));
}

// Returns the serial number, or 0 if the handle cannot be one of this service.
inline std::uint64_t NumberOf(HANDLE handle) {
    return static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(handle)) >> kSlotBits;
}

inline std::size_t SlotOf(HANDLE handle) {
    return reinterpret_cast<std::uintptr_t>(handle) % kMostSlots;
}

// Returns "#12", or "NULL" for a null handle.
std::wstring DescribeHandle(HANDLE handle);

}  // namespace replay::calls
