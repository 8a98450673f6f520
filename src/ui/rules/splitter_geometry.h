#pragma once

#include "ui/rules/pane_layout.h"

namespace tavrin::ui {

// The strips between the panes, in the order of the hit test.
enum class Splitter { None, Left, Right, Bottom };

// The splitter at a point of the client area. Both edges of a strip belong to it.
Splitter HitSplitter(int x, int y, const PaneSizes& panes, const Area& area);

// The pane sizes when a splitter is dragged to a point.
PaneSizes DragSplitter(Splitter splitter, int x, int y, PaneSizes panes, const Area& area);

}  // namespace tavrin::ui
