#pragma once

#include <string>

namespace replay::platform {

// The value of an environment variable; empty without one.
std::wstring Environment(const wchar_t* name);

}  // namespace replay::platform
