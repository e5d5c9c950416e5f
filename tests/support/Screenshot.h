// Screenshot.h - what a window shows on screen, with pixel look-ups, and
// saved as PNG when a test wants to keep it.
//
//   Screenshot shot(host.Window());
//   EXPECT_EQ(shot.Pixel(10, 10), RGB(255, 0, 0));   // window coordinates
//   shot.SavePng(L"failed.png");
#pragma once
#include <windows.h>

class Screenshot
{
public:
    explicit Screenshot(HWND window);
    ~Screenshot();
    Screenshot(const Screenshot&) = delete;
    Screenshot& operator=(const Screenshot&) = delete;

    int Width() const { return m_width; }
    int Height() const { return m_height; }
    // The colour at (x, y) of the window's outline; CLR_INVALID outside.
    COLORREF Pixel(int x, int y) const;
    // Same, in client coordinates of `child` (any window inside it).
    COLORREF PixelOf(HWND child, int x, int y) const;
    bool SavePng(const wchar_t* path) const;

private:
    HWND m_window;
    HBITMAP m_bitmap = nullptr;
    const DWORD* m_bits = nullptr;
    int m_width = 0, m_height = 0;
};
