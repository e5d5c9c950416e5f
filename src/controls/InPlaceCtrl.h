// InPlaceCtrl.h - the private message between the editable list, its
// in-place editors and the list's parent window.
//
//   INPLACEMSG record;
//   record.strText = L"12";
//   BOOL accepted = (BOOL)list->SendMessage(WM_INPLACE_CTRL, IPN_VALIDATE, (LPARAM)&record);
//
// Editors send WM_INPLACE_CTRL to the list (their parent window); the list
// fills the record's row, column and editor and asks its own parent:
// IPN_BUTTON (the browse button was pressed: the parent may put a new text
// in the record and answer 0 to have it taken) and IPN_VALIDATE (answer 0
// to accept the text, anything else to refuse it) reach the parent with the
// same record; IPN_CLOSED (the editor destroyed itself) and IPN_CANCEL (the
// edit was abandoned) stay with the list.
#pragma once
#include "platform/win/Wnd.h"

constexpr UINT WM_INPLACE_CTRL = WM_USER + 100;

enum : UINT {
    IPN_BUTTON = 101,
    IPN_VALIDATE = 102,
    IPN_CLOSED = 103,
    IPN_CANCEL = 104,
};

struct INPLACEMSG
{
    int iItem = -1;          // the list's focused row
    int iSubItem = -1;       // the list's current column (display position)
    CWnd* pWnd = nullptr;    // the editor
    CString strText;         // the editor's text
};

// Sends `code` with a fresh record holding `text` to the list `editor` sits
// in; the record comes back in `record` when given. Editors of an
// application's own may use it too.
QM_API LRESULT SendInPlaceMsg(CWnd* editor, UINT code, const CString& text, INPLACEMSG* record = nullptr);
