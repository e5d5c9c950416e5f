// SlideCanvas.h - a 32-bit memory bitmap for slide drawing tests, pre-filled
// with a colour the renderer never uses, read back pixel by pixel.
#pragma once
#include <QMUtil.h>

namespace qmtest {

const COLORREF kUntouched = RGB(0x12, 0x34, 0x56);
const COLORREF kWhite = RGB(255, 255, 255);
const COLORREF kBlack = RGB(0, 0, 0);

class SlideCanvas
{
public:
    SlideCanvas(int width, int height, COLORREF fill = kUntouched) : m_width(width), m_height(height)
    {
        dc.CreateCompatibleDC(nullptr);
        BITMAPINFO info{};
        info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
        info.bmiHeader.biWidth = width;
        info.bmiHeader.biHeight = -height;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        void* bits = nullptr;
        m_bitmap.Attach(::CreateDIBSection(dc, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
        m_old = dc.SelectObject(m_bitmap.m_hObject);
        CBrush brush(fill);
        dc.FillRect(CRect(0, 0, width, height), &brush);
    }
    ~SlideCanvas() { dc.SelectObject(m_old); }

    COLORREF At(int x, int y) const { return dc.GetPixel(x, y); }
    // Pixels of `colour` inside `rect`.
    int Count(COLORREF colour, const CRect& rect) const
    {
        int n = 0;
        for (int y = rect.top; y < rect.bottom; ++y)
            for (int x = rect.left; x < rect.right; ++x)
                n += At(x, y) == colour ? 1 : 0;
        return n;
    }
    int Count(COLORREF colour) const { return Count(colour, CRect(0, 0, m_width, m_height)); }

    CDC dc;

private:
    int m_width, m_height;
    CBitmap m_bitmap;
    HGDIOBJ m_old = nullptr;
};

// Reads a bitmap made by SldBltEx through a context of its own.
class BitmapReader
{
public:
    explicit BitmapReader(CBitmap& bitmap)
    {
        dc.CreateCompatibleDC(nullptr);
        m_old = dc.SelectObject(bitmap.m_hObject);
    }
    ~BitmapReader() { dc.SelectObject(m_old); }
    COLORREF At(int x, int y) const { return dc.GetPixel(x, y); }
    int Count(COLORREF colour, const CRect& rect) const
    {
        int n = 0;
        for (int y = rect.top; y < rect.bottom; ++y)
            for (int x = rect.left; x < rect.right; ++x)
                n += At(x, y) == colour ? 1 : 0;
        return n;
    }

    CDC dc;

private:
    HGDIOBJ m_old = nullptr;
};

}  // namespace qmtest
