#pragma once

#include <string>
#include <string_view>

namespace replay::text {

// The form in which channel names are compared: case does not count.
std::wstring FoldCase(std::wstring_view name);

// The name of a channel's file without an extension: "/" is written as "%4".
std::wstring ChannelFileStem(std::wstring_view name);

}  // namespace replay::text
