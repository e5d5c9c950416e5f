// PathParts.h - taking a path apart, existence and writability tests, and
// creating a folder with all its missing parents.
//
//   QM::GetFilePath(L"C:\\x\\a.dwg");   // "C:\x\"
//   QM::GetFileExt(L"a.tar.gz");         // "gz"
//   if (!QM::IsExist(dir)) QM::MkMDir(dir);
//
// The part functions take paths of up to MAX_PATH (260) characters and give
// an empty text for longer ones; IsExist and MkMDir have no limit of their
// own beyond the platform's.
#pragma once
#include "platform/CString.h"

namespace QM {

// True when `text` is null or empty.
QM_API bool IsNULL(const wchar_t* text);

// Name with extension: "a.dwg" from "C:\x\a.dwg"; "/" separates too.
QM_API CString GetFileName(const wchar_t* path);
// Name without extension: "a".
QM_API CString GetFileTitle(const wchar_t* path);
// Extension without its dot: "dwg"; empty when there is none.
QM_API CString GetFileExt(const wchar_t* path);
// Drive and folder with the trailing separator: "C:\x\"; "" for a bare name.
QM_API CString GetFilePath(const wchar_t* path);

// True when a file or folder of that name exists; a folder is found with or
// without its trailing separator.
QM_API bool IsExist(const wchar_t* path);

// True when no file can be created in `folder` (which ends with a separator);
// a missing folder answers true. Throws CFileException* when the probe file
// was made but cannot be deleted.
QM_API bool IsDirReadOnly(CString folder);

// Creates `folder` and every missing parent, for drive ("C:\a\b") and network
// ("\\srv\share\a") paths. False when a level names a file, a level cannot be
// created (levels already made stay), or nothing is left below the drive or
// share.
QM_API bool MkMDir(CString folder);

}  // namespace QM
