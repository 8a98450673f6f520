#pragma once

#include <string>
#include <vector>

#include <windows.h>

namespace tavrin::test {

inline const std::wstring kTestLog = L"Tavrin Test Log";

// The registry key of kTestLog with subkeys for its sources. The destructor deletes it.
class LogKey {
public:
    explicit LogKey(const std::vector<std::wstring>& sources) : isThere_(Create(path_)) {
        for (const std::wstring& source : sources) {
            isThere_ = isThere_ && Create(path_ + L"\\" + source);
        }
    }
    // Windows may have added subkeys.
    ~LogKey() { RegDeleteTreeW(HKEY_LOCAL_MACHINE, path_.c_str()); }
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

    const std::wstring path_ = L"SYSTEM\\CurrentControlSet\\Services\\EventLog\\" + kTestLog;
    bool isThere_;
};

}  // namespace tavrin::test
