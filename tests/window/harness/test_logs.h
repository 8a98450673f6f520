#pragma once

#include <string>
#include <vector>

#include "support/recording.h"
#include "window/harness/app_window.h"

namespace tavrin::test {

// The recording that most tests start from: two classic logs, and one of a publisher's.
inline const std::vector<RecordedChannel> kSomeChannels = {
    {.name = L"Application"},
    {.name = L"System"},
    {.name = L"Test-Provider/Operational", .type = L"Operational", .publisher = L"Test-Provider"},
};

inline const std::vector<std::wstring> kApplication = {L"Windows Logs", L"Application"};
inline const std::vector<std::wstring> kSystem = {L"Windows Logs", L"System"};
inline const std::vector<std::wstring> kWindowsLogs = {L"Windows Logs"};

// Options for a recording.
inline AppOptions Serving(const Recording& logs, const std::wstring& script = L"") {
    AppOptions options;
    options.logs = logs.folder();
    options.script = script;
    return options;
}

}  // namespace tavrin::test
