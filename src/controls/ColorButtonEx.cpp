// ColorButtonEx.cpp - drawing, images and mouse tracking of CColorButtonEx.
#include "controls/ColorButtonEx.h"

#include "frame/Library.h"
#include "platform/win/DeviceContexts.h"

#include <algorithm>

IMPLEMENT_DYNAMIC(CColorButtonEx, CButton)

BEGIN_MESSAGE_MAP(CColorButtonEx, CButton)
    ON_WM_ERASEBKGND()
    ON_WM_CANCELMODE()
    ON_WM_MOUSEMOVE()
    ON_WM_LBUTTONDOWN()
    ON_WM_LBUTTONUP()
    ON_WM_ENABLE()
END_MESSAGE_MAP()

namespace {

constexpr UINT kTextFormat = DT_CENTER | DT_VCENTER | DT_SINGLELINE;  // 0x25
constexpr int kImageMargin = 5;
constexpr int kContentMargin = 10;
constexpr UINT kLoadFlags = LR_LOADTRANSPARENT | LR_LOADMAP3DCOLORS;  // 0x3000

} // namespace

CColorButtonEx::CColorButtonEx()
    : m_bkColor(::GetSysColor(COLOR_BTNFACE)), m_fallbackTextColor(::GetSysColor(COLOR_BTNTEXT))
{
}

CColorButtonEx::~CColorButtonEx()
{
    CleanUp();
}

void CColorButtonEx::SetImage(HICON normal, int ownsImages, HICON hot)
{
    CleanUp();
    m_icon = normal;
    m_hotIcon = hot;
    m_ownsImages = ownsImages;
    ICONINFO info{};
    if (normal == nullptr || !::GetIconInfo(normal, &info))
        return;
    BITMAP bm{};
    if (info.hbmColor != nullptr && ::GetObjectW(info.hbmColor, sizeof(bm), &bm) != 0)
        m_imageWidth = bm.bmWidth, m_imageHeight = bm.bmHeight;
    else if (info.hbmMask != nullptr && ::GetObjectW(info.hbmMask, sizeof(bm), &bm) != 0)
        m_imageWidth = bm.bmWidth, m_imageHeight = bm.bmHeight / 2;  // monochrome: AND over XOR
    if (info.hbmColor != nullptr)
        ::DeleteObject(info.hbmColor);
    if (info.hbmMask != nullptr)
        ::DeleteObject(info.hbmMask);
}

void CColorButtonEx::SetImage(HBITMAP normal, int ownsImages, HBITMAP hot)
{
    CleanUp();
    m_bitmap = normal;
    m_hotBitmap = hot;
    m_ownsImages = ownsImages;
    BITMAP bm{};
    if (normal != nullptr && ::GetObjectW(normal, sizeof(bm), &bm) != 0)
        m_imageWidth = bm.bmWidth, m_imageHeight = bm.bmHeight;
    CreateDisabledImage();
}

void CColorButtonEx::SetImage(UINT normalId, UINT hotId)
{
    CleanUp();
    if (normalId == 0)
        return;
    const HINSTANCE module = QM::LibraryHandle();
    auto load = [module](UINT id) {
        return static_cast<HBITMAP>(::LoadImageW(module, MAKEINTRESOURCEW(id), IMAGE_BITMAP, 0, 0, kLoadFlags));
    };
    const HBITMAP normal = load(normalId);
    const HBITMAP hot = hotId != 0 ? load(hotId) : nullptr;
    SetImage(normal, 1, hot);
}

void CColorButtonEx::CleanUp()
{
    if (m_ownsImages)
    {
        if (m_bitmap != nullptr)
            ::DeleteObject(m_bitmap);
        if (m_icon != nullptr)
            ::DestroyIcon(m_icon);
        if (m_hotBitmap != nullptr)
            ::DeleteObject(m_hotBitmap);
        if (m_hotIcon != nullptr)
            ::DestroyIcon(m_hotIcon);
    }
    if (m_disabledBitmap != nullptr)
        ::DeleteObject(m_disabledBitmap);
    m_bitmap = m_hotBitmap = m_disabledBitmap = nullptr;
    m_icon = m_hotIcon = nullptr;
    m_imageWidth = m_imageHeight = 0;
    m_ownsImages = 0;
}

