#include "query/source_names.h"

#include <windows.h>

#include "base/unique_handle.h"
#include "query/text_match.h"

namespace tavrin::query {
namespace {

using UniqueKey = base::UniqueHandle<HKEY, ::RegCloseKey>;

constexpr DWORD kNameCapacity = 256;

// Every index of a key that is deleted meanwhile fails, without end.
constexpr int kMostFailuresInARow = 100;

UniqueKey OpenEventLogKey(const std::wstring& channelPath) {
    const std::wstring name = L"SYSTEM\\CurrentControlSet\\Services\\EventLog\\" + channelPath;
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, name.c_str(), 0, KEY_ENUMERATE_SUB_KEYS, &key) !=
        ERROR_SUCCESS) {
        return {};
    }
    return UniqueKey(key);
}

// Skips a name that cannot be read.
void AddSubkeyNames(HKEY key, SourceSet& names) {
    wchar_t name[kNameCapacity];
    int failures = 0;
    for (DWORD index = 0; failures < kMostFailuresInARow; ++index) {
        DWORD length = kNameCapacity;
        const LSTATUS status =
            RegEnumKeyExW(key, index, name, &length, nullptr, nullptr, nullptr, nullptr);
        if (status == ERROR_NO_MORE_ITEMS) {
            return;
        }
        if (status == ERROR_SUCCESS) {
            names.emplace(name, length);
            failures = 0;
        } else {
            ++failures;
        }
    }
}

}  // namespace

void ScanRegistrySources(const std::wstring& channelPath, SourceFilter& filter) {
    if (filter.registryScanned) {
        return;
    }
    if (const UniqueKey key = OpenEventLogKey(channelPath)) {
        AddSubkeyNames(key.get(), filter.knownSources);
    }
    filter.registryScanned = true;
}

std::vector<std::wstring> ShownSourceNames(const SourceFilter& filter, std::wstring_view search) {
    std::vector<std::wstring> names(filter.selectedSources.begin(), filter.selectedSources.end());
    for (const std::wstring& name : filter.knownSources) {
        if (!filter.selectedSources.contains(name) && ContainsFolded(name, search)) {
            names.push_back(name);
        }
    }
    return names;
}

std::wstring SourcesCaption(std::size_t selectedCount) {
    if (selectedCount == 0) {
        return L"Sources (all)";
    }
    return L"Sources (" + std::to_wstring(selectedCount) + L" selected)";
}

}  // namespace tavrin::query
