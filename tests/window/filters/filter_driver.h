#pragma once

#include <optional>
#include <string>
#include <vector>

#include <windows.h>

#include "window/harness/app_window.h"

namespace tavrin::test {

inline constexpr wchar_t kRangeError[] = L"Time range: From is after To";

// The one-shot timers of the main window, and the entries of the event list's menu.
enum class FilterTimer : WPARAM { Text = 2, Apply = 4 };
enum class MenuEntry { Refresh, SetAsFrom, SetAsTo };

// Works the filters of the program's window as a user does, by keyboard and mouse.
class FilterDriver {
public:
    explicit FilterDriver(AppWindow& app) : app_(app) {}

    // The check boxes of a picker and of a row of the sources list.
    void ClickPickerBox(HWND picker) const;
    void ClickSource(int row) const;

    // Types a time, field after field, into a picker that is ticked.
    void TypePickerTime(HWND picker, const SYSTEMTIME& time) const;

    // Types over what the search edit of the sources holds.
    void TypeSearch(const std::wstring& text) const;

    // Clicks a row of the event list and takes an entry of its menu.
    void UseMenu(int row, MenuEntry entry) const;

    // Clicks an item of the tree.
    void ClickTree(const std::vector<std::wstring>& path) const;

    void ClickShowAll() const;

    // The time of a picker that is ticked.
    std::optional<SYSTEMTIME> TimeOf(HWND picker) const;

    // Has the window do now what the timer's end brings.
    void Expire(FilterTimer timer) const;

    // The texts of the queries that loads of a channel have made, in order.
    std::vector<std::wstring> Queries(const std::wstring& channel) const;

private:
    AppWindow& app_;
};

}  // namespace tavrin::test
