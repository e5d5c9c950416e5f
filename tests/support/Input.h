// Input.h - keys, text and the mouse through the real input queue
// (SendInput), so hooks, pre-translation and the controls' handlers run as
// for a user. Call from a thread other than the window's while its loop runs.
//
//   input::Type(L"500"); input::Key(VK_TAB); input::Click(edit, 5, 5);
#pragma once
#include <windows.h>

#include <initializer_list>

namespace input {

inline void Send(std::initializer_list<INPUT> inputs)
{
    ::SendInput(static_cast<UINT>(inputs.size()), const_cast<INPUT*>(inputs.begin()), sizeof(INPUT));
    ::Sleep(20);
}

inline INPUT KeyIn(WORD virtualKey, DWORD flags = 0, WORD scan = 0)
{
    INPUT in{INPUT_KEYBOARD, {}};
    in.ki = {virtualKey, scan, flags, 0, 0};
    return in;
}

inline INPUT MouseIn(DWORD flags, LONG x = 0, LONG y = 0)
{
    INPUT in{INPUT_MOUSE, {}};
    in.mi = {x, y, 0, flags, 0, 0};
    return in;
}

inline void Key(WORD virtualKey)
{
    Send({KeyIn(virtualKey), KeyIn(virtualKey, KEYEVENTF_KEYUP)});
}

// `key` with `modifier` (VK_SHIFT, VK_CONTROL) held.
inline void Chord(WORD modifier, WORD key)
{
    Send({KeyIn(modifier), KeyIn(key), KeyIn(key, KEYEVENTF_KEYUP), KeyIn(modifier, KEYEVENTF_KEYUP)});
}

// Each character by its key (with Shift when the layout needs it), else as
// a Unicode character.
inline void Type(const wchar_t* text)
{
    for (; *text != L'\0'; ++text)
    {
        const SHORT key = *text < 0x80 ? ::VkKeyScanW(*text) : -1;
        const WORD vk = LOBYTE(key);
        if (key == -1)
            Send({KeyIn(0, KEYEVENTF_UNICODE, *text), KeyIn(0, KEYEVENTF_UNICODE | KEYEVENTF_KEYUP, *text)});
        else if (HIBYTE(key) & 1)
            Send({KeyIn(VK_SHIFT), KeyIn(vk), KeyIn(vk, KEYEVENTF_KEYUP), KeyIn(VK_SHIFT, KEYEVENTF_KEYUP)});
        else
            Key(vk);
    }
}

// (x, y) in client coordinates of `window`.
inline void MoveTo(HWND window, int x, int y)
{
    POINT p{x, y};
    ::ClientToScreen(window, &p);
    const int width = ::GetSystemMetrics(SM_CXSCREEN), height = ::GetSystemMetrics(SM_CYSCREEN);
    Send({MouseIn(MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE, (p.x * 65535 + width / 2) / (width - 1),
                  (p.y * 65535 + height / 2) / (height - 1))});
}

// A drag in steps: Press, MoveTo, Release where the pointer is.
inline void Press(HWND window, int x, int y)
{
    MoveTo(window, x, y);
    Send({MouseIn(MOUSEEVENTF_LEFTDOWN)});
}

inline void Release()
{
    Send({MouseIn(MOUSEEVENTF_LEFTUP)});
}

inline void Click(HWND window, int x, int y)
{
    Press(window, x, y);
    Release();
}

// A click in the middle of the client area.
inline void Click(HWND window)
{
    RECT rc{};
    ::GetClientRect(window, &rc);
    Click(window, rc.right / 2, rc.bottom / 2);
}

} // namespace input
