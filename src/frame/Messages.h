// Messages.h - the library's message boxes and its own resource strings.
//
//   QM::ShowMessage(hwnd, L"文件不存在！", L"X");           // error icon, OK
//   if (QM::MsgYesNo(hwnd, L"覆盖已有文件？", false)) ...  // No preselected
//
// Every box carries the library's caption, string 1 of its own string table.
#pragma once
#include "platform/CString.h"

namespace QM {

// Loads string `id` from the library's own module, whatever the caller's
// resource handle is; true when the string exists.
QM_API bool LoadStr(unsigned int id, CString& text);

// The caption of every library message box ("塔维提示！"), or empty.
QM_API CString GetMsgBoxCaption();

// A task-modal box whose icon and buttons come from style letters, each
// occurrence adding its value: '!' 48, '?' 32, 'I'/'i' 64, 'X'/'x' 16, and 4
// (Yes/No) for the first of 'Y', 'y', 'N', 'n'. Returns the button code.
QM_API int ShowMessage(HWND owner, const wchar_t* text, const wchar_t* style);

// MessageBoxW with the library caption and `type` as given.
QM_API int MsgBox(HWND owner, const wchar_t* text, unsigned int type);

// An OK box with the library caption.
QM_API void MsgOk(HWND owner, const wchar_t* text);

// Yes/No box; when `defaultYes` is false, No is the default button.
// True when the answer is Yes.
QM_API bool MsgYesNo(HWND owner, const wchar_t* text, bool defaultYes);

}  // namespace QM
