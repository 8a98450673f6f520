#pragma once

#include <exception>
#include <string>

namespace tavrin::diag {

// Writes one line, tagged with the calling thread's identifier, to the debugger output. The
// message carries neither prefix nor line end. Any thread. Throws std::ios_base::failure or
// std::bad_alloc if the line cannot be built.
void DebugTrace(const std::wstring& message);

// The same for the text of a caught exception, which is narrow.
void DebugTrace(const std::string& message);

// Traces a caught exception's text where nothing may be thrown any more: a line that cannot be
// built is lost.
void TraceException(const std::exception& caught) noexcept;

}  // namespace tavrin::diag
