// CadDiscovery.cpp - the CAD host's registry entries and, as a last resort,
// its automation server.
#include "cad/CadDiscovery.h"

#include "config/INISetting.h"
#include "config/Registry.h"
#include "fs/PathParts.h"

namespace QM {
namespace {

const wchar_t kAcadRoot[] = L"Software\\Autodesk\\AutoCAD";

CString Setting(const wchar_t* key, const wchar_t* defaultValue)
{
    return CInitSetting().GetSetting(key, defaultValue, L"CADCmdLine");
}

CString WithOneBackslash(CString dir)
{
    dir.TrimRight(L'\\');
    return dir + L'\\';
}

// "AcadLocation" of a product key, with exactly one trailing backslash.
bool ReadAcadLocation(const wchar_t* productKey, CString& dir)
{
    CString location;
    if (!GetRegStr(HKEY_LOCAL_MACHINE, productKey, L"AcadLocation", location))
        return false;
    dir = WithOneBackslash(location);
    return true;
}

bool ReleasePath(const wchar_t* releaseKey, CString& dir)
{
    CString product;
    if (!GetRegPos(HKEY_LOCAL_MACHINE, L"CurVer", product, releaseKey))
        return false;
    return ReadAcadLocation(product, dir);
}

// The configured release's products, most likely first: the user's current
// product, the machine's, then all of them. Duplicates cost one more read.
void AcadPathCandidates(const CString& base, CStringArray& candidates)
{
    CString current;
    if (GetRegStr(HKEY_CURRENT_USER, base, L"CurVer", current))
        candidates.Add(current);
    if (GetRegStr(HKEY_LOCAL_MACHINE, base, L"CurVer", current))
        candidates.Add(current);
    CKey key;
    if (!key.Open(HKEY_LOCAL_MACHINE, base, KEY_READ))
        return;
    CString name;
    for (int i = 0; key.EnumKey(i, name); ++i)
        candidates.Add(name);
}

// The folder of the registered automation server's executable, read from
// its class registration: "<folder>\acad.exe /Automation".
bool AcadPathFromClass(CString version, CString& dir)
{
    version.TrimRight(L".0");
    CString progId, clsid, server;
    progId.Format(L"AutoCAD.Application.%s\\CLSID", version.GetString());
    if (!GetRegStr(HKEY_CLASSES_ROOT, progId, L"", clsid))
        return false;
    CString serverKey;
    serverKey.Format(L"CLSID\\%s\\LocalServer32", clsid.GetString());
    if (!GetRegStr(HKEY_CLASSES_ROOT, serverKey, L"", server))
        return false;
    server.TrimRight(L" /Automation");
    server.TrimRight();
    const int slash = server.ReverseFind(L'\\');
    if (server.IsEmpty() || slash < 0 || !IsExist(server))
        return false;
    dir = server.Left(slash + 1);
    return true;
}

}  // namespace

CString GetStartupAcadVer()
{
    CString version = Setting(L"ACADVer", L"");
    version.Trim();
    version.TrimRight(L".0");
    return version;
}

bool IsStartupWithCadR14()
{
    CString version = Setting(L"ACADVer", L"");
    return version.Trim() == L"14";
}

bool IsStartupWithCadR15()
{
    CString version = Setting(L"ACADVer", L"");
    return version.Trim() == L"15";
}

bool GetCADRegPos(CString& key)
{
    const CString version = GetStartupAcadVer();
    if (version.IsEmpty())
        return false;
    const bool dotted = version.Find(L'.', 1) > 0;
    key.Format(dotted ? L"%s\\R%s" : L"%s\\R%s.0", kAcadRoot, version.GetString());
    return true;
}

bool GetRegPos(HKEY root, const wchar_t* valueName, CString& out, const wchar_t* baseKey)
{
    CString key(baseKey);
    if (key.IsEmpty() && !GetCADRegPos(key))
        return false;
    CString current;
    if (GetRegStr(root, key, valueName, current)) {
        out = key + L"\\" + current + L"\\" + out;
        return true;
    }
    CKey parent;
    if (!parent.Open(root, key, KEY_READ))
        return false;
    CString tail(out);
    tail.TrimLeft(L'\\');
    CString sub;
    for (int i = 0; parent.EnumKey(i, sub); ++i) {
        const CString candidate = key + L"\\" + sub + L"\\" + tail;
        CKey probe;
        if (probe.Open(root, candidate, KEY_READ)) {
            out = candidate;
            return true;
        }
    }
    return false;
}

bool GetAcadPath(CString& dir)
{
    const CString version = GetStartupAcadVer();
    if (version.IsEmpty())
        return false;
    CString base;
    base.Format(L"%s\\R%s", kAcadRoot, version.GetString());
    CStringArray candidates;
    AcadPathCandidates(base, candidates);
    for (INT_PTR i = 0; i < candidates.GetSize(); ++i) {
        CString location;
        if (!GetRegStr(HKEY_LOCAL_MACHINE, base + L"\\" + candidates[i], L"AcadLocation", location))
            continue;
        location.TrimRight(L'\\');
        if (IsExist(location + L"\\Acad.exe")) {
            dir = location + L'\\';
            return true;
        }
    }
    return AcadPathFromClass(version, dir);
}

bool GetAcadR14Path(CString& dir)
{
    return ReleasePath(L"Software\\Autodesk\\AutoCAD\\R14.0", dir);
}

bool GetAcadR15Path(CString& dir)
{
    return ReleasePath(L"Software\\Autodesk\\AutoCAD\\R15.0", dir);
}

bool GetAcadMapPath(CString& dir)
{
    const wchar_t release[] = L"Software\\Autodesk\\AutoCAD\\R15.0";
    CString current;
    if (!GetRegStr(HKEY_LOCAL_MACHINE, release, L"CurVer", current))
        return false;
    return ReadAcadLocation(CString(release) + L"\\" + current, dir);
}

bool GetCADCurConfigName(CString& profileKey, CString& profileName)
{
    CString releaseKey;
    if (!GetCADRegPos(releaseKey))
        return false;
    // The caller's text goes into the look-up as the position's tail; both
    // outputs are written only once the profile is found.
    CString product(profileName);
    if (!GetRegPos(HKEY_CURRENT_USER, L"CurVer", product, releaseKey) &&
        !GetRegPos(HKEY_LOCAL_MACHINE, L"CurVer", product, releaseKey))
        return false;
    // The product key ends with a backslash, so the kept part is normally
    // empty and the profiles key carries a doubled backslash, which the
    // registry reads as one.
    product.Trim();
    product = product.Mid(product.ReverseFind(L'\\') + 1);
    const CString profiles = releaseKey + L"\\" + product + L"\\Profiles";
    CString key(L"General Configuration");
    if (!GetRegPos(HKEY_CURRENT_USER, L"", key, profiles))
        return false;
    key.TrimRight(L"General Configuration");
    profileKey = key;
    key.TrimRight(L'\\');
    profileName = key.Mid(key.ReverseFind(L'\\') + 1);
    return true;
}

}  // namespace QM
