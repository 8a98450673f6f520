#include "query/source_names.h"

#include <cstdint>
#include <string>
#include <vector>

#include <windows.h>

#include <gtest/gtest.h>

#include "support/import_patch.h"
#include "support/log_key.h"

namespace tavrin::query {
namespace {

using Names = std::vector<std::wstring>;

// What the patched registry functions return and what they saw.
struct Registry {
    LSTATUS openStatus = ERROR_SUCCESS;
    std::vector<LSTATUS> statuses;  // by index; then ERROR_NO_MORE_ITEMS
    Names names;                    // by index

    int opened = 0;
    int closed = 0;
    HKEY parent = nullptr;
    std::wstring openedName;
    REGSAM access = 0;
    std::vector<DWORD> capacities;
};
Registry g_registry;

const HKEY kKey = reinterpret_cast<HKEY>(std::uintptr_t{0x40});

LSTATUS WINAPI OpenKey(HKEY parent, LPCWSTR name, DWORD options, REGSAM access, PHKEY key) {
    EXPECT_EQ(options, 0u);
    ++g_registry.opened;
    g_registry.parent = parent;
    g_registry.openedName = name;
    g_registry.access = access;
    *key = g_registry.openStatus == ERROR_SUCCESS ? kKey : nullptr;
    return g_registry.openStatus;
}

LSTATUS WINAPI EnumKey(HKEY key, DWORD index, LPWSTR name, LPDWORD length, LPDWORD, LPWSTR, LPDWORD,
                       PFILETIME) {
    EXPECT_EQ(key, kKey);
    g_registry.capacities.push_back(*length);
    if (index >= g_registry.statuses.size()) {
        return ERROR_NO_MORE_ITEMS;
    }
    const std::wstring& found = g_registry.names[index];
    *length = static_cast<DWORD>(found.copy(name, *length));
    name[*length] = L'\0';
    return g_registry.statuses[index];
}

LSTATUS WINAPI CloseKey(HKEY key) {
    EXPECT_EQ(key, kKey);
    ++g_registry.closed;
    return ERROR_SUCCESS;
}

class ScanRegistrySourcesTest : public testing::Test {
protected:
    ScanRegistrySourcesTest() { g_registry = Registry(); }

