// Folders.h - the suite's install, local, work and shared CAD folders, and
// the application's own registry key.
//
//   CString dir;
//   if (QM::GetInstallDir(dir)) ...            // "C:\Tarvel\Suite\" (cached)
//   QM::GetWorkDir(dir, false);                // created when missing
//   QM::AddPathEnvironmentVariable(L"C:\\Tarvel\\Suite\\Bin");
//
// Where each folder is recorded is itself configured: section "Software" of
// the start-up settings (INIT.ini) holds, for "InstallDir", "LocalDir" and
// "WorkDir", a pair "value name,root" (root "HKCU", else HKEY_LOCAL_MACHINE),
// read under the key that GetSoftRegItem() builds from section "System".
// Every folder handed out ends in exactly one backslash, except the shared
// CAD folder. Failures are silent: false, and the output left alone.
#pragma once
#include "platform/CString.h"

namespace QM {

// "SOFTWARE\<company>\<name>\<version>". The company word is "Tarvel" when
// [System] CompanyName holds any text at all and "Tar Vel" when it is empty
// or missing: installers of both spellings are in the field. Built afresh on
// every call; only name and version are kept.
QM_API CString GetSoftRegItem();
// [System] SoftName / Version of the start-up settings, read on first use
// and kept for the life of the process.
QM_API CString RegItem();
QM_API CString RegVer();

// The raw registry text of each folder, untrimmed; false when the value
// cannot be read (`dir` then keeps its text).
QM_API bool GetRegInstallDir(CString& dir);
QM_API bool GetRegLocalDir(CString& dir);
QM_API bool GetRegWorkDir(CString& dir);
// Writes `dir` unchanged to the work folder's registry value.
QM_API bool SetRegWorkDir(CString dir);

// The install folder: blanks and trailing backslashes trimmed, must exist.
// Kept once found; a failure is retried on the next call.
QM_API bool GetInstallDir(CString& dir);
// The local folder joined with [Software] LocalDirName (its backslashes
// stripped on both ends); must exist. Kept once found.
QM_API bool GetLocalDir(CString& dir);
// The work folder, read afresh each time and created with its parents when
// missing. Blanks are not trimmed here, only trailing backslashes. `flag` is
// accepted for the callers that pass it and has no effect.
QM_API bool GetWorkDir(CString& dir, bool flag = false);
// "<CommonFilesDir>\Tarvel Shared\CAD" (no trailing backslash, existence
// not tested); false when the system's common-files value is unreadable.
QM_API bool GetQMCommonFilesDir(CString& dir);

// Puts the ";"-separated folders of `dirs` at the end of this process's
// "Path", upper-cased. Each of them is first cut out of the old path as
// plain text wherever it occurs, so a folder that is the start of a longer
// one cuts that one too; callers rely on the old path being purged this
// way. `dirs` must be shorter than 4096 characters (longer gives false).
QM_API bool AddPathEnvironmentVariable(const wchar_t* dirs);

}  // namespace QM
