#include <algorithm>
#include <vector>

#include <gtest/gtest.h>
#include <windows.h>

#include "endurance/process_resources.h"
#include "support/private_bytes.h"

namespace tavrin::test {
namespace {

// The soak test finds leaks by these counts, so they must change with every object.
constexpr unsigned kMany = 50;

TEST(ProcessResources, CountEveryObjectThatIsOpenedAndClosed) {
    ResourcesOf(GetCurrentProcess());  // objects that the first call creates stay open
    const ProcessResources before = ResourcesOf(GetCurrentProcess());
    std::vector<HPEN> pens(kMany);
    std::ranges::generate(pens, [] { return CreatePen(PS_SOLID, 3, RGB(1, 2, 3)); });
    std::vector<HMENU> menus(kMany);
    std::ranges::generate(menus, CreateMenu);
    std::vector<HANDLE> events(kMany);
    std::ranges::generate(events, [] { return CreateEventW(nullptr, TRUE, FALSE, nullptr); });
    const ProcessResources full = ResourcesOf(GetCurrentProcess());
    EXPECT_EQ(full.gdiObjects, before.gdiObjects + kMany);
    EXPECT_EQ(full.userObjects, before.userObjects + kMany);
    EXPECT_EQ(full.kernelHandles, before.kernelHandles + kMany);
    std::ranges::for_each(pens, DeleteObject);
    std::ranges::for_each(menus, DestroyMenu);
    std::ranges::for_each(events, CloseHandle);
    const ProcessResources after = ResourcesOf(GetCurrentProcess());
    EXPECT_EQ(after.gdiObjects, before.gdiObjects);
    EXPECT_EQ(after.userObjects, before.userObjects);
    EXPECT_EQ(after.kernelHandles, before.kernelHandles);
}

TEST(ProcessResources, CountMemoryInUse) {
    const std::size_t before = PrivateBytes(GetCurrentProcess());
    constexpr std::size_t kBytes = 64 * 1024 * 1024;
    const std::vector<std::byte> bytes(kBytes, std::byte{1});
    const std::size_t after = PrivateBytes(GetCurrentProcess());
    EXPECT_GE(after, before + kBytes / 10 * 9);
    EXPECT_EQ(bytes.back(), std::byte{1});
}

}  // namespace
}  // namespace tavrin::test
