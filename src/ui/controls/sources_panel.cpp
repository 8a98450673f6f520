#include "ui/controls/sources_panel.h"

#include <string>
#include <utility>

#include "eventlog/channels/event_node.h"
#include "query/source_names.h"
#include "ui/controls/header_pane.h"
#include "ui/controls/redraw_off.h"
#include "ui/controls/timers.h"
#include "ui/controls/window_state.h"
#include "ui/controls/window_text.h"

namespace tavrin::ui {
namespace {

// The state image of a ticked check box.
constexpr UINT kTicked = 2;

// While it lives, the program changes the list; notifications do not come from the user.
class SourceNotificationsOff {
public:
    explicit SourceNotificationsOff(MainWindow& window)
        : flag_(window.suppressSourceNotifications), before_(std::exchange(flag_, true)) {}
    SourceNotificationsOff(const SourceNotificationsOff&) = delete;
    SourceNotificationsOff& operator=(const SourceNotificationsOff&) = delete;
    ~SourceNotificationsOff() { flag_ = before_; }

private:
    bool& flag_;
    bool before_;
};

query::SourceFilter& CurrentFilter(const MainWindow& window) {
    return query::g_sourceFilterTable[window.currentNode.get()];
}

void SetCaption(const MainWindow& window, const std::wstring& caption) {
    SetWindowTextW(window.controls.sourcesCaption, caption.c_str());
}

void EnablePanel(const MainWindow& window, bool enabled) {
    EnableWindow(window.controls.sourcesSearch, enabled);
    EnableWindow(window.controls.sourcesList, enabled);
    EnableWindow(window.controls.showAllSources, enabled);
}

void InsertName(HWND list, int row, const std::wstring& name, bool ticked) {
    LVITEMW item{};
    item.mask = LVIF_TEXT;
    item.iItem = row;
    item.pszText = const_cast<wchar_t*>(name.c_str());
    ListView_InsertItem(list, &item);
    if (ticked) {  // a new row is unticked
        ListView_SetCheckState(list, row, ticked);
    }
}

// Lists the names that match the search text.
void RebuildSourcesList(MainWindow& window) {
    const query::SourceFilter& filter = CurrentFilter(window);
    const HWND list = window.controls.sourcesList;
    window.shownSources =
        query::ShownSourceNames(filter, ReadEditText(window.controls.sourcesSearch));
    {
        const RedrawOff redraw(list);
        const SourceNotificationsOff notifications(window);
        ListView_DeleteAllItems(list);
        int row = 0;
        for (const std::wstring& name : window.shownSources) {
            InsertName(list, row++, name, filter.selectedSources.contains(name));
        }
    }
    SetCaption(window, query::SourcesCaption(filter.selectedSources.size()));
}

UINT StateImage(UINT state) {
    return (state & LVIS_STATEIMAGEMASK) >> 12;
}

// Whether the user ticked or unticked a row.
bool IsTick(const MainWindow& window, const NMLISTVIEW& change) {
    const UINT image = StateImage(change.uNewState);
    return !window.suppressSourceNotifications && (change.uChanged & LVIF_STATE) != 0 &&
           image != 0 && image != StateImage(change.uOldState) && change.iItem >= 0 &&
           std::cmp_less(change.iItem, window.shownSources.size()) && window.ShowsChannel();
}

}  // namespace

void SetUpSourcesSearch(MainWindow&, HWND search) {
    Edit_SetCueBannerText(search, L"Search sources...");
}

void SetUpSourcesList(MainWindow& window, HWND list) {
    ListView_SetExtendedListViewStyle(
        list, LVS_EX_CHECKBOXES | LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER);
    LVCOLUMNW column{};
    column.mask = LVCF_WIDTH;
    column.cx = window.panes.sources;
    ListView_InsertColumn(list, 0, &column);
}

void PrepareSourcesPanel(MainWindow& window) {
    const Controls& controls = window.controls;
    for (const HWND control : {controls.sourcesCaption, controls.sourcesSearch,
                               controls.sourcesList, controls.showAllSources}) {
        SetWindowPos(control, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    }
    DisableSourcesPanel(window);
}

void DisableSourcesPanel(MainWindow& window) {
    EnablePanel(window, false);
    const SourceNotificationsOff notifications(window);
    ListView_DeleteAllItems(window.controls.sourcesList);
    window.shownSources.clear();
    SetCaption(window, L"Sources");
}

void FillSourcesPanel(MainWindow& window) {
    query::ScanRegistrySources(window.currentNode->id, CurrentFilter(window));
    EnablePanel(window, true);
    RebuildSourcesList(window);
    ShowFilterSummary(window);
}

void OfferSources(MainWindow& window, query::SourceSet providers) {
    if (providers.empty()) {
        return;
    }
    query::SourceSet& known = CurrentFilter(window).knownSources;
    const std::size_t before = known.size();
    known.merge(providers);
    if (known.size() != before) {
        RebuildSourcesList(window);
    }
}

void OnSourceItemChanged(MainWindow& window, const NMLISTVIEW& change) {
    if (!IsTick(window, change)) {
        return;
    }
    query::SourceSet& selected = CurrentFilter(window).selectedSources;
    const std::wstring& name = window.shownSources[static_cast<std::size_t>(change.iItem)];
    if (StateImage(change.uNewState) == kTicked) {
        selected.insert(name);
    } else {
        selected.erase(name);
    }
    SetCaption(window, query::SourcesCaption(selected.size()));
    ShowFilterSummary(window);
    StartTimer(window, Timer::FilterApply);
}

void OnSourcesSearchChanged(MainWindow& window) {
    if (window.ShowsChannel()) {
        RebuildSourcesList(window);
    }
}

void UntickAllSources(MainWindow& window) {
    CurrentFilter(window).selectedSources.clear();
    RebuildSourcesList(window);
    ShowFilterSummary(window);
}

}  // namespace tavrin::ui
