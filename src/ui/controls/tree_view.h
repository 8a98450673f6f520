#pragma once

#include <cstdint>
#include <memory>

#include <windows.h>
#include <commctrl.h>

namespace tavrin::eventlog {
struct EventNode;
}

namespace tavrin::ui {

struct MainWindow;

// The image of a node in the tree's image list, by its whole flags word; -1 for a
// word that no node of a valid tree has.
int NodeImage(std::uint32_t flags);

// WM_CHANNELS_TREE_BUILT: shows the tree. A node with invalid flags ends the filling; what is
// shown by then stays.
void OnChannelsTreeBuilt(MainWindow& window);

// The node of a tree item. Throws std::out_of_range for an item that names no vertex.
std::shared_ptr<eventlog::EventNode> NodeOfItem(const TVITEMW& item);

}  // namespace tavrin::ui
