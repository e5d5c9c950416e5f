// InPlaceComboBox.h - the drop-down list (or drop-down combo) the editable
// list opens over a cell.
//
//   CInPlaceComboBox* combo = list.ShowInPlaceComboBox(row, column);
//   combo->AddString(L"钢");
//   combo->AddString(L"铝");
//   combo->SelectString(-1, list.GetItemText(row, column));
//
// Closing the drop list of a drop-down list, Enter, or losing the focus
// asks the list to validate the shown text; a refusal leaves the combo
// open. Escape cancels. Tab, Home, End, Left and Right (and Up and Down
// while the drop list is closed) go to the list, which moves its cell
// cursor; characters sharing those keys' codes ("#", "$", "%", "&", "'",
// "(") therefore never reach an editable combo. When the window goes, the
// list hears IPN_CLOSED and forgets the combo; the list still deletes the
// object.
#pragma once
#include "controls/InPlaceCtrl.h"
#include "platform/win/Controls.h"

class QM_API CInPlaceComboBox : public CComboBox
{
public:
    BOOL PreTranslateMessage(MSG* msg) override;
    BOOL DestroyWindow() override;

    int OnCreate(LPCREATESTRUCTW cs);
    void OnKillFocus(CWnd* newWnd);
    void OnChar(UINT nChar, UINT repeat, UINT flags);
    void OnDestroy();
    void OnCloseUp();

private:
    int m_bAcceptOnClose = 1;
    DECLARE_MESSAGE_MAP()
};
