// Measures how long the window thread spends in the program's own code and how long in the
// controls, with the real window in this process.

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <functional>
#include <iterator>
#include <map>
#include <string>
#include <utility>

#include <gtest/gtest.h>
#include <windows.h>
#include <commctrl.h>

#include "bench/samples.h"
#include "replay/replay_control.h"
#include "resource.h"
#include "ui/controls/window_state.h"
#include "ui/main_window.h"
#include "ui/window_lifetime.h"

namespace tavrin::bench {
namespace {

constexpr int kRuns = 5;
constexpr std::size_t kMillion = 1'000'000;
constexpr int kPages = 60;
constexpr DWORD kWaitMs = 120'000;

// Divides the time of each message between the program and the controls. A control that notifies
// the program is not charged for the answer. Services that the program calls count as the program.
class TimeSheet {
public:
    enum Owner { Controls, Program };

    // Charges the owner while it lives.
    class Charge {
    public:
        Charge(TimeSheet& sheet, Owner owner) : sheet_(sheet), previous_(sheet.Switch(owner)) {
            ++sheet_.depth_;
        }
        ~Charge() {
            sheet_.Switch(previous_);
            if (--sheet_.depth_ == 0) {
                sheet_.EndMessage();
            }
        }
        Charge(const Charge&) = delete;
        Charge& operator=(const Charge&) = delete;

    private:
        TimeSheet& sheet_;
        Owner previous_;
    };

    // Takes the longest message, and the most time of the program in one message, in ms.
    std::pair<double, double> TakeLongest() {
        return {std::exchange(longest_, 0), std::exchange(longestOfProgram_, 0)};
    }

private:
    Owner Switch(Owner next) {
        if (depth_ != 0) {
            spent_[owner_] += watch_.Milliseconds();
        }
        watch_.Restart();
        return std::exchange(owner_, next);
    }

    void EndMessage() {
        longest_ = std::max(longest_, spent_[Controls] + spent_[Program]);
        longestOfProgram_ = std::max(longestOfProgram_, spent_[Program]);
        spent_[Controls] = spent_[Program] = 0;
    }

    Stopwatch watch_;
    Owner owner_ = Controls;
    int depth_ = 0;
    double spent_[2] = {};
    double longest_ = 0;
    double longestOfProgram_ = 0;
};

TimeSheet g_sheet;
std::map<HWND, WNDPROC> g_controls;

LRESULT CALLBACK ChargedMainWindow(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const TimeSheet::Charge charge(g_sheet, TimeSheet::Program);
    return ui::MainWindowProc(window, message, wParam, lParam);
}

LRESULT CALLBACK ChargedControl(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const TimeSheet::Charge charge(g_sheet, TimeSheet::Controls);
    return CallWindowProcW(g_controls[window], window, message, wParam, lParam);
}

BOOL CALLBACK ChargeControl(HWND control, LPARAM) {
    g_controls[control] = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(control, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(ChargedControl)));
    return TRUE;
}

// The main window on a channel of a million events and one of a single event.
class ChargedWindow {
public:
    ChargedWindow() {
        replay::Reset();
        EXPECT_TRUE(replay::Script(
            L"channel name=\"Bench\" type=Operational enabled=true events=1000000 providers=12 "
            L"levels=1,2,3,4 rate=100\n"
            L"channel name=\"Other\" type=Operational enabled=true events=1\n"));
        WNDCLASSW description{};
        description.lpfnWndProc = ChargedMainWindow;
        description.hInstance = GetModuleHandleW(nullptr);
        description.lpszClassName = L"TavrinOwnTime";
        RegisterClassW(&description);
        window_ =
            CreateWindowExW(0, description.lpszClassName, L"", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0,
                            0, 1200, 900, nullptr, nullptr, description.hInstance, nullptr);
        EnumChildWindows(window_, ChargeControl, 0);
    }
    ~ChargedWindow() { DestroyWindow(window_); }
    ChargedWindow(const ChargedWindow&) = delete;
    ChargedWindow& operator=(const ChargedWindow&) = delete;

