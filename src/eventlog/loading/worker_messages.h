#pragma once

#include <windows.h>

namespace tavrin::eventlog {

// Messages from the workers to the main window. None carries allocated memory.

// The tree builder has ended. wParam and lParam are 0.
inline constexpr UINT WM_CHANNELS_TREE_BUILT = WM_USER + 1;

// wParam: a channel's record count. lParam: the address of its node. The node may be gone: compare
// the address, never dereference it.
inline constexpr UINT WM_RECORD_COUNT_READY = WM_USER + 2;

}  // namespace tavrin::eventlog
