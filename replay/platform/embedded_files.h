#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace replay::platform {

// The bytes of a file of the recording that was built into this library, by its file name.
std::optional<std::string_view> FindEmbeddedFile(std::wstring_view fileName);

}  // namespace replay::platform
