#include "ui/controls/splitters.h"

#include <windows.h>

#include <gtest/gtest.h>

#include "support/import_patch.h"
#include "ui/controls/layout.h"
#include "ui/controls/window_state.h"

#include "window_with_controls.h"

namespace tavrin::ui {
namespace {

// Moves the mouse over a window of 900 by 600 pixels and reads the pointer that the window sets.
// The patched LoadCursorW returns a system pointer's name as its handle.
class Pointer : public WindowWithControls {
protected:
    Pointer() {
        SetWindowPos(state_.handle, nullptr, 0, 0, 900, 600, SWP_NOZORDER | SWP_NOACTIVATE);
        const Area area = ClientArea(state_);
        LayOut(state_, area.width, area.height);
    }

    // The pointer's name. Null if the window leaves the pointer to the control.
    const wchar_t* At(POINT client) const {
        mouse_ = client;
        ClientToScreen(state_.handle, &mouse_);
        shown_ = nullptr;
        return OnSetCursor(state_) ? shown_ : nullptr;
    }

private:
    static BOOL WINAPI Mouse(POINT* point) {
        *point = mouse_;
        return TRUE;
    }
    static HCURSOR WINAPI Load(HINSTANCE instance, const wchar_t* name) {
        EXPECT_EQ(instance, nullptr);
        return reinterpret_cast<HCURSOR>(const_cast<wchar_t*>(name));
    }
    static HCURSOR WINAPI Show(HCURSOR cursor) {
        shown_ = reinterpret_cast<const wchar_t*>(cursor);
        return nullptr;
    }

    inline static POINT mouse_;
    inline static const wchar_t* shown_;
    test::ImportPatch<decltype(GetCursorPos)> mousePatch_{"GetCursorPos", Mouse};
    test::ImportPatch<decltype(LoadCursorW)> loadPatch_{"LoadCursorW", Load};
    test::ImportPatch<decltype(SetCursor)> showPatch_{"SetCursor", Show};
};

TEST_F(Pointer, ShowsTheDirectionInWhichASplitterMoves) {
    const Area area = ClientArea(state_);
    const LONG left = state_.panes.tree + 2;
    const LONG right = area.width - state_.panes.sources - 2;
    const LONG bottom = area.height - area.status - state_.panes.details - 2;
    EXPECT_EQ(At({left, 300}), IDC_SIZEWE);
    EXPECT_EQ(At({right, 300}), IDC_SIZEWE);
    EXPECT_EQ(At({450, bottom}), IDC_SIZENS);
    EXPECT_EQ(At({left, bottom}), IDC_SIZEWE) << "the left splitter takes precedence";
}

TEST_F(Pointer, IsAnArrowAtTheHeaderPanesHeightAndTheControlsElsewhere) {
    RECT header{};
    GetWindowRect(state_.controls.headerPane, &header);
    MapWindowPoints(nullptr, state_.handle, reinterpret_cast<POINT*>(&header), 2);
    for (const LONG x : {100L, 450L}) {
        EXPECT_EQ(At({x, header.top - 1}), nullptr) << x;
        EXPECT_EQ(At({x, header.top}), IDC_ARROW) << x;
        EXPECT_EQ(At({x, header.bottom}), IDC_ARROW) << x;
        EXPECT_EQ(At({x, header.bottom + 1}), nullptr) << x;
    }
}

}  // namespace
}  // namespace tavrin::ui
