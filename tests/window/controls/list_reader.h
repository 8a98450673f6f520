#pragma once

#include <array>
#include <string>
#include <vector>

#include <windows.h>
#include <commctrl.h>

#include "window/controls/remote_memory.h"

namespace tavrin::test {

// The cells of a row of the event list.
using RowCells = std::array<std::wstring, 6>;

struct ColumnFacts {
    std::wstring title;
    int width;
    int format;
};

// Reads and operates a list view of another process.
class ListReader {
public:
    ListReader(HANDLE process, HWND list);

    int RowCount() const;
    std::wstring Cell(int row, int column);
    RowCells Row(int row);
    int Image(int row);
    bool IsSelected(int row) const;
    bool IsChecked(int row) const;
    std::vector<std::wstring> FirstColumn();
    std::vector<ColumnFacts> Columns();

    // Selects a row by message, as an assistive tool does. The other rows lose the selection.
    void Select(int row);
    void Unselect();
    void SetChecked(int row, bool checked);
    void EnsureVisible(int row) const;

    // The rectangle of a row in screen coordinates. `part` is one of the LVIR_ values.
    RECT RowRect(int row, int part);

    HWND window() const { return list_; }

private:
    static constexpr std::size_t kTextRoom = 1024;

    void SetState(int row, UINT state, UINT mask);

    HWND list_;
    RemoteMemory memory_;
};

}  // namespace tavrin::test
