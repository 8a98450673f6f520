#include "window/controls/input.h"

#include <chrono>
#include <vector>

#include "support/wait_until.h"

namespace tavrin::test {
namespace {

using namespace std::chrono_literals;

INPUT KeyInput(WORD virtualKey, bool up) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = virtualKey;
    input.ki.wScan = static_cast<WORD>(MapVirtualKeyW(virtualKey, MAPVK_VK_TO_VSC));
    input.ki.dwFlags = up ? KEYEVENTF_KEYUP : 0;
    return input;
}

INPUT CharacterInput(wchar_t character, bool up) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wScan = character;
    input.ki.dwFlags = KEYEVENTF_UNICODE | (up ? KEYEVENTF_KEYUP : 0);
    return input;
}

INPUT MouseInput(DWORD flags) {
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = flags;
    return input;
}

void Send(std::vector<INPUT> inputs) {
    SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
}

// Presses a key while the modifiers are held.
void PressChord(const std::vector<WORD>& modifiers, WORD virtualKey) {
    std::vector<INPUT> inputs;
    for (auto key = modifiers.begin(); key != modifiers.end(); ++key) {
        inputs.push_back(KeyInput(*key, false));
    }
    inputs.push_back(KeyInput(virtualKey, false));
    inputs.push_back(KeyInput(virtualKey, true));
    for (auto key = modifiers.rbegin(); key != modifiers.rend(); ++key) {
        inputs.push_back(KeyInput(*key, true));
    }
    Send(inputs);
}

// Absolute coordinates run from 0 to 65535 across the primary screen. Windows rounds down when it
// converts them to pixels, so this rounds up.
LONG Absolute(LONG pixel, int extent) {
    return (pixel * 65536 + extent - 1) / extent;
}

bool IsPointerAt(POINT point) {
    POINT now{};
    GetCursorPos(&now);
    return now.x == point.x && now.y == point.y;
}

// Wine 8 reports an earlier mouse move again when the program under the pointer handles it. The
// pointer jumps back, and a click goes to the old place. Moves until the pointer stays.
void MoveMouseToRest(POINT point, std::chrono::milliseconds rest = 20ms) {
    WaitUntil([&] {
        MoveMouse(point);
        return HoldsFor(rest, [&] { return IsPointerAt(point); });
    });
}

void Click(POINT point, DWORD down, DWORD up) {
    MoveMouseToRest(point);
    Send({MouseInput(down), MouseInput(up)});
}

GUITHREADINFO ThreadState(HWND window) {
    GUITHREADINFO state{};
    state.cbSize = sizeof(state);
    GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &state);
    return state;
}

bool IsInFront(HWND window) {
    return GetForegroundWindow() == window;
}

}  // namespace

void PressKey(WORD virtualKey) {
    PressChord({}, virtualKey);
}

void PressAltCharacter(wchar_t character) {
    const SHORT key = VkKeyScanW(character);
    std::vector<WORD> modifiers = {VK_MENU};
    if ((HIBYTE(key) & 1) != 0) {
        modifiers.push_back(VK_SHIFT);
    }
    PressChord(modifiers, LOBYTE(key));
}

void PressWith(WORD modifier, WORD virtualKey) {
    PressChord({modifier}, virtualKey);
}

void TypeText(std::wstring_view text) {
    for (const wchar_t character : text) {
        Send({CharacterInput(character, false), CharacterInput(character, true)});
    }
}

void MoveMouse(POINT point) {
    INPUT input = MouseInput(MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE);
    input.mi.dx = Absolute(point.x, GetSystemMetrics(SM_CXSCREEN));
    input.mi.dy = Absolute(point.y, GetSystemMetrics(SM_CYSCREEN));
    Send({input});
}

void PressLeftButton() {
    Send({MouseInput(MOUSEEVENTF_LEFTDOWN)});
}

void ReleaseLeftButton() {
    Send({MouseInput(MOUSEEVENTF_LEFTUP)});
}

void ClickLeft(POINT point) {
    Click(point, MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP);
}

void ClickRight(POINT point) {
    Click(point, MOUSEEVENTF_RIGHTDOWN, MOUSEEVENTF_RIGHTUP);
}

void DragLeft(POINT from, POINT to) {
    MoveMouseToRest(from);
    PressLeftButton();
    MoveMouseToRest({(from.x + to.x) / 2, (from.y + to.y) / 2});
    MoveMouseToRest(to, 60ms);
    ReleaseLeftButton();
}

bool BringToFront(HWND window) {
    SetForegroundWindow(window);
    if (WaitUntil([&] { return IsInFront(window); }, 500ms)) {
        return true;
    }
    // Windows may refuse SetForegroundWindow to a background process. A click always works.
    RECT rect{};
    GetWindowRect(window, &rect);
    ClickLeft({(rect.left + rect.right) / 2, rect.top + GetSystemMetrics(SM_CYCAPTION) / 2});
    return WaitUntil([&] { return IsInFront(window); });
}

bool GiveFocus(HWND control) {
    const DWORD theirs = GetWindowThreadProcessId(control, nullptr);
    // Tries again if an earlier click, still in the queue, took the focus away.
    return WaitUntil([&] {
        AttachThreadInput(GetCurrentThreadId(), theirs, TRUE);
        SetFocus(control);
        AttachThreadInput(GetCurrentThreadId(), theirs, FALSE);
        return HoldsFor(10ms, [&] { return FocusOf(control) == control; });
    });
}

HWND FocusOf(HWND window) {
    return ThreadState(window).hwndFocus;
}

HWND CaptureOf(HWND window) {
    return ThreadState(window).hwndCapture;
}

POINT CentreOf(const RECT& rect) {
    return {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
}

POINT CentreOf(HWND window) {
    RECT rect{};
    GetWindowRect(window, &rect);
    return CentreOf(rect);
}

}  // namespace tavrin::test
