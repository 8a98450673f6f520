#include "query/time_digits.h"

#include <algorithm>

namespace tavrin::query {
namespace {

constexpr wchar_t kDigitForm = L'd';
constexpr std::wstring_view kTimeForm = L"dd/dd/dddd dd:dd:dd";
static_assert(kTimeForm.size() == kTimeTextLength);

bool Fits(wchar_t unit, wchar_t form) {
    return form == kDigitForm ? unit >= L'0' && unit <= L'9' : unit == form;
}

bool FitsAt(std::size_t begin, std::wstring_view text) {
    return std::ranges::equal(text, kTimeForm.substr(begin, text.size()), Fits);
}

TimeDigits DigitOf(wchar_t unit) {
    return static_cast<TimeDigits>(unit - L'0');
}

}  // namespace

TimeDigits PackTimeDigits(std::wstring_view timeText) {
    if (timeText.size() != kTimeTextLength) {
        return kNoTimeDigits;
    }
    TimeDigits digits = 0;
    for (std::size_t i = 0; i < kTimeTextLength; ++i) {
        if (kTimeForm[i] == kDigitForm) {
            digits = digits << 4 | DigitOf(timeText[i]);
        }
    }
    return digits;
}

TimeDigitSearch::TimeDigitSearch(std::wstring_view text) {
    if (text.empty()) {
        return;
    }
    for (std::size_t begin = 0; begin + text.size() <= kTimeTextLength; ++begin) {
        if (FitsAt(begin, text)) {
            places_[placeCount_++] = PlaceOf(begin, text);
        }
    }
}

TimeDigitSearch::Place TimeDigitSearch::PlaceOf(std::size_t begin, std::wstring_view text) {
    Place place{};
    for (std::size_t i = 0; i < kTimeTextLength; ++i) {
        if (kTimeForm[i] == kDigitForm) {
            const bool covered = i >= begin && i < begin + text.size();
            place.mask = place.mask << 4 | (covered ? 0xF : 0);
            place.digits = place.digits << 4 | (covered ? DigitOf(text[i - begin]) : 0);
        }
    }
    return place;
}

}  // namespace tavrin::query
