// CadCmdLine.h - the executable and the "/s" argument that start the CAD
// host with the suite's support folders ahead of the profile's own.
//
//   CString exe, args;
//   QM::GetCADCmdLineString(exe, args);   // args: /s "D:\Suite\Support;C:\Acad\Support" /nologo
//
// Settings of section "CADCmdLine": "ACADExePath" (no default here),
// "/s" (the suite's folders), "DefaultCADSearchPath" (used when the active
// profile has no list), "NoLogo" (default 1). Macros are expanded.
#pragma once
#include "platform/CString.h"

namespace QM {

// Always true. A profile folder is merged only when a ";" follows it in
// the profile's list (text after the last ";" is ignored) and when its text
// does not already occur, in any case, inside the merged list: the host
// writes its list with a final ";" and shorter folders contained in longer
// ones are on its path already.
QM_API bool GetCADCmdLineString(CString& exePath, CString& cmdLine);

}  // namespace QM
