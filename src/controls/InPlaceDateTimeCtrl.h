// InPlaceDateTimeCtrl.h - the date picker the editable list opens over a
// cell.
//
//   CInPlaceDateTimeCtrl* date = list.ShowInPlaceDateTimeCtrl(row, column);
//   SYSTEMTIME st{2024, 3, 0, 5};
//   date->SetTime(&st);
//
// Losing the focus (except to its own drop-down calendar) asks the list to
// validate the date written as "%Y年%m月%d日" ("2024年03月05日"); Enter does
// so by moving the focus to the list, Escape cancels. Tab, Home, End and the
// arrows go to the list, which moves its cell cursor. When the window goes,
// the list hears IPN_CLOSED and forgets the editor; the list still deletes
// the object.
#pragma once
#include "controls/InPlaceCtrl.h"
#include "platform/win/Controls.h"

class QM_API CInPlaceDateTimeCtrl : public CDateTimeCtrl
{
public:
    BOOL PreTranslateMessage(MSG* msg) override;

    void OnChar(UINT nChar, UINT repeat, UINT flags);
    void OnKillFocus(CWnd* newWnd);
    void OnDestroy();
    // The picked date as a date cell holds it ("%Y年%m月%d日"), whichever
    // path ends the edit: the picker's own window text is its long format.
    CString GetCellText();

private:
    int m_bAcceptOnClose = 1;
    DECLARE_MESSAGE_MAP()
};
