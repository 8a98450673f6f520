#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace replay::text {

// Decodes an entity, given as the text between "&" and ";". Returns nothing if it is unknown.
std::optional<std::string> EntityText(std::string_view name);

// Decodes the entities of character data or of an attribute value.
std::string DecodeXml(std::string_view raw);

// Escapes UTF-8 text for character data and for attributes in either kind of quotes. src/base does
// the same for UTF-16.
std::string EncodeXml(std::string_view text);

}  // namespace replay::text
