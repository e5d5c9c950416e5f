// Gdi.cpp - handle ownership of the drawing objects and the context.
#include "platform/Gdi.h"

#include <algorithm>
#include <map>
#include <memory>

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

namespace {

// Non-owning wrappers for handles owned elsewhere, one per handle value and
// kind, kept for the life of the process (the handles are few: fonts of
// windows, stock objects, the one-pixel bitmap of a new memory context).
template <class T, class H>
T* WrapperFor(H handle)
{
    struct Unowned
    {
        void operator()(T* object) const
        {
            object->Detach();
            delete object;
        }
    };
    static std::map<H, std::unique_ptr<T, Unowned>> wrappers;
    if (handle == nullptr)
        return nullptr;
    auto& slot = wrappers[handle];
    if (!slot)
    {
        slot.reset(new T);
        slot->Attach(handle);
    }
    return slot.get();
}

} // namespace

CPen* CPen::FromHandle(HPEN pen)
{
    return WrapperFor<CPen>(pen);
}

CBrush* CBrush::FromHandle(HBRUSH brush)
{
    return WrapperFor<CBrush>(brush);
}

CBitmap* CBitmap::FromHandle(HBITMAP bitmap)
{
    return WrapperFor<CBitmap>(bitmap);
}

CFont* CFont::FromHandle(HFONT font)
{
    return WrapperFor<CFont>(font);
}

BOOL CFont::CreateFont(int height, int width, int escapement, int orientation, int weight, BYTE italic,
                       BYTE underline, BYTE strikeOut, BYTE charSet, BYTE outPrecision, BYTE clipPrecision,
                       BYTE quality, BYTE pitchAndFamily, const wchar_t* face)
{
    return Attach(::CreateFontW(height, width, escapement, orientation, weight, italic, underline, strikeOut,
                                charSet, outPrecision, clipPrecision, quality, pitchAndFamily, face));
}

// Points to logical units as MFC does: through the context's mapping, so a
// 90 on a 96-dpi screen gives a 12-pixel character height.
BOOL CFont::CreatePointFont(int pointSize, const wchar_t* face, CDC* dc)
{
    HDC measure = dc != nullptr ? dc->GetSafeHdc() : ::GetDC(nullptr);
    LOGFONTW font{};
    font.lfCharSet = DEFAULT_CHARSET;
    font.lfHeight = -::MulDiv(pointSize, ::GetDeviceCaps(measure, LOGPIXELSY), 720);
    if (face != nullptr)
        ::lstrcpynW(font.lfFaceName, face, LF_FACESIZE);
    if (dc == nullptr)
        ::ReleaseDC(nullptr, measure);
    return CreateFontIndirect(&font);
}

CFont* CDC::SelectObject(CFont* font)
{
    return CFont::FromHandle(static_cast<HFONT>(::SelectObject(m_hDC, font ? font->m_hObject : nullptr)));
}

CPen* CDC::SelectObject(CPen* pen)
{
    return CPen::FromHandle(static_cast<HPEN>(::SelectObject(m_hDC, pen ? pen->m_hObject : nullptr)));
}

CBrush* CDC::SelectObject(CBrush* brush)
{
    return CBrush::FromHandle(static_cast<HBRUSH>(::SelectObject(m_hDC, brush ? brush->m_hObject : nullptr)));
}

CBitmap* CDC::SelectObject(CBitmap* bitmap)
{
    return CBitmap::FromHandle(static_cast<HBITMAP>(::SelectObject(m_hDC, bitmap ? bitmap->m_hObject : nullptr)));
}

void CDC::FillSolidRect(LPCRECT rect, COLORREF colour)
{
    const COLORREF old = ::SetBkColor(m_hDC, colour);
    ::ExtTextOutW(m_hDC, 0, 0, ETO_OPAQUE, rect, nullptr, 0, nullptr);
    ::SetBkColor(m_hDC, old);
}

void CDC::FillSolidRect(int x, int y, int cx, int cy, COLORREF colour)
{
    const RECT rect{x, y, x + cx, y + cy};
    FillSolidRect(&rect, colour);
}

CPoint CDC::MoveTo(int x, int y)
{
    POINT old{};
    ::MoveToEx(m_hDC, x, y, &old);
    return old;
}

BOOL CDC::DrawState(CPoint p, CSize size, HICON icon, UINT flags, HBRUSH brush)
{
    return ::DrawStateW(m_hDC, brush, nullptr, reinterpret_cast<LPARAM>(icon), 0, p.x, p.y, size.cx, size.cy,
                        flags | DST_ICON);
}

BOOL CDC::DrawState(CPoint p, CSize size, HBITMAP bitmap, UINT flags, HBRUSH brush)
{
    return ::DrawStateW(m_hDC, brush, nullptr, reinterpret_cast<LPARAM>(bitmap), 0, p.x, p.y, size.cx, size.cy,
                        flags | DST_BITMAP);
}

int CDC::DrawText(const CString& text, LPRECT rect, UINT format)
{
    return ::DrawTextW(m_hDC, text, text.GetLength(), rect, format);
}

CSize CDC::GetTextExtent(const wchar_t* text, int count) const
{
    SIZE size{};
    ::GetTextExtentPoint32W(m_hDC, text, count, &size);
    return size;
}

CSize CDC::GetTextExtent(const CString& text) const
{
    return GetTextExtent(text, text.GetLength());
}
