#include "window/harness/environment.h"

#include <cstdlib>
#include <cwchar>

namespace tavrin::test {

std::filesystem::path PathFromEnvironment(const wchar_t* variable) {
    const wchar_t* const value = _wgetenv(variable);
    return value == nullptr || *value == L'\0' ? std::filesystem::path()
                                               : std::filesystem::absolute(value);
}

unsigned NumberFromEnvironment(const wchar_t* variable, unsigned otherwise) {
    const wchar_t* const value = _wgetenv(variable);
    return value == nullptr || *value == L'\0'
               ? otherwise
               : static_cast<unsigned>(std::wcstoul(value, nullptr, 10));
}

}  // namespace tavrin::test
