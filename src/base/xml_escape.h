#pragma once

#include <string>
#include <string_view>

namespace tavrin::base {

// The text for use in an attribute or element of XML: & < > ' " become entities.
std::wstring XmlEscape(std::wstring_view text);

}  // namespace tavrin::base
