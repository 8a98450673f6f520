#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include <windows.h>

namespace replay::calls {

// A handle is its running number above the index of its slot in the handle table.
constexpr unsigned kSlotBits = 22;
constexpr std::size_t kMostSlots = std::size_t{1} << kSlotBits;

HANDLE MakeHandle(std::uint64_t number, std::size_t slot);

// The running number; 0 if the handle cannot be one of this service.
std::uint64_t NumberOf(HANDLE handle);
std::size_t SlotOf(HANDLE handle);

// A handle as "#12", or NULL.
std::wstring DescribeHandle(HANDLE handle);

}  // namespace replay::calls
