// Reads arbitrary bytes as a channel list.

#include "replay/recording/channel_list.h"

#include "input.h"
#include "replay/events/synthetic_source.h"

using namespace tavrin;
using fuzz::Require;

namespace {

constexpr std::uint32_t kProvidersToMake = 1000;

void CheckChannel(const replay::recording::ChannelConfig& config) {
    Require(!config.name.empty(), "a channel has a name");
    if (!config.synthetic || config.synthetic->providers > kProvidersToMake) {
        return;
    }
    const replay::events::SyntheticSource events(config.name, *config.synthetic);
    Require(events.Count() <= replay::events::kMostSyntheticEvents,
            "there are not too many events");
    if (events.Count() == 0) {
        return;
    }
    const std::uint64_t last = events.Count() - 1;
    Require(events.Facts(last).recordId == events.Count(), "record ids count the events");
    Require(events.Find(events.Count()) == last, "an event is found by its record id");
    Require(!events.RenderedXml(last).empty(), "an event has XML");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view document(reinterpret_cast<const char*>(data), size);
    const auto damage = replay::recording::ReadChannelList(document, CheckChannel);
    Require(!damage || damage->offset <= size, "the damage is inside the document");
    return 0;
}
