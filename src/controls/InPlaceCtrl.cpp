// InPlaceCtrl.cpp - what every in-place editor sends its list.
#include "controls/InPlaceCtrl.h"

LRESULT SendInPlaceMsg(CWnd* editor, UINT code, const CString& text, INPLACEMSG* record)
{
    INPLACEMSG fresh;
    INPLACEMSG& msg = record != nullptr ? *record : fresh;
    msg = INPLACEMSG{};
    msg.strText = text;
    const HWND list = ::GetParent(editor->GetSafeHwnd());
    return list == nullptr ? 0 : ::SendMessageW(list, WM_INPLACE_CTRL, code, reinterpret_cast<LPARAM>(&msg));
}
