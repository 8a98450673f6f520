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

// What there is to share out.
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

// Where each control goes; the labels are placed in the header pane's client area.
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

// The sizes that the panes get in an area when the user wants these.
PaneSizes FitPanes(PaneSizes wanted, const Area& area);

// The layout for sizes that fit.
MainLayout ComputeLayout(const PaneSizes& panes, const Area& area);

// The details edit in a tab page of this size.
Box DetailsEditBox(int pageWidth, int pageHeight);

}  // namespace tavrin::ui
