#include "ui/controls/filter_bar.h"

#include "resource.h"
#include "ui/controls/timers.h"
#include "ui/controls/window_state.h"
#include "ui/controls/window_text.h"

namespace tavrin::ui {
namespace {

using query::TimeBound;

constexpr UINT_PTR kForwardSubclass = 1;

bool IsPicker(UINT_PTR id) {
    return id == IDC_FROM_PICKER || id == IDC_TO_PICKER;
}

// A toolbar keeps its children's notifications; this passes the pickers' on to the main window.
LRESULT CALLBACK ForwardPickerNotify(HWND toolbar, UINT message, WPARAM wParam, LPARAM lParam,
                                     UINT_PTR subclass, DWORD_PTR) {
    if (message == WM_NOTIFY && IsPicker(reinterpret_cast<const NMHDR*>(lParam)->idFrom)) {
        return SendMessageW(GetParent(toolbar), message, wParam, lParam);
    }
    if (message == WM_NCDESTROY) {
        RemoveWindowSubclass(toolbar, ForwardPickerNotify, subclass);
    }
    return DefSubclassProc(toolbar, message, wParam, lParam);
}

HWND Picker(const MainWindow& window, TimeBound bound) {
    return bound == TimeBound::From ? window.controls.fromPicker : window.controls.toPicker;
}

bool& PickerOn(MainWindow& window, TimeBound bound) {
    return window.pickerOn[static_cast<std::size_t>(bound)];
}

}  // namespace

void SetUpToolbar(MainWindow&, HWND toolbar) {
    SendMessageW(toolbar, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    TBADDBITMAP bitmap{HINST_COMMCTRL, IDB_STD_SMALL_COLOR};
    SendMessageW(toolbar, TB_ADDBITMAP, 0, reinterpret_cast<LPARAM>(&bitmap));
    SetWindowSubclass(toolbar, ForwardPickerNotify, kForwardSubclass, 0);
}

void SetUpFilterEdit(MainWindow&, HWND edit) {
    Edit_SetCueBannerText(edit, L"Filter...");
}

void SetUpPicker(MainWindow&, HWND picker) {
    DateTime_SetFormat(picker, L"dd/MM/yyyy HH:mm:ss");
    // Wine ignores GDT_NONE without a time.
    SYSTEMTIME now{};
    GetLocalTime(&now);
    DateTime_SetSystemtime(picker, GDT_NONE, &now);
}

std::wstring ReadFilterText(const MainWindow& window) {
    return ReadEditText(window.controls.filterEdit);
}

bool HasFilterText(const MainWindow& window) {
    return GetWindowTextLengthW(window.controls.filterEdit) > 0;
}

void ClearFilterText(const MainWindow& window) {
    SetWindowTextW(window.controls.filterEdit, L"");
}

std::optional<SYSTEMTIME> ReadPicker(const MainWindow& window, TimeBound bound) {
    SYSTEMTIME time{};
    if (DateTime_GetSystemtime(Picker(window, bound), &time) != GDT_VALID) {
        return std::nullopt;
    }
    return time;
}

void WritePicker(MainWindow& window, TimeBound bound, const SYSTEMTIME& time) {
    PickerOn(window, bound) = true;
    DateTime_SetSystemtime(Picker(window, bound), GDT_VALID, &time);
}

void OnFilterTextChanged(MainWindow& window) {
    StopTimer(window, Timer::FilterText);
    StartTimer(window, Timer::FilterText);
}

void OnPickerChanged(MainWindow& window, TimeBound bound, const NMDATETIMECHANGE& change) {
    const bool on = change.dwFlags == GDT_VALID;
    if (on && !PickerOn(window, bound)) {
        SYSTEMTIME now{};
        GetLocalTime(&now);
        WritePicker(window, bound, query::FirstTimeOf(bound, now));
    } else {
        PickerOn(window, bound) = on;
    }
    StartTimer(window, Timer::FilterApply);
}

}  // namespace tavrin::ui
