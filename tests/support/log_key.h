#pragma once

#include <string>
#include <vector>

#include <windows.h>

namespace tavrin::test {

// A registry key of an event log with subkeys for its sources. The destructor deletes it.
class LogKey {
public:
    LogKey(const std::wstring& log, const std::vector<std::wstring>& sources) {
        paths_.push_back(L"SYSTEM\\CurrentControlSet\\Services\\EventLog\\" + log);
        for (const std::wstring& source : sources) {
            paths_.push_back(paths_.front() + L"\\" + source);
        }
        for (const std::wstring& path : paths_) {
            isThere_ = isThere_ && Create(path);
        }
    }
    ~LogKey() {
        for (; !paths_.empty(); paths_.pop_back()) {
            RegDeleteKeyW(HKEY_LOCAL_MACHINE, paths_.back().c_str());
        }
    }
    LogKey(const LogKey&) = delete;
    LogKey& operator=(const LogKey&) = delete;

    // False if the user may not write there.
    bool IsThere() const { return isThere_; }

private:
    static bool Create(const std::wstring& path) {
        HKEY key = nullptr;
        return RegCreateKeyExW(HKEY_LOCAL_MACHINE, path.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS,
                               nullptr, &key, nullptr) == ERROR_SUCCESS &&
               RegCloseKey(key) == ERROR_SUCCESS;
    }

    std::vector<std::wstring> paths_;
    bool isThere_ = true;
};

}  // namespace tavrin::test
