#include "window/controls/screen.h"

namespace tavrin::test {

COLORREF ColourAt(POINT point) {
    const HDC screen = GetDC(nullptr);
    const COLORREF colour = GetPixel(screen, point.x, point.y);
    ReleaseDC(nullptr, screen);
    return colour;
}

bool ShowsColour(const RECT& rect, COLORREF colour) {
    const HDC screen = GetDC(nullptr);
    bool found = false;
    for (LONG y = rect.top; y < rect.bottom && !found; ++y) {
        for (LONG x = rect.left; x < rect.right && !found; ++x) {
            found = GetPixel(screen, x, y) == colour;
        }
    }
    ReleaseDC(nullptr, screen);
    return found;
}

}  // namespace tavrin::test
