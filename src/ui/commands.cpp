#include "ui/commands.h"

#include <algorithm>
#include <iterator>

#include "base/unique_handle.h"
#include "query/time_range.h"
#include "resource.h"
#include "ui/actions/apply_filters.h"
#include "ui/actions/channel_load.h"
#include "ui/controls/about_box.h"
#include "ui/controls/filter_bar.h"
#include "ui/controls/sources_panel.h"
#include "ui/controls/window_state.h"

namespace tavrin::ui {
namespace {

using UniqueMenu = base::UniqueHandle<HMENU, ::DestroyMenu>;

// A control sends its notification code here; a menu sends 0, an accelerator 1.
constexpr int kAnyNotification = -1;

struct Command {
    WORD id;
    int notification;
    void (*run)(MainWindow&);
};

void OnAbout(MainWindow& window) {
    ShowAboutBox(window.handle);
}

void OnExit(MainWindow& window) {
    DestroyWindow(window.handle);
}

void OnOptions(MainWindow& window) {
    MessageBoxW(window.handle, L"You clicked Options!", L"Options", MB_OK);
}

void OnSetAsFrom(MainWindow& window) {
    SetPickerFromEvent(window, query::TimeBound::From);
}

void OnSetAsTo(MainWindow& window) {
    SetPickerFromEvent(window, query::TimeBound::To);
}

constexpr Command kCommands[] = {
    {IDM_ABOUT, kAnyNotification, OnAbout},
    {IDM_EXIT, kAnyNotification, OnExit},
    {IDC_SOURCES_SEARCH, EN_CHANGE, OnSourcesSearchChanged},
    {IDC_SHOW_ALL_SOURCES, BN_CLICKED, ShowAllSources},
    {IDM_OPTIONS, kAnyNotification, OnOptions},
    {IDM_REFRESH, kAnyNotification, Refresh},
    {IDM_SET_AS_FROM, kAnyNotification, OnSetAsFrom},
    {IDM_SET_AS_TO, kAnyNotification, OnSetAsTo},
    {IDC_FILTER_EDIT, EN_CHANGE, OnFilterTextChanged},
};

}  // namespace

bool OnCommand(MainWindow& window, WORD id, WORD notification) {
    const auto command = std::ranges::find_if(kCommands, [=](const Command& candidate) {
        return candidate.id == id && (candidate.notification == kAnyNotification ||
                                      candidate.notification == notification);
    });
    if (command == std::end(kCommands)) {
        return false;
    }
    command->run(window);
    return true;
}

void ShowListContextMenu(const MainWindow& window, POINT point) {
    const UniqueMenu menu(
        LoadMenuW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDR_LIST_CONTEXT_MENU)));
    TrackPopupMenu(GetSubMenu(menu.get(), 0), TPM_RIGHTBUTTON, point.x, point.y, 0, window.handle,
                   nullptr);
}

}  // namespace tavrin::ui
