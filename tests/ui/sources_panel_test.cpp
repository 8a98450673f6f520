// The sources panel with real controls, in a window that forwards their notifications as the main
// window does.

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <windows.h>
#include <commctrl.h>

#include "eventlog/channels/event_node.h"
#include "eventlog/records/event_record.h"
#include "query/filter_state.h"
#include "support/import_patch.h"
#include "ui/controls/sources_panel.h"
#include "ui/controls/timers.h"
#include "ui/controls/window_state.h"
#include "ui/controls/window_text.h"
#include "ui/create_controls.h"
#include "ui/notifications.h"

#include "window_with_controls.h"

namespace tavrin::ui {
namespace {

class SourcesPanel : public WindowWithControls {
protected:
    SourcesPanel() {
        SetWindowSubclass(state_.handle, HandOn, 1, reinterpret_cast<DWORD_PTR>(&state_));
        state_.currentNode = node_;
        Filter() = {{L"Alder", L"Birch", L"Cedar"}, {L"Birch"}, true};
        FillSourcesPanel(state_);
    }
    ~SourcesPanel() override { query::g_sourceFilterTable.clear(); }

    query::SourceFilter& Filter() { return query::g_sourceFilterTable[node_.get()]; }

    std::vector<std::wstring> Ticked() const {
        std::vector<std::wstring> names;
        for (std::size_t row = 0; row < state_.shownSources.size(); ++row) {
            if (ListView_GetCheckState(state_.controls.sourcesList, static_cast<int>(row))) {
                names.push_back(state_.shownSources[row]);
            }
        }
        return names;
    }

    void Tick(int row, bool ticked) {
        ListView_SetCheckState(state_.controls.sourcesList, row, ticked);
    }

    std::shared_ptr<eventlog::EventNode> node_ =
        std::make_shared<eventlog::EventNode>(L"System", L"System", 0x006);

private:
    static LRESULT CALLBACK HandOn(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                   UINT_PTR, DWORD_PTR state) {
        if (message == WM_NOTIFY) {
            return OnNotify(*reinterpret_cast<MainWindow*>(state),
                            *reinterpret_cast<NMHDR*>(lParam));
        }
        return DefSubclassProc(window, message, wParam, lParam);
    }
};

LSTATUS WINAPI RefuseKey(HKEY, LPCWSTR, DWORD, REGSAM, PHKEY) {
    return ERROR_ACCESS_DENIED;
}

TEST_F(SourcesPanel, WithoutTheRegistryListsTheNamesFromTheEvents) {
    const test::ImportPatch<decltype(RegOpenKeyExW)> patch("RegOpenKeyExW", RefuseKey);
    Filter() = {{L"Aspen"}, {}, false};

    FillSourcesPanel(state_);

    EXPECT_EQ(state_.shownSources, std::vector<std::wstring>{L"Aspen"});
    EXPECT_TRUE(Filter().registryScanned);
    EXPECT_TRUE(IsWindowEnabled(state_.controls.sourcesList));
    EXPECT_EQ(ReadEditText(state_.controls.sourcesCaption), L"Sources (all)");
}

TEST_F(SourcesPanel, ARebuildChoosesNothingAndStartsNoTimer) {
    OfferSources(state_, {L"Aspen"});

    EXPECT_EQ(state_.shownSources,
              (std::vector<std::wstring>{L"Birch", L"Alder", L"Aspen", L"Cedar"}));
    EXPECT_EQ(Ticked(), std::vector<std::wstring>{L"Birch"});
    EXPECT_EQ(Filter().selectedSources, query::SourceSet{L"Birch"});
    EXPECT_FALSE(StopTimer(state_, Timer::FilterApply));
}

TEST_F(SourcesPanel, ATickChoosesTheSourceAndStartsTheTimer) {
    Tick(2, true);
    EXPECT_EQ(Filter().selectedSources, (query::SourceSet{L"Birch", L"Cedar"}));
    EXPECT_TRUE(StopTimer(state_, Timer::FilterApply));
    Tick(0, false);
    EXPECT_EQ(Filter().selectedSources, query::SourceSet{L"Cedar"});
    EXPECT_TRUE(StopTimer(state_, Timer::FilterApply));
}

// The list is sorted only when it is rebuilt.
TEST_F(SourcesPanel, ATickLeavesTheRowsWhereTheyAre) {
    const std::vector<std::wstring> before = state_.shownSources;
    Tick(2, true);
    EXPECT_EQ(state_.shownSources, before);
}

TEST_F(SourcesPanel, IgnoresChangesOtherThanTheUsersTicks) {
    const UINT ticked = INDEXTOSTATEIMAGEMASK(2);
    const UINT unticked = INDEXTOSTATEIMAGEMASK(1);
    const NMLISTVIEW changes[] = {
        {{}, 1, 0, ticked, unticked, LVIF_TEXT, {}, 0},                 // not a state change
        {{}, 1, 0, LVIS_SELECTED, 0, LVIF_STATE, {}, 0},                // not the check box
        {{}, 1, 0, ticked | LVIS_SELECTED, ticked, LVIF_STATE, {}, 0},  // the check box is
                                                                        // unchanged
        {{}, -1, 0, ticked, unticked, LVIF_STATE, {}, 0},               // all rows
        {{}, 3, 0, ticked, unticked, LVIF_STATE, {}, 0},                // no such row
    };
    for (const NMLISTVIEW& change : changes) {
        OnSourceItemChanged(state_, change);
    }
    state_.suppressSourceNotifications = true;
    OnSourceItemChanged(state_, {{}, 1, 0, ticked, unticked, LVIF_STATE, {}, 0});
    state_.suppressSourceNotifications = false;
    state_.currentNode = std::make_shared<eventlog::EventNode>(L"Folder", L"Folder", 0x201);
    OnSourceItemChanged(state_, {{}, 1, 0, ticked, unticked, LVIF_STATE, {}, 0});

    EXPECT_EQ(Filter().selectedSources, query::SourceSet{L"Birch"});
    EXPECT_FALSE(StopTimer(state_, Timer::FilterApply));
}

}  // namespace
}  // namespace tavrin::ui
