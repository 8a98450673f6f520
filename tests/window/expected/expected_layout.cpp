#include "window/expected/expected_layout.h"

#include <algorithm>
#include <sstream>

#include <gtest/gtest.h>

#include "support/wait_until.h"

namespace tavrin::test {
namespace {

using std::max;
using std::min;

int HeightOf(HWND window) {
    RECT rect{};
    GetWindowRect(window, &rect);
    return rect.bottom - rect.top;
}

bool Same(const RECT& a, const RECT& b) {
    return EqualRect(&a, &b) != FALSE;
}

std::string Describe(const RECT& rect) {
    std::ostringstream text;
    text << "(" << rect.left << ", " << rect.top << ") " << rect.right - rect.left << " x "
         << rect.bottom - rect.top;
    return text.str();
}

}  // namespace

ExpectedLayout::ExpectedLayout(const AppWindow& app, const ExpectedSizes& wanted)
    : toolbar_(HeightOf(app.controls().toolbar)), status_(HeightOf(app.controls().statusBar)) {
    const SIZE client = ClientSize(app.window());
    bottom_ = client.cy - status_;
    FitSizes(wanted, client.cx, client.cy);
    PlacePanes(app, client.cx);
    PlaceSources(app, client.cx);
    PlaceLabels(app, client.cx - sizes_.tree - sizes_.sources - 8);
}

void ExpectedLayout::Expect(const AppWindow& app) const {
    const auto inPlace = [](const Place& place) {
        return Same(RectIn(place.reference, place.control), place.rect);
    };
    WaitUntil([&] { return std::ranges::all_of(places_, inPlace); },
              std::chrono::milliseconds(3000));
    for (const Place& place : places_) {
        EXPECT_EQ(Describe(RectIn(place.reference, place.control)), Describe(place.rect))
            << place.name << " in a client area of " << ClientSize(app.window()).cx << " x "
            << ClientSize(app.window()).cy;
    }
}

void ExpectedLayout::FitSizes(const ExpectedSizes& wanted, int width, int height) {
    int tree = wanted.tree;
    int sources = wanted.sources;
    if (tree + sources > width - 8) {
        const float share = static_cast<float>(tree) / static_cast<float>(tree + sources);
        tree = max(static_cast<int>(share * static_cast<float>(width - 8)), 100);
        sources = max(width - 8 - tree, 100);
    }
    sizes_.tree = max(min(tree, width - sources - 100), 100);
    sizes_.sources = max(min(sources, width - tree - 100), 100);
    split_ = max(min(height - wanted.details - status_, bottom_ - 80), toolbar_ + 50);
    sizes_.details = height - split_ - status_;
}

void ExpectedLayout::Add(const char* name, HWND reference, HWND control, int x, int y, int width,
                         int height) {
    // A window's size cannot be negative.
    places_.push_back({name, reference, control, {x, y, x + max(width, 0), y + max(height, 0)}});
}

void ExpectedLayout::PlacePanes(const AppWindow& app, int width) {
    const MainWindowControls& controls = app.controls();
    const int centre = width - sizes_.tree - sizes_.sources - 8;
    const int left = sizes_.tree + 4;
    const int height = bottom_ - toolbar_;
    Add("tree", app.window(), controls.tree, 0, toolbar_, sizes_.tree, height);
    Add("sources frame", app.window(), controls.sourcesFrame, width - sizes_.sources, toolbar_,
        sizes_.sources, height);
    Add("details frame", app.window(), controls.detailsFrame, left, split_, centre, sizes_.details);
    Add("header pane", app.window(), controls.headerPane, left, toolbar_, centre, 32);
    Add("event list", app.window(), controls.list, left, toolbar_ + 32, centre,
        split_ - toolbar_ - 36);
}

void ExpectedLayout::PlaceSources(const AppWindow& app, int width) {
    const MainWindowControls& controls = app.controls();
    const int x = width - sizes_.sources + 6;
    const int wide = max(sizes_.sources - 12, 0);
    Add("sources caption", app.window(), controls.sourcesCaption, x, toolbar_ + 6, wide, 20);
    Add("sources search", app.window(), controls.sourcesSearch, x, toolbar_ + 32, wide, 22);
    Add("sources list", app.window(), controls.sourcesList, x, toolbar_ + 60, wide,
        max(bottom_ - 32 - (toolbar_ + 60) - 6, 0));
    Add("show all sources", app.window(), controls.showAllSources, x, bottom_ - 32, wide, 26);
}

void ExpectedLayout::PlaceLabels(const AppWindow& app, int centre) {
    const MainWindowControls& controls = app.controls();
    const HWND pane = controls.headerPane;
    Add("loaded caption", pane, controls.loadedCaption, 8, 8, 40, 16);
    Add("loaded value", pane, controls.loadedValue, 56, 8, 80, 16);
    Add("total caption", pane, controls.totalCaption, 144, 8, 46, 16);
    Add("total value", pane, controls.totalValue, 198, 8, 80, 16);
    Add("node name", pane, controls.nodeName, centre / 2 + 8, 8, centre / 2 - 16, 16);
}

}  // namespace tavrin::test
