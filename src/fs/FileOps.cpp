// FileOps.cpp - shell copies and deletes.
#include "fs/FileOps.h"
#include "fs/PathParts.h"
#include "platform/FileFind.h"

#include <shellapi.h>

#include <algorithm>
#include <cwchar>
#include <vector>

namespace {

// Silent, files only for wildcards, no error display: 0x484; the callers
// that allow overwriting add no-confirmation: 0x494.
constexpr FILEOP_FLAGS kCopyOptions = FOF_SILENT | FOF_FILESONLY | FOF_NOERRORUI;
static_assert(kCopyOptions == 0x484 && (kCopyOptions | FOF_NOCONFIRMATION) == 0x494, "shell copy options");

// Windows applies files-only to a wildcard source alone, Wine to a plain
// folder too (which then arrives without its sub-folders): the bit is given
// only where it means something, so both copy the same.
FILEOP_FLAGS CopyOptions(const CString& from, bool overwrite)
{
    FILEOP_FLAGS options = overwrite ? kCopyOptions | FOF_NOCONFIRMATION : kCopyOptions;
    if (from.FindOneOf(L"*?") < 0)
        options &= static_cast<FILEOP_FLAGS>(~FOF_FILESONLY);
    return options;
}

// The shell reads its path lists up to an empty entry: every text it is
// handed ends in two NULs.
std::vector<wchar_t> DoubleNul(const CString& text)
{
    std::vector<wchar_t> list(text.GetString(), text.GetString() + text.GetLength());
    list.insert(list.end(), 2, L'\0');
    return list;
}

bool ShellCopy(const CString& from, const CString& to, bool overwrite)
{
    std::vector<wchar_t> source = DoubleNul(from);
    std::vector<wchar_t> target = DoubleNul(to);
    SHFILEOPSTRUCTW op{};
    op.hwnd = nullptr;
    op.wFunc = FO_COPY;
    op.pFrom = source.data();
    op.pTo = target.data();
    op.fFlags = CopyOptions(from, overwrite);
    op.hNameMappings = nullptr;
    op.lpszProgressTitle = L"";
    return SHFileOperationW(&op) == 0;
}

// Each listed entry of the source into `target`, renamed when the target
// name list reaches that far.
bool CopyListed(const QM::CopyFilesStruct& copy, const CString& target)
{
    QM::MkMDir(target);
    bool ok = true;
    const CStringArray& files = *copy.pFiles;
    for (INT_PTR i = 0; i < files.GetSize(); ++i) {
        CString to = target;
        if (copy.pTargetNames != nullptr && i < copy.pTargetNames->GetSize())
            to += L"\\" + copy.pTargetNames->GetAt(i);
        if (!ShellCopy(copy.strSource + L"\\" + files[i], to, copy.bOverwrite))
            ok = false;
    }
    return ok;
}

// Every file directly in `source` (no sub-folders) into `target`.
bool CopyFolderFiles(const CString& source, const CString& target, bool overwrite)
{
    QM::MkMDir(target);
    bool ok = true;
    CFileFind finder;
    BOOL more = finder.FindFile(source + L"\\*.*");
    while (more) {
        more = finder.FindNextFile();
        if (!finder.IsDirectory() && !ShellCopy(finder.GetFilePath(), target, overwrite))
            ok = false;
    }
    return ok;
}

// Every sub-folder of the source, whole, into `target`.
bool CopySubFolders(const QM::CopyFilesStruct& copy, const CString& target)
{
    bool ok = true;
    CFileFind finder;
    BOOL more = finder.FindFile(copy.strSource + L"\\*.*");
    while (more) {
        more = finder.FindNextFile();
        if (!finder.IsDirectory() || finder.IsDots())
            continue;
        QM::MkMDir(target);
        QM::CopyFilesStruct sub{finder.GetFilePath(), nullptr, target, nullptr, copy.bOverwrite, true};
        if (!QM::CopyFiles(sub))
            ok = false;
    }
    return ok;
}

// A last component made of wildcards and dots alone ("*", "*.*", "?*")
// matches everything in its folder.
bool MatchesAll(const CString& name)
{
    return name.FindOneOf(L"*?") >= 0 && name.SpanIncluding(L"*?.") == name;
}

// Where the last component of `path` starts (after "X:" or the last "\").
int LastComponent(const CString& path)
{
    const int drive = path.GetLength() >= 2 && path[1] == L':' ? 2 : 0;
    return std::max(path.ReverseFind(L'\\') + 1, drive);
}

// `path` without the "\\?\" or "\\.\" prefixes that skip the platform's
// normalisation; "\\?\UNC\srv\share" is "\\srv\share", and a device name
// with no drive ("\\?\Volume{...}") is treated like a server.
CString WithoutDevicePrefix(CString path)
{
    path.Replace(L'/', L'\\');
    if (path.Left(4) != L"\\\\?\\" && path.Left(4) != L"\\\\.\\")
        return path;
    path = path.Mid(4);
    if (path.Left(4).CompareNoCase(L"UNC\\") == 0)
        return L"\\\\" + path.Mid(4);
    return path.GetLength() >= 2 && path[1] == L':' ? path : L"\\\\" + path;
}

// The platform's full form of `path`: ".", ".." and the current folder of
// a drive resolved. Empty when the platform cannot say.
CString FullPath(const CString& path)
{
    const DWORD size = GetFullPathNameW(path, 0, nullptr, nullptr);
    if (size == 0)
        return CString();
    CString full;
    const DWORD length = GetFullPathNameW(path, size, full.GetBuffer(static_cast<int>(size)), nullptr);
    full.ReleaseBuffer(length < size ? static_cast<int>(length) : 0);
    return full;
}

// The one buffer DeleteFiles hands to the shell.
wchar_t* DeleteBuffer()
{
    static wchar_t buffer[MAX_PATH];
    return buffer;
}

}  // namespace

