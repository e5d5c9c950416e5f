// Gdi.h - MFC's drawing objects and device context, each owning its handle.
//
//   CDC dc;
//   dc.CreateCompatibleDC(nullptr);
//   CBitmap bitmap;
//   bitmap.CreateCompatibleBitmap(screen, 64, 64);
//   HGDIOBJ old = dc.SelectObject(bitmap.GetSafeHandle());
//   CBrush red(RGB(255, 0, 0));
//   dc.FillRect(CRect(0, 0, 64, 64), &red);
//   dc.SelectObject(old);   // destructors delete the brush, bitmap and context
//
// As in MFC, a drawing object deletes its handle when it is destroyed (never
// destroy one that is still selected into a context), Detach() hands the
// handle over, and a CDC deletes a context it created. Creation members
// return false (BOOL 0) on failure and leave the object empty.
//
// FromHandle() wraps a handle owned elsewhere (the font a window uses, the
// object a SelectObject() displaced) in an object that never deletes it; such
// wrappers live as long as the process, one per handle value.
#pragma once
#include "QMExport.h"
#include "platform/CString.h"
#include "platform/Geometry.h"

class QM_API CGdiObject
{
public:
    CGdiObject() = default;
    virtual ~CGdiObject();
    CGdiObject(const CGdiObject&) = delete;
    CGdiObject& operator=(const CGdiObject&) = delete;

    HGDIOBJ GetSafeHandle() const { return m_hObject; }
    operator HGDIOBJ() const { return m_hObject; }
    // Takes ownership of `object`; false when this one already holds a
    // handle or `object` is null.
    BOOL Attach(HGDIOBJ object);
    HGDIOBJ Detach();
    // Deletes the handle now; false when there was none or GDI refused.
    BOOL DeleteObject();
    // Size of the object's description (LOGFONTW, LOGPEN, BITMAP...).
    int GetObject(int size, void* buffer) const { return ::GetObjectW(m_hObject, size, buffer); }
    // Wraps a stock object (DEFAULT_GUI_FONT, WHITE_BRUSH...); stock
    // objects survive DeleteObject, so owning one is harmless.
    BOOL CreateStockObject(int index) { return Attach(::GetStockObject(index)); }

    HGDIOBJ m_hObject = nullptr;
};

class QM_API CPen : public CGdiObject
{
public:
    CPen() = default;
    // Creates at once; the object stays empty if GDI fails.
    CPen(int style, int width, COLORREF colour);
    BOOL CreatePen(int style, int width, COLORREF colour);
    operator HPEN() const { return static_cast<HPEN>(m_hObject); }
    static CPen* FromHandle(HPEN pen);
};

class QM_API CBrush : public CGdiObject
{
public:
    CBrush() = default;
    explicit CBrush(COLORREF colour);
    BOOL CreateSolidBrush(COLORREF colour);
    BOOL CreateSysColorBrush(int index) { return Attach(::GetSysColorBrush(index)); }
    operator HBRUSH() const { return static_cast<HBRUSH>(m_hObject); }
    static CBrush* FromHandle(HBRUSH brush);
};

class QM_API CBitmap : public CGdiObject
{
public:
    BOOL CreateCompatibleBitmap(HDC dc, int width, int height);
    // Fills `info` with the bitmap's size and format; 0 on failure.
    int GetBitmap(BITMAP* info) const;
    operator HBITMAP() const { return static_cast<HBITMAP>(m_hObject); }
    static CBitmap* FromHandle(HBITMAP bitmap);
};

// A font, as MFC's CFont: CreatePointFont(90, L"宋体") gives a 9-point font.
class QM_API CFont : public CGdiObject
{
public:
    BOOL CreateFontIndirect(const LOGFONTW* font) { return Attach(::CreateFontIndirectW(font)); }
    BOOL CreateFont(int height, int width, int escapement, int orientation, int weight, BYTE italic,
                    BYTE underline, BYTE strikeOut, BYTE charSet, BYTE outPrecision, BYTE clipPrecision,
                    BYTE quality, BYTE pitchAndFamily, const wchar_t* face);
    // `pointSize` in tenths of a point, measured on `dc` (the screen when null).
    BOOL CreatePointFont(int pointSize, const wchar_t* face, class CDC* dc = nullptr);
    int GetLogFont(LOGFONTW* font) const { return GetObject(sizeof(LOGFONTW), font); }
    operator HFONT() const { return static_cast<HFONT>(m_hObject); }
    static CFont* FromHandle(HFONT font);
};

