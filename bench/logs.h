#pragma once

#include <string>
#include <vector>

#include "support/recording.h"
#include "window/harness/app_process.h"
#include "window/harness/app_window.h"

namespace tavrin::bench {

inline constexpr int kMillion = 1'000'000;

// The recordings for the window benchmarks, and how the window is opened on them.

inline std::wstring Synthetic(int events) {
    return L"events='" + std::to_wstring(events) + L"' providers='12' levels='1,2,3,4' rate='100'";
}

inline test::AppOptions On(const test::Recording& recording) {
    test::AppOptions options;
    options.logs = recording.folder();
    return options;
}

inline std::vector<std::wstring> PathOf(const std::wstring& channel) {
    return {L"Applications and Service Logs", channel};
}

inline bool Select(test::AppWindow& app, const std::wstring& channel) {
    return app.SelectPath(PathOf(channel));
}

}  // namespace tavrin::bench
