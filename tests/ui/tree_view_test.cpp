#include "ui/controls/tree_view.h"

#include <cstdint>

#include <gtest/gtest.h>

namespace tavrin::ui {
namespace {

TEST(NodeImage, DependsOnAllFlags) {
    const struct {
        std::uint32_t flags;
        int image;
    } cases[] = {
        {0x101, 0},  {0x201, 1}, {0x41, 2},   {0x81, 3},        {0x22, 4},   {0x06, 5},
        {0x12, 6},   {0x0A, 7},  {0x002, -1}, {0x00E, -1},      {0x0C1, -1}, {0x301, -1},
        {0x001, -1}, {0, -1},    {0x106, -1}, {0xFFFFFFFF, -1},
    };
    for (const auto& [flags, image] : cases) {
        EXPECT_EQ(NodeImage(flags), image) << std::hex << flags;
    }
}

}  // namespace
}  // namespace tavrin::ui
