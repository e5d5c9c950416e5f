// Input.h - keys, text and mouse clicks through the real input queue
// (SendInput), so that hooks, pre-translation and the controls' handlers run
// as they do for a user. They go to the foreground window's focus; call them
// from a thread other than the window's while its loop runs.
//
//   input::Type(L"500");
//   input::Key(VK_TAB);
//   input::Click(edit, 5, 5);            // client coordinates of `edit`
//   input::Click(button);                // its middle
//   input::Press(edit, 5, 5); input::MoveTo(list, 20, 8); input::Release();
#pragma once
#include <windows.h>

namespace input {

void Key(WORD virtualKey);
// Each character by its key (with Shift when the layout needs it), else as
// a Unicode character.
void Type(const wchar_t* text);
void MoveTo(HWND window, int x, int y);
void Click(HWND window, int x, int y);
// A click in the middle of the window's client area.
void Click(HWND window);
// A drag in steps: press the left button at a point, move (MoveTo), let go
// there or wherever the pointer is.
void Press(HWND window, int x, int y);
void Release(HWND window, int x, int y);
void Release();

} // namespace input
