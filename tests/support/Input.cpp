// Input.cpp - SendInput for keys, characters and the mouse.
#include "support/Input.h"

#include <vector>

namespace input {
namespace {

INPUT KeyInput(WORD virtualKey, WORD scan, DWORD flags)
{
    INPUT in{};
    in.type = INPUT_KEYBOARD;
    in.ki.wVk = virtualKey;
    in.ki.wScan = scan;
    in.ki.dwFlags = flags;
    return in;
}

INPUT MouseInput(DWORD flags, LONG x = 0, LONG y = 0)
{
    INPUT in{};
    in.type = INPUT_MOUSE;
    in.mi.dx = x;
    in.mi.dy = y;
    in.mi.dwFlags = flags;
    return in;
}

void Send(std::vector<INPUT> inputs)
{
    ::SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
    ::Sleep(20);
}

} // namespace

void Key(WORD virtualKey)
{
    Send({KeyInput(virtualKey, 0, 0), KeyInput(virtualKey, 0, KEYEVENTF_KEYUP)});
}

void Type(const wchar_t* text)
{
    for (; *text != L'\0'; ++text)
    {
        const SHORT key = *text < 0x80 ? ::VkKeyScanW(*text) : -1;
        if (key == -1)
        {
            Send({KeyInput(0, *text, KEYEVENTF_UNICODE), KeyInput(0, *text, KEYEVENTF_UNICODE | KEYEVENTF_KEYUP)});
            continue;
        }
        const WORD vk = LOBYTE(key);
        if (HIBYTE(key) & 1)
            Send({KeyInput(VK_SHIFT, 0, 0), KeyInput(vk, 0, 0), KeyInput(vk, 0, KEYEVENTF_KEYUP),
                  KeyInput(VK_SHIFT, 0, KEYEVENTF_KEYUP)});
        else
            Key(vk);
    }
}

void MoveTo(HWND window, int x, int y)
{
    POINT p{x, y};
    ::ClientToScreen(window, &p);
    const int width = ::GetSystemMetrics(SM_CXSCREEN), height = ::GetSystemMetrics(SM_CYSCREEN);
    Send({MouseInput(MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE, (p.x * 65535 + width / 2) / (width - 1),
                     (p.y * 65535 + height / 2) / (height - 1))});
}

void Click(HWND window, int x, int y)
{
    MoveTo(window, x, y);
    Send({MouseInput(MOUSEEVENTF_LEFTDOWN), MouseInput(MOUSEEVENTF_LEFTUP)});
}

void Click(HWND window)
{
    RECT rc{};
    ::GetClientRect(window, &rc);
    Click(window, rc.right / 2, rc.bottom / 2);
}

void Press(HWND window, int x, int y)
{
    MoveTo(window, x, y);
    Send({MouseInput(MOUSEEVENTF_LEFTDOWN)});
}

void Release(HWND window, int x, int y)
{
    MoveTo(window, x, y);
    Release();
}

void Release()
{
    Send({MouseInput(MOUSEEVENTF_LEFTUP)});
}

} // namespace input
