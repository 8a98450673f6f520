#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include <windows.h>
#include <commctrl.h>

namespace tavrin::eventlog {
struct EventRecord;
}

namespace tavrin::ui {

struct MainWindow;

// The width of a column that depends on the list's.
inline constexpr int kRestOfList = -1;

// A column of the event list.
struct Column {
    const wchar_t* title;
    int width;  // pixels
    std::wstring (*cell)(const eventlog::EventRecord&);
};

inline constexpr int kColumnCount = 6;
extern const std::array<Column, kColumnCount> kColumns;

// The width of the last column for a list with this client width. It overruns the
// client area by 140 pixels, and wraps as a 16-bit number in a narrow list.
int LastColumnWidth(int listClientWidth);

// The image of a level in the list's image list; none where the image is left to the
// control.
std::optional<int> LevelImage(std::uint8_t level);

// Sets up the list's styles and images. Once.
void SetUpEventList(MainWindow& window, HWND list);

// Gives the list its columns. Once.
void InsertColumns(HWND list, HFONT headerFont);

// Gives every column its width again.
void ResetColumnWidths(HWND list);

// Gives the list as many rows as there are, without scrolling, and shows their number.
void UpdateRowCount(const MainWindow& window);

// The selected row; -1 without.
int SelectedRow(HWND list);

// WM_NOTIFY from the list.
LRESULT OnEventListNotify(MainWindow& window, NMHDR& notification);

}  // namespace tavrin::ui
