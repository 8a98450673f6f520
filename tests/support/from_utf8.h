#pragma once

#include <string>
#include <string_view>

namespace tavrin::test {

// Invalid UTF-8 becomes U+FFFD.
std::wstring FromUtf8(std::string_view bytes);

}  // namespace tavrin::test
