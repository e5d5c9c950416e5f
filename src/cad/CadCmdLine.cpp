// CadCmdLine.cpp - the host's command line from the settings and the
// active profile's support-file search path.
#include "cad/CadCmdLine.h"

#include "cad/CadDiscovery.h"
#include "config/INISetting.h"
#include "config/Registry.h"
#include "env/PathMacros.h"

namespace QM {
namespace {

CString Setting(const wchar_t* key, const wchar_t* defaultValue)
{
    return CInitSetting().GetSetting(key, defaultValue, L"CADCmdLine");
}

// Appends every ";"-terminated piece of `profileList` that the merged list
// does not already contain.
void MergeProfileList(const CString& profileList, CString& merged)
{
    int start = 0;
    for (int end = profileList.Find(L';', 0); end >= 0; end = profileList.Find(L';', start)) {
        CString piece = profileList.Mid(start, end - start);
        piece.Trim();
        CString upperPiece(piece), upperMerged(merged);
        upperPiece.MakeUpper();
        upperMerged.MakeUpper();
        if (upperMerged.Find(upperPiece) < 0)
            merged += piece + L';';
        start = end + 1;
    }
}

}  // namespace

bool GetCADCmdLineString(CString& exePath, CString& cmdLine)
{
    const CString exe = FixSystemDir(Setting(L"ACADExePath", L""));
    CString merged = FixSystemDir(Setting(L"/s", L""));
    const CString defaultList =
        FixSystemDir(Setting(L"DefaultCADSearchPath", L"%%ACAD15Dir%%Support;%%ACAD15Dir%%Fonts;%%ACAD15Dir%%express"));
    const int noLogo = _wtoi(Setting(L"NoLogo", L"1"));

    merged.Trim(L';');
    merged += L';';
    CString profileKey, profileName, profileList;
    GetCADCurConfigName(profileKey, profileName);
    GetRegStr(HKEY_CURRENT_USER, profileKey + L"General", L"ACAD", profileList);
    if (profileList.IsEmpty())
        profileList = defaultList;
    MergeProfileList(profileList, merged);
    merged.Trim(L';');

    cmdLine = L"/s \"" + merged + L"\"";
    cmdLine.TrimRight(L';');
    if (noLogo != 0)
        cmdLine += L" /nologo";
    exePath = exe;
    return true;
}

}  // namespace QM
