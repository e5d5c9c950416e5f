// Screenshot.cpp - a screen capture of a window kept as 32-bit pixels.
#include "support/Screenshot.h"

#include "common/WindowImage.h"

Screenshot::Screenshot(HWND window) : m_window(window), m_bitmap(qmimage::CaptureWindow(window))
{
    DIBSECTION section{};
    if (m_bitmap != nullptr && ::GetObjectW(m_bitmap, sizeof(section), &section) == sizeof(section))
    {
        m_bits = static_cast<const DWORD*>(section.dsBm.bmBits);
        m_width = section.dsBm.bmWidth;
        m_height = section.dsBm.bmHeight;
    }
}

Screenshot::~Screenshot()
{
    if (m_bitmap != nullptr)
        ::DeleteObject(m_bitmap);
}

COLORREF Screenshot::Pixel(int x, int y) const
{
    if (m_bits == nullptr || x < 0 || y < 0 || x >= m_width || y >= m_height)
        return CLR_INVALID;
    const DWORD bgr = m_bits[y * m_width + x];
    return RGB((bgr >> 16) & 0xFF, (bgr >> 8) & 0xFF, bgr & 0xFF);
}

COLORREF Screenshot::PixelOf(HWND child, int x, int y) const
{
    POINT p{x, y};
    RECT outline{};
    ::ClientToScreen(child, &p);
    ::GetWindowRect(m_window, &outline);
    return Pixel(p.x - outline.left, p.y - outline.top);
}

bool Screenshot::SavePng(const wchar_t* path) const
{
    return m_bitmap != nullptr && SUCCEEDED(qmimage::SavePng(m_bitmap, path));
}