    bool Loads(std::size_t rows) const {
        return PumpUntil([&] { return State().rows.RowCount() == rows && !State().draining; });
    }

    // Waits for the tree, which is filled when the channels have been read.
    bool HasTree() const {
        return PumpUntil([&] { return TreeView_GetCount(State().controls.tree) > 3; });
    }

    bool Select(const wchar_t* channel) const {
        const HTREEITEM item = Find(TreeView_GetRoot(State().controls.tree), channel);
        return item != nullptr && TreeView_SelectItem(State().controls.tree, item) != FALSE;
    }

    bool Type(const wchar_t* text) const {
        return SetWindowTextW(State().controls.filterEdit, text) != FALSE;
    }

    // A text filter lifts the load limit. Every time contains a slash, so all rows match.
    bool Show() const { return Select(L"Bench") && Type(L"/") && Loads(kMillion); }

    bool Scroll() const {
        for (int page = 0; page < kPages; ++page) {
            SendMessageW(State().controls.list, WM_VSCROLL, SB_PAGEDOWN, 0);
            UpdateWindow(State().controls.list);
        }
        return true;
    }

    bool Filter() const {
        return Type(L"no such text") && Loads(0) && Type(L"/") && Loads(kMillion);
    }

    bool Refresh() const {
        SendMessageW(window_, WM_COMMAND, IDM_REFRESH, 0);
        return Loads(kMillion);
    }

    bool SwitchAway() const { return Select(L"Other") && Loads(1); }

private:
    // Searches the item and those below it.
    static HTREEITEM Find(HTREEITEM handle, const std::wstring& name) {
        const HWND tree = State().controls.tree;
        wchar_t text[64] = L"";
        TVITEMW item{};
        item.mask = TVIF_TEXT | TVIF_HANDLE;
        item.hItem = handle;
        item.pszText = text;
        item.cchTextMax = static_cast<int>(std::size(text));
        TreeView_GetItem(tree, &item);
        if (text == name) {
            return handle;
        }
        HTREEITEM found = nullptr;
        for (HTREEITEM child = TreeView_GetChild(tree, handle); child != nullptr && !found;
             child = TreeView_GetNextSibling(tree, child)) {
            found = Find(child, name);
        }
        return found;
    }

    static ui::MainWindow& State() { return *ui::g_mainWindow; }

    static bool PumpUntil(const std::function<bool()>& condition) {
        const DWORD start = GetTickCount();
        while (!condition()) {
            if (GetTickCount() - start > kWaitMs) {
                return false;
            }
            MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
            MSG message;
            while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
                DispatchMessageW(&message);
            }
        }
        return true;
    }

    HWND window_;
};

TEST(OwnTime, AMillionRows) {
    struct Act {
        const char* what;
        bool (ChargedWindow::*act)() const;
        Samples longest{};
        Samples ofProgram{};
    } acts[] = {{"scrolling by pages", &ChargedWindow::Scroll},
                {"filtering by two texts", &ChargedWindow::Filter},
                {"F5, to the last record", &ChargedWindow::Refresh},
                {"selecting another channel", &ChargedWindow::SwitchAway},
                {"selecting it again, all records in one tick", &ChargedWindow::Show}};
    const ChargedWindow window;
    ASSERT_TRUE(window.HasTree() && window.Show());
    for (int run = 0; run < kRuns; ++run) {
        for (Act& act : acts) {
            g_sheet.TakeLongest();
            ASSERT_TRUE((window.*act.act)()) << act.what;
            const auto [longest, ofProgram] = g_sheet.TakeLongest();
            act.longest.Add(longest);
            act.ofProgram.Add(ofProgram);
        }
    }
    PrintHeadline("the window thread with 1,000,000 rows: longest message");
    for (const Act& act : acts) {
        act.longest.Print(act.what, "ms");
        act.ofProgram.Print("    the program's own time in one message", "ms");
    }
}

}  // namespace
}  // namespace tavrin::bench