    SourceFilter filter_;

private:
    test::ImportPatch<decltype(RegOpenKeyExW)> open_{"RegOpenKeyExW", OpenKey};
    test::ImportPatch<decltype(RegEnumKeyExW)> enum_{"RegEnumKeyExW", EnumKey};
    test::ImportPatch<decltype(RegCloseKey)> close_{"RegCloseKey", CloseKey};
};

TEST_F(ScanRegistrySourcesTest, OpensTheChannelsKeyToListItsSubkeysOnly) {
    ScanRegistrySources(L"Foo/Bar", filter_);

    EXPECT_EQ(g_registry.parent, HKEY_LOCAL_MACHINE);
    EXPECT_EQ(g_registry.openedName, L"SYSTEM\\CurrentControlSet\\Services\\EventLog\\Foo/Bar");
    EXPECT_EQ(g_registry.access, static_cast<REGSAM>(KEY_ENUMERATE_SUB_KEYS));
    EXPECT_EQ(g_registry.closed, 1);
}

TEST_F(ScanRegistrySourcesTest, AddsEverySubkeyToTheKnownNames) {
    filter_.knownSources = {L"From an event"};
    g_registry.names = {L"B", L"A"};
    g_registry.statuses = {ERROR_SUCCESS, ERROR_SUCCESS};

    ScanRegistrySources(L"System", filter_);

    EXPECT_EQ(filter_.knownSources, (SourceSet{L"A", L"B", L"From an event"}));
    EXPECT_TRUE(filter_.selectedSources.empty());
    EXPECT_TRUE(filter_.registryScanned);
}

TEST_F(ScanRegistrySourcesTest, PassesABufferOf256CharactersToEachCall) {
    g_registry.names = {L"A", L"B"};
    g_registry.statuses = {ERROR_SUCCESS, ERROR_SUCCESS};

    ScanRegistrySources(L"System", filter_);

    EXPECT_EQ(g_registry.capacities, (std::vector<DWORD>{256, 256, 256}));
}

// Failures of the registry functions. ERROR_NO_MORE_ITEMS is not one: it ends a list.
constexpr LSTATUS kRefusals[] = {ERROR_FILE_NOT_FOUND,    ERROR_ACCESS_DENIED, ERROR_INVALID_HANDLE,
                                 ERROR_OUTOFMEMORY,       ERROR_MORE_DATA,     ERROR_KEY_DELETED,
                                 RPC_S_SERVER_UNAVAILABLE};

TEST_F(ScanRegistrySourcesTest, SkipsANameThatCannotBeReadAndClosesTheKey) {
    const Names names = {L"A", L"B", L"C"};
    for (const LSTATUS refusal : kRefusals) {
        for (std::size_t unread = 0; unread < names.size(); ++unread) {
            SCOPED_TRACE(testing::Message() << "status " << refusal << " at index " << unread);
            g_registry = Registry();
            g_registry.names = names;
            g_registry.statuses.resize(names.size());
            g_registry.statuses[unread] = refusal;
            SourceFilter filter;

            ScanRegistrySources(L"System", filter);

            SourceSet read(names.begin(), names.end());
            read.erase(names[unread]);
            EXPECT_EQ(filter.knownSources, read);
            EXPECT_TRUE(filter.registryScanned);
            EXPECT_EQ(g_registry.closed, 1);
        }
    }
}

TEST_F(ScanRegistrySourcesTest, ReadsAListToItsEndEvenIfNoNameCanBeRead) {
    g_registry.names = {L"A", L"B"};
    g_registry.statuses = {ERROR_ACCESS_DENIED, ERROR_ACCESS_DENIED};

    ScanRegistrySources(L"System", filter_);

    EXPECT_TRUE(filter_.knownSources.empty());
    EXPECT_EQ(g_registry.capacities.size(), 3u);
    EXPECT_EQ(g_registry.closed, 1);
}

TEST_F(ScanRegistrySourcesTest, EndsIfTheKeyIsDeletedMeanwhile) {
    g_registry.names.assign(100000, L"A");
    g_registry.statuses.assign(100000, ERROR_KEY_DELETED);
    g_registry.statuses[50] = ERROR_SUCCESS;

    ScanRegistrySources(L"System", filter_);

    EXPECT_EQ(filter_.knownSources, SourceSet{L"A"});
    EXPECT_EQ(g_registry.capacities.size(), 151u);
    EXPECT_EQ(g_registry.closed, 1);
}

TEST_F(ScanRegistrySourcesTest, AKeyThatCannotBeOpenedLeavesTheKnownNames) {
    for (const LSTATUS refusal : kRefusals) {
        SCOPED_TRACE(refusal);
        g_registry = Registry();
        g_registry.openStatus = refusal;
        SourceFilter filter;
        filter.knownSources = {L"From an event"};

        ScanRegistrySources(L"System", filter);
        ScanRegistrySources(L"System", filter);

        EXPECT_EQ(filter.knownSources, SourceSet{L"From an event"});
        EXPECT_EQ(g_registry.opened, 1) << "a failed open must not be retried";
        EXPECT_EQ(g_registry.closed, 0);
        EXPECT_TRUE(filter.registryScanned);
    }
}

TEST_F(ScanRegistrySourcesTest, AsksTheRegistryOnce) {
    ScanRegistrySources(L"System", filter_);
    ScanRegistrySources(L"System", filter_);

    EXPECT_EQ(g_registry.opened, 1);
}

TEST(ScanRegistrySources, ReadsTheRealRegistry) {
    const Names names = {L"Second Source", L"First \"Source\"", std::wstring(255, L'x')};
    const test::LogKey key(names);
    if (!key.IsThere()) {
        GTEST_SKIP() << "requires write access to the event log's registry key";
    }
    SourceFilter filter;

    ScanRegistrySources(test::kTestLog, filter);

    // Windows registers the log, which may add a source of the log's own name.
    for (const std::wstring& name : names) {
        EXPECT_TRUE(filter.knownSources.contains(name)) << testing::PrintToString(name);
    }
}

TEST(ScanRegistrySources, FindsNothingForAChannelWithoutAKey) {
    SourceFilter filter;

    ScanRegistrySources(L"Tavrin-No-Such-Log/Operational", filter);

    EXPECT_TRUE(filter.knownSources.empty());
    EXPECT_TRUE(filter.registryScanned);
}

TEST(ShownSourceNames, ListsTheSelectedNamesFirstAndThenTheKnownOnes) {
    SourceFilter filter;
    filter.knownSources = {L"A", L"B", L"C", L"D"};
    filter.selectedSources = {L"D", L"B"};

    EXPECT_EQ(ShownSourceNames(filter, L""), (Names{L"B", L"D", L"A", L"C"}));
}

TEST(ShownSourceNames, NarrowsOnlyTheNamesThatAreNotSelected) {
    SourceFilter filter;
    filter.knownSources = {L"MsiInstaller", L"Other", L"Ticked", L"msi two"};
    filter.selectedSources = {L"Ticked"};

    EXPECT_EQ(ShownSourceNames(filter, L"MSI"), (Names{L"Ticked", L"MsiInstaller", L"msi two"}));
    EXPECT_EQ(ShownSourceNames(filter, L"no such name"), Names{L"Ticked"});
}

TEST(ShownSourceNames, FoldsOnlyTheLettersAToZ) {
    SourceFilter filter;
    filter.knownSources = {L"\x00c4pfel", L"\x00e4pfel"};

    EXPECT_EQ(ShownSourceNames(filter, L"\x00e4PFEL"), Names{L"\x00e4pfel"});
}

TEST(ShownSourceNames, ListsASelectedNameEvenIfItIsUnknown) {
    SourceFilter filter;
    filter.selectedSources = {L"Selected"};

    EXPECT_EQ(ShownSourceNames(filter, L""), Names{L"Selected"});
}

TEST(SourcesCaption, CountsTheSelectedNames) {
    EXPECT_EQ(SourcesCaption(0), L"Sources (all)");
    EXPECT_EQ(SourcesCaption(1), L"Sources (1 selected)");
    EXPECT_EQ(SourcesCaption(3), L"Sources (3 selected)");
    EXPECT_EQ(SourcesCaption(1234), L"Sources (1234 selected)");
}

}  // namespace
}  // namespace tavrin::query
