#include "eventlog/channels/node_flags.h"

#include <cstdint>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include "support/message_of.h"

namespace tavrin::eventlog {
namespace {

TEST(NodeFlags, EachBitHasItsValue) {
    const struct {
        std::uint32_t flag;
        std::uint32_t value;
    } bits[] = {
        {node_flags::Folder, 0x001},
        {node_flags::Channel, 0x002},
        {node_flags::AdminChannel, 0x004},
        {node_flags::OperationalChannel, 0x008},
        {node_flags::AnalyticChannel, 0x010},
        {node_flags::DebugChannel, 0x020},
        {node_flags::WindowsLogsFolder, 0x040},
        {node_flags::AppsAndServicesFolder, 0x080},
        {node_flags::RootFolder, 0x100},
        {node_flags::PublisherFolder, 0x200},
    };
    for (const auto& [flag, value] : bits) {
        EXPECT_EQ(flag, value);
    }
}

TEST(ValidateNodeFlags, AcceptsTheFlagsOfEveryKindOfNode) {
    const std::uint32_t words[] = {
        0x101, 0x041, 0x081, 0x201,         // the root and the folders
        0x006, 0x00A, 0x012, 0x022,         // the four channel types
        0x00E, 0x03E, 0x0C1, 0x3C1, 0x301,  // several types of the right kind
    };
    for (const std::uint32_t flags : words) {
        EXPECT_NO_THROW(ValidateNodeFlags(flags)) << std::hex << flags;
    }
}

TEST(ValidateNodeFlags, TheFirstFailingCheckNamesTheError) {
    const struct {
        std::uint32_t flags;
        const char* error;
    } cases[] = {
        {0x400, "Node Flags: contain invalid bits"},
        {0x404, "Node Flags: contain invalid bits"},
        {0x401, "Node Flags: contain invalid bits"},
        {0x80000006, "Node Flags: contain invalid bits"},
        {0x004, "Node Flags: channel has type but missing channel property"},
        {0x008, "Node Flags: channel has type but missing channel property"},
        {0x010, "Node Flags: channel has type but missing channel property"},
        {0x020, "Node Flags: channel has type but missing channel property"},
        {0x005, "Node Flags: channel has type but missing channel property"},
        {0x044, "Node Flags: channel has type but missing channel property"},
        {0x007, "Node Flags: folder has channel type"},
        {0x023, "Node Flags: folder has channel type"},
        {0x04B, "Node Flags: folder has channel type"},
        {0x040, "Node Flags: folder has type but missing folder property"},
        {0x080, "Node Flags: folder has type but missing folder property"},
        {0x100, "Node Flags: folder has type but missing folder property"},
        {0x200, "Node Flags: folder has type but missing folder property"},
        {0x042, "Node Flags: folder has type but missing folder property"},
        {0x046, "Node Flags: folder has type but missing folder property"},
        {0x043, "Node Flags: channel has folder type"},
        {0x203, "Node Flags: channel has folder type"},
        {0x002, "Node Flags: missing channel type"},
        {0x001, "Node Flags: missing folder type"},
    };
    for (const auto& [flags, error] : cases) {
        EXPECT_EQ(test::MessageOf<std::logic_error>([word = flags] { ValidateNodeFlags(word); }),
                  error)
            << std::hex << flags;
    }
}

// These flags fail two checks. The order of the checks decides which error is reported.
TEST(ValidateNodeFlags, ChecksTheFolderTypeBeforeTheChannelType) {
    EXPECT_EQ(test::MessageOf<std::logic_error>([] { ValidateNodeFlags(0x003); }),
              "Node Flags: missing folder type");
}

TEST(ValidateNodeFlags, AcceptsFlagsOfNeitherAFolderNorAChannel) {
    EXPECT_NO_THROW(ValidateNodeFlags(0));
}

}  // namespace
}  // namespace tavrin::eventlog
