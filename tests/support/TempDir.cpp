// TempDir.cpp - per-test folders under the system's temporary folder.
#include "support/TempDir.h"

#include <string>

namespace qmtest {

TempDir::TempDir()
{
    wchar_t base[MAX_PATH];
    GetTempPathW(MAX_PATH, base);
    static LONG counter = 0;
    for (;;) {
        m_path.Format(L"%sqmtest-%lu-%ld\\", base, GetCurrentProcessId(), InterlockedIncrement(&counter));
        if (CreateDirectoryW(m_path, nullptr))
            break;
    }
}

TempDir::~TempDir()
{
    RemoveTree(m_path);
}

CString TempDir::WriteFile(const wchar_t* name, const std::string& bytes) const
{
    CString path = m_path + name;
    for (int i = m_path.GetLength(); (i = path.Find(L'\\', i)) >= 0; ++i)
        CreateDirectoryW(path.Left(i), nullptr);
    HANDLE file = CreateFileW(path, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file != INVALID_HANDLE_VALUE) {
        DWORD written = 0;
        ::WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
        CloseHandle(file);
    }
    return path;
}

std::string TempDir::ReadFile(const wchar_t* path)
{
    std::string bytes;
    HANDLE file = CreateFileW(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0,
                              nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return bytes;
    char chunk[4096];
    DWORD read = 0;
    while (::ReadFile(file, chunk, sizeof chunk, &read, nullptr) && read > 0)
        bytes.append(chunk, read);
    CloseHandle(file);
    return bytes;
}

void RemoveTree(const wchar_t* folder)
{
    CString base(folder);
    if (base.IsEmpty())
        return;
    if (base.Right(1) != L"\\")
        base += L'\\';
    WIN32_FIND_DATAW found;
    HANDLE search = FindFirstFileW(base + L"*", &found);
    if (search != INVALID_HANDLE_VALUE) {
        do {
            CString name(found.cFileName);
            if (name == L"." || name == L"..")
                continue;
            CString path = base + name;
            if (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) {
                RemoveTree(path);
            } else {
                SetFileAttributesW(path, FILE_ATTRIBUTE_NORMAL);
                DeleteFileW(path);
            }
        } while (FindNextFileW(search, &found));
        FindClose(search);
    }
    SetFileAttributesW(base, FILE_ATTRIBUTE_NORMAL);
    RemoveDirectoryW(base);
}

}  // namespace qmtest
