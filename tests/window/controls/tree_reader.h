#pragma once

#include <string>
#include <vector>

#include <windows.h>
#include <commctrl.h>

#include "window/controls/remote_memory.h"

namespace tavrin::test {

struct TreeEntry {
    HTREEITEM item;
    int depth;
    std::wstring text;
    int image;
    int selectedImage;
    LPARAM data;
    bool expanded;
};

// Reads and operates a tree view of another process.
class TreeReader {
public:
    TreeReader(HANDLE process, HWND tree);

    int ItemCount() const;

    // The whole tree in display order.
    std::vector<TreeEntry> Entries();

    // An item and all items below it. The item itself has depth 0.
    std::vector<TreeEntry> EntriesOf(HTREEITEM item);

    // The item with these texts from the root's children down, or null if there is none.
    HTREEITEM Find(const std::vector<std::wstring>& path);
    HTREEITEM Root() const;
    HTREEITEM Selected() const;

    TreeEntry Read(HTREEITEM item, int depth = 0);
    void Select(HTREEITEM item) const;

    // Replaces an item's data, which no user can.
    void SetData(HTREEITEM item, LPARAM data);

    // Expands the folders above an item and scrolls the item into view.
    void EnsureVisible(HTREEITEM item) const;

    // The rectangle of an item's text in screen coordinates.
    RECT TextRect(HTREEITEM item);

    HWND window() const { return tree_; }

private:
    HTREEITEM Next(UINT relation, HTREEITEM item) const;
    void Collect(HTREEITEM item, int depth, std::vector<TreeEntry>& entries);

    HWND tree_;
    RemoteMemory memory_;
};

}  // namespace tavrin::test
