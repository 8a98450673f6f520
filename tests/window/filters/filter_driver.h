#pragma once

#include <optional>
#include <string>
#include <vector>

#include <windows.h>

#include "window/harness/app_window.h"

namespace tavrin::test {

inline constexpr wchar_t kRangeError[] = L"Time range: From is after To";

// The entries of the event list's menu.
enum class MenuEntry { Refresh, SetAsFrom, SetAsTo };

// Operates the filters as a user does, by keyboard and mouse.
class FilterDriver {
public:
    explicit FilterDriver(AppWindow& app) : app_(app) {}

    // Click the check box of a picker and of a row of the sources list.
    void ClickPickerBox(HWND picker) const;
    void ClickSource(int row) const;

    // Types a time, field by field, into a ticked picker.
    void TypePickerTime(HWND picker, const SYSTEMTIME& time) const;

    // Replaces the text of the sources' search edit.
    void TypeSearch(const std::wstring& text) const;

    // Clicks a row of the event list and chooses an entry of its context menu.
    void UseMenu(int row, MenuEntry entry) const;

    void ClickTree(const std::vector<std::wstring>& path) const;

    void ClickShowAll() const;

    // The time of a picker, or nullopt if it is unticked.
    std::optional<SYSTEMTIME> TimeOf(HWND picker) const;

    // The query texts of all loads of a channel so far, in order.
    std::vector<std::wstring> Queries(const std::wstring& channel) const;

private:
    AppWindow& app_;
};

}  // namespace tavrin::test
