#pragma once

#include <string>
#include <string_view>

namespace tavrin::base {

// Escapes a text for an XML attribute or element: & < > ' " become entities.
std::wstring XmlEscape(std::wstring_view text);

}  // namespace tavrin::base
