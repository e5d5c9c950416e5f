// PathMacros.cpp - macro expansion through the process environment.
#include "env/PathMacros.h"

#include "cad/CadDiscovery.h"
#include "env/Folders.h"

#include <algorithm>

namespace QM {
namespace {

// Published in this order; the values are looked up afresh per expansion.
const wchar_t* const kMacroNames[] = {L"ACADDIR", L"ACAD14DIR", L"ACAD15DIR", L"INSTALLDIR", L"LOCALDIR", L"WORKDIR"};

void LookUpMacroValues(CString (&values)[6])
{
    // A failed lookup publishes the empty text: the path then simply lacks
    // that folder's part, which the callers see as a missing file.
    GetAcadR14Path(values[1]);
    GetAcadR15Path(values[2]);
    GetAcadPath(values[0]);
    GetInstallDir(values[3]);
    GetLocalDir(values[4]);
    GetWorkDir(values[5], false);
}

void RemoveStars(CString& text)
{
    text.Replace(L"\\*", L"");
    text.Replace(L"*", L"");
}

CString Expand(const CString& text)
{
    // An expansion too long for the buffer leaves in it what the platform
    // wrote; that, cut at the buffer's end, is the result.
    wchar_t buffer[1024] = {};
    ExpandEnvironmentStringsW(text, buffer, ARRAYSIZE(buffer));
    buffer[ARRAYSIZE(buffer) - 1] = L'\0';
    CString result(buffer);
    RemoveStars(result);
    return result;
}

}  // namespace

CString FixSystemDir(FSD_DirType type, const wchar_t* sub)
{
    CString dir;
    bool found = false;
    switch (type) {
    case FSD_ACADR14DIR: found = GetAcadR14Path(dir); break;
    case FSD_ACADR15DIR: found = GetAcadR15Path(dir); break;
    case FSD_INSTALLDIR: found = GetInstallDir(dir); break;
    case FSD_LOCALDIR: found = GetLocalDir(dir); break;
    case FSD_WORKDIR: found = GetWorkDir(dir, false); break;
    case FSD_ACADDIR:
        // The install lookup runs into the same text and decides: older
        // applications asked for 32 and expect their own folder.
        GetAcadPath(dir);
        found = GetInstallDir(dir);
        break;
    default: return CString();
    }
    if (!found)
        return CString();
    CString tail(sub);
    tail.Trim(L'\\');
    if (tail.IsEmpty())
        return dir;
    dir += tail + L'\\';
    RemoveStars(dir);
    return dir;
}

CString FixSystemDir(const wchar_t* text)
{
    CStringArray items;
    items.Add(CString(text));
    FixSystemDir(items, CStringArray(), CStringArray());
    return items[0];
}

void FixSystemDir(CStringArray& items, const CStringArray& names, const CStringArray& values)
{
    CString macroValues[6];
    LookUpMacroValues(macroValues);
    for (int i = 0; i < 6; ++i)
        SetEnvironmentVariableW(kMacroNames[i], macroValues[i]);
    const INT_PTR extra = std::min(names.GetSize(), values.GetSize());
    for (INT_PTR i = 0; i < extra; ++i)
        SetEnvironmentVariableW(names[i], values[i]);

    for (INT_PTR i = 0; i < items.GetSize(); ++i)
        items[i] = Expand(items[i]);

    // Withdrawn, not emptied: afterwards none of the names exists, even one
    // the process had before the call.
    for (INT_PTR i = 0; i < extra; ++i)
        SetEnvironmentVariableW(names[i], nullptr);
    for (int i = 0; i < 6; ++i)
        SetEnvironmentVariableW(kMacroNames[i], nullptr);
}

}  // namespace QM
