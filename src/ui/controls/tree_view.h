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

// The index of a node's image, by its whole flags word; -1 if no valid node has it.
int NodeImage(std::uint32_t flags);

// WM_CHANNELS_TREE_BUILT: fills the tree control. A node with invalid flags ends the fill; the
// items before it stay.
void OnChannelsTreeBuilt(MainWindow& window);

// The node of a tree item. Throws std::out_of_range if the item names no vertex.
std::shared_ptr<eventlog::EventNode> NodeOfItem(const TVITEMW& item);

}  // namespace tavrin::ui
