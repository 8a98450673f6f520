// Tests the About box's dialog procedure without a dialog: DialogBoxParamW is patched, and the
// tests call the procedure that it received.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <windows.h>
#include <commctrl.h>
#include <shellapi.h>

#include "resource.h"
#include "support/import_patch.h"
#include "ui/controls/about_box.h"

namespace tavrin::ui {
namespace {

using testing::ElementsAre;

class AboutBox : public testing::Test {
protected:
    AboutBox() {
        endings.clear();
        opened.clear();
        ShowAboutBox(kOwner);
    }

    static LRESULT Notify(UINT code, UINT_PTR id) {
        NMLINK link{};
        link.hdr.code = code;
        link.hdr.idFrom = id;
        std::wstring_view(L"https://tavrin.example.org/x").copy(link.item.szUrl, L_MAX_URL_LENGTH);
        return procedure(nullptr, WM_NOTIFY, id, reinterpret_cast<LPARAM>(&link));
    }

    inline static const HWND kOwner = reinterpret_cast<HWND>(std::uintptr_t{0x1234});
    inline static DLGPROC procedure;
    inline static std::vector<INT_PTR> endings;
    inline static std::vector<std::wstring> opened;

private:
    static INT_PTR WINAPI ShowDialog(HINSTANCE, LPCWSTR name, HWND owner, DLGPROC proc, LPARAM) {
        EXPECT_EQ(reinterpret_cast<UINT_PTR>(name), 103u);
        EXPECT_EQ(owner, kOwner);
        procedure = proc;
        return IDOK;
    }
    static BOOL WINAPI EndShownDialog(HWND, INT_PTR result) {
        endings.push_back(result);
        return TRUE;
    }
    static HINSTANCE WINAPI Open(HWND, LPCWSTR verb, LPCWSTR url, LPCWSTR parameters,
                                 LPCWSTR directory, INT show) {
        EXPECT_STREQ(verb, L"open");
        EXPECT_EQ(parameters, nullptr);
        EXPECT_EQ(directory, nullptr);
        EXPECT_EQ(show, SW_SHOWNORMAL);
        opened.emplace_back(url);
        return nullptr;
    }

    test::ImportPatch<decltype(DialogBoxParamW)> show_{"DialogBoxParamW", ShowDialog};
    test::ImportPatch<decltype(EndDialog)> end_{"EndDialog", EndShownDialog};
    test::ImportPatch<decltype(ShellExecuteW)> open_{"ShellExecuteW", Open};
};

TEST_F(AboutBox, LeavesTheFocusToTheSystem) {
    EXPECT_EQ(procedure(nullptr, WM_INITDIALOG, 0, 0), TRUE);
}

TEST_F(AboutBox, EndsWithOkAndWithEscape) {
    EXPECT_EQ(procedure(nullptr, WM_COMMAND, IDOK, 0), TRUE);
    EXPECT_EQ(procedure(nullptr, WM_COMMAND, IDCANCEL, 0), TRUE);
    EXPECT_EQ(procedure(nullptr, WM_COMMAND, 3, 0), FALSE);
    EXPECT_THAT(endings, ElementsAre(IDOK, IDCANCEL));
}

TEST_F(AboutBox, OpensTheLinkThatIsClicked) {
    EXPECT_EQ(Notify(NM_CLICK, IDC_ICONS_LINK), FALSE);
    EXPECT_EQ(Notify(NM_CLICK, IDC_TIP_LINK), FALSE);
    EXPECT_THAT(opened,
                ElementsAre(L"https://tavrin.example.org/x", L"https://tavrin.example.org/x"));
}

TEST_F(AboutBox, OpensNothingByKeyboardOrForOtherControls) {
    EXPECT_EQ(Notify(NM_RETURN, IDC_ICONS_LINK), FALSE);
    EXPECT_EQ(Notify(NM_CLICK, 1002), FALSE);
    EXPECT_TRUE(opened.empty());
}

TEST_F(AboutBox, LeavesOtherMessagesToTheSystem) {
    EXPECT_EQ(procedure(nullptr, WM_SIZE, 0, 0), FALSE);
}

// The box has no tab, but its procedure handles the details tab's notification.
TEST_F(AboutBox, ShowsTheTabPageWithItsTab) {
    const HWND tab = CreateWindowExW(0, WC_TABCONTROLW, L"", WS_OVERLAPPEDWINDOW, 0, 0, 100, 100,
                                     nullptr, nullptr, nullptr, nullptr);
    const HWND page =
        CreateWindowExW(0, L"Static", L"", WS_CHILD, 0, 0, 10, 10, tab, nullptr, nullptr, nullptr);
    TCITEMW item{};
    TabCtrl_InsertItem(tab, 0, &item);
    TabCtrl_InsertItem(tab, 1, &item);
    NMHDR change{tab, IDC_DETAILS_TAB, static_cast<UINT>(TCN_SELCHANGE)};
    const auto isShown = [page] { return (GetWindowLongPtrW(page, GWL_STYLE) & WS_VISIBLE) != 0; };

    TabCtrl_SetCurSel(tab, 0);
    EXPECT_EQ(procedure(nullptr, WM_NOTIFY, IDC_DETAILS_TAB, reinterpret_cast<LPARAM>(&change)),
              FALSE);
    EXPECT_TRUE(isShown());
    TabCtrl_SetCurSel(tab, 1);
    EXPECT_EQ(procedure(nullptr, WM_NOTIFY, IDC_DETAILS_TAB, reinterpret_cast<LPARAM>(&change)),
              FALSE);
    EXPECT_FALSE(isShown());
    DestroyWindow(tab);
}

}  // namespace
}  // namespace tavrin::ui
