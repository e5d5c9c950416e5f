// SlideCanvas.h - reads slide drawings back pixel by pixel: a 32-bit memory
// bitmap pre-filled with a colour the renderer never uses, or a bitmap that
// SldBltEx made, and the pixel counts a drawing test expects of it.
#pragma once
#include <QMUtil.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace qmtest {

const COLORREF kUntouched = RGB(0x12, 0x34, 0x56);
const COLORREF kWhite = RGB(255, 255, 255), kBlack = RGB(0, 0, 0), kGrey = RGB(128, 128, 128);
const COLORREF kRed = RGB(255, 0, 0), kGreen = RGB(0, 255, 0), kBlue = RGB(0, 0, 255);

// Between `min` and `max` pixels of `colour` inside `rect`.
struct Probe { CRect rect; COLORREF colour; int min, max; };
inline Probe Pixel(int x, int y, COLORREF c, int n = 1) { return {CRect(x, y, x + 1, y + 1), c, n, n}; }
inline Probe Exactly(int n, COLORREF c, const CRect& rect) { return {rect, c, n, n}; }
inline Probe MoreThan(int n, COLORREF c, const CRect& rect) { return {rect, c, n + 1, INT_MAX}; }

class SlideCanvas
{
public:
    SlideCanvas(int w, int h) : width(w), height(h)
    {
        BITMAPINFO info{{sizeof(BITMAPINFOHEADER), w, -h, 1, 32, BI_RGB, 0, 0, 0, 0, 0}, {}};
        void* bits = nullptr;
        m_bitmap.Attach(::CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
        Select(m_bitmap);
        CBrush brush(kUntouched);
        dc.FillRect(CRect(0, 0, w, h), &brush);
    }
    explicit SlideCanvas(CBitmap& bitmap)
    {
        BITMAP info{};
        bitmap.GetBitmap(&info);
        width = info.bmWidth;
        height = info.bmHeight;
        Select(bitmap);
    }
    ~SlideCanvas() { dc.SelectObject(m_old); }

    COLORREF At(int x, int y) const { return dc.GetPixel(x, y); }
    int Count(COLORREF colour, const CRect& rect) const
    {
        int n = 0;
        for (int y = rect.top; y < rect.bottom; ++y)
            for (int x = rect.left; x < rect.right; ++x)
                n += At(x, y) == colour ? 1 : 0;
        return n;
    }
    void Expect(const std::vector<Probe>& probes, const std::string& what) const
    {
        for (std::size_t i = 0; i < probes.size(); ++i) {
            const int n = Count(probes[i].colour, probes[i].rect);
            EXPECT_TRUE(n >= probes[i].min && n <= probes[i].max) << what << ", probe " << i << ": " << n << " pixels";
        }
    }

    CDC dc;
    int width = 0, height = 0;

private:
    void Select(CBitmap& bitmap)
    {
        dc.CreateCompatibleDC(nullptr);
        m_old = dc.SelectObject(bitmap.m_hObject);
    }

    CBitmap m_bitmap;
    HGDIOBJ m_old = nullptr;
};

}  // namespace qmtest
