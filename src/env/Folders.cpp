// Folders.cpp - the suite's folders, found through the registry locations
// that the start-up settings name.
#include "env/Folders.h"

#include "config/INISetting.h"
#include "config/OnceSetting.h"
#include "config/Registry.h"
#include "fs/PathParts.h"
#include "text/StringSplit.h"

#include <vector>

namespace QM {
namespace {

// What this process has learned once and keeps until unload. Install and
// local folders are kept only after a successful look-up, so a folder that
// appears later (an installer still running) is found on the next call.
struct FolderCache
{
    bool installFound = false;
    CString installDir;
    bool localNameRead = false;
    CString localDirName;
    bool localFound = false;
    CString localDir;
};

FolderCache& Cache()
{
    static FolderCache cache;
    return cache;
}

// Splits a location setting such as "InstallDir,HKCU" into the registry
// root and the value name (empty name: the key's default value).
void GetDirRegPos(const wchar_t* setting, HKEY& root, CString& valueName)
{
    CStringArray fields;
    QMOLD::DisCommaString(CInitSetting().GetSetting(setting, L"", L"Software"), fields, false);
    valueName = fields.GetSize() > 0 ? fields[0] : CString();
    const CString rootWord = fields.GetSize() > 1 ? fields[1] : CString();
    root = rootWord.CompareNoCase(L"HKCU") == 0 ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE;
}

bool ReadDirReg(const wchar_t* setting, CString& dir)
{
    HKEY root = nullptr;
    CString valueName;
    GetDirRegPos(setting, root, valueName);
    return GetRegStr(root, GetSoftRegItem(), valueName, dir);
}

}  // namespace

CString RegItem()
{
    static OnceSetting name(L"SoftName", L"", L"System");
    return name.Get();
}

CString RegVer()
{
    static OnceSetting version(L"Version", L"", L"System");
    return version.Get();
}

CString GetSoftRegItem()
{
    // Only emptiness counts: the company's name changed spelling between
    // releases and both installers write under the word they know.
    const bool joined = !CInitSetting().GetSetting(L"CompanyName", L"", L"System").IsEmpty();
    CString key;
    key.Format(L"SOFTWARE\\%s\\%s\\%s", joined ? L"Tarvel" : L"Tar Vel", RegItem().GetString(),
               RegVer().GetString());
    return key;
}

bool GetRegInstallDir(CString& dir)
{
    return ReadDirReg(L"InstallDir", dir);
}

bool GetRegLocalDir(CString& dir)
{
    return ReadDirReg(L"LocalDir", dir);
}

bool GetRegWorkDir(CString& dir)
{
    return ReadDirReg(L"WorkDir", dir);
}

bool SetRegWorkDir(CString dir)
{
    HKEY root = nullptr;
    CString valueName;
    GetDirRegPos(L"WorkDir", root, valueName);
    return SetRegStr(root, GetSoftRegItem(), valueName, dir);
}

bool GetInstallDir(CString& dir)
{
    FolderCache& cache = Cache();
    if (cache.installFound) {
        dir = cache.installDir;
        return true;
    }
    if (!GetRegInstallDir(cache.installDir))
        return false;
    cache.installDir.Trim();
    cache.installDir.TrimRight(L'\\');
    if (cache.installDir.IsEmpty() || !IsExist(cache.installDir))
        return false;
    cache.installDir += L'\\';
    cache.installFound = true;
    dir = cache.installDir;
    return true;
}

bool GetLocalDir(CString& dir)
{
    FolderCache& cache = Cache();
    if (!cache.localNameRead) {
        cache.localDirName = CInitSetting().GetSetting(L"LocalDirName", L"", L"Software");
        cache.localNameRead = true;
    }
    if (cache.localFound) {
        dir = cache.localDir;
        return true;
    }
    if (!GetRegLocalDir(cache.localDir))
        return false;
    cache.localDir.Trim();
    cache.localDir.TrimRight(L'\\');
    cache.localDirName.Trim();
    cache.localDirName.Trim(L'\\');
    if (!cache.localDirName.IsEmpty())
        cache.localDir += L"\\" + cache.localDirName;
    // An empty registry text must not turn into the drive root below.
    if (cache.localDir.IsEmpty() || !IsExist(cache.localDir))
        return false;
    cache.localDir += L'\\';
    cache.localFound = true;
    dir = cache.localDir;
    return true;
}

bool GetWorkDir(CString& dir, bool /*flag*/)
{
    CString work;
    if (!GetRegWorkDir(work))
        return false;
    work.TrimRight(L'\\');
    if (work.IsEmpty())
        return false;
    if (!IsExist(work) && (!MkMDir(work) || !IsExist(work)))
        return false;
    dir = work + L'\\';
    return true;
}

bool GetQMCommonFilesDir(CString& dir)
{
    CString common;
    if (!GetRegStr(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Microsoft\\Windows\\CurrentVersion", L"CommonFilesDir", common))
        return false;
    common.TrimRight(L'\\');
    dir = common + L"\\Tarvel Shared\\CAD";
    return true;
}

bool AddPathEnvironmentVariable(const wchar_t* dirs)
{
    CString add(dirs);
    if (add.GetLength() >= 4096)
        return false;
    add.MakeUpper();
    add.TrimRight(L';');
    add += L';';

    // The whole variable is read, however long: a path cut at a buffer's end
    // would be written back shortened and the process would lose folders.
    std::vector<wchar_t> buffer(4096);
    DWORD length = GetEnvironmentVariableW(L"Path", buffer.data(), static_cast<DWORD>(buffer.size()));
    if (length >= buffer.size()) {
        buffer.resize(length + 1);
        length = GetEnvironmentVariableW(L"Path", buffer.data(), static_cast<DWORD>(buffer.size()));
    }
    CString path(buffer.data(), length < buffer.size() ? static_cast<int>(length) : 0);
    path.MakeUpper();

    CStringArray pieces;
    SeparateString(add, L';', pieces, false);
    for (INT_PTR i = 0; i < pieces.GetSize(); ++i)
        path.Replace(pieces[i], L"");

    add.TrimRight(L';');
    CString joined;
    joined.Format(L"%s;%s", path.GetString(), add.GetString());
    joined.Replace(L";;", L";");
    return SetEnvironmentVariableW(L"Path", joined) != FALSE;
}

}  // namespace QM
