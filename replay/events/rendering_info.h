#pragma once

#include "replay/events/event_source.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace replay::events {

// Returns one text of a <RenderingInfo> element, decoded. Keywords are separated by zeros.
std::optional<std::string> ReadRenderingPart(std::string_view renderingInfo, RenderingPart part);

// Returns the code in the message's Failure attribute, if present.
std::optional<std::uint32_t> ReadMessageFailure(std::string_view renderingInfo);

}  // namespace replay::events
