#pragma once

#include <mutex>
#include <string>
#include <vector>

#include <windows.h>

#include "support/import_patch.h"

namespace tavrin::test {

// One call of the debugger output by this program, as it was made.
struct TraceCall {
    DWORD threadId;
    bool wide;  // by OutputDebugStringW; the text of the other is widened byte by byte
    std::wstring text;
};

// Takes this program's own debugger output for as long as it lives, from every thread
// and without a monitor. One at a time.
class TraceCapture {
public:
    TraceCapture();
    ~TraceCapture();
    TraceCapture(const TraceCapture&) = delete;
    TraceCapture& operator=(const TraceCapture&) = delete;

    std::vector<TraceCall> Calls() const;

    // The messages, without the prefix and the line feed that every line has, in order.
    // A line that lacks either is given whole, marked as malformed.
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
