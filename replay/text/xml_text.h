#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace replay::text {

// What an entity stands for, given as the text between "&" and ";"; nothing if it is unknown.
std::optional<std::string> EntityText(std::string_view name);

// Character data or an attribute's value with its entities replaced.
std::string DecodeXml(std::string_view raw);

// Escapes character data and attributes in either kind of quotes. UTF-8, unlike the function of
// src/base.
std::string EncodeXml(std::string_view text);

}  // namespace replay::text
