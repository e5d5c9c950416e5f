// InPlaceButton.cpp - the browse button beside an in-place edit.
#include "controls/InPlaceEdit.h"

BEGIN_MESSAGE_MAP(CInPlaceButton, CButton)
    ON_WM_KILLFOCUS()
    ON_CONTROL_REFLECT(BN_CLICKED, &CInPlaceButton::OnClicked)
END_MESSAGE_MAP()

// While the parent answers (it may show a dialog that takes the focus) the
// button is inactive and survives losing the focus.
void CInPlaceButton::OnClicked()
{
    if (m_pEdit == nullptr)
        return;
    m_bActive = 0;
    CString text;
    m_pEdit->GetWindowText(text);
    INPLACEMSG record;
    if (SendInPlaceMsg(this, IPN_BUTTON, text, &record) == 0 && m_pEdit != nullptr)
        m_pEdit->SetWindowText(record.strText);
    if (m_pEdit != nullptr)
    {
        m_pEdit->SetFocus();
        m_pEdit->SetSel(0, -1);
        m_pEdit->SendMessage(EM_SCROLLCARET);
    }
    m_bActive = 1;
}

void CInPlaceButton::OnKillFocus(CWnd* newWnd)
{
    CButton::OnKillFocus(newWnd);
    const bool toEdit = m_pEdit != nullptr && newWnd != nullptr && newWnd->GetSafeHwnd() == m_pEdit->GetSafeHwnd();
    if (!toEdit && m_bActive)
        DestroyWindow();
}
