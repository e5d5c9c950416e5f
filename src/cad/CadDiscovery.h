// CadDiscovery.h - which CAD release the suite starts, where it is
// installed, which product key is current and which profile is active.
//
//   CString dir, key, name;
//   if (QM::GetAcadPath(dir)) ...                    // "C:\Program Files\AutoCAD\"
//   if (QM::GetCADCurConfigName(key, name)) ...      // key ends with "\<profile>\"
//
// The configured release is [CADCmdLine] ACADVer of the start-up settings
// ("15", "16.0", "16.1"). Every folder handed out ends in one backslash;
// failures are silent and leave the outputs alone (see GetCADCurConfigName).
#pragma once
#include "platform/CString.h"

namespace QM {

// ACADVer trimmed, then every trailing '.' and '0' stripped: "15.0" -> "15",
// "16.0" -> "16". It is a character strip, so "20" becomes "2"; releases of
// the suite's range never end in a zero digit.
QM_API CString GetStartupAcadVer();
// ACADVer, blanks trimmed, is exactly "14" / "15" ("15.0" is not).
QM_API bool IsStartupWithCadR14();
QM_API bool IsStartupWithCadR15();

// "Software\Autodesk\AutoCAD\R<ver>.0" for a release without a '.', else
// "Software\Autodesk\AutoCAD\R<ver>"; false when no release is configured.
QM_API bool GetCADRegPos(CString& key);
// The product key below `baseKey` (the configured release key when empty):
// baseKey\<value `valueName`>\ followed by what `out` held, so a caller can
// ask for a sub-key by presetting `out`. When the value is unreadable, the
// first sub-key under which that sub-key path opens is taken instead.
QM_API bool GetRegPos(HKEY root, const wchar_t* valueName, CString& out, const wchar_t* baseKey);

// Install folder of the configured release: candidates are the user's and
// the machine's "CurVer" and then every product below the release; the
// first whose "AcadLocation" holds Acad.exe wins. Last resort: the folder of
// the registered automation server "AutoCAD.Application.<release>".
QM_API bool GetAcadPath(CString& dir);
// Install folders of release 14 and 15 (current product, else the first
// product sub-key with a location).
QM_API bool GetAcadR14Path(CString& dir);
QM_API bool GetAcadR15Path(CString& dir);
// Install folder of the current release 15 product, "CurVer" only.
QM_API bool GetAcadMapPath(CString& dir);

// The active profile of the configured release under HKEY_CURRENT_USER:
// `profileKey` ends with "\<profile>\" (it holds a doubled backslash after
// the release key, which the registry reads as one), `profileName` is the
// profile's name. What the caller left in `profileName` is the tail of the
// product look-up, as for GetRegPos's `out`. Both outputs are written only
// on success.
QM_API bool GetCADCurConfigName(CString& profileKey, CString& profileName);

// The host's folder and executable: [CADCmdLine] CADPathNameCOM when the
// executable ([CADCmdLine] ACADExePath, default "Acad.exe", name part only)
// is there; otherwise the host's automation server is started on a worker
// thread, asked to save its active drawing as "QmSaved.dwg" in the user's
// temporary folder and asked for its folder, while this thread keeps
// dispatching its window messages. A folder found that way is stored in
// CADPathNameCOM. The server is left running: it may be the user's session.
QM_API bool GetCADPath_I(CString& dir, CString& exePath);

}  // namespace QM
