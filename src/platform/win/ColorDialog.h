// ColorDialog.h - the system colour dialog, as MFC's CColorDialog.
//
//   CColorDialog dlg(RGB(255, 0, 0));
//   dlg.m_cc.Flags |= CC_FULLOPEN;
//   if (dlg.DoModal() == IDOK)
//       colour = dlg.GetColor();
//
// The sixteen custom colours are shared by every dialog of the process, so
// the user finds them again the next time.
#pragma once
#include "platform/win/Wnd.h"

#include <commdlg.h>

class QM_API CColorDialog
{
public:
    explicit CColorDialog(COLORREF initial = 0, DWORD flags = 0, CWnd* parent = nullptr);
    virtual ~CColorDialog() = default;

    // IDOK with the chosen colour in GetColor(), else IDCANCEL.
    virtual INT_PTR DoModal();
    COLORREF GetColor() const { return m_cc.rgbResult; }
    static COLORREF* GetSavedCustomColors();

    CHOOSECOLORW m_cc{};
};
