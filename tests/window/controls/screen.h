#pragma once

#include <windows.h>

namespace tavrin::test {

// The colour of a pixel of the screen.
COLORREF ColourAt(POINT point);

// Returns whether any pixel in a rectangle of the screen has the colour.
bool ShowsColour(const RECT& rect, COLORREF colour);

}  // namespace tavrin::test
