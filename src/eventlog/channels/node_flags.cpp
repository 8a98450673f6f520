#include "eventlog/channels/node_flags.h"

#include <stdexcept>

namespace tavrin::eventlog {
namespace {

constexpr std::uint32_t kDefinedBits = 0x3FF;
constexpr std::uint32_t kChannelTypes = node_flags::AdminChannel | node_flags::OperationalChannel |
                                        node_flags::AnalyticChannel | node_flags::DebugChannel;
constexpr std::uint32_t kFolderTypes = node_flags::WindowsLogsFolder |
                                       node_flags::AppsAndServicesFolder | node_flags::RootFolder |
                                       node_flags::PublisherFolder;

// A fault of a flags word: some bit of anyOf is set, and of the bits in mask exactly those in
// value.
struct FlagFault {
    std::uint32_t anyOf;
    std::uint32_t mask;
    std::uint32_t value;
    const char* text;
};

// In the order of the checks. The first fault found names the error.
constexpr FlagFault kFaults[] = {
    {~kDefinedBits, 0, 0, "Node Flags: contain invalid bits"},
    {kChannelTypes, node_flags::Channel, 0,
     "Node Flags: channel has type but missing channel property"},
    {kChannelTypes, node_flags::Folder, node_flags::Folder, "Node Flags: folder has channel type"},
    {kFolderTypes, node_flags::Folder, 0,
     "Node Flags: folder has type but missing folder property"},
    {kFolderTypes, node_flags::Channel, node_flags::Channel, "Node Flags: channel has folder type"},
    // A folder that is also a channel and has no type is reported as a folder, below.
    {node_flags::Channel, node_flags::Folder | kFolderTypes | kChannelTypes, 0,
     "Node Flags: missing channel type"},
    {node_flags::Folder, kFolderTypes, 0, "Node Flags: missing folder type"},
};

constexpr bool Has(std::uint32_t flags, const FlagFault& fault) {
    return (flags & fault.anyOf) != 0 && (flags & fault.mask) == fault.value;
}

}  // namespace

void ValidateNodeFlags(std::uint32_t flags) {
    for (const FlagFault& fault : kFaults) {
        if (Has(flags, fault)) {
            throw std::logic_error(fault.text);
        }
    }
}

}  // namespace tavrin::eventlog
