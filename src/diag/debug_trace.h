#pragma once

#include <string>

namespace tavrin::diag {

// Writes one line, tagged with the calling thread's identifier, to the debugger
// output. Any thread. The message carries neither prefix nor line end.
void DebugTrace(const std::wstring& message);

// The same for the text of a caught exception, which is narrow.
void DebugTrace(const std::string& message);

}  // namespace tavrin::diag
