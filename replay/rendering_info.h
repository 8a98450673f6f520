#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "event_source.h"

namespace replay {

// One text of a <RenderingInfo> element, decoded; several keywords are separated by zeros.
std::optional<std::string> ReadRenderingPart(std::string_view renderingInfo, RenderingPart part);

}  // namespace replay
