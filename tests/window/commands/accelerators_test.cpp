#include <algorithm>

#include "resource.h"
#include "support/debug_output.h"
#include "support/wait_until.h"
#include "window/controls/input.h"
#include "window/controls/top_windows.h"
#include "window/harness/test_logs.h"
#include "window/harness/window_test.h"

namespace tavrin::test {
namespace {

using C = MainWindowControls;

const struct {
    const char* name;
    HWND C::*control;
} kFocusable[] = {
    {"tree", &C::tree},
    {"list", &C::list},
    {"filter edit", &C::filterEdit},
    {"details edit", &C::detailsEdit},
    {"From picker", &C::fromPicker},
    {"To picker", &C::toPicker},
    {"sources search", &C::sourcesSearch},
    {"sources list", &C::sourcesList},
    {"show all sources", &C::showAllSources},
    {"tab", &C::tab},
};

// Presses real keys. With a channel selected every control can have the focus.
class Accelerators : public WindowTest {
protected:
    void SetUp() override {
        logs_.WriteEvents(L"Application", Events(5));
        Start(Serving(logs_));
        ASSERT_TRUE(app_->SelectPath(kApplication));
        ASSERT_TRUE(app_->WaitForRows(5));
        ASSERT_TRUE(BringToFront(app_->window()));
    }

    std::ptrdiff_t Refreshes() const {
        return std::ranges::count_if(output_.Lines(app_->process().id()),
                                     [](const std::wstring& line) {
                                         return line.ends_with(L"] => Refreshing Application\n");
                                     });
    }

    HWND Dialog() const { return FindTopWindow(app_->process().id(), kDialogClass); }

    // After a duplicate command the box would open again as soon as it is closed.
    void ExpectOneAboutBox() const {
        const HWND box = WaitForTopWindow(app_->process().id(), kDialogClass);
        ASSERT_NE(box, nullptr);
        EXPECT_EQ(TextOf(box), L"About");
        ASSERT_TRUE(BringToFront(box));
        PressKey(VK_ESCAPE);
        EXPECT_TRUE(WaitUntil([&] { return !IsWindow(box); }));
        app_->Synchronise();
        EXPECT_EQ(Dialog(), nullptr);
        EXPECT_TRUE(WaitUntil([&] { return IsWindowEnabled(app_->window()) != FALSE; }));
    }

    const DebugOutput output_;
    const Recording logs_{kSomeChannels};
};

TEST_F(Accelerators, F5RefreshesOnceFromEveryControl) {
    std::ptrdiff_t expected = 0;
    for (const auto& entry : kFocusable) {
        SCOPED_TRACE(entry.name);
        ASSERT_TRUE(GiveFocus(app_->controls().*entry.control));
        PressKey(VK_F5);
        ++expected;
        EXPECT_TRUE(
            WaitUntil([&] { return Refreshes() >= expected; }, std::chrono::milliseconds(3000)));
        app_->Synchronise();
        EXPECT_EQ(Refreshes(), expected);
    }
    EXPECT_TRUE(app_->WaitForRows(5));
}

TEST_F(Accelerators, AltWithSlashOrQuestionMarkOpensOneAboutBoxFromEveryControl) {
    for (const auto& entry : kFocusable) {
        for (const wchar_t character : {L'/', L'?'}) {
            SCOPED_TRACE(std::string(entry.name) + ", Alt+" + static_cast<char>(character));
            ASSERT_TRUE(BringToFront(app_->window()));
            ASSERT_TRUE(GiveFocus(app_->controls().*entry.control));
            PressAltCharacter(character);
            ExpectOneAboutBox();
        }
    }
}

TEST_F(Accelerators, TheAboutBoxNamesTheProgramAndClosesByItsButton) {
    app_->Command(IDM_ABOUT);
    const HWND box = WaitForTopWindow(app_->process().id(), kDialogClass);
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(TextOf(box), L"About");
    EXPECT_FALSE(IsWindowEnabled(app_->window())) << "the box is modal";
    std::vector<std::wstring> texts;
    for (HWND child = GetWindow(box, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        texts.push_back(TextOf(child));
    }
    EXPECT_NE(std::ranges::find(texts, L"Tavrin, Version 1.0"), texts.end());
    EXPECT_NE(std::ranges::find(texts, L"Icons by "), texts.end());
    EXPECT_NE(std::ranges::find(texts, L"Find it useful? "), texts.end());
    for (const int link : {1000, 1001}) {
        const HWND control = GetDlgItem(box, link);
        ASSERT_NE(control, nullptr);
        EXPECT_EQ(ClassOf(control), L"SysLink");
    }
    ClickLeft(CentreOf(GetDlgItem(box, IDOK)));
    EXPECT_TRUE(WaitUntil([&] { return !IsWindow(box); }));
}

TEST_F(Accelerators, TheUnusedOptionsCommandShowsItsMessage) {
    static_assert(IDM_OPTIONS == 32771);
    app_->Command(IDM_OPTIONS);
    const HWND box = WaitForTopWindow(app_->process().id(), kDialogClass);
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(TextOf(box), L"Options");
    bool found = false;
    int buttons = 0;
    for (HWND child = GetWindow(box, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        found = found || TextOf(child) == L"You clicked Options!";
        buttons += ClassOf(child) == L"Button" && IsWindowVisible(child) ? 1 : 0;
    }
    EXPECT_TRUE(found);
    EXPECT_EQ(buttons, 1);
    ASSERT_TRUE(BringToFront(box));
    PressKey(VK_RETURN);
    EXPECT_TRUE(WaitUntil([&] { return !IsWindow(box); }));
}

TEST_F(Accelerators, F5OnAFolderDoesNothing) {
    ASSERT_TRUE(app_->SelectPath(kWindowsLogs));
    ASSERT_TRUE(GiveFocus(app_->controls().tree));
    PressKey(VK_F5);
    // The next command's effect shows that the first one has been handled.
    PressAltCharacter(L'/');
    ExpectOneAboutBox();
    EXPECT_EQ(Refreshes(), 0);
    EXPECT_EQ(app_->list().RowCount(), 5);
}

}  // namespace
}  // namespace tavrin::test
