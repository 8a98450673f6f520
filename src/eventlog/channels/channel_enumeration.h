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

// Event-log operations that a worker runs for the whole program.
class EventWrapper {
public:
    // Fills an empty tree with every channel of the computer, in folders made from publisher names.
    // Worker threads only. Returns 0, or 1 if the service gives no list of channels; then the tree
    // holds the three fixed folders.
    [[nodiscard]] std::uint32_t BuildChannlesTree(ChannelsTree& tree);

    // Makes BuildChannlesTree end after the current channel, as at the end of the list. Any thread.
    void StopBuilding() { stopRequested_.store(true); }

private:
    std::atomic<bool> stopRequested_{false};
};

// Cuts a publisher's name at its first two "-". Empties parts first; returns their
// number, at most 3.
int SplitPublisherName(std::wstring_view publisher, std::vector<std::wstring>& parts);

// Reads a channel's owning publisher and type. Returns 0 or the code of the failed read. Leaves an
// output alone that was not read; so too the publisher if the channel has none.
[[nodiscard]] std::uint32_t ReadChannelConfig(EVT_HANDLE config, std::wstring& publisher,
                                              std::uint32_t& type);

// The display name of a channel below its publisher's folder.
std::wstring ChannelLeafName(std::wstring_view path, std::wstring_view publisher);

// The node flags of a channel with this configured type.
std::uint32_t ChannelFlags(std::uint32_t type);

}  // namespace tavrin::eventlog
