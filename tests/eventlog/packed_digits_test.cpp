#include "eventlog/records/packed_digits.h"

#include <gtest/gtest.h>

namespace tavrin::eventlog {
namespace {

TEST(PackTime, KeepsTheDigitsInTheirOrder) {
    EXPECT_EQ(PackTime(L"05/03/2024 17:09:58"), 0x05032024170958u);
}

TEST(PackTime, HasNoneForATextOfAnotherLength) {
    EXPECT_EQ(PackTime(L"00/00/00 00:00:00"), kNoTimeDigits);
    EXPECT_EQ(PackTime(L"14/09/30828 02:48:05"), kNoTimeDigits);
    EXPECT_EQ(PackTime(L""), kNoTimeDigits);
}

TEST(PackProcess, KeepsUpToEightDigits) {
    EXPECT_EQ(PackProcess(L"0"), 0xFFFFFFF0u);
    EXPECT_EQ(PackProcess(L"4711"), 0xFFFF4711u);
    EXPECT_EQ(PackProcess(L"12345678"), 0x12345678u);
    EXPECT_EQ(PackProcess(L"123456789"), kNoProcessDigits);
}

}  // namespace
}  // namespace tavrin::eventlog
