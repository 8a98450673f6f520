#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <windows.h>

namespace tavrin::test {
namespace {

// Reads the resources from the program's file.
class Resources : public testing::Test {
protected:
    void SetUp() override {
        program_ = LoadLibraryExW(L"Tavrin.exe", nullptr,
                                  LOAD_LIBRARY_AS_DATAFILE | LOAD_LIBRARY_AS_IMAGE_RESOURCE);
        ASSERT_NE(program_, nullptr);
    }

    void TearDown() override { FreeLibrary(program_); }

    HMODULE program_ = nullptr;
};

struct MenuEntry {
    std::wstring text;  // empty: a separator
    UINT id;            // 0 for a separator

    bool operator==(const MenuEntry&) const = default;
};

std::vector<MenuEntry> EntriesOf(HMENU menu) {
    std::vector<MenuEntry> entries;
    for (int i = 0; i < GetMenuItemCount(menu); ++i) {
        wchar_t text[64] = L"";
        GetMenuStringW(menu, static_cast<UINT>(i), text, 64, MF_BYPOSITION);
        entries.push_back({text, GetMenuItemID(menu, i)});
    }
    return entries;
}

std::wstring TitleOf(HMENU menu, UINT position) {
    wchar_t text[64] = L"";
    GetMenuStringW(menu, position, text, 64, MF_BYPOSITION);
    return text;
}

TEST_F(Resources, TheMenuBarHoldsExitAndAbout) {
    const HMENU bar = LoadMenuW(program_, MAKEINTRESOURCEW(109));
    ASSERT_EQ(GetMenuItemCount(bar), 2);
    EXPECT_EQ(TitleOf(bar, 0), L"&File");
    EXPECT_EQ(EntriesOf(GetSubMenu(bar, 0)), (std::vector<MenuEntry>{{L"E&xit", 105}}));
    EXPECT_EQ(TitleOf(bar, 1), L"&Help");
    EXPECT_EQ(EntriesOf(GetSubMenu(bar, 1)), (std::vector<MenuEntry>{{L"&About ...", 104}}));
    DestroyMenu(bar);
}

TEST_F(Resources, TheContextMenuHoldsRefreshAndTheTwoBounds) {
    const HMENU menu = LoadMenuW(program_, MAKEINTRESOURCEW(130));
    EXPECT_EQ(EntriesOf(GetSubMenu(menu, 0)),
              (std::vector<MenuEntry>{
                  {L"Refresh", 32773}, {L"", 0}, {L"Set as From", 32774}, {L"Set as To", 32775}}));
    DestroyMenu(menu);
}

TEST_F(Resources, TheAcceleratorsAreTwoCharactersWithAltAndF5) {
    const HACCEL table = LoadAcceleratorsW(program_, MAKEINTRESOURCEW(109));
    ACCEL keys[8] = {};
    ASSERT_EQ(CopyAcceleratorTableW(table, keys, 8), 3);
    constexpr BYTE kLastMark = 0x80;
    const ACCEL kExpected[] = {{FALT, '?', 104}, {FALT, '/', 104}, {FVIRTKEY, VK_F5, 32773}};
    for (std::size_t i = 0; i < std::size(kExpected); ++i) {
        EXPECT_EQ(keys[i].fVirt & ~(kLastMark | FNOINVERT), kExpected[i].fVirt);
        EXPECT_EQ(keys[i].key, kExpected[i].key);
        EXPECT_EQ(keys[i].cmd, kExpected[i].cmd);
    }
}

TEST_F(Resources, TheStringsNameTheTitleAndTheClass) {
    const struct {
        UINT id;
        const wchar_t* text;
    } kStrings[] = {{103, L"Tavrin"}, {109, L"TAVRIN"}};
    for (const auto& expected : kStrings) {
        wchar_t text[100] = L"";
        LoadStringW(program_, expected.id, text, 100);
        EXPECT_STREQ(text, expected.text);
    }
}

TEST_F(Resources, EveryIconIsThereAt16Pixels) {
    for (const int id : {2, 133, 136, 137, 138, 139, 140, 141, 142, 144, 145, 146, 147, 148}) {
        const HANDLE icon = LoadImageW(program_, MAKEINTRESOURCEW(id), IMAGE_ICON, 16, 16, 0);
        EXPECT_NE(icon, nullptr) << id;
        DestroyIcon(static_cast<HICON>(icon));
    }
}

TEST_F(Resources, TheManifestAsksForNoElevationAndForTheNewControls) {
    const HRSRC found = FindResourceW(program_, MAKEINTRESOURCEW(1), MAKEINTRESOURCEW(24));
    ASSERT_NE(found, nullptr);
    const std::string manifest(
        static_cast<const char*>(LockResource(LoadResource(program_, found))),
        SizeofResource(program_, found));
    EXPECT_NE(manifest.find("asInvoker"), std::string::npos);
    EXPECT_NE(manifest.find("Microsoft.Windows.Common-Controls"), std::string::npos);
    EXPECT_NE(manifest.find("version=\"6.0.0.0\""), std::string::npos);
}

}  // namespace
}  // namespace tavrin::test
