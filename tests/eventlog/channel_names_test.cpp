#include "eventlog/channels/channel_enumeration.h"

#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace tavrin::eventlog {
namespace {

using Parts = std::vector<std::wstring>;

TEST(SplitPublisherName, CutsAtTheFirstTwoDashes) {
    const struct {
        const wchar_t* publisher;
        Parts parts;
    } cases[] = {
        {L"", {}},
        {L"Security", {L"Security"}},
        {L"Foo-Bar", {L"Foo", L"Bar"}},
        {L"A-B-C", {L"A", L"B", L"C"}},
        {L"A-B-C-D", {L"A", L"B", L"C-D"}},
        {L"A-B-C-D-E-", {L"A", L"B", L"C-D-E-"}},
        {L"-A", {L"", L"A"}},  // an empty part before a dash is kept
        {L"--A", {L"", L"", L"A"}},
        {L"---", {L"", L"", L"-"}},
        {L"A-", {L"A"}},  // an empty part at the end is not
        {L"A-B-", {L"A", L"B"}},
        {L"-", {L""}},
        {L"--", {L"", L""}},
    };
    for (const auto& [publisher, expected] : cases) {
        Parts parts;
        EXPECT_EQ(SplitPublisherName(publisher, parts), static_cast<int>(expected.size()));
        EXPECT_EQ(parts, expected) << testing::PrintToString(std::wstring(publisher));
    }
}

TEST(SplitPublisherName, EmptiesItsOutputFirst) {
    Parts parts = {L"left", L"over"};

    EXPECT_EQ(SplitPublisherName(L"A", parts), 1);
    EXPECT_EQ(parts, Parts{L"A"});

    EXPECT_EQ(SplitPublisherName(L"", parts), 0);
    EXPECT_EQ(parts, Parts{});
}

TEST(ChannelLeafName, IsWhatFollowsThePublisherFolders) {
    const struct {
        const wchar_t* path;
        const wchar_t* publisher;
        const wchar_t* leaf;
    } cases[] = {
        {L"Foo-Bar/Admin", L"Foo-Bar", L"Admin"},
        {L"Foo-Bar/Sub/Admin", L"Foo-Bar", L"Admin"},  // after the last slash
        {L"Foo-Bar/Main-Operational", L"Foo-Bar", L"Main-Operational"},
        {L"Foo-Bar-Debug", L"Foo-Bar", L"Debug"},  // no slash: after the last dash
        {L"Foo-Bar", L"Foo-Bar", L"Bar"},
        {L"FooLog", L"Foo", L"FooLog"},  // neither: the whole path
        {L"Foo/", L"Foo", L""},
        {L"Other/Log", L"Foo", L"Other/Log"},              // another publisher: the whole path
        {L"foo-Bar/Admin", L"Foo-Bar", L"foo-Bar/Admin"},  // the prefix is case-sensitive
        {L"Foo", L"Foo-Bar", L"Foo"},                      // shorter than the publisher
    };
    for (const auto& [path, publisher, leaf] : cases) {
        EXPECT_EQ(ChannelLeafName(path, publisher), leaf);
    }
}

TEST(ChannelFlags, FollowTheConfiguredType) {
    const struct {
        std::uint32_t type;
        std::uint32_t flags;
    } cases[] = {{0, 0x006}, {1, 0x00A}, {2, 0x012}, {3, 0x022}, {4, 0x002}, {0xFFFFFFFF, 0x002}};
    for (const auto& [type, flags] : cases) {
        EXPECT_EQ(ChannelFlags(type), flags) << type;
    }
}

}  // namespace
}  // namespace tavrin::eventlog
