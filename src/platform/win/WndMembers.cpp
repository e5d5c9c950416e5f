// WndMembers.cpp - CWnd's everyday members: thin wrappers of the window
// functions, returning the attached object (or a wrapper) for handles.
#include "platform/win/Wnd.h"

CWnd* CWnd::GetParent() const
{
    return FromHandle(::GetParent(m_hWnd));
}

CWnd* CWnd::GetOwner() const
{
    return FromHandle(::GetWindow(m_hWnd, GW_OWNER));
}

CWnd* CWnd::GetTopLevelParent() const
{
    return FromHandle(::GetAncestor(m_hWnd, GA_ROOT));
}

CWnd* CWnd::GetDlgItem(int id) const
{
    return m_hWnd == nullptr ? nullptr : FromHandle(::GetDlgItem(m_hWnd, id));
}

int CWnd::GetDlgCtrlID() const
{
    return m_hWnd == nullptr ? 0 : ::GetDlgCtrlID(m_hWnd);
}

CWnd* CWnd::GetWindow(UINT command) const
{
    return m_hWnd == nullptr ? nullptr : FromHandle(::GetWindow(m_hWnd, command));
}

CWnd* CWnd::ChildWindowFromPoint(POINT point) const
{
    return m_hWnd == nullptr ? nullptr : FromHandle(::ChildWindowFromPoint(m_hWnd, point));
}

CWnd* CWnd::WindowFromPoint(POINT point)
{
    return FromHandle(::WindowFromPoint(point));
}

CWnd* CWnd::GetFocus()
{
    return FromHandle(::GetFocus());
}

CWnd* CWnd::SetFocus()
{
    return m_hWnd == nullptr ? nullptr : FromHandle(::SetFocus(m_hWnd));
}

CWnd* CWnd::GetCapture()
{
    return FromHandle(::GetCapture());
}

CWnd* CWnd::SetCapture()
{
    return m_hWnd == nullptr ? nullptr : FromHandle(::SetCapture(m_hWnd));
}

CWnd* CWnd::GetActiveWindow()
{
    return FromHandle(::GetActiveWindow());
}

BOOL CWnd::SetForegroundWindow()
{
    return m_hWnd != nullptr && ::SetForegroundWindow(m_hWnd);
}

void CWnd::SetWindowText(const wchar_t* text)
{
    if (m_hWnd != nullptr)
        ::SetWindowTextW(m_hWnd, text);
}

int CWnd::GetWindowText(wchar_t* buffer, int size) const
{
    if (buffer != nullptr && size > 0)
        buffer[0] = L'\0';
    return m_hWnd == nullptr ? 0 : ::GetWindowTextW(m_hWnd, buffer, size);
}

void CWnd::GetWindowText(CString& text) const
{
    const int length = GetWindowTextLength();
    wchar_t* buffer = text.GetBufferSetLength(length);
    const int got = length == 0 ? 0 : ::GetWindowTextW(m_hWnd, buffer, length + 1);
    text.ReleaseBuffer(got);
}

int CWnd::GetWindowTextLength() const
{
    return m_hWnd == nullptr ? 0 : ::GetWindowTextLengthW(m_hWnd);
}

void CWnd::SetDlgItemText(int id, const wchar_t* text)
{
    if (m_hWnd != nullptr)
        ::SetDlgItemTextW(m_hWnd, id, text);
}

int CWnd::GetDlgItemText(int id, CString& text) const
{
    text.Empty();
    if (CWnd* item = GetDlgItem(id))
        item->GetWindowText(text);
    return text.GetLength();
}

UINT CWnd::GetDlgItemInt(int id, BOOL* translated, BOOL isSigned) const
{
    if (translated != nullptr)
        *translated = FALSE;
    return m_hWnd == nullptr ? 0 : ::GetDlgItemInt(m_hWnd, id, translated, isSigned);
}

void CWnd::SetDlgItemInt(int id, UINT value, BOOL isSigned)
{
    if (m_hWnd != nullptr)
        ::SetDlgItemInt(m_hWnd, id, value, isSigned);
}

DWORD CWnd::GetStyle() const
{
    return m_hWnd == nullptr ? 0 : static_cast<DWORD>(::GetWindowLongW(m_hWnd, GWL_STYLE));
}

DWORD CWnd::GetExStyle() const
{
    return m_hWnd == nullptr ? 0 : static_cast<DWORD>(::GetWindowLongW(m_hWnd, GWL_EXSTYLE));
}

namespace {

BOOL ModifyLong(HWND hWnd, int index, DWORD remove, DWORD add, UINT swpFlags)
{
    if (hWnd == nullptr)
        return FALSE;
    const DWORD style = static_cast<DWORD>(::GetWindowLongW(hWnd, index));
    const DWORD changed = (style & ~remove) | add;
    if (changed == style)
        return FALSE;
    ::SetWindowLongW(hWnd, index, static_cast<LONG>(changed));
    if (swpFlags != 0)
        ::SetWindowPos(hWnd, nullptr, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | swpFlags);
    return TRUE;
}

} // namespace

BOOL CWnd::ModifyStyle(DWORD remove, DWORD add, UINT swpFlags)
{
    return ModifyLong(m_hWnd, GWL_STYLE, remove, add, swpFlags);
}

BOOL CWnd::ModifyStyleEx(DWORD remove, DWORD add, UINT swpFlags)
{
    return ModifyLong(m_hWnd, GWL_EXSTYLE, remove, add, swpFlags);
}

void CWnd::GetClientRect(LPRECT rect) const
{
    if (m_hWnd == nullptr || !::GetClientRect(m_hWnd, rect))
        ::SetRectEmpty(rect);
}

void CWnd::GetWindowRect(LPRECT rect) const
{
    if (m_hWnd == nullptr || !::GetWindowRect(m_hWnd, rect))
        ::SetRectEmpty(rect);
}

