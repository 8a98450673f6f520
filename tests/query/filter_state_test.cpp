#include "query/filter_state.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace tavrin::query {
namespace {

TEST(TimeRangeFilter, StartsWithoutBounds) {
    const TimeRangeFilter filter{};

    EXPECT_FALSE(filter.hasFrom);
    EXPECT_FALSE(filter.hasTo);
    EXPECT_EQ(filter.from, 0u);
    EXPECT_EQ(filter.to, 0u);
}

TEST(TimeRangeFilter, TheProgramStartsWithoutBounds) {
    EXPECT_FALSE(g_timeRangeFilter.hasFrom);
    EXPECT_FALSE(g_timeRangeFilter.hasTo);
    EXPECT_EQ(g_timeRangeFilter.from, 0u);
    EXPECT_EQ(g_timeRangeFilter.to, 0u);
}

TEST(SourceFilter, StartsWithoutSourcesAndWithoutAScan) {
    const SourceFilter filter{};

    EXPECT_TRUE(filter.knownSources.empty());
    EXPECT_TRUE(filter.selectedSources.empty());
    EXPECT_FALSE(filter.registryScanned);
}

TEST(SourceFilter, OrdersNamesByCodeUnitAndIsCaseSensitive) {
    SourceFilter filter;
    filter.knownSources = {L"b", L"a",  L"B", L"\x00e4",       L"Z",
                           L"a", L"ab", L"",  L"\xd83d\xde00", L"\xfb01"};

    EXPECT_EQ(std::vector<std::wstring>(filter.knownSources.begin(), filter.knownSources.end()),
              (std::vector<std::wstring>{L"", L"B", L"Z", L"a", L"ab", L"b", L"\x00e4",
                                         L"\xd83d\xde00", L"\xfb01"}));
}

}  // namespace
}  // namespace tavrin::query
