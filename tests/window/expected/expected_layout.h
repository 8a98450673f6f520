#pragma once

#include <vector>

#include <windows.h>

#include "window/harness/app_window.h"

namespace tavrin::test {

// The pane sizes that the user can change by dragging.
struct ExpectedSizes {
    int details = 150;
    int tree = 250;
    int sources = 250;
};

// Computes the place of every control in the main window's current client area.
class ExpectedLayout {
public:
    // `wanted` holds the pane sizes before the layout.
    ExpectedLayout(const AppWindow& app, const ExpectedSizes& wanted);

    const ExpectedSizes& sizes() const { return sizes_; }

    // Waits until every control is in place. At the timeout, reports each one that is not.
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
    int bottom_ = 0;   // top edge of the status bar
    int split_ = 0;    // top edge of the details frame
    ExpectedSizes sizes_;
    std::vector<Place> places_;
};

}  // namespace tavrin::test
