#include "ui/controls/accelerator_forwarding.h"

#include <map>

namespace tavrin::ui {
namespace {

constexpr WORD kFromAccelerator = 1;

// Original window procedures, by control. Window thread only. SetWindowSubclass would cost a Wine
// server call for every message, and a list or a tree gets thousands.
std::map<HWND, WNDPROC> g_controlProcs;

WNDPROC ReplaceProc(HWND control, WNDPROC proc) {
    return reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(control, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(proc)));
}

LRESULT CALLBACK ForwardingProc(HWND control, UINT message, WPARAM wParam, LPARAM lParam) {
    // The control does not get it as well: some would send it to their parent once more.
    if (message == WM_COMMAND && HIWORD(wParam) == kFromAccelerator && lParam == 0) {
        return SendMessageW(GetAncestor(control, GA_ROOT), message, wParam, lParam);
    }
    const WNDPROC controlProc = g_controlProcs.at(control);
    if (message == WM_NCDESTROY) {
        ReplaceProc(control, controlProc);
        g_controlProcs.erase(control);
    }
    return CallWindowProcW(controlProc, control, message, wParam, lParam);
}

BOOL CALLBACK ForwardFromPart(HWND part, LPARAM) {
    ForwardAcceleratorCommands(part);
    return TRUE;
}

}  // namespace

void ForwardAcceleratorCommands(HWND control) {
    // Stored before the control's next message arrives.
    g_controlProcs[control] = reinterpret_cast<WNDPROC>(GetWindowLongPtrW(control, GWLP_WNDPROC));
    ReplaceProc(control, ForwardingProc);
}

void ForwardAcceleratorCommandsOfParts(HWND control) {
    EnumChildWindows(control, ForwardFromPart, 0);
}

}  // namespace tavrin::ui
