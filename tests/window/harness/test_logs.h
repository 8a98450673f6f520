#pragma once

#include <string>
#include <vector>

#include "window/harness/app_window.h"
#include "window/harness/recording_writer.h"

namespace tavrin::test {

// The recording that most tests start from: two classic logs, and one of a publisher's.
inline const std::vector<ChannelSpec> kSomeChannels = {
    {.name = L"Application", .type = L"Admin"},
    {.name = L"System", .type = L"Admin"},
    {.name = L"Test-Provider/Operational", .publisher = L"Test-Provider"},
};

inline const std::vector<std::wstring> kApplication = {L"Windows Logs", L"Application"};
inline const std::vector<std::wstring> kSystem = {L"Windows Logs", L"System"};
inline const std::vector<std::wstring> kWindowsLogs = {L"Windows Logs"};

// Options for a recording.
inline AppOptions Serving(const RecordingWriter& logs, const std::wstring& script = L"") {
    AppOptions options;
    options.logs = logs.folder();
    options.script = script;
    return options;
}

}  // namespace tavrin::test
