#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace replay::platform {

// Returns the bytes of an embedded recording's file by its name, if it exists.
std::optional<std::string_view> FindEmbeddedFile(std::wstring_view fileName);

}  // namespace replay::platform