void CWnd::ClientToScreen(LPPOINT point) const
{
    ::ClientToScreen(m_hWnd, point);
}

void CWnd::ClientToScreen(LPRECT rect) const
{
    ::MapWindowPoints(m_hWnd, nullptr, reinterpret_cast<LPPOINT>(rect), 2);
}

void CWnd::ScreenToClient(LPPOINT point) const
{
    ::ScreenToClient(m_hWnd, point);
}

void CWnd::ScreenToClient(LPRECT rect) const
{
    ::MapWindowPoints(nullptr, m_hWnd, reinterpret_cast<LPPOINT>(rect), 2);
}

void CWnd::MapWindowPoints(CWnd* to, LPRECT rect) const
{
    ::MapWindowPoints(m_hWnd, to == nullptr ? nullptr : to->m_hWnd, reinterpret_cast<LPPOINT>(rect), 2);
}

void CWnd::MapWindowPoints(CWnd* to, LPPOINT points, UINT count) const
{
    ::MapWindowPoints(m_hWnd, to == nullptr ? nullptr : to->m_hWnd, points, count);
}

void CWnd::MoveWindow(int x, int y, int width, int height, BOOL repaint)
{
    if (m_hWnd != nullptr)
        ::MoveWindow(m_hWnd, x, y, width, height, repaint);
}

void CWnd::MoveWindow(LPCRECT rect, BOOL repaint)
{
    MoveWindow(rect->left, rect->top, rect->right - rect->left, rect->bottom - rect->top, repaint);
}

BOOL CWnd::SetWindowPos(const CWnd* insertAfter, int x, int y, int cx, int cy, UINT flags)
{
    return m_hWnd != nullptr &&
           ::SetWindowPos(m_hWnd, insertAfter == nullptr ? nullptr : insertAfter->m_hWnd, x, y, cx, cy, flags);
}

int CWnd::SetWindowRgn(HRGN region, BOOL redraw)
{
    return m_hWnd == nullptr ? 0 : ::SetWindowRgn(m_hWnd, region, redraw);
}

void CWnd::Invalidate(BOOL erase)
{
    if (m_hWnd != nullptr)
        ::InvalidateRect(m_hWnd, nullptr, erase);
}

void CWnd::InvalidateRect(LPCRECT rect, BOOL erase)
{
    if (m_hWnd != nullptr)
        ::InvalidateRect(m_hWnd, rect, erase);
}

void CWnd::ValidateRect(LPCRECT rect)
{
    if (m_hWnd != nullptr)
        ::ValidateRect(m_hWnd, rect);
}

void CWnd::UpdateWindow()
{
    if (m_hWnd != nullptr)
        ::UpdateWindow(m_hWnd);
}

BOOL CWnd::RedrawWindow(LPCRECT rect, HRGN region, UINT flags)
{
    return m_hWnd != nullptr && ::RedrawWindow(m_hWnd, rect, region, flags);
}

void CWnd::SetRedraw(BOOL redraw)
{
    if (m_hWnd != nullptr)
        ::SendMessageW(m_hWnd, WM_SETREDRAW, redraw, 0);
}

BOOL CWnd::ShowWindow(int command)
{
    return m_hWnd != nullptr && ::ShowWindow(m_hWnd, command);
}

BOOL CWnd::IsWindowVisible() const
{
    return m_hWnd != nullptr && ::IsWindowVisible(m_hWnd);
}

BOOL CWnd::EnableWindow(BOOL enable)
{
    return m_hWnd != nullptr && ::EnableWindow(m_hWnd, enable);
}

BOOL CWnd::IsWindowEnabled() const
{
    return m_hWnd != nullptr && ::IsWindowEnabled(m_hWnd);
}

BOOL CWnd::ShowScrollBar(UINT bar, BOOL show)
{
    return m_hWnd != nullptr && ::ShowScrollBar(m_hWnd, static_cast<int>(bar), show);
}

LRESULT CWnd::SendMessage(UINT message, WPARAM wParam, LPARAM lParam) const
{
    return m_hWnd == nullptr ? 0 : ::SendMessageW(m_hWnd, message, wParam, lParam);
}

BOOL CWnd::PostMessage(UINT message, WPARAM wParam, LPARAM lParam) const
{
    return m_hWnd != nullptr && ::PostMessageW(m_hWnd, message, wParam, lParam);
}

LRESULT CWnd::SendDlgItemMessage(int id, UINT message, WPARAM wParam, LPARAM lParam) const
{
    return m_hWnd == nullptr ? 0 : ::SendDlgItemMessageW(m_hWnd, id, message, wParam, lParam);
}

UINT_PTR CWnd::SetTimer(UINT_PTR id, UINT elapse, TIMERPROC proc)
{
    return m_hWnd == nullptr ? 0 : ::SetTimer(m_hWnd, id, elapse, proc);
}

BOOL CWnd::KillTimer(UINT_PTR id)
{
    return m_hWnd != nullptr && ::KillTimer(m_hWnd, id);
}

void CWnd::SetFont(CFont* font, BOOL redraw)
{
    SendMessage(WM_SETFONT, reinterpret_cast<WPARAM>(font == nullptr ? nullptr : font->m_hObject), redraw);
}

CFont* CWnd::GetFont() const
{
    return CFont::FromHandle(reinterpret_cast<HFONT>(SendMessage(WM_GETFONT)));
}

HDC CWnd::GetDC()
{
    return ::GetDC(m_hWnd);
}

HDC CWnd::GetWindowDC()
{
    return ::GetWindowDC(m_hWnd);
}

int CWnd::ReleaseDC(HDC dc)
{
    return ::ReleaseDC(m_hWnd, dc);
}
