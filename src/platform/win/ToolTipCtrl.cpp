// ToolTipCtrl.cpp - tool records of CToolTipCtrl, filled as MFC fills them:
// id 0 names the whole window (its parent owns the tool), any other id a
// rectangle of the window itself.
#include "platform/win/Controls.h"

#include <vector>

namespace {

// The record size every comctl32 version accepts (no lpReserved).
TOOLINFOW ToolRecord(CWnd* wnd, UINT_PTR id)
{
    TOOLINFOW info{};
    info.cbSize = TTTOOLINFOW_V2_SIZE;
    const HWND hWnd = wnd == nullptr ? nullptr : wnd->GetSafeHwnd();
    if (id == 0)
    {
        info.hwnd = ::GetParent(hWnd);
        info.uFlags = TTF_IDISHWND;
        info.uId = reinterpret_cast<UINT_PTR>(hWnd);
    }
    else
    {
        info.hwnd = hWnd;
        info.uId = id;
    }
    return info;
}

} // namespace

BOOL CToolTipCtrl::Create(CWnd* parent, DWORD style)
{
    const INITCOMMONCONTROLSEX classes{sizeof(INITCOMMONCONTROLSEX), ICC_WIN95_CLASSES};
    ::InitCommonControlsEx(&classes);
    return CWnd::CreateEx(0, TOOLTIPS_CLASSW, nullptr, WS_POPUP | style, CW_USEDEFAULT, CW_USEDEFAULT,
                          CW_USEDEFAULT, CW_USEDEFAULT, parent == nullptr ? nullptr : parent->GetSafeHwnd(),
                          nullptr);
}

BOOL CToolTipCtrl::AddTool(CWnd* wnd, const wchar_t* text, LPCRECT toolRect, UINT_PTR id)
{
    if (m_hWnd == nullptr || wnd == nullptr || wnd->GetSafeHwnd() == nullptr)
        return FALSE;
    TOOLINFOW info = ToolRecord(wnd, id);
    if (toolRect != nullptr)
        info.rect = *toolRect;
    info.lpszText = const_cast<wchar_t*>(text);
    return static_cast<BOOL>(SendMessage(TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&info)));
}

void CToolTipCtrl::DelTool(CWnd* wnd, UINT_PTR id)
{
    TOOLINFOW info = ToolRecord(wnd, id);
    SendMessage(TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(&info));
}

BOOL CToolTipCtrl::GetToolInfo(TOOLINFOW& info, CWnd* wnd, UINT_PTR id) const
{
    info = ToolRecord(wnd, id);
    return static_cast<BOOL>(SendMessage(TTM_GETTOOLINFOW, 0, reinterpret_cast<LPARAM>(&info)));
}

// The tool tip copies at most 80 characters unless told the buffer size,
// which TTM_GETTEXTW takes in wParam from comctl32 6 on; a larger buffer
// serves both.
void CToolTipCtrl::GetText(CString& text, CWnd* wnd, UINT_PTR id) const
{
    std::vector<wchar_t> buffer(1024, L'\0');
    TOOLINFOW info = ToolRecord(wnd, id);
    info.lpszText = buffer.data();
    SendMessage(TTM_GETTEXTW, buffer.size(), reinterpret_cast<LPARAM>(&info));
    buffer.back() = L'\0';
    text = buffer.data();
}

void CToolTipCtrl::UpdateTipText(const wchar_t* text, CWnd* wnd, UINT_PTR id)
{
    TOOLINFOW info = ToolRecord(wnd, id);
    info.lpszText = const_cast<wchar_t*>(text);
    SendMessage(TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&info));
}

void CToolTipCtrl::SetToolRect(CWnd* wnd, UINT_PTR id, LPCRECT rect)
{
    TOOLINFOW info = ToolRecord(wnd, id);
    info.rect = *rect;
    SendMessage(TTM_NEWTOOLRECTW, 0, reinterpret_cast<LPARAM>(&info));
}
