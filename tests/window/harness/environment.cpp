#include "window/harness/environment.h"

#include <cstdlib>

namespace tavrin::window_tests {

std::filesystem::path PathFromEnvironment(const wchar_t* variable) {
    const wchar_t* const value = _wgetenv(variable);
    return value == nullptr || *value == L'\0' ? std::filesystem::path()
                                               : std::filesystem::absolute(value);
}

}  // namespace tavrin::window_tests
