#include "ui/rules/splitter_geometry.h"

#include <algorithm>

namespace tavrin::ui {
namespace {

constexpr int kMinWidth = 100;
constexpr int kMinHeight = 80;

// Whether a position lies in the strip that begins at `first`, both edges included.
bool InStrip(int position, int first) {
    return position >= first && position <= first + kSplitterWidth;
}

}  // namespace

Splitter HitSplitter(int x, int y, const PaneSizes& panes, const Area& area) {
    if (InStrip(x, panes.tree)) {
        return Splitter::Left;
    }
    if (InStrip(x, area.width - panes.sources - kSplitterWidth)) {
        return Splitter::Right;
    }
    if (InStrip(y, area.height - area.status - panes.details - kSplitterWidth)) {
        return Splitter::Bottom;
    }
    return Splitter::None;
}

PaneSizes DragSplitter(Splitter splitter, int x, int y, PaneSizes panes, const Area& area) {
    switch (splitter) {
        case Splitter::Left:
            panes.tree = std::max(kMinWidth, std::min(x, area.width - panes.sources - kMinWidth));
            break;
        case Splitter::Right:
            panes.sources =
                std::max(kMinWidth, std::min(area.width - x, area.width - panes.tree - kMinWidth));
            break;
        case Splitter::Bottom:
            panes.details = std::max(
                kMinHeight, std::min(area.height - y - area.status,
                                     area.height - area.status - area.toolbar - kMinHeight));
            break;
        case Splitter::None: break;
    }
    return panes;
}

}  // namespace tavrin::ui
