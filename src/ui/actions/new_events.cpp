#include "ui/actions/new_events.h"

#include "eventlog/loading/channel_activity.h"
#include "ui/controls/status_bar.h"
#include "ui/controls/window_state.h"

namespace tavrin::ui {

void ShowNewEventsNotice(MainWindow& window) {
    if (eventlog::CheckNewEvents(window.activities, window.currentNode.get())) {
        SetStatusMessage(window, L"New events available - press F5 to refresh");
    }
}

}  // namespace tavrin::ui
