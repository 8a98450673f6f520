#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "eventlog/records/packed_digits.h"

namespace tavrin::query {

// Searches many packed texts for one text. Precomputes the offsets where the text fits; each offset
// costs one masked comparison.
class DigitSearch {
public:
    // Searches times, whose separators fit the text at few offsets.
    static DigitSearch InTimes(std::wstring_view text);

    // Searches process ids, which have only digits.
    static DigitSearch InProcesses(std::wstring_view text);

    // Whether the text occurs. Never pass kNoTimeDigits or kNoProcessDigits.
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

    // Tests all sixteen digits at once.
    static bool HasZeroDigit(eventlog::PackedDigits packed) {
        return ((packed - 0x1111111111111111) & ~packed & 0x8888888888888888) != 0;
    }

    static DigitSearch ForDigit(std::wstring_view form, wchar_t digit);
    static DigitSearch In(std::wstring_view form, std::wstring_view text);
    static Place PlaceAt(std::size_t begin, std::wstring_view form, std::wstring_view text);

    std::array<Place, 19> places_{};
    std::size_t placeCount_ = 0;

    // A text of one digit fits nearly everywhere, so all digits are tested at once.
    bool oneDigit_ = false;
    eventlog::PackedDigits repeated_ = 0;
    eventlog::PackedDigits unused_ = 0;  // digits that the form does not use
};

}  // namespace tavrin::query
