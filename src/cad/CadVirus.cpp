// CadVirus.cpp - hostile start-up scripts of the CAD host.
#include "cad/CadVirus.h"

#include "cad/CadDiscovery.h"
#include "config/IniHelpers.h"
#include "config/Registry.h"
#include "env/Folders.h"
#include "frame/Messages.h"
#include "fs/PathParts.h"
#include "text/StringSplit.h"

namespace QM {
namespace {

void AddProfileSupportPath(CStringArray& folders)
{
    CString key, name, path;
    if (!GetCADCurConfigName(key, name) || !GetRegStr(HKEY_CURRENT_USER, key + L"General", L"ACAD", path))
        return;
    SeparateString(path, L';', folders, false);
}

// An empty `parent` (every folder look-up failed) lists the current folder,
// the working text as it stands, never the drive root.
void AddSubFolders(CString parent, CStringArray& folders)
{
    if (!parent.IsEmpty() && parent.Right(1) != L"\\")
        parent += L'\\';
    WIN32_FIND_DATAW found;
    HANDLE find = FindFirstFileW(parent + L"*.*", &found);
    if (find == INVALID_HANDLE_VALUE)
        return;
    do {
        const CString name(found.cFileName);
        if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) && name != L"." && name != L"..")
            folders.Add(parent + name);
    } while (FindNextFileW(find, &found));
    FindClose(find);
}

}  // namespace

void GetCadVirusFolders(CStringArray& folders)
{
    folders.RemoveAll();
    // One text for the three lookups, added unconditionally: a failed lookup
    // repeats the folder before it, which costs a second look and nothing
    // else, and this list has always been built that way.
    CString working;
    GetAcadPath(working);
    folders.Add(working);
    AddProfileSupportPath(folders);
    GetWorkDir(working, false);
    folders.Add(working);
    GetInstallDir(working);
    folders.Add(working);
    AddSubFolders(working, folders);
    for (INT_PTR i = 0; i < folders.GetSize(); ++i)
        if (folders[i].Right(1) != L"\\")
            folders[i] += L'\\';
}

void GetCadVirusCandidates(CStringArray& candidates)
{
    CStringArray folders;
    GetCadVirusFolders(folders);
    candidates.RemoveAll();
    for (INT_PTR i = 0; i < folders.GetSize(); ++i)
        for (const wchar_t* name : {L"acad.lsp", L"acadapp.lsp"})
            if (IsExist(folders[i] + name))
                candidates.Add(folders[i] + name);
}

bool IsCadVirusFile(const wchar_t* path)
{
    const CString title = GetFileTitle(path);
    if (GetFileExt(path).CompareNoCase(L"LSP") != 0 ||
        (title.CompareNoCase(L"acad") != 0 && title.CompareNoCase(L"acadapp") != 0))
        return false;
    CStringArray lines;
    if (ReadTextFileToStringArray(path, lines, false) != FO_Success)
        return false;
    bool startup = false, explode = false, undefine = false, acadPath = false, acadApp = false, load = false;
    for (INT_PTR i = 0; i < lines.GetSize(); ++i) {
        CString line = lines[i];
        line.MakeUpper();
        startup = startup || line.Find(L"STARTUP") >= 0;
        explode = explode || line.Find(L"EXPLODE") >= 0;
        undefine = undefine || line.Find(L"UNDEFINE") >= 0;
        acadPath = acadPath || line.Find(L"ACADPATH") >= 0;
        // Lower-case words in an upper-cased line: this rule never matches.
        // It stays so: made to match, it would delete the host's own
        // acadapp.lsp, which loads acadapp.arx the same way.
        acadApp = acadApp || line.Find(L"acadapp") >= 0;
        load = load || line.Find(L"load") >= 0;
    }
    return (startup && explode && undefine && acadPath) || (acadApp && load);
}

void KillCadVirus()
{
    CStringArray candidates, failed;
    GetCadVirusCandidates(candidates);
    for (INT_PTR i = 0; i < candidates.GetSize(); ++i) {
        if (!IsCadVirusFile(candidates[i]))
            continue;
        if (!SetFileAttributesW(candidates[i], FILE_ATTRIBUTE_ARCHIVE))
            continue;
        if (!DeleteFileW(candidates[i]))
            failed.Add(candidates[i]);
    }
    if (failed.GetSize() == 0)
        return;
    CString text(L"CAD病毒文件未能删除：\n");
    for (INT_PTR i = 0; i < failed.GetSize(); ++i)
        text += failed[i] + L"\n";
    text += L"\n请手动删除！";
    MsgBox(nullptr, text, MB_OK | MB_ICONEXCLAMATION);
}

}  // namespace QM
