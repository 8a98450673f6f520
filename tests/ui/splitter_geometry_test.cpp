#include "ui/rules/splitter_geometry.h"

#include <gtest/gtest.h>

namespace tavrin::ui {
namespace {

// Splitter strips: x = 250 to 254, x = 696 to 700 and y = 526 to 530.
constexpr Area kArea{1000, 700, 30, 20};
constexpr PaneSizes kPanes{150, 250, 300};

TEST(HitSplitter, TakesBothEdgesOfEachStrip) {
    const struct {
        int x;
        int y;
        Splitter splitter;
    } cases[] = {
        {249, 300, Splitter::None},  {250, 300, Splitter::Left},   {252, 300, Splitter::Left},
        {254, 300, Splitter::Left},  {255, 300, Splitter::None},   {695, 300, Splitter::None},
        {696, 300, Splitter::Right}, {700, 300, Splitter::Right},  {701, 300, Splitter::None},
        {400, 525, Splitter::None},  {400, 526, Splitter::Bottom}, {400, 530, Splitter::Bottom},
        {400, 531, Splitter::None},  {-1, -1, Splitter::None},
    };
    for (const auto& [x, y, splitter] : cases) {
        EXPECT_EQ(HitSplitter(x, y, kPanes, kArea), splitter) << x << ", " << y;
    }
}

TEST(HitSplitter, HasNoLimitInTheOtherDirection) {
    EXPECT_EQ(HitSplitter(252, -5, kPanes, kArea), Splitter::Left);
    EXPECT_EQ(HitSplitter(252, 699, kPanes, kArea), Splitter::Left);
    EXPECT_EQ(HitSplitter(10, 528, kPanes, kArea), Splitter::Bottom);
    EXPECT_EQ(HitSplitter(990, 528, kPanes, kArea), Splitter::Bottom);
}

TEST(HitSplitter, TriesLeftThenRightThenBottom) {
    EXPECT_EQ(HitSplitter(252, 528, kPanes, kArea), Splitter::Left);
    EXPECT_EQ(HitSplitter(698, 528, kPanes, kArea), Splitter::Right);
    // Both vertical strips overlap in a window 300 wide with panes of 100 and 196.
    EXPECT_EQ(HitSplitter(102, 0, {150, 100, 196}, {300, 700, 30, 20}), Splitter::Left);
}

TEST(DragSplitter, SetsTheTreesWidthToTheMousePositionWithinItsBounds) {
    const struct {
        int x;
        int width;
    } cases[] = {{400, 400}, {100, 100}, {99, 100},   {0, 100},     {-50, 100},
                 {600, 600}, {601, 600}, {5000, 600}, {-32768, 100}};
    for (const auto& [x, width] : cases) {
        EXPECT_EQ(DragSplitter(Splitter::Left, x, 0, kPanes, kArea), (PaneSizes{150, width, 300}))
            << x;
    }
}

TEST(DragSplitter, SetsTheSourcesWidthToTheSpaceRightOfTheMouseWithinItsBounds) {
    const struct {
        int x;
        int width;
    } cases[] = {{600, 400}, {900, 100}, {901, 100},  {1500, 100},
                 {350, 650}, {349, 650}, {-100, 650}, {0, 650}};
    for (const auto& [x, width] : cases) {
        EXPECT_EQ(DragSplitter(Splitter::Right, x, 0, kPanes, kArea), (PaneSizes{150, 250, width}))
            << x;
    }
}

TEST(DragSplitter, SetsTheDetailsHeightToTheSpaceBelowTheMouseWithinItsBounds) {
    const struct {
        int y;
        int height;
    } cases[] = {{400, 280}, {600, 80},  {601, 80},   {2000, 80},
                 {110, 570}, {109, 570}, {-300, 570}, {0, 570}};
    for (const auto& [y, height] : cases) {
        EXPECT_EQ(DragSplitter(Splitter::Bottom, 0, y, kPanes, kArea),
                  (PaneSizes{height, 250, 300}))
            << y;
    }
}

TEST(DragSplitter, KeepsTheMinimumSizeInATooSmallArea) {
    constexpr Area kSmall{300, 120, 30, 20};

    EXPECT_EQ(DragSplitter(Splitter::Left, 150, 0, kPanes, kSmall).tree, 100);
    EXPECT_EQ(DragSplitter(Splitter::Right, 150, 0, kPanes, kSmall).sources, 100);
    EXPECT_EQ(DragSplitter(Splitter::Bottom, 0, 60, kPanes, kSmall).details, 80);
}

TEST(DragSplitter, ChangesNothingWithoutASplitter) {
    EXPECT_EQ(DragSplitter(Splitter::None, 400, 400, kPanes, kArea), kPanes);
}

}  // namespace
}  // namespace tavrin::ui
