#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <windows.h>

#include "window/controls/bar_readers.h"
#include "window/controls/list_reader.h"
#include "window/controls/main_window_controls.h"
#include "window/controls/tree_reader.h"
#include "window/harness/app_process.h"

namespace tavrin::test {

// Timers of the main window.
enum class Timer : WPARAM { FilterText = 2, LiveCheck = 3, FilterApply = 4 };

// Runs the program, reads what its main window shows, and operates it.
class AppWindow {
public:
    // Starts the program and waits for its window. Throws std::runtime_error if none appears.
    explicit AppWindow(const AppOptions& options = {});

    const AppProcess& process() const { return process_; }
    HWND window() const { return window_; }
    const MainWindowControls& controls() const { return controls_; }
    TreeReader& tree() { return tree_; }
    ListReader& list() { return list_; }
    ListReader& sources() { return sources_; }

    // Waits until the tree is filled. The program adds all items at once, so one is enough.
    bool WaitForTree() const;

    // Selects the item with these texts below the root. Returns false if there is none.
    bool SelectPath(const std::vector<std::wstring>& path);

    // Waits until the list shows this many rows.
    bool WaitForRows(int rows) const;
    bool WaitForStatus(const std::wstring& text) const;

    std::wstring Status() const;  // part 1 of the status bar
    std::wstring Details() const { return TextOf(controls_.detailsEdit); }
    std::wstring Loaded() const { return TextOf(controls_.loadedValue); }
    std::wstring Total() const { return TextOf(controls_.totalValue); }
    std::wstring TotalCaption() const { return TextOf(controls_.totalCaption); }
    std::wstring NodeName() const { return TextOf(controls_.nodeName); }
    std::wstring FilterText() const { return TextOf(controls_.filterEdit); }
    std::optional<SYSTEMTIME> From() const;
    std::optional<SYSTEMTIME> To() const;

    // Replaces the text of the filter edit by keyboard input.
    void TypeFilter(const std::wstring& text) const;

    // Sends a command as a menu does.
    void Command(int id) const;

    // Makes the window handle the timer now.
    void Expire(Timer timer) const;

    // Resizes the client area and waits for the new size. Returns false at the timeout.
    bool ResizeClient(int width, int height) const;

    // Waits until the window's thread has handled all messages sent to it so far.
    void Synchronise() const;

    // Asks the window to close, as its close box does. Does not wait.
    void PostClose() const;

private:
    AppProcess process_;
    HWND window_;
    MainWindowControls controls_;
    TreeReader tree_;
    ListReader list_;
    ListReader sources_;
};

// Formats a number in the user's locale, as the window shows counts.
std::wstring FormatCount(std::uint64_t number);

// Formats a UTC time as the list shows it, in local time.
std::wstring LocalTimeText(const SYSTEMTIME& utc);

}  // namespace tavrin::test
