#pragma once

#include <string_view>

namespace replay::platform {

// Reports trouble with a recording or a script: one line on the standard error output and to the
// debugger.
void Notice(std::wstring_view message);

}  // namespace replay::platform
