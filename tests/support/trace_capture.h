#pragma once

#include <mutex>
#include <string>
#include <vector>

#include <windows.h>

#include "support/import_patch.h"

namespace tavrin::test {

// One call of OutputDebugStringW or OutputDebugStringA by this program.
struct TraceCall {
    DWORD threadId;
    bool wide;          // OutputDebugStringW
    std::wstring text;  // of OutputDebugStringA, widened byte by byte
};

// Captures the debugger output of all threads of this program while it exists, without a debug
// monitor. Only one may exist at a time.
class TraceCapture {
public:
    TraceCapture();
    ~TraceCapture();
    TraceCapture(const TraceCapture&) = delete;
    TraceCapture& operator=(const TraceCapture&) = delete;

    std::vector<TraceCall> Calls() const;

    // Returns the messages in order, without the prefix and the line feed of each line. A line
    // without either is returned whole, marked as malformed.
    std::vector<std::wstring> WideMessages() const;
    std::vector<std::wstring> NarrowMessages() const;

private:
    static void WINAPI TakeWide(LPCWSTR text);
    static void WINAPI TakeNarrow(LPCSTR text);

    void Add(bool wide, std::wstring text);
    std::vector<std::wstring> Messages(bool wide) const;

    mutable std::mutex mutex_;
    std::vector<TraceCall> calls_;  // guarded by mutex_
    ImportPatch<void WINAPI(LPCWSTR)> wide_;
    ImportPatch<void WINAPI(LPCSTR)> narrow_;
};

}  // namespace tavrin::test
