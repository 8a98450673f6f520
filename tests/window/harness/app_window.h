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

// The program's main window, running: what it shows, and the usual ways to move it.
class AppWindow {
public:
    // Starts the program and waits for its window. Throws when none appears.
    explicit AppWindow(const AppOptions& options = {});

    const AppProcess& process() const { return process_; }
    HWND window() const { return window_; }
    const MainWindowControls& controls() const { return controls_; }
    TreeReader& tree() { return tree_; }
    ListReader& list() { return list_; }
    ListReader& sources() { return sources_; }

    // The tree is filled at one go, so that its first item tells that all are there.
    bool WaitForTree() const;

    // Selects the item with these texts under the root. False when it is not there.
    bool SelectPath(const std::vector<std::wstring>& path);

    // Waits until the list shows this many rows.
    bool WaitForRows(int rows) const;
    bool WaitForStatus(const std::wstring& text) const;

    std::wstring Status() const;  // the one-line message, part 1
    std::wstring Details() const { return TextOf(controls_.detailsEdit); }
    std::wstring Loaded() const { return TextOf(controls_.loadedValue); }
    std::wstring Total() const { return TextOf(controls_.totalValue); }
    std::wstring TotalCaption() const { return TextOf(controls_.totalCaption); }
    std::wstring NodeName() const { return TextOf(controls_.nodeName); }
    std::wstring FilterText() const { return TextOf(controls_.filterEdit); }
    std::optional<SYSTEMTIME> From() const;
    std::optional<SYSTEMTIME> To() const;

    // Types into the filter edit by the keyboard, in place of what it holds.
    void TypeFilter(const std::wstring& text) const;

    // Sends a command as a menu does.
    void Command(int id) const;

    // Gives the client area a size and waits until it has it.
    bool ResizeClient(int width, int height) const;

    // The window's thread has handled all that was sent to it so far.
    void Synchronise() const;

    // Asks the window to close, as its close box does; the call does not wait.
    void PostClose() const;

private:
    AppProcess process_;
    HWND window_;
    MainWindowControls controls_;
    TreeReader tree_;
    ListReader list_;
    ListReader sources_;
};

// A number as the window shows counts: in the user's format.
std::wstring FormatCount(std::uint64_t number);

// The local time of an instant, as the list shows it.
std::wstring LocalTimeText(const SYSTEMTIME& utc);

}  // namespace tavrin::test
