#pragma once

#include <string>
#include <string_view>

namespace tavrin::ui {

// Makes every line break a CR LF pair, as a multi-line edit needs it. A lone CR or LF becomes a
// pair.
std::wstring WithLineBreakPairs(std::wstring_view text);

}  // namespace tavrin::ui
