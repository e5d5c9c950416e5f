// CadMenu.cpp - the host's menu groups saved per profile and put back.
#include "cad/CadMenu.h"

#include "cad/CadDiscovery.h"
#include "config/INISetting.h"
#include "config/OnceSetting.h"
#include "config/Registry.h"
#include "text/StringSplit.h"

namespace QM {
namespace {

void ReadMarkers(CStringArray& markers)
{
    QMOLD::DisCommaString(CInitSetting().GetSetting(L"OurMenuFlag", L"", L"CADMenu"), markers, false);
    for (INT_PTR i = 0; i < markers.GetSize(); ++i)
        markers[i].MakeUpper();
}

bool HasMarker(CString data, const CStringArray& markers)
{
    data.MakeUpper();
    for (INT_PTR i = 0; i < markers.GetSize(); ++i)
        if (data.Find(markers[i]) >= 0)
            return true;
    return false;
}

// Saves or restores every string value of the Menus key; false when the key
// cannot be opened.
bool WalkMenus(bool save, const CString& menusKey, const CString& profile, const CStringArray& markers)
{
    CKey key;
    if (!key.Open(HKEY_CURRENT_USER, menusKey, KEY_ALL_ACCESS))
        return false;
    for (DWORD index = 0;; ++index) {
        wchar_t name[261] = {};
        wchar_t data[261] = {};   // 520 bytes of data and room for a NUL
        DWORD nameLength = ARRAYSIZE(name) - 1, type = 0, size = sizeof(data) - sizeof(wchar_t);
        const LONG status = RegEnumValueW(key.m_hKey, index, name, &nameLength, nullptr, &type,
                                          reinterpret_cast<BYTE*>(data), &size);
        if (status == ERROR_NO_MORE_ITEMS)
            break;
        if (status != ERROR_SUCCESS || type != REG_SZ)
            continue;   // too long for the store, or not a menu group
        if (save) {
            CADMenuSetting().SetSetting(name, data, profile);
            continue;
        }
        const CString saved = CADMenuSetting().GetSetting(name, L"", profile);
        if (!saved.IsEmpty())
            key.SetStringValue(saved, name);
        else if (HasMarker(data, markers))
            key.SetStringValue(L"", name);
    }
    return true;
}

}  // namespace

bool EnableSaveCadMenu()
{
    static OnceSetting save(L"EnableSaveCADMenu", L"0", L"CADMenu");
    return _wtoi(save.Get()) != 0;
}

bool EnableRestoreCadMenu()
{
    static OnceSetting restore(L"EnableRestoreCADMenu", L"0", L"CADMenu");
    return _wtoi(restore.Get()) != 0;
}

bool SetIsInSoftware(bool in)
{
    CString key, profile;
    if (!GetCADCurConfigName(key, profile))
        return false;
    CADMenuSetting().SetSetting(L"*InQMSoftWare", in ? L"1" : L"0", profile);
    return true;
}

bool IsInSoftware()
{
    CString key, profile;
    if (!GetCADCurConfigName(key, profile))
        return false;
    return _wtoi(CADMenuSetting().GetSetting(L"*InQMSoftWare", L"0", profile)) != 0;
}

bool SRCADMenu(bool save, CString& profileName)
{
    if (save && IsInSoftware())
        return false;   // the profile holds our menus now; saving would keep them for good
    if (!(save ? EnableSaveCadMenu() : EnableRestoreCadMenu()))
        return false;
    CString acad;
    if (!GetAcadPath(acad) || acad.IsEmpty())
        return false;
    CStringArray markers;
    ReadMarkers(markers);
    CString profileKey, profile;
    if (!GetCADCurConfigName(profileKey, profile))
        return true;
    profileName = profile;

    const CString general = profileKey + L"General Configuration";
    if (save) {
        CString menuFile;
        GetRegStr(HKEY_CURRENT_USER, general, L"MenuFile", menuFile);
        CADMenuSetting().SetSetting(L"*MenuPathName", menuFile, profile);
    } else {
        SetRegStr(HKEY_CURRENT_USER, general, L"MenuFile", CADMenuSetting().GetSetting(L"*MenuPathName", L"", profile));
    }
    WalkMenus(save, profileKey + L"Menus", profile, markers);
    return true;
}

}  // namespace QM
