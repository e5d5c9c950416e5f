// InPlaceDateTimeCtrl.cpp - the in-place date picker.
#include "controls/InPlaceDateTimeCtrl.h"

#include "platform/ole/OleDateTime.h"

BEGIN_MESSAGE_MAP(CInPlaceDateTimeCtrl, CDateTimeCtrl)
    ON_WM_CHAR()
    ON_WM_KILLFOCUS()
    ON_WM_DESTROY()
END_MESSAGE_MAP()

// Escape is only translated: the character it makes ends the edit, while
// the picker itself never sees the key.
BOOL CInPlaceDateTimeCtrl::PreTranslateMessage(MSG* msg)
{
    const WPARAM key = msg->wParam;
    if (key == VK_TAB || (key >= VK_END && key <= VK_DOWN))
    {
        ::SendMessageW(::GetParent(m_hWnd), msg->message, msg->wParam, msg->lParam);
        return TRUE;
    }
    if (msg->message != WM_KEYDOWN)
        return CDateTimeCtrl::PreTranslateMessage(msg);
    if (key != VK_RETURN && key != VK_DELETE && key != VK_ESCAPE && ::GetKeyState(VK_CONTROL) == 0)
        return CDateTimeCtrl::PreTranslateMessage(msg);
    ::TranslateMessage(msg);
    if (key != VK_ESCAPE)
        ::DispatchMessageW(msg);
    return TRUE;
}

void CInPlaceDateTimeCtrl::OnChar(UINT nChar, UINT repeat, UINT flags)
{
    if (nChar != VK_ESCAPE && nChar != VK_RETURN)
    {
        CDateTimeCtrl::OnChar(nChar, repeat, flags);
        return;
    }
    if (nChar == VK_ESCAPE)
        m_bAcceptOnClose = 0;
    GetParent()->SetFocus();
}

void CInPlaceDateTimeCtrl::OnKillFocus(CWnd* newWnd)
{
    CDateTimeCtrl::OnKillFocus(newWnd);
    const CWnd* calendar = GetMonthCalCtrl();
    if (newWnd != nullptr && calendar != nullptr && newWnd->GetSafeHwnd() == calendar->GetSafeHwnd())
        return;
    if (!m_bAcceptOnClose)
    {
        SendInPlaceMsg(this, IPN_CANCEL, CString());
        return;
    }
    SendInPlaceMsg(this, IPN_VALIDATE, GetCellText());
}

CString CInPlaceDateTimeCtrl::GetCellText()
{
    SYSTEMTIME time{};
    COleDateTime date;
    const DWORD got = GetTime(&time);
    if (got == GDT_VALID)
        date = COleDateTime(time);
    else
        date.SetStatus(got == GDT_NONE ? COleDateTime::null : COleDateTime::invalid);
    return date.Format(L"%Y年%m月%d日");
}

void CInPlaceDateTimeCtrl::OnDestroy()
{
    CDateTimeCtrl::OnDestroy();
    SendInPlaceMsg(this, IPN_CLOSED, CString());
}
