#include "diag/debug_trace.h"

#include <sstream>

#include <windows.h>

namespace tavrin::diag {

// Each line leaves in a single call, so lines of different threads cannot interleave.

void DebugTrace(const std::wstring& message) {
    std::wostringstream line;
    line << L"[Thread " << GetCurrentThreadId() << L"] => " << message << L"\n";
    OutputDebugStringW(line.str().c_str());
}

void DebugTrace(const std::string& message) {
    std::ostringstream line;
    line << "[Thread " << GetCurrentThreadId() << "] => " << message << "\n";
    OutputDebugStringA(line.str().c_str());
}

}  // namespace tavrin::diag
