#pragma once

#include "replay/events/synthetic_source.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace replay::recording {

enum class ChannelType : std::uint32_t { kAdmin = 0, kOperational = 1, kAnalytic = 2, kDebug = 3 };

// A channel as channels.xml or a script declares it.
struct ChannelConfig {
    std::wstring name;
    ChannelType type = ChannelType::kOperational;
    std::wstring publisher;  // empty: none
    bool enabled = true;
    bool denied = false;     // its events may not be read
    bool forwarded = false;  // it holds the events of other computers
    std::optional<events::SyntheticPlan> synthetic;
};

// Looks an attribute or script key up by its name.
using Property = std::function<std::optional<std::string>(std::string_view name)>;

// A channel from its properties: name, type, owningPublisher, enabled, access="denied",
// forwarded="yes" and, for a synthetic one, events, providers, levels and rate. Nothing when the
// name or the type is wrong.
std::optional<ChannelConfig> ReadChannelConfig(const Property& property);

}  // namespace replay::recording
