#pragma once

#include <filesystem>

namespace tavrin::test {

// Returns the absolute path that an environment variable names, or an empty path if it is not set.
std::filesystem::path PathFromEnvironment(const wchar_t* variable);

// Returns the number in an environment variable, or `otherwise` if it is not set.
unsigned NumberFromEnvironment(const wchar_t* variable, unsigned otherwise);

}  // namespace tavrin::test
