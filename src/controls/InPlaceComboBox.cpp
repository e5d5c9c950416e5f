// InPlaceComboBox.cpp - the in-place combo box.
#include "controls/InPlaceComboBox.h"

BEGIN_MESSAGE_MAP(CInPlaceComboBox, CComboBox)
    ON_WM_CREATE()
    ON_WM_KILLFOCUS()
    ON_WM_CHAR()
    ON_WM_DESTROY()
    ON_CONTROL_REFLECT(CBN_CLOSEUP, &CInPlaceComboBox::OnCloseUp)
END_MESSAGE_MAP()

namespace {

bool IsDropDownList(const CWnd* combo)
{
    return (combo->GetStyle() & 3) == CBS_DROPDOWNLIST;
}

} // namespace

BOOL CInPlaceComboBox::PreTranslateMessage(MSG* msg)
{
    const WPARAM key = msg->wParam;
    const bool passes = key == VK_TAB || key == VK_END || key == VK_HOME || key == VK_LEFT || key == VK_RIGHT ||
                        ((key == VK_UP || key == VK_DOWN) && !GetDroppedState());
    if (passes)
    {
        ::SendMessageW(::GetParent(m_hWnd), msg->message, msg->wParam, msg->lParam);
        return TRUE;
    }
    if (msg->message == WM_KEYDOWN && key == VK_ESCAPE)
    {
        ::TranslateMessage(msg);
        ::DispatchMessageW(msg);
        return TRUE;
    }
    if (msg->message == WM_KEYDOWN && key == VK_RETURN)
        GetParent()->SetFocus();
    return CComboBox::PreTranslateMessage(msg);
}

BOOL CInPlaceComboBox::DestroyWindow()
{
    m_bAcceptOnClose = 0;
    return CComboBox::DestroyWindow();
}

int CInPlaceComboBox::OnCreate(LPCREATESTRUCTW cs)
{
    if (CComboBox::OnCreate(cs) == -1)
        return -1;
    SetFont(GetParent()->GetFont());
    if (IsDropDownList(this))
    {
        SetFocus();
        return 0;
    }
    for (HWND child = ::GetWindow(m_hWnd, GW_CHILD); child != nullptr; child = ::GetWindow(child, GW_HWNDNEXT))
    {
        wchar_t name[8] = L"";
        ::GetClassNameW(child, name, 8);
        if (::lstrcmpiW(name, L"Edit") == 0)
        {
            ::SetFocus(child);
            break;
        }
    }
    return 0;
}

void CInPlaceComboBox::OnChar(UINT nChar, UINT repeat, UINT flags)
{
    if (nChar != VK_ESCAPE && nChar != VK_RETURN)
    {
        CComboBox::OnChar(nChar, repeat, flags);
        return;
    }
    if (nChar == VK_ESCAPE)
        m_bAcceptOnClose = 0;
    GetParent()->SetFocus();
}

void CInPlaceComboBox::OnCloseUp()
{
    if (IsDropDownList(this))
    {
        GetParent()->SetFocus();
        return;
    }
    if (m_bAcceptOnClose)
    {
        CString text;
        GetWindowText(text);
        SendInPlaceMsg(this, IPN_VALIDATE, text);
    }
}

void CInPlaceComboBox::OnKillFocus(CWnd* newWnd)
{
    CComboBox::OnKillFocus(newWnd);
    CString text;
    GetWindowText(text);
    SendInPlaceMsg(this, m_bAcceptOnClose ? IPN_VALIDATE : IPN_CANCEL, m_bAcceptOnClose ? text : CString());
}

void CInPlaceComboBox::OnDestroy()
{
    CComboBox::OnDestroy();
    SendInPlaceMsg(this, IPN_CLOSED, CString());
}
