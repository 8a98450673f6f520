#pragma once

#include <chrono>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include <windows.h>

#include "eventlog/service/evt_handle.h"
#include "support/temp_folder.h"

namespace tavrin::test {

// How to start the program. The replay service gets its options through the environment.
struct AppOptions {
    std::filesystem::path program;  // empty: Tavrin.exe beside the test
    std::filesystem::path logs;     // a recording's folder; empty: the embedded sample
    std::wstring script;            // lines of the replay service's script
    bool recordCalls = false;
};

// How a program ended.
struct Ending {
    bool ended = false;
    DWORD exitCode = 0;
    std::chrono::milliseconds took{0};  // since the start of the wait
};

// A running instance of the program. The destructor terminates the process if it is still running.
class AppProcess {
public:
    explicit AppProcess(const AppOptions& options);
    ~AppProcess();
    AppProcess(const AppProcess&) = delete;
    AppProcess& operator=(const AppProcess&) = delete;

    DWORD id() const { return id_; }
    HANDLE handle() const { return process_.get(); }
    bool IsRunning() const;

    // Waits until the main window is shown. Returns null at the timeout or if the program ends.
    HWND WaitForMainWindow() const;

    Ending WaitForEnd(std::chrono::milliseconds patience) const;

    // The service's report on handles, written when the service is unloaded.
    std::wstring Ledger() const;

    // The service's call log so far, one line per call.
    std::vector<std::wstring> Calls() const;

    // The number of calls of each service function so far.
    std::map<std::wstring, unsigned> CallCounts() const;

private:
    TempFolder folder_;
    eventlog::UniqueKernelHandle process_;
    DWORD id_ = 0;
};

}  // namespace tavrin::test
