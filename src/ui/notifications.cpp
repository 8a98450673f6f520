#include "ui/notifications.h"

#include <commctrl.h>

#include "query/time_range.h"
#include "ui/actions/node_selection.h"
#include "ui/controls/event_list.h"
#include "ui/controls/filter_bar.h"
#include "ui/controls/sources_panel.h"
#include "ui/controls/window_state.h"

namespace tavrin::ui {
namespace {

void OnTreeNotify(MainWindow& window, const NMHDR& notification) {
    if (notification.code == TVN_SELCHANGEDW) {
        OnNodeSelected(window, reinterpret_cast<const NMTREEVIEWW&>(notification));
    }
}

void OnPickerNotify(MainWindow& window, query::TimeBound bound, const NMHDR& notification) {
    if (notification.code == DTN_DATETIMECHANGE) {
        OnPickerChanged(window, bound, reinterpret_cast<const NMDATETIMECHANGE&>(notification));
    }
}

void OnSourcesListNotify(MainWindow& window, const NMHDR& notification) {
    if (notification.code == LVN_ITEMCHANGED) {
        OnSourceItemChanged(window, reinterpret_cast<const NMLISTVIEW&>(notification));
    }
}

}  // namespace

LRESULT OnNotify(MainWindow& window, NMHDR& notification) {
    const Controls& controls = window.controls;
    const HWND sender = notification.hwndFrom;
    if (sender == controls.list) {
        return OnEventListNotify(window, notification);
    }
    if (sender == controls.tree) {
        OnTreeNotify(window, notification);
    } else if (sender == controls.fromPicker) {
        OnPickerNotify(window, query::TimeBound::From, notification);
    } else if (sender == controls.toPicker) {
        OnPickerNotify(window, query::TimeBound::To, notification);
    } else if (sender == controls.sourcesList) {
        OnSourcesListNotify(window, notification);
    }
    return 0;
}

}  // namespace tavrin::ui
