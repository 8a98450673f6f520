#pragma once

#include <string>

namespace replay::platform {

// Returns the value of an environment variable, or an empty text if it is not set.
std::wstring Environment(const wchar_t* name);

}  // namespace replay::platform
