#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tavrin::ui {

// The text for a load that failed with the service's code.
std::wstring LoadErrorText(std::uint32_t code);

// The line in the status bar.
std::wstring LoadFailureMessage(std::wstring_view channelPath, std::uint32_t code,
                                std::uint64_t loadedCount);

// The text in the details pane: the message, the log and the code.
std::wstring LoadFailureDetails(std::wstring_view message, std::wstring_view channelPath,
                                std::uint32_t code);

}  // namespace tavrin::ui
