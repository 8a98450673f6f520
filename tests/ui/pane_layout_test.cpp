#include "ui/rules/pane_layout.h"

#include <ostream>

#include <gtest/gtest.h>

namespace tavrin::ui {

void PrintTo(const Box& box, std::ostream* out) {
    *out << "(" << box.x << ", " << box.y << ") " << box.width << " x " << box.height;
}

void PrintTo(const PaneSizes& panes, std::ostream* out) {
    *out << "details " << panes.details << ", tree " << panes.tree << ", sources " << panes.sources;
}

namespace {

TEST(PaneSizes, StartAt150And250) {
    const PaneSizes panes{};

    EXPECT_EQ(panes.details, 150);
    EXPECT_EQ(panes.tree, 250);
    EXPECT_EQ(panes.sources, 250);
}

// Sizes are details, tree, sources; areas are width, height, toolbar, status bar.
TEST(FitPanes, LimitsThePanesToTheArea) {
    const struct {
        PaneSizes wanted;
        Area area;
        PaneSizes fitted;
    } cases[] = {
        // Everything fits.
        {{150, 250, 250}, {1000, 700, 30, 20}, {150, 250, 250}},
        {{150, 250, 250}, {1280, 1024, 28, 22}, {150, 250, 250}},
        {{150, 250, 250}, {600, 700, 30, 20}, {150, 250, 250}},
        // Too narrow for both side panes: they shrink in proportion, and the centre keeps 100.
        {{150, 250, 250}, {508, 700, 30, 20}, {150, 158, 158}},
        {{150, 250, 250}, {507, 700, 30, 20}, {150, 157, 158}},
        {{150, 250, 250}, {500, 700, 30, 20}, {150, 154, 154}},
        {{150, 300, 150}, {400, 700, 30, 20}, {150, 169, 100}},
        {{77, 333, 311}, {641, 480, 28, 21}, {80, 235, 214}},
        // A side pane is at least 100 wide.
        {{150, 250, 250}, {300, 300, 30, 20}, {150, 100, 100}},
        {{150, 100, 100}, {208, 300, 30, 20}, {150, 100, 100}},
        {{150, 10, 20}, {1000, 700, 30, 20}, {150, 100, 100}},
        // A wide side pane leaves room for the other and for the centre.
        {{150, 400, 150}, {600, 700, 30, 20}, {150, 350, 100}},
        {{150, 150, 400}, {600, 700, 30, 20}, {150, 100, 350}},
        {{150, 500, 150}, {700, 700, 30, 20}, {150, 450, 100}},
        // The details pane is at least 80 high and leaves 50 below the toolbar.
        {{10, 250, 250}, {1000, 700, 30, 20}, {80, 250, 250}},
        {{900, 250, 250}, {1000, 700, 30, 20}, {600, 250, 250}},
        {{150, 250, 250}, {1000, 230, 30, 20}, {130, 250, 250}},
        // In a low window the 50 below the toolbar take precedence.
        {{150, 250, 250}, {1000, 160, 30, 20}, {60, 250, 250}},
        {{150, 250, 250}, {1000, 100, 30, 20}, {0, 250, 250}},
    };
    for (const auto& [wanted, area, fitted] : cases) {
        EXPECT_EQ(FitPanes(wanted, area), fitted)
            << testing::PrintToString(wanted) << " in " << area.width << " x " << area.height;
    }
}

// Double precision would yield other widths by one pixel.
TEST(FitPanes, SharesTheWidthInSinglePrecision) {
    const struct {
        PaneSizes wanted;
        int width;
        PaneSizes fitted;
    } cases[] = {
        {{150, 492, 692}, 600, {150, 154, 254}},
        {{150, 630, 581}, 700, {150, 267, 241}},
        {{150, 303, 285}, 400, {150, 110, 100}},
    };
    for (const auto& [wanted, width, fitted] : cases) {
        EXPECT_EQ(FitPanes(wanted, {width, 700, 30, 20}), fitted) << width;
    }
}

TEST(FitPanes, NeverGivesASidePaneLessThan100) {
    for (int width = 0; width <= 1200; width += 7) {
        const PaneSizes panes = FitPanes({150, 250, 600}, {width, 700, 30, 20});
        EXPECT_GE(panes.tree, 100) << width;
        EXPECT_GE(panes.sources, 100) << width;
    }
}

class ComputeLayoutTest : public testing::Test {
protected:
    // Toolbar 30 and status bar 20 high: the work area is y = 30 to 680, split at 530. The centre
    // starts at x = 254 and is 442 wide.
    const MainLayout layout_ = ComputeLayout({150, 250, 300}, {1000, 700, 30, 20});
};

TEST_F(ComputeLayoutTest, PlacesThePanes) {
    EXPECT_EQ(layout_.tree, (Box{0, 30, 250, 650}));
    EXPECT_EQ(layout_.sourcesFrame, (Box{700, 30, 300, 650}));
    EXPECT_EQ(layout_.detailsFrame, (Box{254, 530, 442, 150}));
    EXPECT_EQ(layout_.headerPane, (Box{254, 30, 442, 32}));
    EXPECT_EQ(layout_.list, (Box{254, 62, 442, 464}));
}

TEST_F(ComputeLayoutTest, PlacesTheSourcesControlsInTheirFrame) {
    EXPECT_EQ(layout_.sourcesCaption, (Box{706, 36, 288, 20}));
    EXPECT_EQ(layout_.sourcesSearch, (Box{706, 62, 288, 22}));
    EXPECT_EQ(layout_.sourcesList, (Box{706, 90, 288, 552}));
    EXPECT_EQ(layout_.showAllSources, (Box{706, 648, 288, 26}));
}

TEST_F(ComputeLayoutTest, PlacesTheLabelsInTheHeaderPane) {
    EXPECT_EQ(layout_.loadedCaption, (Box{8, 8, 40, 16}));
    EXPECT_EQ(layout_.loadedValue, (Box{56, 8, 80, 16}));
    EXPECT_EQ(layout_.totalCaption, (Box{144, 8, 46, 16}));
    EXPECT_EQ(layout_.totalValue, (Box{198, 8, 80, 16}));
    EXPECT_EQ(layout_.nodeName, (Box{229, 8, 205, 16}));
}

TEST(ComputeLayout, HalvesAnOddCentreDownwards) {
    const MainLayout layout = ComputeLayout({150, 250, 300}, {1001, 700, 30, 20});

    EXPECT_EQ(layout.headerPane.width, 443);
    EXPECT_EQ(layout.nodeName, (Box{229, 8, 205, 16}));
}

TEST(ComputeLayout, NeverGivesTheSourcesControlsNegativeSizes) {
    const MainLayout layout = ComputeLayout({50, 100, 10}, {300, 120, 30, 20});

    EXPECT_EQ(layout.sourcesCaption.width, 0);
    EXPECT_EQ(layout.sourcesList, (Box{296, 90, 0, 0}));
}

TEST(DetailsEditBox, LeavesAMarginOfSixAndIsNeverNegative) {
    EXPECT_EQ(DetailsEditBox(400, 120), (Box{6, 6, 388, 108}));
    EXPECT_EQ(DetailsEditBox(12, 12), (Box{6, 6, 0, 0}));
    EXPECT_EQ(DetailsEditBox(5, 0), (Box{6, 6, 0, 0}));
}

}  // namespace
}  // namespace tavrin::ui
