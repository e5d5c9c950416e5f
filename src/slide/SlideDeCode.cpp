// SlideDeCode.cpp - the GDI side of slide drawing: placement, background,
// edge, and the pens, brushes and regions that paint the decoded events.
#include "slide/SlideDeCode.h"

#include "cad/CadColor.h"
#include "frame/Messages.h"
#include "slide/SlideDecoder.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstddef>
#include <memory>
#include <new>
#include <vector>

namespace QM {
namespace {

const wchar_t kAllocFailed[] = L"分配内存失败";

// Double to int, truncating toward zero as the drawing code always has, but
// saturating instead of overflowing for absurd scales.
int TruncToInt(double value)
{
    if (value > -2147483649.0 && value < 2147483648.0)
        return static_cast<int>(value);
    return std::isnan(value) ? 0 : value > 0 ? INT_MAX : INT_MIN;
}

int ClampToInt(long long value)
{
    return value > INT_MAX ? INT_MAX : value < INT_MIN ? INT_MIN : static_cast<int>(value);
}

void ShowAllocFailed()
{
    ShowMessage(nullptr, kAllocFailed, L"X");
}

// The test-stage report of a fill that GDI refused; decoding goes on.
void ReportFillFailure(int line, const wchar_t* call)
{
    CString lineText, text;
    lineText.Format(L"%d", line);
    text.Format(L"%s 的 %s 的 %s 失败", L"SlideDeCode", lineText.GetString(), call);
    ::MessageBoxW(nullptr, text, L"现在是测试阶段 2002.1.21", MB_OK);
}

// The whole file, opened without creating it and shared with everyone.
// Returns 0, -2 (cannot open) or -1 (no size: not a disk file). A buffer
// that cannot be had is reported and leaves `data` empty.
int ReadSlideFile(const wchar_t* path, std::unique_ptr<unsigned char[]>& data, size_t& size)
{
    HANDLE file = ::CreateFileW(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return -2;
    LARGE_INTEGER length{};
    if (::GetFileType(file) != FILE_TYPE_DISK || !::GetFileSizeEx(file, &length)) {
        ::CloseHandle(file);
        return -1;
    }
    size = 0;
    const unsigned long long wanted = static_cast<unsigned long long>(length.QuadPart);
    if (wanted < SIZE_MAX)
        data.reset(new (std::nothrow) unsigned char[static_cast<size_t>(wanted) + 1]);
    if (!data) {
        ShowAllocFailed();
    } else {
        DWORD got = 0;
        while (size < wanted && ::ReadFile(file, data.get() + size, static_cast<DWORD>(std::min<unsigned long long>(wanted - size, 1u << 30)), &got, nullptr) && got > 0)
            size += got;
    }
    ::CloseHandle(file);
    return 0;
}

// Where the slide lands: scales, origin, and the centring offsets that the
// background rectangle reuses.
struct Placement
{
    int left = 0, top = 0, w = 0, h = 0;
    double sx = 0, sy = 0;
    int x0 = 0, y0 = 0, cx = 0, cy = 0;
    bool drawable = false;
};

Placement Place(const slideStruct& s, const SlideHeader* header)
{
    Placement p;
    const UINT flags = s.nFlags;
    const int shrink = (flags & SLD_SHRINK) ? 1 : 0;
    p.left = (flags & SLD_LEFT) ? s.nLeft : 0;
    p.top = (flags & SLD_TOP) ? s.nTop : 0;
    p.w = ClampToInt(static_cast<long long>(s.nRight) - p.left - shrink);
    p.h = ClampToInt(static_cast<long long>(s.nBottom) - p.top - shrink);
    p.x0 = p.left;
    p.y0 = p.top;
    // Left and top are margins on both sides: right and bottom stay the
    // outer size, so the area is W - left wide, not W.
    const double areaW = static_cast<double>(p.w) - p.left, areaH = static_cast<double>(p.h) - p.top;
    if (header == nullptr || header->highX == 0 || header->highY == 0)
        return p;
    p.drawable = true;
    p.sx = areaW / header->highX;
    p.sy = areaH / header->highY;
    if (flags & SLD_STRETCH)
        return p;
    if (p.sx > p.sy) {
        p.sx = p.sy;
        p.cx = TruncToInt((areaW - header->highX * p.sy) * 0.5);
        p.x0 = ClampToInt(static_cast<long long>(p.left) + p.cx);
    } else {
        p.sy = p.sx;
        p.cy = TruncToInt((areaH - header->highY * p.sx) * 0.5);
        p.y0 = ClampToInt(static_cast<long long>(p.top) - p.cy);
    }
    return p;
}

// The unstretched background is shifted by half the centring offsets, left
// by cx/2 and down by cy/2, rather than centred on the slide. Previews in
// the suite's dialogs were laid out against exactly this rectangle.
void PaintBackground(CDC& dc, const Placement& p, UINT flags, COLORREF colour)
{
    if (flags & SLD_NOBACK)
        return;
    CRect rect(p.left, p.top, p.w, p.h);
    if (!(flags & SLD_FILLALL))
        rect.SetRect(p.left - p.cx / 2, p.top + p.cy / 2, p.w - p.cx / 2, p.h - p.cy / 2);
    CBrush brush(colour);
    dc.FillRect(rect, &brush);
}

// Paints the decoder's events: vectors with the current pen, fills with the
// current brush, both following the slide's colour changes.
class SlidePainter : public SlideSink
{
public:
    SlidePainter(CDC& dc, const Placement& p, int base);
    ~SlidePainter() override;

    // Straight to GDI with the context's handle and without asking for the
    // previous position: this runs once per vector and dominates the time.
    void OnVector(SlidePoint from, SlidePoint to) override
    {
        ::MoveToEx(m_hdc, MapX(from.x), MapY(from.y), nullptr);
        ::LineTo(m_hdc, MapX(to.x), MapY(to.y));
    }
    void OnColour(int index) override;
    void OnFill(const SlidePoint* vertices, std::size_t count) override;

private:
    int MapX(int x) const { return ClampToInt(static_cast<long long>(TruncToInt(x * m_p.sx)) + m_p.x0); }
    int MapY(int y) const { return ClampToInt(m_baseY - TruncToInt(y * m_p.sy)); }
    void DeleteSelectedPen(HGDIOBJ pen);

    CDC& m_dc;
    const HDC m_hdc;
    const Placement& m_p;
    long long m_baseY;
    CPen m_initialPen;
    std::unique_ptr<CPen> m_colourPen;
    CBrush m_fillBrush;
    std::vector<POINT> m_points;
};

SlidePainter::SlidePainter(CDC& dc, const Placement& p, int base)
    : m_dc(dc), m_hdc(dc.m_hDC), m_p(p), m_baseY(static_cast<long long>(p.y0) + base)
{
    if (!m_initialPen.CreatePen(PS_SOLID, 1, RGB(255, 255, 255)))
        ShowAllocFailed();
    else
        m_dc.SelectObject(m_initialPen.m_hObject);
    if (!m_fillBrush.CreateSolidBrush(RGB(255, 255, 255)))
        ShowAllocFailed();
}

// The stock pen goes back in so that every pen made here is really freed;
// the caller's own pen was never kept for restoring.
SlidePainter::~SlidePainter()
{
    m_dc.SelectObject(::GetStockObject(BLACK_PEN));
}

// Only pens made here are deleted: if the white pen could not be made, the
// pen coming out of the context is the caller's and stays alive.
void SlidePainter::DeleteSelectedPen(HGDIOBJ pen)
{
    if (pen != nullptr && pen == m_initialPen.m_hObject)
        m_initialPen.DeleteObject();
    else if (pen != nullptr && m_colourPen && pen == m_colourPen->m_hObject)
        m_colourPen->DeleteObject();
}

void SlidePainter::OnColour(int index)
{
    const COLORREF colour = CADColorIndexToRGB(index);
    std::unique_ptr<CPen> pen(new (std::nothrow) CPen);
    if (!pen || !pen->CreatePen(PS_SOLID, 1, colour)) {
        ShowAllocFailed();
    } else {
        DeleteSelectedPen(m_dc.SelectObject(pen->m_hObject));
        m_colourPen = std::move(pen);
    }
    m_fillBrush.DeleteObject();
    if (!m_fillBrush.CreateSolidBrush(colour))
        ShowAllocFailed();
}

void SlidePainter::OnFill(const SlidePoint* vertices, std::size_t count)
{
    try {
        m_points.resize(count);
    } catch (const std::bad_alloc&) {
        ShowAllocFailed();
        return;
    }
    for (std::size_t i = 0; i < count; ++i)
        m_points[i] = POINT{MapX(vertices[i].x), MapY(vertices[i].y)};
    CRgn region;
    if (!region.CreatePolygonRgn(m_points.data(), ClampToInt(static_cast<long long>(count)), ALTERNATE))
        ReportFillFailure(332, L"rgn.CreatePolygonRgn(pt,nTriangleVertexs,ALTERNATE)");
    CRect box;
    const int kind = region.GetRgnBox(box);
    if (kind == ERROR || kind == NULLREGION)
        return;
    if (!m_dc.FillRgn(&region, &m_fillBrush))
        ReportFillFailure(346, L"pDC->FillRgn(&rgn,pBrush)");
}

// The sunken edge adjusts its rectangle inward by two pixels on every side,
// and the vertical base is taken from the adjusted rectangle: with the edge
// the drawing sits four pixels higher. Callers' layouts expect that.
int DrawEdgeAndBase(CDC& dc, const Placement& p, UINT flags)
{
    CRect rect(p.left, p.top, p.w, p.h);
    if (flags & SLD_SUNKEN)
        dc.DrawEdge(rect, EDGE_SUNKEN, BF_RECT | BF_ADJUST);
    return ClampToInt(static_cast<long long>(rect.bottom) - rect.top);
}

}  // namespace

int SldBlt(slideStruct* s)
{
    if (s == nullptr || s->pDC == nullptr || s->pDC->m_hDC == nullptr || s->lpszFileName == nullptr)
        return -2;
    std::unique_ptr<unsigned char[]> data;
    size_t size = 0;
    const int rc = ReadSlideFile(s->lpszFileName, data, size);
    if (rc != 0)
        return rc;
    SlideHeader header{};
    const bool hasHeader = ReadSlideHeader(data.get(), size, header);
    const Placement p = Place(*s, hasHeader ? &header : nullptr);
    CDC& dc = *s->pDC;
    PaintBackground(dc, p, s->nFlags, (s->nFlags & SLD_BKCOLOR) ? s->crBackground : RGB(0, 0, 0));
    const int base = DrawEdgeAndBase(dc, p, s->nFlags);
    SlidePainter painter(dc, p, base);
    if (p.drawable)
        DecodeSlide(data.get(), size, painter);
    return 0;
}

namespace {

// The Ex record with the defaults of every optional member applied.
slideExStruct WithDefaults(const slideExStruct& in)
{
    slideExStruct s = in;
    const UINT f = in.nFlags;
    if (!(f & SLD_PENSTYLE))
        s.nFramePenStyle = PS_SOLID;
    if (!(f & SLD_PENWIDTH))
        s.nFramePenWidth = 3;
    if (!(f & SLD_PENCOLOR))
        s.crFramePen = RGB(255, 0, 0);
    if (!(f & SLD_CAPTION1))
        s.lpszCaption1 = nullptr;
    if (!(f & SLD_CAPTION1COLOR))
        s.crCaption1 = RGB(255, 0, 0);
    if (!(f & SLD_CAPTIONGAP))
        s.nCaptionGap = 8;
    if (!(f & SLD_CAPTION2))
        s.lpszCaption2 = nullptr;
    if (!(f & SLD_CAPTION2COLOR))
        s.crCaption2 = RGB(0, 0, 255);
    if ((f & SLD_FRAME) && (f & SLD_SWAPCAPTIONCOLORS))
        std::swap(s.crCaption1, s.crCaption2);
    return s;
}

// The frame outline one pixel in from the border, then the 3-D rectangle
// just inside the pen, its dark side top left. The slide's margins become
// the pen width.
void DrawFrame(CDC& dc, const slideExStruct& s, slideStruct& inner)
{
    const int w = s.nWidth, h = s.nHeight, pw = s.nFramePenWidth;
    CPen pen(s.nFramePenStyle, pw, s.crFramePen);
    const HGDIOBJ oldPen = dc.SelectObject(pen.m_hObject);
    const POINT outline[5] = {{1, 1}, {w - 2, 1}, {w - 2, h - 2}, {1, h - 2}, {1, 1}};
    dc.Polyline(outline, 5);
    dc.SelectObject(oldPen);
    inner.nLeft = inner.nTop = pw;
    inner.nFlags |= SLD_LEFT | SLD_TOP;
    const CRect rect(pw, pw, w - pw, h - pw);
    dc.Draw3dRect(rect, ::GetSysColor(COLOR_3DDKSHADOW), ::GetSysColor(COLOR_BTNHIGHLIGHT));
}

// Caption 1 sits on the centre's baseline, caption 2 hangs from a line the
// caption gap below it.
void DrawCaptions(CDC& dc, const slideExStruct& s, const CRect& box)
{
    dc.SetBkMode(TRANSPARENT);
    const int x = box.Width() / 2, y = box.Height() / 2;
    if (s.lpszCaption1 != nullptr) {
        dc.SetTextAlign(TA_CENTER | TA_BASELINE);
        dc.SetTextColor(s.crCaption1);
        dc.TextOut(x, y, s.lpszCaption1, static_cast<int>(wcslen(s.lpszCaption1)));
    }
    if (s.lpszCaption2 != nullptr) {
        dc.SetTextAlign(TA_CENTER | TA_TOP);
        dc.SetTextColor(s.crCaption2);
        dc.TextOut(x, y + s.nCaptionGap, s.lpszCaption2, static_cast<int>(wcslen(s.lpszCaption2)));
    }
}

// Background, frame, captions, then the slide, into `bitmap` through `memory`.
void DrawPreview(CDC& memory, CBitmap& bitmap, const slideExStruct& s)
{
    const HGDIOBJ oldBitmap = memory.SelectObject(bitmap.m_hObject);
    memory.FillRect(CRect(0, 0, s.nWidth, s.nHeight), s.pBkBrush);
    slideStruct inner{0, &memory, s.nLeftMargin, s.nTopMargin, s.nWidth, s.nHeight, s.lpszFileName, s.crSlideBack, s.nFlags};
    const bool framed = (s.nFlags & SLD_FRAME) != 0;
    if (framed)
        DrawFrame(memory, s, inner);
    DrawCaptions(memory, s, framed ? CRect(1, 1, s.nWidth - 2, s.nHeight - 2) : CRect(0, 0, s.nWidth, s.nHeight));
    SldBlt(&inner);
    memory.SelectObject(oldBitmap);
}

}  // namespace

CBitmap* SldBltEx(slideExStruct* in)
{
    if (in == nullptr)
        return nullptr;
    std::unique_ptr<CBitmap> bitmap(new (std::nothrow) CBitmap);
    if (bitmap == nullptr)
        return nullptr;
    const slideExStruct s = WithDefaults(*in);
    // One screen context serves for both the memory context and the bitmap,
    // and it is released on every path. A bitmap the platform cannot make
    // leaves the object without a handle; the caller still owns an object.
    const HWND desktop = ::GetDesktopWindow();
    const HDC screen = ::GetWindowDC(desktop);
    CDC memory;
    if (memory.Attach(::CreateCompatibleDC(screen)) && bitmap->CreateCompatibleBitmap(screen, s.nWidth, s.nHeight))
        DrawPreview(memory, *bitmap, s);
    ::ReleaseDC(desktop, screen);
    return bitmap.release();
}

}  // namespace QM

// Older applications fill these records by position; a changed offset would
// shift every member after it without a compile error on their side.
static_assert(offsetof(QM::slideStruct, nLeft) == 2 * sizeof(void*), "slideStruct layout");
static_assert(offsetof(QM::slideStruct, lpszFileName) == 2 * sizeof(void*) + 16, "slideStruct layout");
static_assert(offsetof(QM::slideStruct, nFlags) == 3 * sizeof(void*) + 20, "slideStruct layout");
static_assert(offsetof(QM::slideExStruct, lpszFileName) == 2 * sizeof(void*) + 8, "slideExStruct layout");
static_assert(offsetof(QM::slideExStruct, lpszCaption1) == 3 * sizeof(void*) + 32, "slideExStruct layout");
static_assert(offsetof(QM::slideExStruct, lpszCaption2) == 4 * sizeof(void*) + 40, "slideExStruct layout");
static_assert(offsetof(QM::slideExStruct, nFlags) == 5 * sizeof(void*) + 44, "slideExStruct layout");