class QM_API CRgn : public CGdiObject
{
public:
    BOOL CreatePolygonRgn(const POINT* points, int count, int fillMode);
    BOOL CreateRectRgn(int l, int t, int r, int b) { return Attach(::CreateRectRgn(l, t, r, b)); }
    // This region becomes `a` combined with `b` (RGN_OR...); both must exist,
    // and so must this one (create it first, e.g. as an empty rectangle).
    int CombineRgn(CRgn* a, CRgn* b, int mode)
    {
        return ::CombineRgn(static_cast<HRGN>(m_hObject), static_cast<HRGN>(*a), static_cast<HRGN>(*b), mode);
    }
    // The bounding box; returns NULLREGION, SIMPLEREGION, COMPLEXREGION or
    // ERROR (also for an empty object).
    int GetRgnBox(LPRECT rect) const;
    operator HRGN() const { return static_cast<HRGN>(m_hObject); }
};

class QM_API CDC
{
public:
    CDC() = default;
    virtual ~CDC();
    CDC(const CDC&) = delete;
    CDC& operator=(const CDC&) = delete;

    HDC GetSafeHdc() const { return m_hDC; }
    operator HDC() const { return m_hDC; }
    // Wraps a context owned elsewhere (a window's or the caller's); Detach()
    // it before the object is destroyed, or it is deleted with the object.
    BOOL Attach(HDC dc);
    HDC Detach();
    // A null `reference` makes the context compatible with the screen.
    BOOL CreateCompatibleDC(CDC* reference);
    BOOL DeleteDC();

    HGDIOBJ SelectObject(HGDIOBJ object) { return ::SelectObject(m_hDC, object); }
    // MFC's typed forms: the displaced object comes back as a non-owning
    // wrapper, ready to be selected again.
    CFont* SelectObject(CFont* font);
    CPen* SelectObject(CPen* pen);
    CBrush* SelectObject(CBrush* brush);
    CBitmap* SelectObject(CBitmap* bitmap);
    HGDIOBJ SelectStockObject(int index) { return ::SelectObject(m_hDC, ::GetStockObject(index)); }
    int SaveDC() { return ::SaveDC(m_hDC); }
    BOOL RestoreDC(int saved) { return ::RestoreDC(m_hDC, saved); }
    int GetDeviceCaps(int index) const { return ::GetDeviceCaps(m_hDC, index); }

    BOOL Polyline(const POINT* points, int count) { return ::Polyline(m_hDC, points, count); }
    // A null brush paints nothing, as FillRect with a null handle does.
    void FillRect(LPCRECT rect, CBrush* brush)
    {
        ::FillRect(m_hDC, rect, brush == nullptr ? nullptr : static_cast<HBRUSH>(brush->m_hObject));
    }
    BOOL FillRgn(CRgn* region, CBrush* brush)
    {
        return ::FillRgn(m_hDC, static_cast<HRGN>(region->GetSafeHandle()), static_cast<HBRUSH>(brush->GetSafeHandle()));
    }
    BOOL DrawEdge(LPRECT rect, UINT edge, UINT flags) { return ::DrawEdge(m_hDC, rect, edge, flags); }
    // The outline of `rect` in two colours, one pixel wide: top and left in
    // `topLeft`, right and bottom in `bottomRight`.
    void Draw3dRect(LPCRECT rect, COLORREF topLeft, COLORREF bottomRight);
    int SetBkMode(int mode) { return ::SetBkMode(m_hDC, mode); }
    UINT SetTextAlign(UINT flags) { return ::SetTextAlign(m_hDC, flags); }
    COLORREF SetTextColor(COLORREF colour) { return ::SetTextColor(m_hDC, colour); }
    BOOL TextOut(int x, int y, const wchar_t* text, int count) { return ::TextOutW(m_hDC, x, y, text, count); }
    COLORREF GetPixel(int x, int y) const { return ::GetPixel(m_hDC, x, y); }
    COLORREF SetPixel(int x, int y, COLORREF colour) { return ::SetPixel(m_hDC, x, y, colour); }
    COLORREF SetBkColor(COLORREF colour) { return ::SetBkColor(m_hDC, colour); }
    COLORREF GetBkColor() const { return ::GetBkColor(m_hDC); }
    COLORREF GetTextColor() const { return ::GetTextColor(m_hDC); }
    int GetBkMode() const { return ::GetBkMode(m_hDC); }
    int SetROP2(int mode) { return ::SetROP2(m_hDC, mode); }

