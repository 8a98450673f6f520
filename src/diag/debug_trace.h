#pragma once

#include <exception>
#include <string>

namespace tavrin::diag {

// Writes one line, tagged with the calling thread's identifier, to the debugger output. The
// message carries neither prefix nor line end. Any thread. Throws std::ios_base::failure or
// std::bad_alloc if the line cannot be built.
void DebugTrace(const std::wstring& message);

// Writes the text of a caught exception, which is narrow, in the same way.
void DebugTrace(const std::string& message);

// Traces a caught exception's text and never throws: a line that cannot be built is lost.
void TraceException(const std::exception& caught) noexcept;

}  // namespace tavrin::diag
