#pragma once

#include <span>

#include <windows.h>
#include <commctrl.h>

namespace tavrin::ui {

// A list of 16 x 16 images made of the program's icons, in this order. It grows by the
// given number, which is also its first size. Whoever shows it owns it.
HIMAGELIST MakeIconList(std::span<const UINT> icons, UINT flags, int growth);

}  // namespace tavrin::ui
