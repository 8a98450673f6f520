#pragma once

#include <filesystem>

namespace tavrin::test {

// The path that an environment variable names; empty when it is not set.
std::filesystem::path PathFromEnvironment(const wchar_t* variable);

// The number that an environment variable holds; the other one when it is not set.
unsigned NumberFromEnvironment(const wchar_t* variable, unsigned otherwise);

}  // namespace tavrin::test
