#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "eventlog/records/packed_digits.h"

namespace tavrin::query {

// Looks for one text in many packed ones. There are few places where it can stand, and at
// each of them one comparison tells.
class DigitSearch {
public:
    // For a time, whose slashes, blank and colons fit the text in few places.
    static DigitSearch InTimes(std::wstring_view text);

    // For a process id, in which only digits fit.
    static DigitSearch InProcesses(std::wstring_view text);

    // Whether the text occurs. Not for the two that stand for another text.
    bool OccursIn(eventlog::PackedDigits packed) const {
        if (oneDigit_) {
            return HasZeroDigit((packed ^ repeated_) | unused_);
        }
        for (std::size_t i = 0; i < placeCount_; ++i) {
            if ((packed & places_[i].mask) == places_[i].digits) {
                return true;
            }
        }
        return false;
    }

private:
    struct Place {
        eventlog::PackedDigits mask;
        eventlog::PackedDigits digits;
    };

    // Of all sixteen at once.
    static bool HasZeroDigit(eventlog::PackedDigits packed) {
        return ((packed - 0x1111111111111111) & ~packed & 0x8888888888888888) != 0;
    }

    static DigitSearch ForDigit(std::wstring_view form, wchar_t digit);
    static DigitSearch In(std::wstring_view form, std::wstring_view text);
    static Place PlaceAt(std::size_t begin, std::wstring_view form, std::wstring_view text);

    std::array<Place, 19> places_{};
    std::size_t placeCount_ = 0;

    // A text of one digit fits at most places, and is looked for at all of them together.
    bool oneDigit_ = false;
    eventlog::PackedDigits repeated_ = 0;
    eventlog::PackedDigits unused_ = 0;  // what the form leaves of the sixteen digits
};

}  // namespace tavrin::query