    // Fills with one colour and leaves the background colour as it was.
    void FillSolidRect(LPCRECT rect, COLORREF colour);
    void FillSolidRect(int x, int y, int cx, int cy, COLORREF colour);
    void FrameRect(LPCRECT rect, CBrush* brush) { ::FrameRect(m_hDC, rect, brush ? static_cast<HBRUSH>(*brush) : nullptr); }
    void InvertRect(LPCRECT rect) { ::InvertRect(m_hDC, rect); }
    void DrawFocusRect(LPCRECT rect) { ::DrawFocusRect(m_hDC, rect); }
    BOOL Rectangle(int l, int t, int r, int b) { return ::Rectangle(m_hDC, l, t, r, b); }
    BOOL Rectangle(LPCRECT rect) { return Rectangle(rect->left, rect->top, rect->right, rect->bottom); }
    BOOL Polygon(const POINT* points, int count) { return ::Polygon(m_hDC, points, count); }
    CPoint MoveTo(int x, int y);
    CPoint MoveTo(POINT p) { return MoveTo(p.x, p.y); }
    BOOL LineTo(int x, int y) { return ::LineTo(m_hDC, x, y); }
    BOOL LineTo(POINT p) { return LineTo(p.x, p.y); }
    BOOL PatBlt(int x, int y, int cx, int cy, DWORD rop) { return ::PatBlt(m_hDC, x, y, cx, cy, rop); }
    BOOL BitBlt(int x, int y, int cx, int cy, CDC* source, int xSrc, int ySrc, DWORD rop)
    {
        return ::BitBlt(m_hDC, x, y, cx, cy, source ? source->m_hDC : nullptr, xSrc, ySrc, rop);
    }
    BOOL DrawState(CPoint p, CSize size, HICON icon, UINT flags, HBRUSH brush = nullptr);
    BOOL DrawState(CPoint p, CSize size, HBITMAP bitmap, UINT flags, HBRUSH brush = nullptr);

    int DrawText(const wchar_t* text, int count, LPRECT rect, UINT format)
    {
        return ::DrawTextW(m_hDC, text, count, rect, format);
    }
    int DrawText(const CString& text, LPRECT rect, UINT format);
    CSize GetTextExtent(const wchar_t* text, int count) const;
    CSize GetTextExtent(const CString& text) const;
    BOOL GetTextMetrics(LPTEXTMETRICW metrics) const { return ::GetTextMetricsW(m_hDC, metrics); }

    int GetClipBox(LPRECT rect) const { return ::GetClipBox(m_hDC, rect); }
    int IntersectClipRect(LPCRECT rect) { return ::IntersectClipRect(m_hDC, rect->left, rect->top, rect->right, rect->bottom); }
    int ExcludeClipRect(LPCRECT rect) { return ::ExcludeClipRect(m_hDC, rect->left, rect->top, rect->right, rect->bottom); }
    int SelectClipRgn(CRgn* region) { return ::SelectClipRgn(m_hDC, region ? static_cast<HRGN>(*region) : nullptr); }

    HDC m_hDC = nullptr;
};
