#pragma once

#include <string>
#include <vector>

#include "support/recording.h"
#include "window/harness/app_window.h"

namespace tavrin::test {

// The channels of most tests: two classic logs and a publisher's log.
inline const std::vector<RecordedChannel> kSomeChannels = {
    {.name = L"Application"},
    {.name = L"System"},
    {.name = L"Test-Provider/Operational", .type = L"Operational", .publisher = L"Test-Provider"},
};

inline const std::vector<std::wstring> kApplication = {L"Windows Logs", L"Application"};
inline const std::vector<std::wstring> kSystem = {L"Windows Logs", L"System"};
inline const std::vector<std::wstring> kWindowsLogs = {L"Windows Logs"};

// Returns options that make the program read a recording.
inline AppOptions Serving(const Recording& logs, const std::wstring& script = L"") {
    AppOptions options;
    options.logs = logs.folder();
    options.script = script;
    return options;
}

}  // namespace tavrin::test
