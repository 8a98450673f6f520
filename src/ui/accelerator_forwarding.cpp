#include "ui/accelerator_forwarding.h"

#include <commctrl.h>

namespace tavrin::ui {
namespace {

constexpr UINT_PTR kSubclass = 2;
constexpr WORD kFromAccelerator = 1;

LRESULT CALLBACK ForwardingProc(HWND control, UINT message, WPARAM wParam, LPARAM lParam,
                                UINT_PTR subclass, DWORD_PTR) {
    // Not passed on to the control too: some would send it to their parent again.
    if (message == WM_COMMAND && HIWORD(wParam) == kFromAccelerator && lParam == 0) {
        return SendMessageW(GetAncestor(control, GA_ROOT), message, wParam, lParam);
    }
    if (message == WM_NCDESTROY) {
        RemoveWindowSubclass(control, ForwardingProc, subclass);
    }
    return DefSubclassProc(control, message, wParam, lParam);
}

BOOL CALLBACK ForwardFromPart(HWND part, LPARAM) {
    ForwardAcceleratorCommands(part);
    return TRUE;
}

}  // namespace

void ForwardAcceleratorCommands(HWND control) {
    SetWindowSubclass(control, ForwardingProc, kSubclass, 0);
}

void ForwardAcceleratorCommandsOfParts(HWND control) {
    EnumChildWindows(control, ForwardFromPart, 0);
}

}  // namespace tavrin::ui
