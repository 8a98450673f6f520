#pragma once

#include <windows.h>

namespace tavrin::eventlog {

// What the workers post to the main window. No message carries an allocated payload.

// The channel tree is built, as far as it could be. wParam and lParam 0.
inline constexpr UINT WM_CHANNELS_TREE_BUILT = WM_USER + 1;

// wParam: a channel's record count. lParam: the address of its node, which may be
// gone by then: only to be compared, never to be followed.
inline constexpr UINT WM_RECORD_COUNT_READY = WM_USER + 2;

}  // namespace tavrin::eventlog
