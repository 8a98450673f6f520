#pragma once

#include <string_view>

namespace replay::platform {

// Tells whoever runs the program about trouble with a recording or a script: a line on the
// standard error output and to the debugger.
void Notice(std::wstring_view message);

}  // namespace replay::platform
