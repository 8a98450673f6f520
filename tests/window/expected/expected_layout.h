#pragma once

#include <vector>

#include <windows.h>

#include "window/harness/app_window.h"

namespace tavrin::test {

// The sizes that the user can change.
struct ExpectedSizes {
    int details = 150;
    int tree = 250;
    int sources = 250;
};

// Where the controls must lie in a main window of this client size.
class ExpectedLayout {
public:
    // `wanted` are the sizes before the window was laid out.
    ExpectedLayout(const AppWindow& app, const ExpectedSizes& wanted);

    const ExpectedSizes& sizes() const { return sizes_; }

    // Waits until every control lies where it must; otherwise each deviation becomes a failure.
    void Expect(const AppWindow& app) const;

private:
    struct Place {
        const char* name;
        HWND reference;
        HWND control;
        RECT rect;
    };

    void FitSizes(const ExpectedSizes& wanted, int width, int height);
    void Add(const char* name, HWND reference, HWND control, int x, int y, int width, int height);
    void PlacePanes(const AppWindow& app, int width);
    void PlaceSources(const AppWindow& app, int width);
    void PlaceLabels(const AppWindow& app, int centre);

    int toolbar_ = 0;  // height
    int status_ = 0;   // height
    int bottom_ = 0;   // of the work area
    int split_ = 0;    // the details frame's upper edge
    ExpectedSizes sizes_;
    std::vector<Place> places_;
};

}  // namespace tavrin::test
