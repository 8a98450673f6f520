#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "channel.h"
#include "xml_reader.h"

namespace replay {

// The value of a named attribute or script key; nothing when it is not given.
using Property = std::function<std::optional<std::string>(std::string_view name)>;

// A channel from its properties: name, type, owningPublisher, enabled, access="denied" and, for a
// synthetic one, events, providers, levels and rate. Nothing when the name or the type is wrong.
std::optional<ChannelConfig> ReadChannelConfig(const Property& property);

// Calls `add` for each <channel> of the document, up to the damage that it returns, if any.
std::optional<XmlDamage> ReadChannelList(std::string_view document,
                                         const std::function<void(ChannelConfig)>& add);

}  // namespace replay
