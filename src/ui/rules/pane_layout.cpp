#include "ui/rules/pane_layout.h"

#include <algorithm>

namespace tavrin::ui {
namespace {

constexpr int kMinSideWidth = 100;
constexpr int kMinCentreWidth = 100;
constexpr int kMinAboveStatus = 80;
constexpr int kMinBelowToolbar = 50;
constexpr int kBothSplitters = 2 * kSplitterWidth;
constexpr int kHeaderHeight = 32;
constexpr int kDetailsMargin = 6;

struct SideWidths {
    int tree;
    int sources;
};

// The side panes shrink in proportion if the window is too narrow for both.
SideWidths ShareWidth(SideWidths wanted, int width) {
    const int available = width - kBothSplitters;
    if (wanted.tree + wanted.sources <= available) {
        return wanted;
    }
    const float share =
        static_cast<float>(wanted.tree) / static_cast<float>(wanted.tree + wanted.sources);
    const int tree =
        std::max(static_cast<int>(share * static_cast<float>(available)), kMinSideWidth);
    return {tree, std::max(available - tree, kMinSideWidth)};
}

// Each side pane leaves room for the centre and for the other at its shared width.
SideWidths FitSides(SideWidths wanted, int width) {
    const SideWidths shared = ShareWidth(wanted, width);
    const auto fit = [width](int own, int other) {
        return std::max(std::min(own, width - other - kMinCentreWidth), kMinSideWidth);
    };
    return {fit(shared.tree, shared.sources), fit(shared.sources, shared.tree)};
}

int FitDetails(int details, const Area& area) {
    const int bottom = area.height - area.status;
    const int split = std::max(std::min(bottom - details, bottom - kMinAboveStatus),
                               area.toolbar + kMinBelowToolbar);
    return bottom - split;
}

void PlaceSourcesControls(MainLayout& layout, const Box& frame) {
    constexpr int kMargin = 6;
    const int x = frame.x + kMargin;
    const int width = std::max(frame.width - 2 * kMargin, 0);
    const int top = frame.y;
    const int bottom = frame.y + frame.height;
    layout.sourcesCaption = {x, top + 6, width, 20};
    layout.sourcesSearch = {x, top + 32, width, 22};
    layout.sourcesList = {x, top + 60, width, std::max(bottom - 32 - (top + 60) - kMargin, 0)};
    layout.showAllSources = {x, bottom - 32, width, 26};
}

void PlaceHeaderLabels(MainLayout& layout, int centreWidth) {
    const int half = centreWidth / 2;
    layout.loadedCaption = {8, 8, 40, 16};
    layout.loadedValue = {56, 8, 80, 16};
    layout.totalCaption = {144, 8, 46, 16};
    layout.totalValue = {198, 8, 80, 16};
    layout.nodeName = {half + 8, 8, half - 16, 16};
}

}  // namespace

PaneSizes FitPanes(PaneSizes wanted, const Area& area) {
    const SideWidths sides = FitSides({wanted.tree, wanted.sources}, area.width);
    return {FitDetails(wanted.details, area), sides.tree, sides.sources};
}

MainLayout ComputeLayout(const PaneSizes& panes, const Area& area) {
    const int top = area.toolbar;
    const int bottom = area.height - area.status;
    const int split = bottom - panes.details;
    const int centreX = panes.tree + kSplitterWidth;
    const int centreWidth = area.width - panes.tree - panes.sources - kBothSplitters;
    MainLayout layout{};
    layout.tree = {0, top, panes.tree, bottom - top};
    layout.sourcesFrame = {area.width - panes.sources, top, panes.sources, bottom - top};
    layout.detailsFrame = {centreX, split, centreWidth, panes.details};
    layout.headerPane = {centreX, top, centreWidth, kHeaderHeight};
    layout.list = {centreX, top + kHeaderHeight, centreWidth,
                   split - top - kHeaderHeight - kSplitterWidth};
    PlaceSourcesControls(layout, layout.sourcesFrame);
    PlaceHeaderLabels(layout, centreWidth);
    return layout;
}

Box DetailsEditBox(int pageWidth, int pageHeight) {
    return {kDetailsMargin, kDetailsMargin, std::max(pageWidth - 2 * kDetailsMargin, 0),
            std::max(pageHeight - 2 * kDetailsMargin, 0)};
}

}  // namespace tavrin::ui
