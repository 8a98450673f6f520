#pragma once

#include <string>
#include <string_view>

namespace tavrin::ui {

// The text with every line break as carriage return and line feed, as a multi-line
// edit needs it: pairs stay, a lone one of either becomes a pair.
std::wstring WithLineBreakPairs(std::wstring_view text);

}  // namespace tavrin::ui
