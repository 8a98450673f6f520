#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tavrin::ui {

// What a failed load means to the user, for the service's code.
std::wstring LoadErrorText(std::uint32_t code);

// The one line for the status bar.
std::wstring LoadFailureMessage(std::wstring_view channelPath, std::uint32_t code,
                                std::uint64_t loadedCount);

// The message with all that a support engineer asks for, for the details pane.
std::wstring LoadFailureDetails(std::wstring_view message, std::wstring_view channelPath,
                                std::uint32_t code);

}  // namespace tavrin::ui
