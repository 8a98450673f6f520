#pragma once

#include <string>
#include <string_view>

namespace replay::text {

// Returns the form in which channel names are compared, which ignores case.
std::wstring FoldCase(std::wstring_view name);

// Returns a channel's file name without extension. "/" becomes "%4".
std::wstring ChannelFileStem(std::wstring_view name);

}  // namespace replay::text
