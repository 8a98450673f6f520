#include "diag/debug_trace.h"

#include <sstream>

#include <windows.h>

namespace tavrin::diag {
namespace {

// The whole line is written in one call, so that lines of different threads do not interleave.
template <typename Char>
std::basic_string<Char> Line(const std::basic_string<Char>& message) {
    std::basic_ostringstream<Char> line;
    line.exceptions(std::ios_base::badbit | std::ios_base::failbit);
    line << "[Thread " << GetCurrentThreadId() << "] => " << message << '\n';
    return line.str();
}

}  // namespace

void DebugTrace(const std::wstring& message) {
    OutputDebugStringW(Line(message).c_str());
}

void DebugTrace(const std::string& message) {
    OutputDebugStringA(Line(message).c_str());
}

void TraceException(const std::exception& caught) noexcept {
    try {
        DebugTrace(std::string(caught.what()));
    } catch (const std::exception&) {
        // Memory is short: the caller goes on without the line.
    }
}

}  // namespace tavrin::diag
