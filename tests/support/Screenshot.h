// Screenshot.h - what a window shows on screen, with pixel look-ups.
//
//   EXPECT_EQ(Screenshot(host.Window()).PixelOf(button, 0, 0), RGB(255, 0, 0));
#pragma once
#include "common/WindowImage.h"

#include <windows.h>

class Screenshot
{
public:
    explicit Screenshot(HWND window) : m_window(window), m_bitmap(qmimage::CaptureWindow(window))
    {
        DIBSECTION section{};
        if (m_bitmap != nullptr && ::GetObjectW(m_bitmap, sizeof(section), &section) == sizeof(section))
        {
            m_bits = static_cast<const DWORD*>(section.dsBm.bmBits);
            m_width = section.dsBm.bmWidth;
            m_height = section.dsBm.bmHeight;
        }
    }
    ~Screenshot() { ::DeleteObject(m_bitmap); }
    Screenshot(const Screenshot&) = delete;
    Screenshot& operator=(const Screenshot&) = delete;

    int Width() const { return m_width; }
    int Height() const { return m_height; }
    // The colour at (x, y) of the window's outline; CLR_INVALID outside.
    COLORREF Pixel(int x, int y) const
    {
        if (m_bits == nullptr || x < 0 || y < 0 || x >= m_width || y >= m_height)
            return CLR_INVALID;
        const DWORD bgr = m_bits[y * m_width + x];
        return RGB((bgr >> 16) & 0xFF, (bgr >> 8) & 0xFF, bgr & 0xFF);
    }
    // Same, in client coordinates of `child` (any window inside it).
    COLORREF PixelOf(HWND child, int x, int y) const
    {
        POINT p{x, y};
        RECT outline{};
        ::ClientToScreen(child, &p);
        ::GetWindowRect(m_window, &outline);
        return Pixel(p.x - outline.left, p.y - outline.top);
    }

private:
    HWND m_window;
    HBITMAP m_bitmap;
    const DWORD* m_bits = nullptr;
    int m_width = 0, m_height = 0;
};
