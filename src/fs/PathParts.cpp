// PathParts.cpp - path parts and existence tests on the platform's calls.
#include "fs/PathParts.h"
#include "platform/Collections.h"
#include "platform/Exceptions.h"

#include <cstdlib>
#include <cwchar>

namespace {

// Every part can take a whole path of the platform's limit, MAX_PATH
// characters, with its NUL.
struct PathSplit
{
    wchar_t drive[_MAX_DRIVE] = L"";
    wchar_t dir[MAX_PATH + 1] = L"";
    wchar_t name[MAX_PATH + 1] = L"";
    wchar_t ext[MAX_PATH + 1] = L"";
};

// Splits `path` with the platform's splitter; false for null, empty or
// over-long paths, which the part functions answer with an empty text.
bool Split(const wchar_t* path, PathSplit& parts)
{
    if (QM::IsNULL(path) || std::wcslen(path) > MAX_PATH)
        return false;
    return _wsplitpath_s(path, parts.drive, _MAX_DRIVE, parts.dir, MAX_PATH + 1, parts.name, MAX_PATH + 1, parts.ext,
                         MAX_PATH + 1) == 0;
}

bool Found(const CString& pattern)
{
    WIN32_FIND_DATAW data;
    HANDLE search = FindFirstFileW(pattern, &data);
    if (search == INVALID_HANDLE_VALUE)
        return false;
    FindClose(search);
    return true;
}

}  // namespace

namespace QM {

bool IsNULL(const wchar_t* text)
{
    return text == nullptr || *text == L'\0';
}

CString GetFileName(const wchar_t* path)
{
    PathSplit parts;
    return Split(path, parts) ? CString(parts.name) + parts.ext : CString();
}

CString GetFileTitle(const wchar_t* path)
{
    PathSplit parts;
    return Split(path, parts) ? CString(parts.name) : CString();
}

CString GetFileExt(const wchar_t* path)
{
    PathSplit parts;
    return Split(path, parts) ? CString(parts.ext).Mid(1) : CString();
}

CString GetFilePath(const wchar_t* path)
{
    PathSplit parts;
    return Split(path, parts) ? CString(parts.drive) + parts.dir : CString();
}

bool IsExist(const wchar_t* path)
{
    if (IsNULL(path))
        return false;
    return Found(path) || Found(CString(path) + L"\\*");
}

bool IsDirReadOnly(CString folder)
{
    const CString probe = folder + L"~!@#$%^&.$$$";
    HANDLE file = CreateFileW(probe, GENERIC_READ, FILE_SHARE_READ, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL,
                              nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return true;
    CloseHandle(file);
    if (!DeleteFileW(probe))
        AfxThrowFileException(CFileException::OsErrorToException(static_cast<LONG>(GetLastError())),
                              static_cast<LONG>(GetLastError()), probe);
    return false;
}

bool MkMDir(CString folder)
{
    if (folder.Right(1) != L"\\")
        folder += L'\\';

    CStringArray prefixes;
    for (int i = 0; (i = folder.Find(L'\\', i)) >= 0; ++i)
        prefixes.Add(folder.Left(i));

    // A network path keeps its "", "\", server and share levels; a drive path
    // its drive: none of these can be created.
    const INT_PTR fixedLevels = folder.Left(2) == L"\\\\" ? 4 : 1;
    if (prefixes.GetSize() <= fixedLevels)
        return false;

    for (INT_PTR i = fixedLevels; i < prefixes.GetSize(); ++i) {
        const DWORD attributes = GetFileAttributesW(prefixes[i]);
        if (attributes == INVALID_FILE_ATTRIBUTES) {
            if (!CreateDirectoryW(prefixes[i], nullptr))
                return false;
        } else if (!(attributes & FILE_ATTRIBUTE_DIRECTORY)) {
            return false;
        }
    }
    return true;
}

}  // namespace QM