// The copy is made in the normal bitmap's own format (a memory context that
// holds it is the reference), so GetPixel sees the colours as they are.
int CColorButtonEx::CreateDisabledImage()
{
    if (m_disabledBitmap != nullptr)
        ::DeleteObject(m_disabledBitmap);
    m_disabledBitmap = nullptr;
    if (m_bitmap == nullptr)
        return 0;
    CDC source, target;
    CBitmap copy;
    if (!source.CreateCompatibleDC(nullptr) || !target.CreateCompatibleDC(nullptr))
        return 0;
    const HGDIOBJ oldSource = source.SelectObject(m_bitmap);
    if (oldSource == nullptr || !copy.CreateCompatibleBitmap(source, m_imageWidth, m_imageHeight))
    {
        source.SelectObject(oldSource);
        return 0;
    }
    const HGDIOBJ oldTarget = target.SelectObject(copy.GetSafeHandle());
    target.BitBlt(0, 0, m_imageWidth, m_imageHeight, &source, 0, 0, SRCCOPY);
    const COLORREF face = ::GetSysColor(COLOR_BTNFACE);
    for (int x = 0; x < m_imageWidth; ++x)
        for (int y = 0; y < m_imageHeight; ++y)
            if (target.GetPixel(x, y) == face)
                target.SetPixel(x, y, RGB(255, 255, 255));
    target.SelectObject(oldTarget);
    source.SelectObject(oldSource);
    m_disabledBitmap = static_cast<HBITMAP>(copy.Detach());
    return 1;
}

void CColorButtonEx::SetBkColor(DWORD colour)
{
    m_bkColor = colour;
    Repaint();
}

void CColorButtonEx::SetTxtColor(DWORD colour)
{
    m_fallbackTextColor = colour;
    Repaint();
}

void CColorButtonEx::SetTextColor(DWORD colour)
{
    m_textColor = colour;
}

void CColorButtonEx::SetTextHotColor(DWORD colour)
{
    m_hotTextColor = colour;
}

void CColorButtonEx::SetTooltip(LPCWSTR text)
{
    if (text == nullptr)
    {
        if (m_toolTip.GetSafeHwnd() != nullptr)
            m_toolTip.Activate(FALSE);
        return;
    }
    if (m_toolTip.GetSafeHwnd() == nullptr)
    {
        if (!m_toolTip.Create(this, TTS_ALWAYSTIP))
            return;
        m_toolTip.AddTool(this, text);
    }
    else
        m_toolTip.UpdateTipText(text, this);
    m_toolTip.Activate(TRUE);
}

