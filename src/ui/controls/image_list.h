#pragma once

#include <span>

#include <windows.h>
#include <commctrl.h>

namespace tavrin::ui {

// Makes an image list of 16 x 16 icon resources, in this order. `growth` is its first size and its
// increment. A list view destroys the image list that it shows. A tree view does not: its image
// list lasts until the process ends.
HIMAGELIST MakeIconList(std::span<const UINT> icons, UINT flags, int growth);

}  // namespace tavrin::ui
