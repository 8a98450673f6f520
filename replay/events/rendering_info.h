#pragma once

#include "replay/events/event_source.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace replay::events {

// One text of a <RenderingInfo> element, decoded; several keywords are separated by zeros.
std::optional<std::string> ReadRenderingPart(std::string_view renderingInfo, RenderingPart part);

// The code in the attribute Failure of the message.
std::optional<std::uint32_t> ReadMessageFailure(std::string_view renderingInfo);

}  // namespace replay::events
