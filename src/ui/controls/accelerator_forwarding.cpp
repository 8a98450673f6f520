#include "ui/controls/accelerator_forwarding.h"

#include <map>

namespace tavrin::ui {
namespace {

constexpr WORD kFromAccelerator = 1;

// The procedures of the controls that hand on, by control. Window thread only. Not
// SetWindowSubclass: it looks its data up for every message, which costs some systems a call
// to another process, and a list or a tree gets thousands.
std::map<HWND, WNDPROC> g_controlProcs;

WNDPROC ReplaceProc(HWND control, WNDPROC proc) {
    return reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(control, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(proc)));
}

LRESULT CALLBACK ForwardingProc(HWND control, UINT message, WPARAM wParam, LPARAM lParam) {
    // Not passed on to the control too: some would send it to their parent again.
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
    // Before the control's next message comes.
    g_controlProcs[control] = reinterpret_cast<WNDPROC>(GetWindowLongPtrW(control, GWLP_WNDPROC));
    ReplaceProc(control, ForwardingProc);
}

void ForwardAcceleratorCommandsOfParts(HWND control) {
    EnumChildWindows(control, ForwardFromPart, 0);
}

}  // namespace tavrin::ui