CSize CColorButtonEx::SizeToContent(int noResize)
{
    CClientDC dc(this);
    CFont* font = GetFont();
    CFont* oldFont = font != nullptr ? dc.SelectObject(font) : nullptr;
    CString text;
    GetWindowText(text);
    const CSize extent = dc.GetTextExtent(text);
    if (oldFont != nullptr)
        dc.SelectObject(oldFont);
    CSize size(m_imageWidth + kContentMargin, m_imageHeight + kContentMargin);
    if (m_displayMode == 1)
        size = CSize(extent.cx + kContentMargin, extent.cy + kContentMargin);
    else if (m_displayMode == 2)
        size = CSize(m_imageWidth + extent.cx + kContentMargin + (text.IsEmpty() ? 0 : kContentMargin),
                     std::max<int>(extent.cy, m_imageHeight) + kContentMargin);
    if (!noResize)
        SetWindowPos(nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    return size;
}

void CColorButtonEx::DrawItem(LPDRAWITEMSTRUCT item)
{
    CDC dc;
    dc.Attach(item->hDC);
    CRect rect = item->rcItem;
    dc.FillSolidRect(rect, m_bkColor);
    if (item->itemState & ODS_FOCUS)
        OnDrawFocusRect(&dc, rect);
    DrawBorder(&dc, rect, item->itemState);
    OnDraw(&dc, rect, item->itemState);
    dc.Detach();
}

// Leaves `rect` as the content's rectangle: inside the frame, and moved by
// the pressed offset while pressed.
void CColorButtonEx::DrawBorder(CDC* dc, CRect& rect, UINT itemState) const
{
    const COLORREF shadow = ::GetSysColor(COLOR_BTNSHADOW), dark = ::GetSysColor(COLOR_3DDKSHADOW);
    const COLORREF light = ::GetSysColor(COLOR_3DLIGHT), highlight = ::GetSysColor(COLOR_BTNHIGHLIGHT);
    if (m_borderStyle == 3)
        rect.DeflateRect(2, 2);
    else if ((m_pressed && m_hot) || (itemState & ODS_SELECTED))
    {
        dc->Draw3dRect(rect, dark, highlight);
        rect.DeflateRect(1, 1);
        if (m_borderStyle != 1)
            dc->Draw3dRect(rect, shadow, light);
        rect.DeflateRect(1, 1);
        rect.OffsetRect(m_pressedOffsetX, m_pressedOffsetY);
    }
    else if (m_borderStyle == 1 && !m_hot)
        rect.DeflateRect(2, 2);
    else
    {
        dc->Draw3dRect(rect, highlight, dark);
        rect.DeflateRect(1, 1);
        if (m_borderStyle == 0 || (m_borderStyle == 2 && m_hot))
            dc->Draw3dRect(rect, light, shadow);
        rect.DeflateRect(1, 1);
    }
}

CRect CColorButtonEx::ImageRect(const CRect& rect, bool withText) const
{
    if (m_displayMode == 1 || (m_icon == nullptr && m_bitmap == nullptr))
        return CRect();
    int x = rect.left + (rect.Width() - m_imageWidth) / 2;
    if (withText)
        x = m_imageOnRight ? rect.right - kImageMargin - m_imageWidth : rect.left + kImageMargin;
    const int y = rect.top + (rect.Height() - m_imageHeight) / 2;
    return CRect(x, y, x + m_imageWidth, y + m_imageHeight);
}

void CColorButtonEx::OnDraw(CDC* dc, const CRect& rect, UINT itemState)
{
    CString text;
    GetWindowText(text);
    const bool showText = m_displayMode != 0 && !text.IsEmpty();
    const CRect imageRect = ImageRect(rect, showText);
    if (showText)
    {
        CRect textRect = rect;
        if (!imageRect.IsRectEmpty() && m_imageOnRight)
            textRect.right = imageRect.left;
        else if (!imageRect.IsRectEmpty())
            textRect.left = imageRect.right;
        CFont* font = GetFont();
        CFont* oldFont = font != nullptr ? dc->SelectObject(font) : nullptr;
        dc->SetBkMode(TRANSPARENT);
        if (itemState & ODS_DISABLED)
        {
            CRect raised = textRect;
            raised.OffsetRect(1, 1);
            dc->SetTextColor(::GetSysColor(COLOR_BTNHIGHLIGHT));
            dc->DrawText(text, raised, kTextFormat);
            dc->SetTextColor(::GetSysColor(COLOR_GRAYTEXT));
        }
        else if (m_hot && m_hotTextColor != kNoColor)
            dc->SetTextColor(m_hotTextColor);
        else
            dc->SetTextColor(m_textColor != kNoColor ? m_textColor : m_fallbackTextColor);
        dc->DrawText(text, textRect, kTextFormat);
        if (oldFont != nullptr)
            dc->SelectObject(oldFont);
    }
    if (m_displayMode != 1 && !imageRect.IsRectEmpty())
        DrawImage(dc, imageRect, itemState);
}

void CColorButtonEx::DrawImage(CDC* dc, const CRect& imageRect, UINT itemState) const
{
    const bool disabled = (itemState & ODS_DISABLED) != 0;
    const UINT flags = disabled ? DSS_DISABLED : DSS_NORMAL;
    if (m_icon != nullptr)
    {
        const HICON icon = m_hot && m_hotIcon != nullptr ? m_hotIcon : m_icon;
        dc->DrawState(imageRect.TopLeft(), imageRect.Size(), icon, flags);
        return;
    }
    HBITMAP bitmap = m_hot && m_hotBitmap != nullptr ? m_hotBitmap : m_bitmap;
    if (disabled && m_disabledBitmap != nullptr)
        bitmap = m_disabledBitmap;
    dc->DrawState(imageRect.TopLeft(), imageRect.Size(), bitmap, flags);
}

void CColorButtonEx::OnDrawFocusRect(CDC* dc, const CRect& rect)
{
    CRect focus = rect;
    const int inset = m_borderStyle == 1 ? 2 : 3;
    focus.DeflateRect(inset, inset);
    dc->DrawFocusRect(focus);
}

BOOL CColorButtonEx::PreTranslateMessage(MSG* msg)
{
    if (m_toolTip.GetSafeHwnd() != nullptr &&
        (msg->message == WM_MOUSEMOVE || msg->message == WM_LBUTTONDOWN || msg->message == WM_LBUTTONUP))
        m_toolTip.RelayEvent(msg);
    return CButton::PreTranslateMessage(msg);
}

// Kept exactly so: bit 0 cleared, bits 0xA set; PreSubclassWindow, which
// follows creation, completes the owner-drawn type.
BOOL CColorButtonEx::PreCreateWindow(CREATESTRUCTW& cs)
{
    cs.style = (cs.style & ~0x1u) | 0xAu;
    return CButton::PreCreateWindow(cs);
}

void CColorButtonEx::PreSubclassWindow()
{
    ModifyStyle(BS_DEFPUSHBUTTON, BS_OWNERDRAW);
    CButton::PreSubclassWindow();
}

void CColorButtonEx::Repaint()
{
    Invalidate();
    UpdateWindow();
}

void CColorButtonEx::TakeCapture()
{
    SetCapture();
    m_captured = 1;
}

void CColorButtonEx::DropCapture()
{
    if (m_captured)
        ::ReleaseCapture();
    m_captured = 0;
}

void CColorButtonEx::OnMouseMove(UINT flags, CPoint point)
{
    m_mouseInside = 0;
    const bool leftDown = (flags & MK_LBUTTON) != 0;
    if (!leftDown && m_borderStyle == 0)
        return CButton::OnMouseMove(flags, point);
    CRect client;
    GetClientRect(client);
    bool changed = false;
    if (client.PtInRect(point))
    {
        m_mouseInside = 1;
        changed = !m_hot;
        m_hot = 1;
        if (leftDown && !m_pressed)
            m_pressed = 1, changed = true;
        if (!m_captured)
            TakeCapture(), changed = true;
        else if (!changed)
            return CButton::OnMouseMove(flags, point);
    }
    else
    {
        int& state = leftDown ? m_pressed : m_hot;
        changed = state != 0;
        state = 0;
        const UINT anyHeld = MK_LBUTTON | MK_RBUTTON | MK_MBUTTON | MK_SHIFT | MK_CONTROL | MK_XBUTTON1 | MK_XBUTTON2;
        if (m_captured && (flags & anyHeld) == 0)
            DropCapture();
        else if (!changed)
            return CButton::OnMouseMove(flags, point);
    }
    Repaint();
    CButton::OnMouseMove(flags, point);
}

void CColorButtonEx::OnLButtonDown(UINT flags, CPoint point)
{
    m_pressed = m_hot = 1;
    if (!m_captured)
        TakeCapture();
    Repaint();
    CButton::OnLButtonDown(flags, point);
}

// The default handling sends BN_CLICKED, whose handler may delete this
// button (a modeless dialog closing itself): the capture is given back
// afterwards through what was read before, never through the object.
void CColorButtonEx::OnLButtonUp(UINT flags, CPoint point)
{
    m_pressed = m_hot = 0;
    Repaint();
    const HWND self = m_hWnd;
    const bool captured = m_captured != 0;
    m_captured = 0;
    CButton::OnLButtonUp(flags, point);
    if (captured && ::GetCapture() == self)
        ::ReleaseCapture();
}

void CColorButtonEx::OnCancelMode()
{
    CButton::OnCancelMode();
    if (m_captured)
    {
        DropCapture();
        Repaint();
    }
}

void CColorButtonEx::OnEnable(BOOL enable)
{
    if (!enable)
    {
        m_pressed = m_hot = 0;
        DropCapture();
    }
    CButton::OnEnable(enable);
}
