#pragma once

#include <string>

#include <windows.h>

namespace tavrin::eventlog {

struct RecordCountRequest {
    const std::wstring& path;  // of the channel
    HWND window;               // gets WM_RECORD_COUNT_READY
    LPARAM parameter;          // sent back with the count
};

// Counts the records of a channel's whole log and posts the number. Worker threads only. A
// count that fails is traced and posts nothing.
void CountChannelRecords(const RecordCountRequest& request) noexcept;

}  // namespace tavrin::eventlog
