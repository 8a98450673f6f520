#pragma once

#include <string>
#include <string_view>

#include <windows.h>
#include <winevt.h>

namespace tavrin::eventlog {

// The data values of an event, one a line; empty if the service cannot render it.
std::wstring FormatEventData(EVT_HANDLE event);

// The XML from an element's open tag up to its close tag, without the close tag. Empty if the open
// tag has attributes or the close tag is missing.
std::wstring_view ExtractElementSection(std::wstring_view xml, std::wstring_view name);

// The text of each element whose name begins with "Data", one a line. Decodes nothing and leaves
// out empty values.
std::wstring FormatDataValues(std::wstring_view section);

}  // namespace tavrin::eventlog
