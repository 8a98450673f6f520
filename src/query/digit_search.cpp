#include "query/digit_search.h"

#include <algorithm>

namespace tavrin::query {
namespace {

using eventlog::PackedDigits;

constexpr wchar_t kDigit = L'd';
constexpr std::wstring_view kTimeForm = L"dd/dd/dddd dd:dd:dd";
constexpr std::wstring_view kProcessForm = L"dddddddd";

bool IsDigit(wchar_t unit) {
    return unit >= L'0' && unit <= L'9';
}

bool Fits(wchar_t unit, wchar_t form) {
    return form == kDigit ? IsDigit(unit) : unit == form;
}

PackedDigits DigitOf(wchar_t unit) {
    return static_cast<PackedDigits>(unit - L'0');
}

}  // namespace

DigitSearch DigitSearch::InTimes(std::wstring_view text) {
    return In(kTimeForm, text);
}

DigitSearch DigitSearch::InProcesses(std::wstring_view text) {
    return In(kProcessForm, text);
}

DigitSearch DigitSearch::ForDigit(std::wstring_view form, wchar_t digit) {
    DigitSearch search;
    search.oneDigit_ = true;
    search.repeated_ = DigitOf(digit) * 0x1111111111111111;
    search.unused_ = ~PackedDigits{0} << (4 * std::ranges::count(form, kDigit));
    return search;
}

DigitSearch DigitSearch::In(std::wstring_view form, std::wstring_view text) {
    if (text.size() == 1 && IsDigit(text.front())) {
        return ForDigit(form, text.front());
    }
    DigitSearch search;
    for (std::size_t begin = 0; !text.empty() && begin + text.size() <= form.size(); ++begin) {
        if (std::ranges::equal(text, form.substr(begin, text.size()), Fits)) {
            search.places_[search.placeCount_++] = PlaceAt(begin, form, text);
        }
    }
    return search;
}

DigitSearch::Place DigitSearch::PlaceAt(std::size_t begin, std::wstring_view form,
                                        std::wstring_view text) {
    Place place{};
    for (std::size_t i = 0; i < form.size(); ++i) {
        if (form[i] == kDigit) {
            const bool covered = i >= begin && i < begin + text.size();
            place.mask = place.mask << 4 | (covered ? 0xF : 0);
            place.digits = place.digits << 4 | (covered ? DigitOf(text[i - begin]) : 0);
        }
    }
    return place;
}

}  // namespace tavrin::query
