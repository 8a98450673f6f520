#include "eventlog/records/packed_digits.h"

#include <cstddef>

namespace tavrin::eventlog {
namespace {

constexpr std::size_t kTimeLength = 19;
constexpr std::size_t kTimeDigits[] = {0, 1, 3, 4, 6, 7, 8, 9, 11, 12, 14, 15, 17, 18};
constexpr std::size_t kProcessDigits = 8;

PackedDigits Append(PackedDigits packed, wchar_t digit) {
    return packed << 4 | static_cast<PackedDigits>(digit - L'0');
}

}  // namespace

PackedDigits PackTime(std::wstring_view timeText) {
    if (timeText.size() != kTimeLength) {
        return kNoTimeDigits;
    }
    PackedDigits packed = 0;
    for (const std::size_t place : kTimeDigits) {
        packed = Append(packed, timeText[place]);
    }
    return packed;
}

PackedDigits PackProcess(std::wstring_view processText) {
    if (processText.size() > kProcessDigits) {
        return kNoProcessDigits;
    }
    PackedDigits packed = kNoProcessDigits;
    for (const wchar_t unit : processText) {
        packed = Append(packed, unit);
    }
    return packed & kNoProcessDigits;
}

}  // namespace tavrin::eventlog
