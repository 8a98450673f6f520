#pragma once

#include <cstdint>

#include <windows.h>
#include <commctrl.h>

namespace tavrin::ui {

struct MainWindow;

// The image of a node in the tree's image list, by its whole flags word; -1 for a
// word that no node of a valid tree has.
int NodeImage(std::uint32_t flags);

// WM_CHANNELS_TREE_BUILT: shows the tree. A node with invalid flags ends the filling;
// what was shown by then stays.
void OnChannelsTreeBuilt(MainWindow& window);

// TVN_SELCHANGEDW: the node of the item becomes the current one, and a channel is
// shown. Throws std::out_of_range for an item that names no vertex.
void OnTreeSelection(MainWindow& window, const NMTREEVIEWW& change);

}  // namespace tavrin::ui
