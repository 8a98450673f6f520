#include "query/filter_summary.h"

#include <cstddef>
#include <string>

#include <gtest/gtest.h>

namespace tavrin::query {
namespace {

constexpr TimeRangeFilter kAnyTime{};
constexpr TimeRangeFilter kFrom{true, false, 1, 0};
constexpr TimeRangeFilter kTo{false, true, 0, 1};
constexpr TimeRangeFilter kFromAndTo{true, true, 1, 2};

TEST(FilterSummary, NamesEachActiveFilter) {
    const struct {
        const wchar_t* name;
        std::size_t sources;
        TimeRangeFilter range;
        const wchar_t* text;
    } cases[] = {
        {L"Security", 0, kAnyTime, L"Security"},
        {L"Application", 3, kFromAndTo, L"Application (3 sources, time range)"},
        {L"System", 0, kFrom, L"System (time range)"},
        {L"System", 0, kTo, L"System (time range)"},
        {L"System", 1, kAnyTime, L"System (1 source)"},
        {L"System", 2, kAnyTime, L"System (2 sources)"},
        {L"System", 1, kTo, L"System (1 source, time range)"},
        {L"System", 1234, kAnyTime, L"System (1234 sources)"},
        {L"", 1, kAnyTime, L" (1 source)"},
    };
    for (const auto& [name, sources, range, text] : cases) {
        EXPECT_EQ(FilterSummary(name, sources, range), text);
    }
}

}  // namespace
}  // namespace tavrin::query
