#pragma once

namespace tavrin::ui {

// All sizes and positions are in pixels, in the main window's client area.

inline constexpr int kSplitterWidth = 4;

// The three panes whose size the user can change.
struct PaneSizes {
    int details = 150;  // height
    int tree = 250;     // width
    int sources = 250;  // width

    bool operator==(const PaneSizes&) const = default;
};

// The client area and the heights of its bars.
struct Area {
    int width;
    int height;
    int toolbar;  // height
    int status;   // height
};

struct Box {
    int x;
    int y;
    int width;
    int height;

    bool operator==(const Box&) const = default;
};

// Where each control goes. The labels' boxes are in the header pane's client area.
struct MainLayout {
    Box tree;
    Box sourcesFrame;
    Box detailsFrame;
    Box headerPane;
    Box list;

    Box sourcesCaption;
    Box sourcesSearch;
    Box sourcesList;
    Box showAllSources;

    Box loadedCaption;
    Box loadedValue;
    Box totalCaption;
    Box totalValue;
    Box nodeName;
};

// The pane sizes nearest to the wanted ones that fit into an area.
PaneSizes FitPanes(PaneSizes wanted, const Area& area);

// The layout for pane sizes that fit.
MainLayout ComputeLayout(const PaneSizes& panes, const Area& area);

// The details edit's box in a tab page of this size.
Box DetailsEditBox(int pageWidth, int pageHeight);

}  // namespace tavrin::ui
