// PathMacros.h - path macros in configuration texts: %INSTALLDIR%,
// %LOCALDIR%, %WORKDIR%, %ACADDIR%, %ACAD14DIR%, %ACAD15DIR%.
//
//   QM::FixSystemDir(L"%WorkDir%Temp");                    // "D:\Work\Temp"
//   QM::FixSystemDir(QM::FSD_LOCALDIR, L"\\Data\\");       // "D:\Loc\Data\"
//
// The macros are process environment variables that exist only while one
// expansion runs, so any other environment variable expands too and an
// unknown reference stays as written, percent signs included. Names match
// without regard to case. Every "\*" and then every "*" is removed from the
// result: configuration texts mark optional parts that way. Not for use
// from two threads at once: the process environment is shared.
#pragma once
#include "platform/Collections.h"

namespace QM {

// Folder kinds, one bit each. FSD_ACADDIR gives the install folder, as it
// always has; callers that want the CAD folder use %ACADDIR%.
enum FSD_DirType {
    FSD_ACADR14DIR = 1,
    FSD_ACADR15DIR = 2,
    FSD_INSTALLDIR = 4,
    FSD_LOCALDIR = 8,
    FSD_WORKDIR = 16,
    FSD_ACADDIR = 32,
};

// The folder of kind `type` joined with `sub` (backslashes stripped on both
// ends of it) and one backslash; the folder alone when `sub` is empty. An
// empty text for a failed lookup, 0, or a combination of kinds.
QM_API CString FixSystemDir(FSD_DirType type, const wchar_t* sub);
// `text` with its macros expanded.
QM_API CString FixSystemDir(const wchar_t* text);
// Expands every element of `items` in place. `names`/`values` are extra
// macros for this one call (pairs beyond the shorter array are ignored);
// they override the built-in six. An element whose expansion exceeds 1023
// characters receives what the platform left in the 1024-character buffer
// (stars still removed).
QM_API void FixSystemDir(CStringArray& items, const CStringArray& names, const CStringArray& values);

}  // namespace QM
