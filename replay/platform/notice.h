#pragma once

#include <string_view>

namespace replay::platform {

// Reports a problem of a recording or a script: one line to standard error and to the debugger.
void Notice(std::wstring_view message);

}  // namespace replay::platform
