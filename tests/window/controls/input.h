#pragma once

#include <string_view>

#include <windows.h>

namespace tavrin::test {

// Real keyboard and mouse input: it goes to the control that has the focus or is under the pointer.

void PressKey(WORD virtualKey);

// Presses the key of a character with Alt, and with Shift if the character needs it.
void PressAltCharacter(wchar_t character);

// Presses a key while a modifier such as VK_CONTROL is held.
void PressWith(WORD modifier, WORD virtualKey);

void TypeText(std::wstring_view text);

// Mouse positions are in screen coordinates.
void MoveMouse(POINT point);
void PressLeftButton();
void ReleaseLeftButton();
void ClickLeft(POINT point);
void ClickRight(POINT point);

// Drags with an intermediate step, as a hand does.
void DragLeft(POINT from, POINT to);

// Brings a window to the front, where input reaches it. Returns false at the timeout.
bool BringToFront(HWND window);

// Gives a control of another process the keyboard focus. Returns false at the timeout.
bool GiveFocus(HWND control);

// The windows of a window's thread that have the keyboard focus and the mouse capture, or null.
HWND FocusOf(HWND window);
HWND CaptureOf(HWND window);

POINT CentreOf(const RECT& rect);
POINT CentreOf(HWND window);

}  // namespace tavrin::test
