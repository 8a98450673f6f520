#include "ui/controls/details_pane.h"

#include <string>

#include <commctrl.h>

#include "eventlog/details/event_details.h"
#include "eventlog/records/event_record.h"
#include "ui/controls/window_state.h"
#include "ui/rules/line_breaks.h"

namespace tavrin::ui {

void SetUpDetailsTab(MainWindow&, HWND tab) {
    wchar_t label[] = L"General";
    TCITEMW item{};
    item.mask = TCIF_TEXT;
    item.pszText = label;
    TabCtrl_InsertItem(tab, 0, &item);
}

void SetDetailsText(const MainWindow& window, std::wstring_view text) {
    const HWND edit = window.controls.detailsEdit;
    SetWindowTextW(edit, WithLineBreakPairs(text).c_str());
    InvalidateRect(edit, nullptr, TRUE);
    UpdateWindow(edit);
}

void ShowEvent(const MainWindow& window, const eventlog::EventRecord& record) {
    if (!window.shownNode) {
        return;
    }
    std::wstring text;
    // Ignores the code: on failure the text stays empty.
    static_cast<void>(eventlog::FormatEventDescription(window.shownNode->id, record.recordId,
                                                       record.eventId, record.providerName, text));
    SetDetailsText(window, text);
}

}  // namespace tavrin::ui
