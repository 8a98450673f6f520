#pragma once

#include <atomic>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <windows.h>
#include <winevt.h>

namespace tavrin::eventlog {

class ChannelsTree;

// The operations of the event-log service that a worker runs for the whole program.
class EventWrapper {
public:
    // Fills an empty tree with every channel of the computer, in folders made from
    // the publishers' names. Worker threads only. Returns 0, or 1 when the service
    // gives no list of channels: then the tree holds the three fixed folders.
    [[nodiscard]] std::uint32_t BuildChannlesTree(ChannelsTree& tree);

    // Makes BuildChannlesTree end after the channel at hand, as at the end of the list. Any
    // thread.
    void StopBuilding() { stopRequested_.store(true); }

private:
    std::atomic<bool> stopRequested_{false};
};

// Cuts a publisher's name at its first two "-". Empties parts first; returns their
// number, at most 3.
int SplitPublisherName(std::wstring_view publisher, std::vector<std::wstring>& parts);

// Reads a channel's owning publisher (left alone when it has none) and type. Returns
// 0 or the service's code for the read that failed; what was not read is left alone.
[[nodiscard]] std::uint32_t ReadChannelConfig(EVT_HANDLE config, std::wstring& publisher,
                                              std::uint32_t& type);

// The name under which a channel is shown below its publisher's folder.
std::wstring ChannelLeafName(std::wstring_view path, std::wstring_view publisher);

// A channel node's flags for the type that the service configures it with.
std::uint32_t ChannelFlags(std::uint32_t type);

}  // namespace tavrin::eventlog
