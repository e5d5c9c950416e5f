// ColorDialog.cpp - the system colour dialog and the process's custom colours.
#include "platform/win/ColorDialog.h"

COLORREF* CColorDialog::GetSavedCustomColors()
{
    static COLORREF custom[16] = {RGB(255, 255, 255), RGB(255, 255, 255), RGB(255, 255, 255), RGB(255, 255, 255),
                                  RGB(255, 255, 255), RGB(255, 255, 255), RGB(255, 255, 255), RGB(255, 255, 255),
                                  RGB(255, 255, 255), RGB(255, 255, 255), RGB(255, 255, 255), RGB(255, 255, 255),
                                  RGB(255, 255, 255), RGB(255, 255, 255), RGB(255, 255, 255), RGB(255, 255, 255)};
    return custom;
}

CColorDialog::CColorDialog(COLORREF initial, DWORD flags, CWnd* parent)
{
    m_cc.lStructSize = sizeof(m_cc);
    m_cc.hwndOwner = parent == nullptr ? nullptr : parent->GetSafeHwnd();
    m_cc.rgbResult = initial;
    m_cc.lpCustColors = GetSavedCustomColors();
    m_cc.Flags = flags | CC_RGBINIT;
}

INT_PTR CColorDialog::DoModal()
{
    if (m_cc.hwndOwner == nullptr)
        m_cc.hwndOwner = ::GetActiveWindow();
    return ::ChooseColorW(&m_cc) ? IDOK : IDCANCEL;
}
