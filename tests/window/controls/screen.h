#pragma once

#include <windows.h>

namespace tavrin::test {

// The colour of a pixel of the screen: what the user sees there.
COLORREF ColourAt(POINT point);

// Whether any pixel of a rectangle of the screen has a colour.
bool ShowsColour(const RECT& rect, COLORREF colour);

}  // namespace tavrin::test
