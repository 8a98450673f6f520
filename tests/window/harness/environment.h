#pragma once

#include <filesystem>

namespace tavrin::window_tests {

// The path that an environment variable names; empty when it is not set.
std::filesystem::path PathFromEnvironment(const wchar_t* variable);

}  // namespace tavrin::window_tests
