#pragma once

#include <cstdint>
#include <string>

namespace tavrin::ui {

// A count with the separators of the user's locale: "1,234,567". Plain digits if the system cannot
// format it.
std::wstring FormatCount(std::uint64_t count);

}  // namespace tavrin::ui
