// ProjectDir.h - the project the application works on, and its settings.
//
//   QM::SetSoftwareProjectDir(L"D:\\Proj\\A");   // answers false, always
//   CString dir, name;
//   if (QM::GetSoftwareProjectDir(dir)) ...       // "D:\Proj\A\"
//   QM::GetSoftwareProjectName(name);             // "A"
//
// Setting the folder also binds QM::CGCSetting() to the project's settings
// file: the folder + "ProjectINIFileName" of section "Software" in the
// start-up settings ("Project.INI" by default).
#pragma once
#include "platform/CString.h"

namespace QM {

// Makes an existing `dir` the project folder and binds the project settings.
// Returns false whatever happens: callers test GetSoftwareProjectDir. A
// missing folder changes nothing.
QM_API bool SetSoftwareProjectDir(const wchar_t* dir);

// The project folder with one trailing backslash; false (and `dir`
// untouched) before one was set.
QM_API bool GetSoftwareProjectDir(CString& dir);

// The last component of the project folder; false when no folder is set.
QM_API bool GetSoftwareProjectName(CString& name);

}  // namespace QM
