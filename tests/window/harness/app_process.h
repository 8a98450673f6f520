#pragma once

#include <chrono>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <windows.h>

#include "eventlog/service/evt_handle.h"
#include "support/temp_folder.h"

namespace tavrin::test {

// How the program is started: what the replay service reads from the environment.
struct AppOptions {
    std::filesystem::path program;  // empty: the one beside the test
    std::filesystem::path logs;     // a recording's folder; empty: the embedded sample
    std::wstring script;            // lines of the service's script
    bool recordCalls = false;
    WORD showCommand = SW_SHOWNORMAL;
};

// How a program ended.
struct Ending {
    bool ended = false;
    DWORD exitCode = 0;
    std::chrono::milliseconds took{0};  // from the wait's start
};

// The real program, running. What is still running when the object goes is ended by force.
class AppProcess {
public:
    explicit AppProcess(const AppOptions& options);
    ~AppProcess();
    AppProcess(const AppProcess&) = delete;
    AppProcess& operator=(const AppProcess&) = delete;

    DWORD id() const { return id_; }
    HANDLE handle() const { return process_.get(); }
    bool IsRunning() const;

    // The main window, once it is shown. Null when none appears in time.
    HWND WaitForMainWindow() const;

    Ending WaitForEnd(std::chrono::milliseconds patience) const;

    // What the service reported about handles when it was unloaded.
    std::wstring Ledger() const;

    // The service's call log so far, a line a call.
    std::vector<std::wstring> Calls() const;

    // How often each of the service's functions was called so far.
    std::map<std::wstring, unsigned> CallCounts() const;

private:
    TempFolder folder_;
    eventlog::UniqueKernelHandle process_;
    DWORD id_ = 0;
};

}  // namespace tavrin::test
