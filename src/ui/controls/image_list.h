#pragma once

#include <span>

#include <windows.h>
#include <commctrl.h>

namespace tavrin::ui {

// Makes an image list of 16 x 16 icon resources, in this order. `growth` is its first size and its
// increment. The control that shows it owns it.
HIMAGELIST MakeIconList(std::span<const UINT> icons, UINT flags, int growth);

}  // namespace tavrin::ui
