#pragma once

#include "replay/events/synthetic_source.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace replay::recording {

enum class ChannelType : std::uint32_t { kAdmin = 0, kOperational = 1, kAnalytic = 2, kDebug = 3 };

// A channel's declaration in channels.xml or a script.
struct ChannelConfig {
    std::wstring name;
    ChannelType type = ChannelType::kOperational;
    std::wstring publisher;  // empty: none
    bool enabled = true;
    bool denied = false;     // access to its events is denied
    bool forwarded = false;  // its events come from other computers
    std::optional<events::SyntheticPlan> synthetic;
};

// Looks up an attribute or script key by name.
using Property = std::function<std::optional<std::string>(std::string_view name)>;

// Reads a channel's properties: name, type, owningPublisher, enabled, access="denied",
// forwarded="yes" and, if synthetic, events, providers, levels and rate. Returns nothing if the
// name or the type is invalid.
std::optional<ChannelConfig> ReadChannelConfig(const Property& property);

}  // namespace replay::recording
