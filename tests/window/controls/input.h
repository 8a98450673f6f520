#pragma once

#include <string_view>

#include <windows.h>

namespace tavrin::test {

// Real input, as a keyboard and a mouse give it: it goes to whatever has the focus or lies
// under the pointer.

void PressKey(WORD virtualKey);

// A key while Alt (and whatever else the character needs) is held.
void PressAltCharacter(wchar_t character);

// A key while another (VK_CONTROL, VK_SHIFT) is held.
void PressWith(WORD modifier, WORD virtualKey);

void TypeText(std::wstring_view text);

// Screen coordinates.
void MoveMouse(POINT point);
void PressLeftButton();
void ReleaseLeftButton();
void ClickLeft(POINT point);
void ClickRight(POINT point);

// A drag with a step on the way, as a hand makes it.
void DragLeft(POINT from, POINT to);

// Brings a window to the front so that input reaches it. False when that fails.
bool BringToFront(HWND window);

// Gives a control of another process the keyboard focus. False when that fails.
bool GiveFocus(HWND control);

// What has the keyboard focus, and what has captured the mouse, in a window's thread.
HWND FocusOf(HWND window);
HWND CaptureOf(HWND window);

POINT CentreOf(const RECT& rect);
POINT CentreOf(HWND window);

}  // namespace tavrin::test
