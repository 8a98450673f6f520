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

// The column takes what the others leave of the list's width.
inline constexpr int kRestOfList = -1;

// A column of the event list.
struct Column {
    const wchar_t* title;
    int width;  // pixels
    std::wstring (*cell)(const eventlog::EventRecord&);
};

inline constexpr int kColumnCount = 6;
extern const std::array<Column, kColumnCount> kColumns;

// The last column's width in pixels. It overruns the client area by 140 pixels, and wraps as a
// 16-bit number in a narrow list.
int LastColumnWidth(int listClientWidth);

// The index of a level's image; none where the control chooses.
std::optional<int> LevelImage(std::uint8_t level);

// Sets up the list's styles and images. Once.
void SetUpEventList(MainWindow& window, HWND list);

// Gives the list its columns. Once.
void InsertColumns(HWND list, HFONT headerFont);

// Resets every column to its width.
void ResetColumnWidths(HWND list);

// Sets the list's row count without scrolling, and shows it in the header pane.
void UpdateRowCount(MainWindow& window);

// The selected row, or -1.
int SelectedRow(HWND list);

// WM_NOTIFY from the list.
LRESULT OnEventListNotify(MainWindow& window, NMHDR& notification);

}  // namespace tavrin::ui
