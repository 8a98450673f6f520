#include "replay/calls/handle_number.h"

#include "replay/text/numbers.h"
#include "replay/text/utf8.h"

namespace replay::calls {
namespace {

std::uint64_t Bits(HANDLE handle) {
    return reinterpret_cast<std::uintptr_t>(handle);
}

}  // namespace

HANDLE MakeHandle(std::uint64_t number, std::size_t slot) {
    return reinterpret_cast<HANDLE>(static_cast<std::uintptr_t>((number << kSlotBits) | slot));
}

std::uint64_t NumberOf(HANDLE handle) {
    return Bits(handle) >> kSlotBits;
}

std::size_t SlotOf(HANDLE handle) {
    return static_cast<std::size_t>(Bits(handle) % kMostSlots);
}

std::wstring DescribeHandle(HANDLE handle) {
    if (handle == nullptr) {
        return L"NULL";
    }
    const std::uint64_t number = NumberOf(handle);
    if (number == 0) {
        return L"foreign:" + text::ToWide(text::HexText(Bits(handle)));
    }
    return L"#" + std::to_wstring(number);
}

}  // namespace replay::calls
