#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tavrin::query {

// The digits of a time text, four bits each: 0x05032024070903 for "05/03/2024 07:09:03".
using TimeDigits = std::uint64_t;

// Stands for a time text of another length, which a year below 1000 or above 9999 makes.
inline constexpr TimeDigits kNoTimeDigits = ~TimeDigits{0};

// The length of dd/mm/yyyy hh:mm:ss.
inline constexpr std::size_t kTimeTextLength = 19;

TimeDigits PackTimeDigits(std::wstring_view timeText);

// Finds one text in many packed times: the slashes, the blank and the colons of a time leave
// a text few places to stand, and at each of them one comparison tells.
class TimeDigitSearch {
public:
    // An empty text occurs nowhere.
    explicit TimeDigitSearch(std::wstring_view text);

    // Whether the text occurs in the time. Not for kNoTimeDigits.
    bool OccursIn(TimeDigits time) const {
        for (std::size_t i = 0; i < placeCount_; ++i) {
            if ((time & places_[i].mask) == places_[i].digits) {
                return true;
            }
        }
        return false;
    }

private:
    struct Place {
        TimeDigits mask;
        TimeDigits digits;
    };

    static Place PlaceOf(std::size_t begin, std::wstring_view text);

    std::array<Place, kTimeTextLength> places_{};
    std::size_t placeCount_ = 0;
};

}  // namespace tavrin::query
