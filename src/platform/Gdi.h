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
#pragma once
#include "QMExport.h"
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
};

class QM_API CBrush : public CGdiObject
{
public:
    CBrush() = default;
    explicit CBrush(COLORREF colour);
    BOOL CreateSolidBrush(COLORREF colour);
    operator HBRUSH() const { return static_cast<HBRUSH>(m_hObject); }
};

class QM_API CBitmap : public CGdiObject
{
public:
    BOOL CreateCompatibleBitmap(HDC dc, int width, int height);
    // Fills `info` with the bitmap's size and format; 0 on failure.
    int GetBitmap(BITMAP* info) const;
    operator HBITMAP() const { return static_cast<HBITMAP>(m_hObject); }
};

class QM_API CRgn : public CGdiObject
{
public:
    BOOL CreatePolygonRgn(const POINT* points, int count, int fillMode);
    // The bounding box; returns NULLREGION, SIMPLEREGION, COMPLEXREGION or
    // ERROR (also for an empty object).
    int GetRgnBox(LPRECT rect) const;
    operator HRGN() const { return static_cast<HRGN>(m_hObject); }
};

class QM_API CDC
{
public:
    CDC() = default;
    ~CDC();
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

    HDC m_hDC = nullptr;
};
