#pragma once

#include <string>
#include <string_view>

namespace replay::text {

// Channel names are compared without regard to case, in this form.
std::wstring FoldCase(std::wstring_view name);

// The name of a channel's file without an extension: "/" is written as "%4".
std::wstring ChannelFileStem(std::wstring_view name);

}  // namespace replay::text
