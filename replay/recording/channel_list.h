#pragma once

#include "replay/recording/channel_config.h"
#include "replay/text/xml_reader.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace replay::recording {

// Calls `add` for each <channel> of the document. Stops at damage and returns it.
std::optional<text::XmlDamage> ReadChannelList(std::string_view document,
                                               const std::function<void(ChannelConfig)>& add);

}  // namespace replay::recording
