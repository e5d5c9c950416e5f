// Gdi.cpp - handle ownership of the drawing objects and the context.
#include "platform/Gdi.h"

#include <algorithm>

CGdiObject::~CGdiObject()
{
    DeleteObject();
}

BOOL CGdiObject::Attach(HGDIOBJ object)
{
    if (m_hObject != nullptr || object == nullptr)
        return FALSE;
    m_hObject = object;
    return TRUE;
}

HGDIOBJ CGdiObject::Detach()
{
    HGDIOBJ object = m_hObject;
    m_hObject = nullptr;
    return object;
}

BOOL CGdiObject::DeleteObject()
{
    if (m_hObject == nullptr)
        return FALSE;
    return ::DeleteObject(Detach());
}

CPen::CPen(int style, int width, COLORREF colour)
{
    CreatePen(style, width, colour);
}

BOOL CPen::CreatePen(int style, int width, COLORREF colour)
{
    return Attach(::CreatePen(style, width, colour));
}

CBrush::CBrush(COLORREF colour)
{
    CreateSolidBrush(colour);
}

BOOL CBrush::CreateSolidBrush(COLORREF colour)
{
    return Attach(::CreateSolidBrush(colour));
}

BOOL CBitmap::CreateCompatibleBitmap(HDC dc, int width, int height)
{
    return Attach(::CreateCompatibleBitmap(dc, width, height));
}

int CBitmap::GetBitmap(BITMAP* info) const
{
    return ::GetObjectW(m_hObject, sizeof(BITMAP), info);
}

BOOL CRgn::CreatePolygonRgn(const POINT* points, int count, int fillMode)
{
    return Attach(::CreatePolygonRgn(points, count, fillMode));
}

int CRgn::GetRgnBox(LPRECT rect) const
{
    return m_hObject == nullptr ? ERROR : ::GetRgnBox(static_cast<HRGN>(m_hObject), rect);
}

CDC::~CDC()
{
    DeleteDC();
}

BOOL CDC::Attach(HDC dc)
{
    if (m_hDC != nullptr || dc == nullptr)
        return FALSE;
    m_hDC = dc;
    return TRUE;
}

HDC CDC::Detach()
{
    HDC dc = m_hDC;
    m_hDC = nullptr;
    return dc;
}

BOOL CDC::CreateCompatibleDC(CDC* reference)
{
    return Attach(::CreateCompatibleDC(reference == nullptr ? nullptr : reference->m_hDC));
}

BOOL CDC::DeleteDC()
{
    if (m_hDC == nullptr)
        return FALSE;
    return ::DeleteDC(Detach());
}

// Two one-pixel bars per colour, as MFC draws it, so that nothing but the
// outline is touched.
void CDC::Draw3dRect(LPCRECT rect, COLORREF topLeft, COLORREF bottomRight)
{
    const int x = rect->left, y = rect->top, cx = rect->right - rect->left, cy = rect->bottom - rect->top;
    const COLORREF oldBk = ::GetBkColor(m_hDC);
    auto bar = [this](int l, int t, int w, int h, COLORREF colour) {
        ::SetBkColor(m_hDC, colour);
        RECT rc{std::min(l, l + w), std::min(t, t + h), std::max(l, l + w), std::max(t, t + h)};
        ::ExtTextOutW(m_hDC, 0, 0, ETO_OPAQUE, &rc, nullptr, 0, nullptr);
    };
    bar(x, y, cx - 1, 1, topLeft);
    bar(x, y, 1, cy - 1, topLeft);
    bar(x + cx, y, -1, cy, bottomRight);
    bar(x, y + cy, cx, -1, bottomRight);
    ::SetBkColor(m_hDC, oldBk);
}
