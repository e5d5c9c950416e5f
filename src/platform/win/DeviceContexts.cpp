// DeviceContexts.cpp - contexts that give themselves back.
#include "platform/win/DeviceContexts.h"

CClientDC::CClientDC(CWnd* wnd) : m_hWnd(wnd == nullptr ? nullptr : wnd->GetSafeHwnd())
{
    if (m_hWnd != nullptr)
        Attach(::GetDC(m_hWnd));
}

CClientDC::~CClientDC()
{
    if (m_hDC != nullptr)
        ::ReleaseDC(m_hWnd, Detach());
}

CWindowDC::CWindowDC(CWnd* wnd) : m_hWnd(wnd == nullptr ? nullptr : wnd->GetSafeHwnd())
{
    if (m_hWnd != nullptr)
        Attach(::GetWindowDC(m_hWnd));
}

CWindowDC::~CWindowDC()
{
    if (m_hDC != nullptr)
        ::ReleaseDC(m_hWnd, Detach());
}

CPaintDC::CPaintDC(CWnd* wnd) : m_hWnd(wnd == nullptr ? nullptr : wnd->GetSafeHwnd())
{
    if (m_hWnd != nullptr)
        Attach(::BeginPaint(m_hWnd, &m_ps));
}

CPaintDC::~CPaintDC()
{
    if (m_hDC != nullptr)
    {
        Detach();
        ::EndPaint(m_hWnd, &m_ps);
    }
}

CMemDC::CMemDC(CDC* dc, const CRect* rect) : m_target(dc)
{
    if (dc == nullptr || dc->GetSafeHdc() == nullptr)
        return;
    if (rect != nullptr)
        m_rect = *rect;
    else
        dc->GetClipBox(m_rect);
    m_offScreen = !m_rect.IsRectEmpty() && CreateCompatibleDC(dc) &&
                  m_bitmap.CreateCompatibleBitmap(dc->GetSafeHdc(), m_rect.Width(), m_rect.Height());
    if (!m_offScreen)
    {
        DeleteDC();
        Attach(dc->GetSafeHdc());
        return;
    }
    m_oldBitmap = SelectObject(m_bitmap.GetSafeHandle());
    ::SetWindowOrgEx(m_hDC, m_rect.left, m_rect.top, nullptr);
    FillSolidRect(m_rect, dc->GetBkColor());
}

CMemDC::~CMemDC()
{
    if (!m_offScreen)
    {
        Detach();
        return;
    }
    m_target->BitBlt(m_rect.left, m_rect.top, m_rect.Width(), m_rect.Height(), this, m_rect.left, m_rect.top,
                     SRCCOPY);
    SelectObject(m_oldBitmap);
}