namespace QM {

bool CopyFiles(CopyFilesStruct copy)
{
    if (copy.strSource.IsEmpty() || copy.strTarget.IsEmpty())
        return true;
    copy.strSource.TrimRight(L'\\');
    copy.strTarget.TrimRight(L'\\');
    const CString below = copy.strTarget + L"\\" + copy.strSource.Mid(copy.strSource.ReverseFind(L'\\') + 1);

    if (!copy.bRecursive)
        return copy.pFiles != nullptr ? CopyListed(copy, below)
                                      : CopyFolderFiles(copy.strSource, below, copy.bOverwrite);
    if (copy.pFiles != nullptr) {
        // Sub-folders go whole, whatever the list names: callers list the
        // loose files they want and expect the folders to come along.
        const bool foldersCopied = CopySubFolders(copy, below);
        const bool listCopied = CopyListed(copy, below);
        return foldersCopied && listCopied;
    }
    MkMDir(copy.strTarget);
    return ShellCopy(copy.strSource, copy.strTarget, copy.bOverwrite);
}

bool CopyTree(CString from, CString to, bool overwrite)
{
    return CopyFiles(CopyFilesStruct{from, nullptr, to, nullptr, overwrite, true});
}

bool IsDriveOrShareRoot(const wchar_t* path)
{
    if (IsNULL(path))
        return false;
    CString text = WithoutDevicePrefix(path);
    for (;;) {
        text.TrimRight(L'\\');
        const int last = LastComponent(text);
        if (!MatchesAll(text.Mid(last)))
            break;
        text = text.Left(last);
    }
    // The platform ignores trailing dots and blanks in a name: "Q:\ ." is Q:\.
    CString full = FullPath(text.IsEmpty() ? CString(L".") : text);
    full.TrimRight(L"\\. ");
    if (full.GetLength() < 2)
        return true;
    if (full.Left(2) != L"\\\\")
        return full.GetLength() == 2 && full[1] == L':';
    int separators = 0;
    for (int i = 2; i < full.GetLength(); ++i)
        if (full[i] == L'\\' && full[i - 1] != L'\\')
            ++separators;
    return separators < 2;   // \\server or \\server\share
}

bool DeleteFiles(const wchar_t* path, bool allowUndo)
{
    if (IsNULL(path) || IsDriveOrShareRoot(path))
        return false;
    const size_t length = std::wcslen(path);
    if (length + 2 > MAX_PATH)
        return false;
    wchar_t* buffer = DeleteBuffer();
    std::wmemcpy(buffer, path, length);
    buffer[length] = buffer[length + 1] = L'\0';

    SHFILEOPSTRUCTW op{};
    op.wFunc = FO_DELETE;
    op.pFrom = buffer;
    op.fFlags = static_cast<FILEOP_FLAGS>(allowUndo ? FOF_NOCONFIRMATION | FOF_ALLOWUNDO : FOF_NOCONFIRMATION);
    return SHFileOperationW(&op) == 0 && !op.fAnyOperationsAborted;
}

bool DeleteTree(const wchar_t* path, bool allowUndo)
{
    if (IsDriveOrShareRoot(path))
        return false;
    CString bare(path);
    bare.TrimRight(L'\\');
    if (!IsExist(bare))
        return true;
    return DeleteFiles(bare, allowUndo);
}

bool DelTree(const wchar_t* path)
{
    return DeleteTree(path, false);
}

}  // namespace QM
