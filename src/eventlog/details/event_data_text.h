#pragma once

#include <string>
#include <string_view>

#include <windows.h>
#include <winevt.h>

namespace tavrin::eventlog {

// The data values of an event, one a line; empty when the service cannot render it.
std::wstring FormatEventData(EVT_HANDLE event);

// From an element's open tag up to its close tag, which is left out. Empty when the
// open tag carries attributes or the close tag is missing.
std::wstring_view ExtractElementSection(std::wstring_view xml, std::wstring_view name);

// The text of each element whose name begins with "Data", one a line, as it stands in
// the XML: nothing is decoded, and empty values are left out.
std::wstring FormatDataValues(std::wstring_view section);

}  // namespace tavrin::eventlog
