// Messages.cpp - message boxes with the library caption, resource strings.
#include "frame/Messages.h"
#include "frame/Library.h"
#include "res/resource.h"

namespace QM {

bool LoadStr(unsigned int id, CString& text)
{
    CResourceSwitch use(LibraryHandle());
    return text.LoadString(id) != FALSE;
}

CString GetMsgBoxCaption()
{
    CString caption;
    if (!LoadStr(IDS_MSGBOX_CAPTION, caption))
        caption.Empty();
    return caption;
}

// Letters are summed rather than or-ed: callers give each letter once, and a
// repeated icon letter has always produced the sum.
static UINT StyleFlags(const wchar_t* style)
{
    UINT flags = MB_TASKMODAL;
    bool buttonsChosen = false;
    for (const wchar_t* p = style; p != nullptr && *p != L'\0'; ++p) {
        switch (*p) {
        case L'!': flags += MB_ICONEXCLAMATION; break;
        case L'?': flags += MB_ICONQUESTION; break;
        case L'I': case L'i': flags += MB_ICONINFORMATION; break;
        case L'X': case L'x': flags += MB_ICONERROR; break;
        case L'Y': case L'y': case L'N': case L'n':
            if (!buttonsChosen)
                flags += MB_YESNO;
            buttonsChosen = true;
            break;
        default: break;
        }
    }
    return flags;
}

int ShowMessage(HWND owner, const wchar_t* text, const wchar_t* style)
{
    return MessageBoxW(owner, text, GetMsgBoxCaption(), StyleFlags(style));
}

int MsgBox(HWND owner, const wchar_t* text, unsigned int type)
{
    return MessageBoxW(owner, text, GetMsgBoxCaption(), type);
}

void MsgOk(HWND owner, const wchar_t* text)
{
    MsgBox(owner, text, MB_OK);
}

bool MsgYesNo(HWND owner, const wchar_t* text, bool defaultYes)
{
    return MsgBox(owner, text, defaultYes ? MB_YESNO : MB_YESNO | MB_DEFBUTTON2) == IDYES;
}

}  // namespace QM
